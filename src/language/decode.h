// Line scrambling of the language files. Each stored line starts with three characters that
// hold its key; the rest is a substitution of the text's byte codes under that key. Lines are
// Windows-1252 bytes on both sides.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mv {

// The line unscrambled. The first three characters, each turned into the character of code
// 255 minus its code, read with Val, give d; the key is k = 255 - d, held as a 16-bit Integer
// (rounded half to even; out of range raises 6). Each following character of code c becomes
// c - k when that is above 0, else c - k + 255; a result outside 0..255 raises 5, as Chr
// does. A line of three characters or fewer gives "" (Val of what is there, nothing after).
// Digits that do not read as a number give d = 0, so the key is 255: the rest comes out
// unchanged.
std::string DecodeLigne(std::string_view line);

// The inverse for key 0..255: DecodeLigne(EncodeLigne(plain, key)) == plain for any plain
// text of bytes 1..255. Throws std::invalid_argument for a key out of range or a NUL byte
// in plain (no stored byte decodes to NUL but under key 255 from a NUL).
std::string EncodeLigne(std::string_view plain, int key);

// A key (0..255) under which the scrambled line holds no NUL, LF, CR or 26 (end of file)
// byte, so that it reads back as one line; the search starts at a point drawn from seed and
// goes round, so the same seed and line always give the same key. -1 when there is none:
// plain holds a NUL, or so many distinct bytes (85 or more) that every key is blocked.
int ChoisirCle(std::string_view plain, uint32_t seed);

// A readable language source (UTF-8, one line each; a leading byte order mark is skipped;
// LF or CR LF ends a line) scrambled line by line as it is installed: Windows-1252 bytes,
// the key of line n (1-based) chosen with seed n, CR LF after every line. Throws
// std::runtime_error naming the line for a character with no Windows-1252 byte, a NUL, or
// a line no key can hold.
std::string ScrambleSource(std::string_view utf8);

} // namespace mv
