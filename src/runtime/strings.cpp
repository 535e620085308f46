// Positional and case functions declared in strings.h.
#include "runtime/strings.h"

#include "runtime/errors.h"
#include "runtime/files.h"

#include <type_traits>

namespace rt {

namespace {

unsigned Code(wchar_t c) {
    return static_cast<unsigned>(static_cast<std::make_unsigned_t<wchar_t>>(c));
}

bool InRange(unsigned u, unsigned lo, unsigned hi) {
    return u >= lo && u <= hi;
}

// Latin Extended-A letters come in pairs: upper even / lower odd in these two blocks...
bool EvenUpperPair(unsigned u) {
    return InRange(u, 0x100, 0x137) || InRange(u, 0x14A, 0x177);
}
// ...and upper odd / lower even in these.
bool OddUpperPair(unsigned u) {
    return InRange(u, 0x139, 0x148) || InRange(u, 0x179, 0x17E);
}

wchar_t ToUpper(wchar_t c) {
    unsigned u = Code(c);
    if (InRange(u, 'a', 'z')) return static_cast<wchar_t>(u - 32);
    if (u < 0x80) return c;
    if (u == 0x131) return L'I';
    if (u == 0xFF) return static_cast<wchar_t>(0x178);
    if ((InRange(u, 0xE0, 0xFE) && u != 0xF7) || InRange(u, 0x3B1, 0x3C9) ||
        InRange(u, 0x430, 0x44F)) {
        return static_cast<wchar_t>(u == 0x3C2 ? 0x3A3 : u - 32);
    }
    if (InRange(u, 0x450, 0x45F)) return static_cast<wchar_t>(u - 80);
    if (EvenUpperPair(u) && u != 0x130) return static_cast<wchar_t>(u & ~1u);
    if (OddUpperPair(u) && u % 2 == 0) return static_cast<wchar_t>(u - 1);
    return c;
}

wchar_t ToLower(wchar_t c) {
    unsigned u = Code(c);
    if (InRange(u, 'A', 'Z')) return static_cast<wchar_t>(u + 32);
    if (u < 0x80) return c;
    if (u == 0x130) return L'i';
    if (u == 0x178) return static_cast<wchar_t>(0xFF);
    if ((InRange(u, 0xC0, 0xDE) && u != 0xD7) || (InRange(u, 0x391, 0x3A9) && u != 0x3A2) ||
        InRange(u, 0x410, 0x42F)) {
        return static_cast<wchar_t>(u + 32);
    }
    if (InRange(u, 0x400, 0x40F)) return static_cast<wchar_t>(u + 80);
    if (EvenUpperPair(u) && u != 0x131) return static_cast<wchar_t>(u | 1u);
    if (OddUpperPair(u) && u % 2 == 1) return static_cast<wchar_t>(u + 1);
    return c;
}

void CheckCount(long long n) {
    if (n < 0) Raise(kInvalidCall);
}

} // namespace

std::wstring Left(std::wstring_view s, long long n) {
    CheckCount(n);
    return std::wstring(s.substr(0, static_cast<size_t>(n)));
}

std::wstring Right(std::wstring_view s, long long n) {
    CheckCount(n);
    if (static_cast<unsigned long long>(n) >= s.size()) return std::wstring(s);
    return std::wstring(s.substr(s.size() - static_cast<size_t>(n)));
}

std::wstring Mid(std::wstring_view s, long long start) {
    if (start < 1) Raise(kInvalidCall);
    if (static_cast<unsigned long long>(start) > s.size()) return {};
    return std::wstring(s.substr(static_cast<size_t>(start - 1)));
}

std::wstring Mid(std::wstring_view s, long long start, long long length) {
    CheckCount(length);
    std::wstring rest = Mid(s, start);
    if (static_cast<unsigned long long>(length) < rest.size())
        rest.resize(static_cast<size_t>(length));
    return rest;
}

int Len(std::wstring_view s) {
    return static_cast<int>(s.size());
}

int InStr(std::wstring_view s, std::wstring_view find) {
    return InStr(1, s, find);
}

int InStr(long long start, std::wstring_view s, std::wstring_view find) {
    if (start < 1) Raise(kInvalidCall);
    if (s.empty() || static_cast<unsigned long long>(start) > s.size()) return 0;
    if (find.empty()) return static_cast<int>(start);
    size_t pos = s.find(find, static_cast<size_t>(start - 1));
    return pos == std::wstring_view::npos ? 0 : static_cast<int>(pos + 1);
}

int InStrRev(std::wstring_view s, std::wstring_view find, long long start) {
    if (start == 0 || start < -1) Raise(kInvalidCall);
    if (s.empty()) return 0;
    if (start == -1) start = static_cast<long long>(s.size());
    if (static_cast<unsigned long long>(start) > s.size()) return 0;
    if (find.empty()) return static_cast<int>(start);
    if (find.size() > static_cast<size_t>(start)) return 0;
    size_t pos = s.rfind(find, static_cast<size_t>(start) - find.size());
    return pos == std::wstring_view::npos ? 0 : static_cast<int>(pos + 1);
}

std::wstring UCase(std::wstring_view s) {
    std::wstring out(s);
    for (wchar_t& c : out) c = ToUpper(c);
    return out;
}

std::wstring LCase(std::wstring_view s) {
    std::wstring out(s);
    for (wchar_t& c : out) c = ToLower(c);
    return out;
}

std::wstring LTrim(std::wstring_view s) {
    size_t b = s.find_first_not_of(L' ');
    return b == std::wstring_view::npos ? std::wstring() : std::wstring(s.substr(b));
}

std::wstring RTrim(std::wstring_view s) {
    size_t e = s.find_last_not_of(L' ');
    return e == std::wstring_view::npos ? std::wstring() : std::wstring(s.substr(0, e + 1));
}

std::wstring Trim(std::wstring_view s) {
    return LTrim(RTrim(s));
}

std::wstring Replace(std::wstring_view s, std::wstring_view find, std::wstring_view repl) {
    if (find.empty()) return std::wstring(s);
    std::wstring out;
    size_t from = 0;
    for (size_t pos; (pos = s.find(find, from)) != std::wstring_view::npos;) {
        out.append(s.substr(from, pos - from)).append(repl);
        from = pos + find.size();
    }
    out.append(s.substr(from));
    return out;
}

std::wstring Space(long long n) {
    return String(n, L' ');
}

std::wstring String(long long n, wchar_t ch) {
    CheckCount(n);
    return std::wstring(static_cast<size_t>(n), ch);
}

std::wstring String(long long n, std::wstring_view ch) {
    if (ch.empty()) Raise(kInvalidCall);
    return String(n, ch[0]);
}

int Asc(std::wstring_view s) {
    if (s.empty()) Raise(kInvalidCall);
    return static_cast<unsigned char>(ToAnsi(s.substr(0, 1))[0]);
}

std::wstring Chr(int code) {
    if (code < 0 || code > 255) Raise(kInvalidCall);
    return FromAnsi(std::string(1, static_cast<char>(code)));
}

int AscW(std::wstring_view s) {
    if (s.empty()) Raise(kInvalidCall);
    return static_cast<int>(Code(s[0]) & 0xFFFF);
}

std::wstring ChrW(int code) {
    if (code < -32768 || code > 65535) Raise(kInvalidCall);
    return std::wstring(1, static_cast<wchar_t>(code & 0xFFFF));
}

} // namespace rt
