// UTF-8 and single-byte code page conversions declared in files.h.
#include "runtime/files.h"

#include <type_traits>

namespace rt {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Windows-1252: bytes 0x80..0x9F as listed (the five unassigned ones map to themselves, as
// MultiByteToWideChar does), 0xA0..0xFF as Latin-1.
AnsiCodePage MakeCp1252() {
    constexpr char16_t k80[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                  0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    AnsiCodePage page;
    page.id = 1252;
    for (int k = 0; k < 128; ++k) page.high[k] = k < 32 ? k80[k] : static_cast<char16_t>(0x80 + k);
    return page;
}

AnsiCodePage& SystemPage() {
    static AnsiCodePage page = MakeCp1252();
    return page;
}

bool IsHighSurrogate(char32_t c) {
    return c >= 0xD800 && c < 0xDC00;
}
bool IsLowSurrogate(char32_t c) {
    return c >= 0xDC00 && c < 0xE000;
}

// Reads one code point from wide text at i (joining a surrogate pair), advancing i.
char32_t NextCodePoint(std::wstring_view s, size_t& i) {
    char32_t c = static_cast<char32_t>(static_cast<std::make_unsigned_t<wchar_t>>(s[i++]));
    if (IsHighSurrogate(c) && i < s.size()) {
        char32_t d = static_cast<char32_t>(static_cast<std::make_unsigned_t<wchar_t>>(s[i]));
        if (IsLowSurrogate(d)) {
            ++i;
            return 0x10000 + ((c - 0xD800) << 10) + (d - 0xDC00);
        }
    }
    if (IsHighSurrogate(c) || IsLowSurrogate(c) || c > 0x10FFFF) return kReplacement;
    return c;
}

void AppendWide(std::wstring& out, char32_t c) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (c >= 0x10000) {
            c -= 0x10000;
            out.push_back(static_cast<wchar_t>(0xD800 + (c >> 10)));
            out.push_back(static_cast<wchar_t>(0xDC00 + (c & 0x3FF)));
            return;
        }
    }
    out.push_back(static_cast<wchar_t>(c));
}

} // namespace

std::string ToUtf8(std::wstring_view s) {
    std::string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size();) {
        char32_t c = NextCodePoint(s, i);
        if (c < 0x80) {
            out.push_back(static_cast<char>(c));
        } else if (c < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (c >> 6)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else if (c < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (c >> 12)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (c >> 18)));
            out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }
    return out;
}

std::wstring FromUtf8(std::string_view s) {
    std::wstring out;
    out.reserve(s.size());
    size_t i = 0;
    auto byte = [&](size_t k) { return static_cast<unsigned char>(s[k]); };
    while (i < s.size()) {
        unsigned char b = byte(i);
        if (b < 0x80) {
            out.push_back(static_cast<wchar_t>(b));
            ++i;
            continue;
        }
        int extra = b >= 0xC2 && b < 0xE0   ? 1
                    : b >= 0xE0 && b < 0xF0 ? 2
                    : b >= 0xF0 && b < 0xF5 ? 3
                                            : 0;
        bool ok = extra > 0 && i + extra < s.size();
        char32_t c = b & (0x3F >> extra);
        for (int k = 1; k <= extra && ok; ++k) {
            if ((byte(i + k) & 0xC0) != 0x80)
                ok = false;
            else
                c = (c << 6) | (byte(i + k) & 0x3F);
        }
        // Overlong forms, surrogates and values past U+10FFFF are invalid.
        static constexpr char32_t kMin[4] = {0, 0x80, 0x800, 0x10000};
        if (!ok || c < kMin[extra] || (c >= 0xD800 && c < 0xE000) || c > 0x10FFFF) {
            AppendWide(out, kReplacement);
            ++i;
            continue;
        }
        AppendWide(out, c);
        i += extra + 1;
    }
    return out;
}

namespace {

// The byte of c in page, or -1.
int ByteOf(const AnsiCodePage& page, char32_t c) {
    if (c < 0x80) return static_cast<int>(c);
    for (int k = 0; k < 128; ++k)
        if (page.high[k] == c) return 0x80 + k;
    return -1;
}

std::string Encode(const AnsiCodePage& page, std::wstring_view s, bool* lost) {
    std::string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size();) {
        const int b = ByteOf(page, NextCodePoint(s, i));
        if (b < 0 && lost) *lost = true;
        out.push_back(static_cast<char>(b < 0 ? '?' : b));
    }
    return out;
}

std::wstring Decode(const AnsiCodePage& page, std::string_view s) {
    std::wstring out;
    out.reserve(s.size());
    for (char ch : s) {
        const auto b = static_cast<unsigned char>(ch);
        out.push_back(static_cast<wchar_t>(b < 0x80 ? b : page.high[b - 0x80]));
    }
    return out;
}

} // namespace

const AnsiCodePage& Cp1252Page() {
    static const AnsiCodePage page = MakeCp1252();
    return page;
}

std::string ToCp1252(std::wstring_view s) {
    return Encode(Cp1252Page(), s, nullptr);
}

std::wstring FromCp1252(std::string_view s) {
    return Decode(Cp1252Page(), s);
}

void SetAnsiCodePage(const AnsiCodePage& page) {
    SystemPage() = page;
}

const AnsiCodePage& AnsiPage() {
    return SystemPage();
}

std::string ToAnsi(std::wstring_view s) {
    return Encode(SystemPage(), s, nullptr);
}

std::wstring FromAnsi(std::string_view s) {
    return Decode(SystemPage(), s);
}

bool AnsiHolds(std::wstring_view s) {
    bool lost = false;
    Encode(SystemPage(), s, &lost);
    return !lost;
}

} // namespace rt
