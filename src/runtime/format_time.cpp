// The date/time Format declared in strings.h.
#include "runtime/strings.h"

#include <vector>

namespace rt {

namespace {

struct Field {
    wchar_t letter; // lower-case h n m s d y, 'A' for AM/PM, 'a' for A/P, 0 for literal text
    int run;
    std::wstring text; // literal text, or the AM/PM picture as written
};

wchar_t Lower(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? wchar_t(c + 32) : c;
}

bool StartsWithNoCase(std::wstring_view s, size_t i, std::wstring_view word) {
    if (s.size() - i < word.size()) return false;
    for (size_t k = 0; k < word.size(); ++k) {
        if (Lower(s[i + k]) != Lower(word[k])) return false;
    }
    return true;
}

std::vector<Field> Parse(std::wstring_view fmt) {
    std::vector<Field> fields;
    for (size_t i = 0; i < fmt.size();) {
        wchar_t c = Lower(fmt[i]);
        if (StartsWithNoCase(fmt, i, L"am/pm") || StartsWithNoCase(fmt, i, L"a/p")) {
            size_t n = Lower(fmt[i + 1]) == L'm' ? 5 : 3;
            fields.push_back({n == 5 ? L'A' : L'a', 1, std::wstring(fmt.substr(i, n))});
            i += n;
        } else if (std::wstring_view(L"hnmsdy").find(c) != std::wstring_view::npos) {
            int run = 0;
            while (i < fmt.size() && Lower(fmt[i]) == c) ++run, ++i;
            fields.push_back({c, run, {}});
        } else if (c == L'"') {
            size_t close = fmt.find(L'"', i + 1);
            if (close == std::wstring_view::npos) close = fmt.size();
            fields.push_back({0, 0, std::wstring(fmt.substr(i + 1, close - i - 1))});
            i = close + 1;
        } else {
            if (c == L'\\' && i + 1 < fmt.size()) ++i;
            fields.push_back({0, 0, std::wstring(1, fmt[i++])});
        }
    }
    // m and mm are minutes right after an hour or right before seconds.
    wchar_t previous = 0;
    for (size_t k = 0; k < fields.size(); ++k) {
        Field& f = fields[k];
        if (f.letter == 0) continue;
        if (f.letter == L'm' && f.run <= 2) {
            wchar_t next = 0;
            for (size_t j = k + 1; j < fields.size() && next == 0; ++j) next = fields[j].letter;
            if (previous == L'h' || next == L's') f.letter = L'n';
        }
        previous = f.letter;
    }
    return fields;
}

std::wstring Digits(int v, int run) {
    std::wstring s = std::to_wstring(v);
    return run >= 2 && s.size() < 2 ? L"0" + s : s;
}

int DayOfYear(const SystemTime& t) {
    static const int before[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    bool leap = (t.year % 4 == 0 && t.year % 100 != 0) || t.year % 400 == 0;
    int month = t.month >= 1 && t.month <= 12 ? t.month : 1;
    return before[month - 1] + t.day + (leap && month > 2 ? 1 : 0);
}

// "AM/PM" gives AM or PM in the case the picture has; "A/P" gives one letter.
std::wstring AmPm(const Field& f, int hour) {
    bool pm = hour >= 12;
    if (f.letter == L'a') return std::wstring(1, f.text[pm ? 2 : 0]);
    return pm ? f.text.substr(3, 2) : f.text.substr(0, 2);
}

} // namespace

std::wstring FormatTime(const SystemTime& t, std::wstring_view fmt) {
    std::vector<Field> fields = Parse(fmt);
    bool twelveHour = false;
    for (const Field& f : fields) twelveHour = twelveHour || f.letter == L'A' || f.letter == L'a';
    std::wstring out;
    for (const Field& f : fields) {
        switch (f.letter) {
        case 0:
            out += f.text;
            break;
        case L'A':
        case L'a':
            out += AmPm(f, t.hour);
            break;
        case L'h': {
            int hour = twelveHour ? (t.hour % 12 == 0 ? 12 : t.hour % 12) : t.hour;
            out += Digits(hour, f.run);
            break;
        }
        case L'n':
            out += Digits(t.minute, f.run);
            break;
        case L's':
            out += Digits(t.second, f.run);
            break;
        case L'm':
            out += f.run <= 2 ? Digits(t.month, f.run) : MonthName(t.month, f.run == 3);
            break;
        case L'd':
            out += f.run <= 2 ? Digits(t.day, f.run)
                              : WeekdayName(DayOfWeek(t.year, t.month, t.day) + 1, f.run == 3);
            break;
        case L'y':
            if (f.run == 1)
                out += std::to_wstring(DayOfYear(t));
            else if (f.run <= 3)
                out += Digits(t.year % 100, 2);
            else
                out += std::to_wstring(t.year);
            break;
        }
    }
    return out;
}

} // namespace rt
