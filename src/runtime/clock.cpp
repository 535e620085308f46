#include "runtime/clock.h"

#include "runtime/errors.h"

#include <functional>

namespace rt {

namespace {

const wchar_t* const kDayNames[7] = {L"Sunday",   L"Monday", L"Tuesday", L"Wednesday",
                                     L"Thursday", L"Friday", L"Saturday"};
const wchar_t* const kMonthNames[12] = {L"January",   L"February", L"March",    L"April",
                                        L"May",       L"June",     L"July",     L"August",
                                        L"September", L"October",  L"November", L"December"};

std::wstring Number(int v, int minDigits) {
    std::wstring s = std::to_wstring(v < 0 ? -v : v);
    if (static_cast<int>(s.size()) < minDigits) s.insert(0, minDigits - s.size(), L'0');
    return v < 0 ? L"-" + s : s;
}

// Walks a Windows picture string: quoted text is copied without its quotes, a run of one
// of the letters in `fields` goes to render(letter, run length), anything else is copied.
std::wstring RenderPicture(std::wstring_view pattern, std::wstring_view fields,
                           const std::function<std::wstring(wchar_t, int)>& render) {
    std::wstring out;
    size_t i = 0;
    while (i < pattern.size()) {
        wchar_t c = pattern[i];
        if (c == L'\'') {
            ++i;
            while (i < pattern.size()) {
                if (pattern[i] == L'\'') {
                    if (i + 1 < pattern.size() && pattern[i + 1] == L'\'') {
                        out += L'\'';
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                out += pattern[i++];
            }
        } else if (fields.find(c) != std::wstring_view::npos) {
            int run = 0;
            while (i < pattern.size() && pattern[i] == c) ++run, ++i;
            out += render(c, run);
        } else {
            out += c;
            ++i;
        }
    }
    return out;
}

} // namespace

int64_t DaysFromCivil(int y, int m, int d) {
    y -= m <= 2;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const int64_t yoe = y - era * 400;
    const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

double SecondsSinceMidnight(const SystemTime& t) {
    return t.hour * 3600.0 + t.minute * 60.0 + t.second + t.millisecond / 1000.0;
}

int DayOfWeek(int year, int month, int day) {
    static const int offsets[12] = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
    if (month < 3) year -= 1;
    int w = (year + year / 4 - year / 100 + year / 400 + offsets[(month + 11) % 12] + day) % 7;
    return w < 0 ? w + 7 : w;
}

std::wstring MonthName(int month, bool abbreviate) {
    if (month < 1 || month > 12) Raise(kInvalidCall);
    std::wstring name = kMonthNames[month - 1];
    return abbreviate ? name.substr(0, 3) : name;
}

std::wstring WeekdayName(int weekday, bool abbreviate) {
    if (weekday < 1 || weekday > 7) Raise(kInvalidCall);
    std::wstring name = kDayNames[weekday - 1];
    return abbreviate ? name.substr(0, 3) : name;
}

std::wstring TimeText(const SystemTime& t, std::wstring_view pattern) {
    return RenderPicture(pattern, L"hHmst", [&](wchar_t c, int run) -> std::wstring {
        int width = run >= 2 ? 2 : 1;
        switch (c) {
        case L'h':
            return Number(t.hour % 12 == 0 ? 12 : t.hour % 12, width);
        case L'H':
            return Number(t.hour, width);
        case L'm':
            return Number(t.minute, width);
        case L's':
            return Number(t.second, width);
        default: {
            std::wstring ampm = t.hour < 12 ? L"AM" : L"PM";
            return run >= 2 ? ampm : ampm.substr(0, 1);
        }
        }
    });
}

std::wstring DateText(const SystemTime& t, std::wstring_view pattern) {
    return RenderPicture(pattern, L"dMyg", [&](wchar_t c, int run) -> std::wstring {
        switch (c) {
        case L'd':
            if (run <= 2) return Number(t.day, run);
            return WeekdayName(DayOfWeek(t.year, t.month, t.day) + 1, run == 3);
        case L'M':
            if (run <= 2) return Number(t.month, run);
            return MonthName(t.month, run == 3);
        case L'y':
            if (run == 1) return Number(t.year % 100, 1);
            if (run == 2) return Number(t.year % 100, 2);
            return Number(t.year, 4);
        default:
            return L"";
        }
    });
}

} // namespace rt
