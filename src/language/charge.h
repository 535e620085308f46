// Reading the language choice and the language file into the tables.
#pragma once

#include "language/language.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace mv {

// Entries 0 to 277 are read by the program: a language file holds at least this many entry
// lines, and at most 301, the size of TabConst.
inline constexpr int kEntriesRead = 287;

// What the caller shows, with the stop icon, when the file's entries are out of sequence.
inline constexpr wchar_t kPermanentError[] = L"Permanent Error ....";

struct LoadResult {
    // An entry line whose number is not the count of entries before it: reading stopped
    // there, the tables after the entries were not read.
    bool permanentError = false;
    // Entry lines taken before the tips marker (or before the faulty one).
    int entries = 0;
    explicit operator bool() const { return !permanentError; }
};

// Reads a language file (its stored, scrambled bytes) into lang, as the program does at
// start: the entries up to the "///--- TOOLTYP" line, the tips up to "///--- HELP --", the
// help pages up to and including "///--- HELP ME", then 35 lines of menu help, 5 groups of
// 7; anything after is not read. A value is the text between the first two double quotes,
// when the second lies after the first; a line with none leaves its slot as it was, and in
// the tips adds the previous value once more. Entry and tip lines are cut at 500 characters.
// Raises 62 when the file ends early, 9 when a value is stored past a table's end (entry
// 301, help page 101), and as DecodeLigne for a line with an unreadable key.
LoadResult ChargerLangue(Language& lang, std::span<const uint8_t> bytes);

// The most tips kept: a tips section of millions of lines is read through to its end, and
// the lines past this many are dropped.
inline constexpr int kMaxBulles = 4096;

// The first line of spoken.txt (62 when the file is empty). Its first nine characters name
// the language file: LanguageFileName.
std::wstring SpokenCode(std::span<const uint8_t> bytes);
// "<first nine characters of code>_codN.txt".
std::wstring LanguageFileName(const std::wstring& code);

} // namespace mv
