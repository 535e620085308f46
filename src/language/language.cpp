#include "language/language.h"

#include "runtime/errors.h"

namespace mv {

const std::wstring& Language::Entry(int n) const {
    if (n < 0 || n >= int(TabConst.size())) rt::Raise(rt::kSubscriptOutOfRange);
    return TabConst[size_t(n)];
}

} // namespace mv
