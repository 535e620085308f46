#include "language/language.h"

#include "runtime/errors.h"

namespace mv {

namespace {

template <typename Table> const auto& At(const Table& t, int n) {
    if (n < 0 || n >= int(t.size())) rt::Raise(rt::kSubscriptOutOfRange);
    return t[size_t(n)];
}

} // namespace

const std::wstring& Language::Entry(int n) const {
    return At(TabConst, n);
}

const std::wstring& Language::Aide(int n) const {
    return At(TabAide, n);
}

const std::wstring& Language::AideMenu(int i, int j) const {
    return At(At(TabAideMenu, i), j);
}

} // namespace mv
