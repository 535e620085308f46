#include "language/decode.h"

#include "runtime/errors.h"
#include "runtime/files.h"
#include "runtime/integer.h"
#include "runtime/strings.h"

#include <cstdio>
#include <stdexcept>

namespace mv {

namespace {

// Bytes a stored line must not hold: they would end the line, or the file, when read back.
constexpr int kForbidden[] = {0, 10, 13, 26};

int Byte(char c) {
    return static_cast<unsigned char>(c);
}

// The stored code of plain byte p (1..255) under key k (0..255).
int Scramble(int p, int k) {
    return (p - 1 + k) % 255 + 1;
}

} // namespace

std::string DecodeLigne(std::string_view line) {
    std::string digits;
    for (size_t i = 0; i < 3 && i < line.size(); ++i)
        digits.push_back(static_cast<char>(255 - Byte(line[i])));
    const int k = rt::CInt(255.0 - rt::Val(rt::FromCp1252(digits)));
    std::string out;
    out.reserve(line.size());
    for (size_t i = 3; i < line.size(); ++i) {
        const int c = Byte(line[i]);
        const int code = c - k > 0 ? c - k : c - k + 255;
        if (code < 0 || code > 255) rt::Raise(rt::kInvalidCall);
        out.push_back(static_cast<char>(code));
    }
    return out;
}

std::string EncodeLigne(std::string_view plain, int key) {
    if (key < 0 || key > 255) throw std::invalid_argument("EncodeLigne: key out of 0..255");
    char digits[4];
    std::snprintf(digits, sizeof digits, "%03d", 255 - key);
    std::string out;
    out.reserve(plain.size() + 3);
    for (int i = 0; i < 3; ++i) out.push_back(static_cast<char>(255 - Byte(digits[i])));
    for (char ch : plain) {
        if (ch == 0) throw std::invalid_argument("EncodeLigne: NUL byte in the line");
        out.push_back(static_cast<char>(Scramble(Byte(ch), key)));
    }
    return out;
}

int ChoisirCle(std::string_view plain, uint32_t seed) {
    bool present[256] = {};
    for (char ch : plain) present[Byte(ch)] = true;
    if (present[0]) return -1;
    // The key prefix is made of bytes 198..207, never forbidden; only the text can block a key.
    uint32_t h = seed * 2654435761u;
    h ^= h >> 15;
    h *= 2246822519u;
    h ^= h >> 13;
    const int start = int(h & 255);
    for (int i = 0; i < 256; ++i) {
        const int k = (start + i) & 255;
        bool ok = true;
        for (int p = 1; p < 256 && ok; ++p) {
            if (!present[p]) continue;
            const int c = Scramble(p, k);
            for (int f : kForbidden) ok = ok && c != f;
        }
        if (ok) return k;
    }
    return -1;
}

std::string ScrambleSource(std::string_view utf8) {
    if (utf8.substr(0, 3) == "\xEF\xBB\xBF") utf8.remove_prefix(3);
    std::string out;
    uint32_t number = 0;
    size_t pos = 0;
    while (pos < utf8.size()) {
        size_t end = utf8.find_first_of("\r\n", pos);
        if (end == std::string_view::npos) end = utf8.size();
        const std::string_view source = utf8.substr(pos, end - pos);
        // CR, LF or a CR LF pair ends a line, as the program's line reading has it.
        pos = end;
        if (pos < utf8.size() && utf8[pos++] == '\r' && pos < utf8.size() && utf8[pos] == '\n')
            ++pos;
        ++number;
        const std::string where = "line " + std::to_string(number) + ": ";
        const std::wstring wide = rt::FromUtf8(source);
        for (wchar_t w : wide) {
            const std::wstring one(1, w);
            if (w == 0 || rt::FromCp1252(rt::ToCp1252(one)) != one) {
                char code[16];
                std::snprintf(code, sizeof code, "U+%04X", unsigned(w));
                throw std::runtime_error(
                    where + "character " + code +
                    (w == 0 ? " (NUL) cannot be stored" : " has no Windows-1252 byte"));
            }
        }
        const std::string plain = rt::ToCp1252(wide);
        const int key = ChoisirCle(plain, number);
        if (key < 0) throw std::runtime_error(where + "too many different characters for a key");
        out += EncodeLigne(plain, key);
        out += "\r\n";
    }
    return out;
}

} // namespace mv
