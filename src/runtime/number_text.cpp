// Val, Str, CStr and the numeric Format declared in strings.h.
#include "runtime/errors.h"
#include "runtime/strings.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace rt {

namespace {

std::wstring Widen(std::string_view s) {
    return std::wstring(s.begin(), s.end());
}

int DigitValue(wchar_t c, int base) {
    int d = c >= L'0' && c <= L'9'   ? c - L'0'
            : c >= L'A' && c <= L'F' ? c - L'A' + 10
            : c >= L'a' && c <= L'f' ? c - L'a' + 10
                                     : 99;
    return d < base ? d : -1;
}

// Reads &H / &O after the '&': up to 16 bits is an Integer, up to 32 a Long.
double ValRadix(size_t& i, const auto& peek) {
    wchar_t k = peek();
    int base = k == L'H' || k == L'h' ? 16 : k == L'O' || k == L'o' ? 8 : 0;
    if (base == 0) return 0;
    ++i;
    uint64_t value = 0;
    int digits = 0;
    for (int d; (d = DigitValue(peek(), base)) >= 0; ++i, ++digits) {
        value = value * base + d;
        if (value > 0xFFFFFFFFu) Raise(kOverflow);
    }
    if (digits == 0) return 0;
    if (peek() != L'&' && value <= 0xFFFF) return static_cast<int16_t>(value);
    return static_cast<int32_t>(static_cast<uint32_t>(value));
}

// 15 significant digits of |v| as value = 0.digits x 10^exp10, trailing zeros dropped.
struct Decimal {
    std::string digits;
    int exp10 = 0;
};

Decimal ToDecimal(double v) {
    Decimal d;
    v = std::fabs(v);
    if (v == 0 || !std::isfinite(v)) return d;
    char buf[40];
    auto end = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific, 14).ptr;
    std::string_view text(buf, end - buf); // "d.dddddddddddddde+XX"
    size_t e = text.find('e');
    d.digits = std::string(1, text[0]) + std::string(text.substr(2, e - 2));
    int exp = 0;
    std::from_chars(text.data() + e + (text[e + 1] == '+' ? 2 : 1), text.data() + text.size(), exp);
    d.exp10 = exp + 1;
    while (!d.digits.empty() && d.digits.back() == '0') d.digits.pop_back();
    return d;
}

// Rounds half away from zero to `decimals` places after the point.
void RoundDecimal(Decimal& d, int decimals) {
    long keep = static_cast<long>(d.exp10) + decimals;
    if (keep >= static_cast<long>(d.digits.size())) return;
    if (keep < 0) {
        d.digits.clear();
        return;
    }
    bool up = d.digits[keep] >= '5';
    d.digits.resize(keep);
    if (!up) return;
    int i = static_cast<int>(keep) - 1;
    while (i >= 0 && d.digits[i] == '9') d.digits[i--] = '0';
    if (i >= 0) {
        ++d.digits[i];
    } else {
        d.digits.insert(d.digits.begin(), '1');
        ++d.exp10;
    }
}

std::wstring NumberText(double v, bool leadingZero) {
    if (v == 0) return L"0";
    char buf[40];
    auto end = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, 15).ptr;
    std::string s(buf, end);
    for (char& c : s) {
        if (c == 'e') c = 'E';
    }
    size_t zero = s[0] == '-' ? 1 : 0;
    if (!leadingZero && s.compare(zero, 2, "0.") == 0) s.erase(zero, 1);
    return Widen(s);
}

struct Token {
    wchar_t kind; // '0', '#', '.', ',' or 'L' for literal text
    std::wstring text;
};

std::vector<Token> Tokenize(std::wstring_view fmt) {
    std::vector<Token> tokens;
    for (size_t i = 0; i < fmt.size(); ++i) {
        wchar_t c = fmt[i];
        if (c == L'0' || c == L'#' || c == L'.' || c == L',') {
            tokens.push_back({c, {}});
        } else if (c == L'"') {
            size_t close = fmt.find(L'"', i + 1);
            if (close == std::wstring_view::npos) close = fmt.size();
            tokens.push_back({L'L', std::wstring(fmt.substr(i + 1, close - i - 1))});
            i = close;
        } else if (c == L'\\' && i + 1 < fmt.size()) {
            tokens.push_back({L'L', std::wstring(1, fmt[++i])});
        } else {
            tokens.push_back({L'L', std::wstring(1, c)});
        }
    }
    return tokens;
}

bool IsDigitPlace(const Token& t) {
    return t.kind == L'0' || t.kind == L'#';
}

// One section of a numeric picture applied to a non-negative value.
std::wstring FormatSection(double v, std::wstring_view fmt) {
    std::vector<Token> tokens = Tokenize(fmt);
    size_t point = tokens.size();
    for (size_t i = 0; i < tokens.size() && point == tokens.size(); ++i) {
        if (tokens[i].kind == L'.') point = i;
    }
    // Integer places: how many, how many forced (from the first '0' on), and the commas.
    int places = 0, forced = 0, lastPlace = -1;
    for (size_t i = 0; i < point; ++i) {
        if (!IsDigitPlace(tokens[i])) continue;
        if (tokens[i].kind == L'0' || forced > 0) ++forced;
        ++places;
        lastPlace = static_cast<int>(i);
    }
    bool grouping = false;
    for (size_t i = 0; i < point; ++i) {
        if (tokens[i].kind != L',') continue;
        if (static_cast<int>(i) < lastPlace)
            grouping = true;
        else
            v /= 1000; // a comma right of the digits scales
    }
    int decimals = 0, forcedDecimals = 0;
    for (size_t i = point + 1; i < tokens.size(); ++i) {
        if (!IsDigitPlace(tokens[i])) continue;
        ++decimals;
        if (tokens[i].kind == L'0') forcedDecimals = decimals;
    }
    for (const Token& t : tokens) {
        if (t.kind == L'L' && t.text.find(L'%') != std::wstring::npos) v *= 100;
    }

    Decimal d = ToDecimal(v);
    RoundDecimal(d, decimals);
    auto digitAt = [&](long k) {
        return k >= 0 && k < static_cast<long>(d.digits.size()) ? wchar_t(d.digits[k]) : L'0';
    };
    std::vector<std::wstring> units; // integer digits, each with the separator that follows it
    for (long k = 0; k < d.exp10; ++k) units.emplace_back(1, digitAt(k));
    while (static_cast<int>(units.size()) < forced) units.insert(units.begin(), L"0");
    if (grouping) {
        for (size_t k = 0; k + 1 < units.size(); ++k) {
            if ((units.size() - 1 - k) % 3 == 0) units[k] += L',';
        }
    }
    int extra = static_cast<int>(units.size()) - places; // units before the first place

    std::wstring out;
    int place = 0;
    for (size_t i = 0; i < point; ++i) {
        const Token& t = tokens[i];
        if (t.kind == L'L') out += t.text;
        if (!IsDigitPlace(t)) continue;
        if (place == 0) {
            for (int k = 0; k < extra; ++k) out += units[k];
        }
        int unit = place + extra;
        if (unit >= 0) out += units[unit];
        ++place;
    }
    if (places == 0) {
        for (const std::wstring& u : units) out += u;
    }
    int shown = forcedDecimals;
    for (int k = decimals; k > forcedDecimals; --k) {
        if (digitAt(d.exp10 + k - 1) != L'0') {
            shown = k;
            break;
        }
    }
    int decimal = 0;
    for (size_t i = point; i < tokens.size(); ++i) {
        const Token& t = tokens[i];
        if (t.kind == L'L') out += t.text;
        if (t.kind == L'.') out += L'.';
        if (IsDigitPlace(t) && decimal < shown) out += digitAt(d.exp10 + decimal++);
    }
    return out;
}

} // namespace

double Val(std::wstring_view s) {
    size_t i = 0;
    auto peek = [&]() -> wchar_t {
        while (i < s.size() && (s[i] == L' ' || s[i] == L'\t' || s[i] == L'\n')) ++i;
        return i < s.size() ? s[i] : L'\0';
    };
    auto isDigit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };
    if (peek() == L'&') {
        ++i;
        return ValRadix(i, peek);
    }
    std::string num;
    if (peek() == L'+' || peek() == L'-') num += static_cast<char>(s[i++]);
    // magnitude: the decimal exponent of the leading digit, to tell overflow from underflow
    int digits = 0, magnitude = 0;
    bool point = false, nonZero = false;
    for (wchar_t c; (c = peek()) != L'\0'; ++i) {
        if (isDigit(c)) {
            ++digits;
            nonZero = nonZero || c != L'0';
            if (!point && nonZero) ++magnitude;
            if (point && !nonZero) --magnitude;
        } else if (c == L'.' && !point) {
            point = true;
        } else {
            break;
        }
        num += static_cast<char>(c);
    }
    if (digits == 0) return 0;
    wchar_t e = peek();
    if (e == L'E' || e == L'e' || e == L'D' || e == L'd') {
        ++i;
        std::string exp = "e";
        if (peek() == L'+' || peek() == L'-') exp += static_cast<char>(s[i++]);
        long expValue = 0;
        for (; isDigit(peek()); ++i) {
            exp += static_cast<char>(s[i]);
            if (expValue < 100000) expValue = expValue * 10 + (s[i] - L'0');
        }
        if (exp.size() > 1 && isDigit(exp.back())) {
            num += exp;
            magnitude += exp[1] == '-' ? -expValue : expValue;
        }
    }
    const char* first = num.data() + (num[0] == '+' ? 1 : 0);
    double value = 0;
    auto [ptr, ec] = std::from_chars(first, num.data() + num.size(), value);
    if (ec == std::errc::result_out_of_range) {
        if (magnitude > 0) Raise(kOverflow);
        return 0;
    }
    return value;
}

std::wstring Str(double v) {
    std::wstring s = NumberText(v, false);
    return s[0] == L'-' ? s : L" " + s;
}

std::wstring CStr(double v) {
    return NumberText(v, true);
}

std::wstring Format(double v, std::wstring_view fmt) {
    if (fmt.empty()) return CStr(v);
    std::vector<std::wstring_view> sections;
    for (size_t from = 0;;) {
        size_t semi = fmt.find(L';', from);
        sections.push_back(fmt.substr(from, semi == std::wstring_view::npos ? semi : semi - from));
        if (semi == std::wstring_view::npos) break;
        from = semi + 1;
    }
    if (v < 0 && sections.size() >= 2 && !sections[1].empty())
        return FormatSection(-v, sections[1]);
    if (v == 0 && sections.size() >= 3 && !sections[2].empty())
        return FormatSection(0, sections[2]);
    std::wstring body = FormatSection(std::fabs(v), sections[0]);
    return v < 0 ? L"-" + body : body;
}

} // namespace rt
