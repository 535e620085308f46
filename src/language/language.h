// The language tables. Every user-visible text of the program is an entry by number.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace mv {

class Language {
public:
    // Language entry n; 9 (subscript out of range) outside 0 to 300.
    const std::wstring& Entry(int n) const;
    // Help page n (0 to 100) and menu help (i 0 to 4, j 0 to 6); 9 outside.
    const std::wstring& Aide(int n) const;
    const std::wstring& AideMenu(int i, int j) const;

    std::array<std::wstring, 301> TabConst;
    // The tips of the day, in file order.
    std::vector<std::wstring> TabBulles;
    std::array<std::wstring, 101> TabAide;
    std::array<std::array<std::wstring, 7>, 5> TabAideMenu;
};

} // namespace mv
