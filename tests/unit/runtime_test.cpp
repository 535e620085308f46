// Behaviour of the runtime layer: the semantics the program inherits from the original
// language runtime.
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/files.h"
#include "runtime/integer.h"
#include "runtime/random.h"
#include "runtime/strings.h"
#include "test_util.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>

namespace {

TEST(RuntimeErrors, NumberTextAndWhat) {
    rt::RuntimeError e(53);
    EXPECT_EQ(e.text, L"File not found");
    EXPECT_STREQ(e.what(), "Run-time error 53");
    EXPECT_EQ(rt::ErrorText(12345), L"Application-defined or object-defined error");
}

TEST(RuntimeInteger, BankersRoundingAndOverflow) {
    // Half to even; -32768.5 rounds to the even -32768, still in range.
    const std::pair<double, int> cints[] = {{2.5, 2},         {3.5, 4},          {-2.5, -2},
                                            {-3.5, -4},       {2.5000001, 3},    {-0.4, 0},
                                            {32767.4, 32767}, {-32768.5, -32768}};
    for (auto [v, want] : cints) EXPECT_EQ(rt::CInt(v), want) << v;
    for (double v : {32767.5, -32769.0, std::nan("")})
        EXPECT_EQ(ErrorOf([v] { rt::CInt(v); }), 6) << v;
    EXPECT_EQ(rt::I16(-32768), -32768);
    EXPECT_EQ(ErrorOf([] { rt::I16(32767LL + 1); }), 6);
    EXPECT_EQ(rt::CLng(1e9 + 0.5), 1000000000);
    EXPECT_EQ(ErrorOf([] { rt::CLng(2147483647.5); }), 6);
    EXPECT_EQ(rt::Fix(-2.7), -2);
    EXPECT_EQ(rt::Int(-2.2), -3);
}

TEST(RuntimeStrings, PositionsAndErrors) {
    EXPECT_EQ(rt::Left(L"abc", 5), L"abc");
    EXPECT_EQ(rt::Mid(L"abcdef", 2, 3), L"bcd");
    EXPECT_EQ(rt::Mid(L"abc", 4), L"");
    EXPECT_EQ(rt::Mid(L"abc", 2, 0), L"");
    EXPECT_EQ(ErrorOf([] { rt::Mid(L"abc", 0); }), 5);
    EXPECT_EQ(ErrorOf([] { rt::Mid(L"abc", 1, -1); }), 5);
    EXPECT_EQ(ErrorOf([] { rt::Left(L"abc", -1); }), 5);
    EXPECT_EQ(rt::InStr(L"a.b.c", L"."), 2);
    EXPECT_EQ(rt::InStr(3, L"a.b.c", L"."), 4);
    EXPECT_EQ(rt::InStr(9, L"abc", L"a"), 0);
    EXPECT_EQ(ErrorOf([] { rt::InStr(0, L"abc", L"a"); }), 5);
    EXPECT_EQ(rt::InStrRev(L"a\\b\\c.bmp", L"\\"), 4);
    EXPECT_EQ(rt::InStrRev(L"a\\b\\c.bmp", L"\\", 3), 2);
    EXPECT_EQ(rt::InStrRev(L"abab", L"ab", 3), 1); // a match must end by start
    EXPECT_EQ(ErrorOf([] { rt::InStrRev(L"abc", L"a", 0); }), 5);
    EXPECT_EQ(rt::Trim(L" \tx  "), L"\tx");
    EXPECT_EQ(rt::Replace(L"aaa", L"aa", L"b"), L"ba");
    EXPECT_EQ(rt::UCase(L"café ÿ ĳ ž я"), L"CAFÉ Ÿ Ĳ Ž Я");
    EXPECT_EQ(rt::LCase(L"CAFÉ Ÿ Ĳ Ž Я ×"), L"café ÿ ĳ ž я ×");
    EXPECT_EQ(rt::String(3, L"xy"), L"xxx");
    EXPECT_EQ(ErrorOf([] { rt::Space(-1); }), 5);
    EXPECT_EQ(rt::Asc(L"€"), 0x80);
    EXPECT_EQ(rt::Chr(0x80), L"€");
}

// Blanks inside the number are skipped, CR is no blank, an exponent without digits is
// ignored, &H of four digits is a 16-bit Integer unless '&' follows.
TEST(RuntimeVal, LeadingNumberRule) {
    const std::pair<const wchar_t*, double> cases[] = {
        {L" 1 2 3abc", 123}, {L"7Capt", 7},        {L"2E3", 2000},
        {L"2d-1", 0.2},      {L"E5", 0},           {L"", 0},
        {L"-", 0},           {L"\t- 4.5.6", -4.5}, {L"+.5", 0.5},
        {L"1e", 1},          {L"1e+x", 1},         {L"12,5", 12},
        {L"--5", 0},         {L"1\r\n2", 1},       {L"&HFF", 255},
        {L"&hFFFF", -1},     {L"&HFFFF&", 65535},  {L"&H10000", 65536},
        {L"&O17x", 15},      {L"&X1", 0},          {L"1e-400", 0}};
    for (auto [text, want] : cases) EXPECT_EQ(rt::Val(text), want) << rt::ToUtf8(text);
    for (const wchar_t* text : {L"1e400", L"&H123456789"})
        EXPECT_EQ(ErrorOf([text] { rt::Val(text); }), 6) << rt::ToUtf8(text);
}

// Fifteen significant digits; a blank before a non-negative value, no zero before the point.
TEST(RuntimeStr, LeadingBlankAndDigits) {
    EXPECT_EQ(rt::Str(420), L" 420");
    EXPECT_EQ(rt::Str(-3), L"-3");
    EXPECT_EQ(rt::Str(1.5), L" 1.5");
    EXPECT_EQ(rt::Str(0.25), L" .25");
    EXPECT_EQ(rt::Str(-0.25), L"-.25");
    EXPECT_EQ(rt::Str(-0.0), L" 0");
    EXPECT_EQ(rt::Str(0.1 + 0.2), L" .3"); // 15 significant digits
    EXPECT_EQ(rt::Str(123456789012345.0), L" 123456789012345");
    EXPECT_EQ(rt::Str(1234567890123456.0), L" 1.23456789012346E+15");
    EXPECT_EQ(rt::Str(0.0001), L" .0001");
    EXPECT_EQ(rt::Str(0.00001), L" 1E-05");
    EXPECT_EQ(rt::CStr(0.25), L"0.25");
}

TEST(RuntimeFormat, WideningAndRounding) {
    EXPECT_EQ(rt::Format(7, L"00"), L"07");
    EXPECT_EQ(rt::Format(1000, L"000"), L"1000");
    EXPECT_EQ(rt::Format(-5, L"000"), L"-005");
    EXPECT_EQ(rt::Format(2.5, L"0"), L"3"); // half away from zero, unlike CInt
    EXPECT_EQ(rt::Format(-2.5, L"0"), L"-3");
    EXPECT_EQ(rt::Format(9.96, L"0.0"), L"10.0");
    EXPECT_EQ(rt::Format(2.675, L"0.00"), L"2.68"); // on the decimal digits, not the binary
    EXPECT_EQ(rt::Format(1.5, L"###00.000"), L"01.500");
    EXPECT_EQ(rt::Format(123456.78949, L"###00.000"), L"123456.789");
    EXPECT_EQ(rt::Format(0.5, L"#.##"), L".5");
    EXPECT_EQ(rt::Format(3, L"#.##"), L"3.");
    EXPECT_EQ(rt::Format(1234567, L"#,##0"), L"1,234,567");
    EXPECT_EQ(rt::Format(1500, L"0,.0"), L"1.5");
    EXPECT_EQ(rt::Format(0.256, L"0%"), L"26%");
    EXPECT_EQ(rt::Format(1234, L"00-00"), L"12-34");
    EXPECT_EQ(rt::Format(5, L"\"n=\"0"), L"n=5");
    EXPECT_EQ(rt::Format(-2, L"0;(0)"), L"(2)");
    EXPECT_EQ(rt::Format(0, L"0;(0);zero"), L"zero");
    EXPECT_EQ(rt::Format(1e20, L"0"), L"100000000000000000000");
}

TEST(RuntimeFormat, TimePictures) {
    rt::SystemTime t{2024, 3, 9, 9, 5, 7, 250};
    EXPECT_EQ(rt::FormatTime(t, L"hh:mm:ss"), L"09:05:07");
    EXPECT_EQ(rt::FormatTime(t, L"nn"), L"05");
    EXPECT_EQ(rt::FormatTime(t, L"mm"), L"03"); // alone, mm is the month
    EXPECT_EQ(rt::FormatTime(t, L"mm:ss"), L"05:07");
    EXPECT_EQ(rt::FormatTime(t, L"yyyymmdd_hhnnss"), L"20240309_090507");
    EXPECT_EQ(rt::FormatTime(t, L"dd/mm/yy"), L"09/03/24");
    EXPECT_EQ(rt::FormatTime(t, L"ddd d mmm"), L"Sat 9 Mar");
    rt::SystemTime pm{2024, 12, 31, 12, 30, 0, 0};
    EXPECT_EQ(rt::FormatTime(pm, L"h:nn AM/PM"), L"12:30 PM");
    EXPECT_EQ(rt::FormatTime(pm, L"h a/p"), L"12 p");
    EXPECT_EQ(rt::FormatTime(pm, L"H\\h \"y\"y"), L"12h y366");
}

TEST(RuntimeClock, TimerAndLocaleTexts) {
    rt::SystemTime t{2024, 3, 9, 0, 5, 7, 250};
    EXPECT_DOUBLE_EQ(rt::SecondsSinceMidnight(t), 307.25);
    EXPECT_EQ(rt::TimeText(t, L"HH:mm:ss"), L"00:05:07");
    EXPECT_EQ(rt::TimeText(t, L"h:mm:ss tt"), L"12:05:07 AM");
    rt::SystemTime pm{2024, 3, 9, 23, 59, 58, 0};
    EXPECT_EQ(rt::TimeText(pm, L"hh:mm:ss tt"), L"11:59:58 PM");
    EXPECT_EQ(rt::TimeText(pm, L"H'h'mm t"), L"23h59 P");
    EXPECT_EQ(rt::DateText(t, L"dd/MM/yyyy"), L"09/03/2024");
    EXPECT_EQ(rt::DateText(t, L"d/M/yyyy"), L"9/3/2024");
    EXPECT_EQ(rt::DateText(t, L"M/d/yy"), L"3/9/24");
    EXPECT_EQ(rt::DateText(t, L"dddd d MMMM 'de l''an' yyyy"), L"Saturday 9 March de l'an 2024");
    EXPECT_EQ(rt::DayOfWeek(2000, 1, 1), 6);
    EXPECT_EQ(rt::DayOfWeek(2024, 2, 29), 4);
}

TEST(RuntimeRandom, OriginalSequence) {
    rt::Random r;
    EXPECT_NEAR(r.Rnd(), 0.7055475, 1e-7); // the well-known first numbers without Randomize
    EXPECT_NEAR(r.Rnd(), 0.533424, 1e-6);
    EXPECT_EQ(r.Rnd(0), r.Rnd(0));
    EXPECT_NEAR(r.Rnd(-1), 0.224007, 1e-6);
    auto first = [](double seed) {
        rt::Random g;
        g.Randomize(seed);
        return std::make_pair(g.Rnd(), g.Rnd());
    };
    EXPECT_EQ(first(30000.5), first(30000.5));
    EXPECT_NE(first(30000.5), first(30001.5));
    EXPECT_NE(first(1), first(2));
    for (int i = 0; i < 1000; ++i) {
        float v = r.Rnd();
        ASSERT_TRUE(v >= 0 && v < 1);
    }
}

TEST(RuntimeText, Encodings) {
    const std::wstring text = L"é€\u6f22\U0001F600"; // a surrogate pair where wchar_t is 16-bit
    EXPECT_EQ(rt::ToUtf8(text), "\xC3\xA9\xE2\x82\xAC\xE6\xBC\xA2\xF0\x9F\x98\x80");
    EXPECT_EQ(rt::FromUtf8(rt::ToUtf8(text)), text);
    EXPECT_EQ(rt::FromUtf8("a\xC0\xAF"
                           "b\xE2\x82"),
              L"a\uFFFD\uFFFDb\uFFFD\uFFFD");
    EXPECT_EQ(rt::FromUtf8("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD"); // encoded surrogate
    EXPECT_EQ(rt::ToCp1252(L"é€Ÿ\u6f22\u0081"), "\xE9\x80\x9F?\x81");
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    EXPECT_EQ(rt::ToCp1252(rt::FromCp1252(all)), all);
    EXPECT_EQ(rt::FromCp1252("\x80\x92"), L"€’");

    // The system page decides the settings' bytes and Asc/Chr; the language tool's stays.
    rt::AnsiCodePage page = rt::Cp1252Page();
    page.high[0x23] = 0x0141; // Ł, as in Windows-1250
    rt::SetAnsiCodePage(page);
    EXPECT_EQ(rt::ToAnsi(L"\u0141\u00A3"), "\xA3?");
    EXPECT_EQ(rt::FromAnsi("\xA3"), L"\u0141");
    EXPECT_TRUE(rt::AnsiHolds(L"\u0141\u20AC"));
    EXPECT_FALSE(rt::AnsiHolds(L"\u00A3"));
    EXPECT_EQ(rt::Asc(L"\u0141"), 0xA3);
    EXPECT_EQ(rt::Chr(0xA3), L"\u0141");
    EXPECT_EQ(rt::ToCp1252(L"\u00A3"), "\xA3");
    rt::SetAnsiCodePage(rt::Cp1252Page());
    EXPECT_EQ(rt::Chr(0xA3), L"\u00A3");
}

class RuntimeFiles : public ::testing::Test {
protected:
    void SetUp() override {
        dir_ = std::filesystem::temp_directory_path() /
               // Its own folder per test: ctest runs the tests of this suite side by side.
               ("mirovanta_rt_" +
                std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + "_" +
                std::to_string(reinterpret_cast<uintptr_t>(this)));
        std::filesystem::remove_all(dir_);
        std::filesystem::create_directories(dir_);
    }
    void TearDown() override {
        std::error_code ec;
        std::filesystem::permissions(dir_ / "ro", std::filesystem::perms::owner_all, ec);
        std::filesystem::remove_all(dir_, ec);
    }
    // A path in the program's form: backslashes between folders.
    std::wstring P(const std::wstring& name) const {
        std::wstring base = rt::FromUtf8(dir_.string());
        std::replace(base.begin(), base.end(), L'/', L'\\');
        return base + L"\\" + name;
    }
    std::filesystem::path dir_;
};

TEST_F(RuntimeFiles, ReadWriteAndErrors) {
    const std::wstring name = P(L"café_\u6f22.txt");
    const char bytes[] = "line\r\n\x80";
    rt::WriteFileBytes(name, bytes, 7);
    EXPECT_TRUE(std::filesystem::exists(dir_ / "caf\xC3\xA9_\xE6\xBC\xA2.txt"));
    EXPECT_TRUE(rt::FileExists(name));
    EXPECT_FALSE(rt::DirExists(name));
    EXPECT_EQ(rt::ReadFileBytes(name), std::vector<uint8_t>(bytes, bytes + 7));
    rt::WriteFileBytes(name, "x", 1); // replaces, does not append
    EXPECT_EQ(rt::ReadFileBytes(name).size(), 1u);
    rt::WriteFileBytes(name, nullptr, 0);
    EXPECT_TRUE(rt::ReadFileBytes(name).empty());

    EXPECT_EQ(ErrorOf([&] { rt::ReadFileBytes(P(L"missing.bmp")); }), 53);
    EXPECT_EQ(ErrorOf([&] { rt::ReadFileBytes(P(L"")); }), 75); // the folder itself
    EXPECT_EQ(ErrorOf([&] { rt::WriteFileBytes(P(L"nofolder\\a.txt"), "x", 1); }), 76);
    EXPECT_EQ(ErrorOf([&] { rt::WriteFileBytes(P(L""), "x", 1); }), 75);
#ifndef _WIN32
    EXPECT_EQ(ErrorOf([] { rt::WriteFileBytes(L"\\dev\\full", "x", 1); }), 61);
    std::filesystem::create_directory(dir_ / "ro");
    std::filesystem::permissions(dir_ / "ro", std::filesystem::perms::owner_read |
                                                  std::filesystem::perms::owner_exec);
    if (std::FILE* probe = std::fopen((dir_ / "ro" / "probe").string().c_str(), "wb")) {
        std::fclose(probe); // privileged user: permissions are not enforced
    } else {
        EXPECT_EQ(ErrorOf([&] { rt::WriteFileBytes(P(L"ro\\a.txt"), "x", 1); }), 70);
    }
#endif
}

TEST_F(RuntimeFiles, FoldersKillAndCopy) {
    const std::wstring sub = P(L"Vignettes_é");
    rt::MkDir(sub);
    EXPECT_TRUE(rt::DirExists(sub));
    EXPECT_TRUE(rt::DirExists(sub + L"\\"));
    EXPECT_FALSE(rt::FileExists(sub));
    EXPECT_EQ(ErrorOf([&] { rt::MkDir(sub); }), 75);
    EXPECT_EQ(ErrorOf([&] { rt::MkDir(P(L"no\\deeper")); }), 76);

    const std::wstring src = sub + L"\\\u6f22.bmp";
    rt::WriteFileBytes(src, "BM12", 4);
    EXPECT_EQ(ErrorOf([&] { rt::RmDir(sub); }), 75); // not empty
    const std::wstring dst = P(L"copy.bmp");
    rt::WriteFileBytes(dst, "older and longer", 16);
    rt::FileCopy(src, dst);
    EXPECT_EQ(rt::ReadFileBytes(dst), rt::ReadFileBytes(src));
    EXPECT_EQ(ErrorOf([&] { rt::FileCopy(P(L"none.bmp"), dst); }), 53);
    EXPECT_EQ(ErrorOf([&] { rt::FileCopy(src, P(L"none\\x.bmp")); }), 76);

    // Files and folders listed apart; a missing folder, or a file, lists nothing.
    const std::vector<std::wstring> fichiers = rt::FolderNames(P(L""), false);
    EXPECT_EQ(fichiers, std::vector<std::wstring>{L"copy.bmp"});
    EXPECT_EQ(rt::FolderNames(P(L""), true), std::vector<std::wstring>{L"Vignettes_é"});
    EXPECT_EQ(rt::FolderNames(sub, false), std::vector<std::wstring>{L"\u6f22.bmp"});
    EXPECT_TRUE(rt::FolderNames(sub, true).empty());
    EXPECT_TRUE(rt::FolderNames(P(L"none"), true).empty());
    EXPECT_TRUE(rt::FolderNames(dst, false).empty());
    EXPECT_NE(rt::FileWriteTicks(dst), 0);
    EXPECT_EQ(rt::FileWriteTicks(P(L"none.bmp")), 0);

    rt::Kill(src);
    EXPECT_FALSE(rt::FileExists(src));
    EXPECT_EQ(ErrorOf([&] { rt::Kill(src); }), 53);
    EXPECT_EQ(ErrorOf([&] { rt::Kill(sub); }), 53); // a folder is not a file
    rt::RmDir(sub + L"\\");
    EXPECT_FALSE(rt::DirExists(sub));
    EXPECT_EQ(ErrorOf([&] { rt::RmDir(sub); }), 76);
}

} // namespace
