// The language files: line scrambling, the reading of a file into the tables, and the two
// files the program ships with.
#include "language/charge.h"
#include "language/decode.h"
#include "runtime/errors.h"
#include "runtime/files.h"
#include "runtime/line_input.h"
#include "test_util.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using mv::DecodeLigne;
using mv::EncodeLigne;

std::vector<uint8_t> Bytes(const std::string& s) {
    return {s.begin(), s.end()};
}

// A stored file from plain Windows-1252 lines, each under the key its line number draws.
std::vector<uint8_t> Stocke(const std::vector<std::string>& lignes) {
    std::string out;
    uint32_t n = 0;
    for (const std::string& l : lignes) {
        const int key = mv::ChoisirCle(l, ++n);
        if (key < 0) throw std::logic_error("no key");
        out += EncodeLigne(l, key) + "\r\n";
    }
    return Bytes(out);
}

std::string Num(int n) {
    char b[16];
    std::snprintf(b, sizeof b, "%03d", n);
    return b;
}

// A well-formed file: `entries` entries, the tips, the help pages, 35 menu-help lines.
struct Fichier {
    std::vector<std::string> entrees, bulles, aide, menu;
    explicit Fichier(int entries = 3) {
        for (int n = 0; n < entries; ++n)
            entrees.push_back(Num(n) + " Name(" + std::to_string(n) + ") = \"E" +
                              std::to_string(n) + "\"");
        bulles = {"\"tip one\"", "\"tip two\""};
        aide = {"\"page 0\"", "\"page 1\""};
        for (int i = 0; i < 35; ++i) menu.push_back("\"menu " + std::to_string(i) + "\"");
    }
    std::vector<std::string> Lignes() const {
        std::vector<std::string> l = entrees;
        l.emplace_back("///--- TOOLTYP and anything");
        l.insert(l.end(), bulles.begin(), bulles.end());
        l.emplace_back("///--- HELP --");
        l.insert(l.end(), aide.begin(), aide.end());
        l.emplace_back("///--- HELP ME");
        l.insert(l.end(), menu.begin(), menu.end());
        return l;
    }
    std::vector<uint8_t> Octets() const { return Stocke(Lignes()); }
};

TEST(LanguageScrambling, DecodeKnownLinesAndOddKeys) {
    // Key 5 is stored as the digits "250", each as 255 minus its code; c - k at or below 0
    // wraps by 255 (3 gives 253, the key itself 255). "255" is key 0, "000" key 255; digits
    // that are no number read as 0 (key 255); Val reads on past blanks ("2 5" is key 230).
    const std::string k5 = "\xCD\xCA\xCF", abc = "abc";
    const std::pair<std::string, std::string> cases[] = {
        {k5 + "Mjqqt", "Hello"},
        {k5 + "\x03\x05\x06", "\xFD\xFF\x01"},
        {"\xCD\xCA\xCA" + abc, abc},
        {"\xCF\xCF\xCF" + abc, abc},
        {"\x9E\x9D\x9C" + abc, abc},
        {"\xCD\xDF\xCA" + EncodeLigne("Hello", 230).substr(3), "Hello"},
        {"", ""},
        {"\xCD", ""},
        {k5, ""}};
    for (const auto& [stored, plain] : cases) EXPECT_EQ(DecodeLigne(stored), plain) << plain;
    // A key out of reach: "300" gives k = -45, so 250 + 45 is no character (5); "9E9"
    // overflows the Integer key (6).
    EXPECT_EQ(ErrorOf([] { DecodeLigne(std::string("\xCC\xCF\xCF") + "a\xFA"); }), 5);
    EXPECT_EQ(ErrorOf([] { DecodeLigne("\xC6\xBA\xC6"); }), 6);
}

TEST(LanguageScrambling, EveryKeyAndByteRoundTripsAndChosenKeysAvoidLineEnds) {
    std::string all;
    for (int b = 1; b <= 255; ++b) all.push_back(char(b));
    for (int key = 0; key <= 255; ++key) {
        const std::string stored = EncodeLigne(all, key);
        ASSERT_EQ(stored.size(), all.size() + 3);
        ASSERT_EQ(DecodeLigne(stored), all) << "key " << key;
    }

    // Every single byte, and lines of up to 84 different bytes, find a key whose stored
    // line holds no NUL, LF, CR or 26, and read back.
    auto clean = [](const std::string& s) {
        return s.find_first_of(std::string("\0\n\r\x1A", 4)) == std::string::npos;
    };
    uint32_t rnd = 12345;
    for (int b = 1; b <= 255; ++b) {
        for (uint32_t seed : {1u, 77u, 4000000000u}) {
            std::string line(1, char(b));
            if (b > 1) {
                for (int i = 0; i < 83; ++i) {
                    rnd = rnd * 1103515245u + 12345u;
                    line.push_back(char(1 + (rnd >> 16) % 255));
                }
            }
            const int key = mv::ChoisirCle(line, seed);
            ASSERT_GE(key, 0) << b;
            const std::string stored = EncodeLigne(line, key);
            ASSERT_TRUE(clean(stored)) << "byte " << b << " key " << key;
            ASSERT_EQ(DecodeLigne(stored), line);
        }
    }
    // No key for a NUL, nor for a line of every byte.
    EXPECT_EQ(mv::ChoisirCle(std::string("a\0", 2), 1), -1);
    EXPECT_EQ(mv::ChoisirCle(all, 1), -1);
}

TEST(LanguageScrambling, SourceFileBecomesStoredLines) {
    // A byte order mark is skipped; LF, CR LF and CR end lines; é and € have bytes.
    const std::string stored = mv::ScrambleSource("\xEF\xBB\xBF"
                                                  "000 a = \"caf\xC3\xA9\"\r\n\n"
                                                  "\xE2\x82\xAC\rlast");
    rt::LineInput in(stored);
    EXPECT_EQ(DecodeLigne(in.Next()), "000 a = \"caf\xE9\"");
    EXPECT_EQ(DecodeLigne(in.Next()), "");
    EXPECT_EQ(DecodeLigne(in.Next()), "\x80");
    EXPECT_EQ(DecodeLigne(in.Next()), "last");
    EXPECT_TRUE(in.Eof());
    // An arrow has no Windows-1252 byte: the message names the line and the character.
    try {
        mv::ScrambleSource("ok\nleft \xE2\x86\x90 right\n");
        FAIL() << "no error";
    } catch (const std::runtime_error& e) {
        EXPECT_NE(std::string(e.what()).find("line 2"), std::string::npos) << e.what();
        EXPECT_NE(std::string(e.what()).find("U+2190"), std::string::npos) << e.what();
    }
    EXPECT_THROW(mv::ScrambleSource(std::string("a\0b", 3)), std::runtime_error);
}

TEST(LanguageFile, LineInputEndsAndSpokenCode) {
    // CR or CR LF end a line; a lone LF is part of it.
    rt::LineInput in("a\rb\nc\r\n\r\nd\n\re");
    for (const char* want : {"a", "b\nc", "", "d\n", "e"}) EXPECT_EQ(in.Next(), want);
    EXPECT_EQ(ErrorOf([&] { in.Next(); }), rt::kInputPastEnd);

    EXPECT_EQ(mv::SpokenCode(Bytes("ConstPRJF\r\nmore\r\n")), L"ConstPRJF");
    EXPECT_EQ(ErrorOf([] { mv::SpokenCode({}); }), rt::kInputPastEnd);
}

TEST(LanguageFile, WellFormedFileFillsEveryTable) {
    Fichier f(301);
    f.entrees[7] = "007 Label = \"d\xE9j\xE0 \x80 5\" and \"not this\"";
    f.menu[34] = "\"last menu\"";
    std::vector<std::string> lignes = f.Lignes();
    lignes.emplace_back("anything after the menu help is not read: \"x");
    mv::Language lang;
    const mv::LoadResult r = mv::ChargerLangue(lang, Stocke(lignes));
    ASSERT_TRUE(r);
    EXPECT_EQ(r.entries, 301);
    EXPECT_EQ(lang.Entry(7), L"d\u00E9j\u00E0 \u20AC 5");
    EXPECT_EQ(lang.Entry(300), L"E300");
    EXPECT_EQ(lang.AideMenu(1, 0), L"menu 7");
    EXPECT_EQ(lang.AideMenu(4, 6), L"last menu");
    EXPECT_EQ(ErrorOf([&] { lang.AideMenu(5, 0); }), 9);
    EXPECT_EQ(ErrorOf([&] { lang.Aide(101); }), 9);
}

TEST(LanguageFile, NumberOutOfSequenceIsPermanentError) {
    for (const char* faute : {"003 skipped = \"x\"", "001 again = \"x\"", "", "x2 = \"x\""}) {
        Fichier f(6);
        f.entrees[2] = faute;
        mv::Language lang;
        const mv::LoadResult r = mv::ChargerLangue(lang, f.Octets());
        EXPECT_FALSE(r) << faute;
        EXPECT_TRUE(r.permanentError);
        EXPECT_EQ(r.entries, 2);
        EXPECT_EQ(lang.Entry(1), L"E1");
        EXPECT_EQ(lang.Entry(3), L"");
        EXPECT_EQ(lang.Aide(0), L"");
    }
}

TEST(LanguageFile, ValueRules) {
    Fichier f(6);
    f.entrees[0] = "000 empty = \"\"";
    f.entrees[1] = "001 none = no quotes";
    f.entrees[2] = "002 one = \"half";
    f.entrees[3] = R"(003 = """)";      // the first two quotes: empty
    f.entrees[4] = R"(004 = x"a"b"c")"; // from the first quote to the second
    f.bulles = {"no value here", "\"first\"", "", "\"second\"", "only \" one"};
    f.aide = {"\"p0\"", "nothing", "\"p2\""};
    f.menu[3] = "no menu value";
    mv::Language lang;
    lang.TabConst[0] = L"old";
    lang.TabConst[1] = L"kept";
    lang.TabConst[2] = L"kept too";
    lang.TabAide[1] = L"page kept";
    lang.TabAideMenu[0][3] = L"menu kept";
    ASSERT_TRUE(mv::ChargerLangue(lang, f.Octets()));
    EXPECT_EQ(lang.Entry(0), L"");
    EXPECT_EQ(lang.Entry(1), L"kept");
    EXPECT_EQ(lang.Entry(2), L"kept too");
    EXPECT_EQ(lang.Entry(3), L"");
    EXPECT_EQ(lang.Entry(4), L"a");
    // A tip line without a value adds the value before it again: the first one repeats the
    // last entry's.
    EXPECT_EQ(lang.TabBulles,
              (std::vector<std::wstring>{L"E5", L"first", L"first", L"second", L"second"}));
    // A help line without a value keeps its page and still takes its place.
    EXPECT_EQ(lang.Aide(1), L"page kept");
    EXPECT_EQ(lang.Aide(2), L"p2");
    EXPECT_EQ(lang.AideMenu(0, 3), L"menu kept");
    EXPECT_EQ(lang.AideMenu(0, 4), L"menu 4");
}

TEST(LanguageFile, EntriesAndTipsCutAt500CharactersAndTipsAreBounded) {
    Fichier f(3);
    // The closing quote at character 500 is inside the buffer; at 501 it is cut off.
    f.entrees[1] = "001 = \"" + std::string(492, 'a') + "\"";
    f.entrees[2] = "002 = \"" + std::string(493, 'b') + "\"";
    f.bulles = {"\"" + std::string(498, 'c') + "\"", "\"" + std::string(499, 'd') + "\""};
    // Help pages and menu help have no such limit.
    f.aide = {"\"" + std::string(1200, 'e') + "\""};
    f.menu[0] = "\"" + std::string(800, 'f') + "\"";
    mv::Language lang;
    ASSERT_TRUE(mv::ChargerLangue(lang, f.Octets()));
    EXPECT_EQ(lang.Entry(1), std::wstring(492, L'a'));
    EXPECT_EQ(lang.Entry(2), L"");
    EXPECT_EQ(lang.TabBulles, std::vector<std::wstring>(2, std::wstring(498, L'c')));
    EXPECT_EQ(lang.Aide(0), std::wstring(1200, L'e'));
    EXPECT_EQ(lang.AideMenu(0, 0), std::wstring(800, L'f'));

    // Each empty line of the tips section repeats the last tip: a flood of them costs a
    // bounded memory, and the help after it is still read.
    f.bulles = {"\"" + std::string(400, 't') + "\""};
    f.bulles.resize(20000);
    f.aide = {"\"page\""};
    mv::Language flot;
    ASSERT_TRUE(mv::ChargerLangue(flot, f.Octets()));
    EXPECT_EQ(flot.TabBulles.size(), size_t(mv::kMaxBulles));
    EXPECT_EQ(flot.TabBulles.back(), std::wstring(400, L't'));
    EXPECT_EQ(flot.Aide(0), L"page");
}

TEST(LanguageFile, ShortFilesRaise62AndLongTablesRaise9) {
    auto charge = [](const std::vector<uint8_t>& b) {
        return ErrorOf([&] {
            mv::Language lang;
            mv::ChargerLangue(lang, b);
        });
    };
    EXPECT_EQ(charge({}), rt::kInputPastEnd);
    const std::vector<std::string> complet = Fichier(4).Lignes();
    // Every cut short of the last menu-help line ends in 62.
    for (size_t n = 1; n < complet.size(); ++n) {
        const std::vector<std::string> debut(complet.begin(), complet.begin() + long(n));
        EXPECT_EQ(charge(Stocke(debut)), rt::kInputPastEnd) << n << " lines";
    }
    EXPECT_EQ(charge(Stocke(complet)), 0);

    Fichier entrees(302);
    EXPECT_EQ(charge(entrees.Octets()), rt::kSubscriptOutOfRange);
    // Entry 301 without a value stores nothing: no error.
    entrees.entrees[301] = "301 no value";
    EXPECT_EQ(charge(entrees.Octets()), 0);

    // 101 pages fill the 101 places (the marker line holds no value); one page more does
    // not.
    Fichier aide(2);
    aide.aide.assign(101, "\"page\"");
    EXPECT_EQ(charge(aide.Octets()), 0);
    aide.aide.emplace_back("\"one too many\"");
    EXPECT_EQ(charge(aide.Octets()), rt::kSubscriptOutOfRange);
}

std::string ReadText(const std::filesystem::path& p) {
    std::ifstream in(p, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(LanguageFile, ShippedFilesReadBackWhole) {
    std::vector<mv::Language> langues;
    for (const char* name : {"ConstPRJA", "ConstPRJF"}) {
        SCOPED_TRACE(name);
        const std::string source = ReadText(std::filesystem::path(MIROVANTA_SOURCE_DIR) / "assets" /
                                            "lang" / (std::string(name) + ".txt"));
        ASSERT_FALSE(source.empty());
        const std::string stored = mv::ScrambleSource(source);
        mv::Language lang;
        const mv::LoadResult r = mv::ChargerLangue(lang, Bytes(stored));
        EXPECT_TRUE(r);
        EXPECT_GE(r.entries, mv::kEntriesRead);
        EXPECT_FALSE(lang.TabBulles.empty());
        EXPECT_FALSE(lang.AideMenu(4, 6).empty());
        // The full-screen word must fit the 11 characters a thumbnail caption compares.
        EXPECT_LE(lang.Entry(109).size(), 11u);

        // The installed file is the one built from the current source.
        EXPECT_EQ(ReadText(std::filesystem::path(MIROVANTA_ASSET_DIR) /
                           (std::string(name) + "_codN.txt")),
                  stored);
        langues.push_back(lang);
    }
    // An entry written in one language is written in the other.
    for (int e = 0; e <= 300; ++e)
        EXPECT_EQ(langues[0].Entry(e).empty(), langues[1].Entry(e).empty()) << "entry " << e;
}

} // namespace
