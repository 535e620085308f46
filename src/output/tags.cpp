#include "output/tags.h"

#include "runtime/strings.h"

namespace mv {

std::wstring CalcTagDate(const std::wstring& dateText) {
    std::wstring d = dateText;
    if (rt::InStr(d, L"/") == 2) d = L"0" + d;
    if (rt::InStr(4, d, L"/") == 5) d = rt::Left(d, 3) + L"0" + rt::Mid(d, 4);
    return rt::Right(d, 4) + rt::Mid(d, 4, 2) + rt::Left(d, 2);
}

std::wstring CalcTagHeure(const std::wstring& timeText) {
    // A fixed field of seven characters: cut or filled with blanks.
    std::wstring f = rt::Replace(timeText, L":", L"");
    f.resize(7, L' ');
    if (rt::Right(f, 2) == L"AM" || rt::Right(f, 2) == L"PM") {
        std::wstring letter = rt::Left(rt::Right(f, 2), 1);
        if (f[5] == L' ') return letter + L"0" + rt::Left(f, 5);
        return letter + rt::Left(f, 6);
    }
    return rt::Left(L"H" + rt::Replace(f, L" ", L"0"), 7);
}

std::wstring CalcHorodatage(const std::wstring& dateText, const std::wstring& timeText) {
    std::wstring d = rt::Replace(dateText, L"/", L"");
    return rt::Right(d, 2) + rt::Mid(d, 3, 2) + rt::Left(d, 2) + L"_" +
           rt::Replace(timeText, L":", L"");
}

} // namespace mv
