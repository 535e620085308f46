// The language tables. Every user-visible text of the program is an entry by number.
#pragma once

#include <array>
#include <string>

namespace mv {

class Language {
public:
    // Language entry n; 9 (subscript out of range) outside 0 to 300.
    const std::wstring& Entry(int n) const;
    std::array<std::wstring, 301> TabConst;
};

} // namespace mv
