// Behaviour of the runtime layer: the semantics the program inherits from the original
// language runtime.
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/files.h"
#include "runtime/integer.h"
#include "runtime/strings.h"
#include "test_util.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <functional>

namespace {

TEST(RuntimeInteger, BankersRoundingAndOverflow) {
    // Half to even; -32768.5 rounds to the even -32768, still in range.
    const std::pair<double, int> cints[] = {{2.5, 2},         {3.5, 4},          {-2.5, -2},
                                            {-3.5, -4},       {2.5000001, 3},    {-0.4, 0},
                                            {32767.4, 32767}, {-32768.5, -32768}};
    for (auto [v, want] : cints) EXPECT_EQ(rt::CInt(v), want) << v;
    for (double v : {32767.5, -32769.0, std::nan("")})
        EXPECT_EQ(ErrorOf([v] { rt::CInt(v); }), 6) << v;
    EXPECT_EQ(ErrorOf([] { rt::I16(32767LL + 1); }), 6);
    EXPECT_EQ(ErrorOf([] { rt::CLng(2147483647.5); }), 6);
    EXPECT_EQ(rt::Int(-2.2), -3);
}

TEST(RuntimeStrings, PositionsAndErrors) {
    EXPECT_EQ(rt::Left(L"abc", 5), L"abc");
    EXPECT_EQ(rt::Mid(L"abc", 4), L"");
    EXPECT_EQ(rt::InStr(9, L"abc", L"a"), 0);
    EXPECT_EQ(rt::InStrRev(L"a\\b\\c.bmp", L"\\", 3), 2);
    EXPECT_EQ(rt::InStrRev(L"abab", L"ab", 3), 1); // a match must end by start
    // A start or length out of range is error 5.
    for (const auto& f : std::initializer_list<std::function<void()>>{
             [] { rt::Mid(L"abc", 0); }, [] { rt::Mid(L"abc", 1, -1); },
             [] { rt::Left(L"abc", -1); }, [] { rt::InStr(0, L"abc", L"a"); },
             [] { rt::InStrRev(L"abc", L"a", 0); }, [] { rt::Space(-1); }})
        EXPECT_EQ(ErrorOf(f), 5);
    EXPECT_EQ(rt::Trim(L" \tx  "), L"\tx");
    EXPECT_EQ(rt::Replace(L"aaa", L"aa", L"b"), L"ba");
    EXPECT_EQ(rt::UCase(L"café ÿ ĳ ž я"), L"CAFÉ Ÿ Ĳ Ž Я");
    EXPECT_EQ(rt::LCase(L"CAFÉ Ÿ Ĳ Ž Я ×"), L"café ÿ ĳ ž я ×");
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
    EXPECT_EQ(rt::Str(-0.25), L"-.25");
    EXPECT_EQ(rt::Str(-0.0), L" 0");
    EXPECT_EQ(rt::Str(0.1 + 0.2), L" .3");
    EXPECT_EQ(rt::Str(1234567890123456.0), L" 1.23456789012346E+15");
    EXPECT_EQ(rt::Str(0.00001), L" 1E-05");
}

// The pictures the program uses (its counters are the save tests'): halves round away from
// zero (unlike CInt), on the decimal digits rather than the binary value.
TEST(RuntimeFormat, WideningAndRounding) {
    EXPECT_EQ(rt::Format(-2.5, L"0"), L"-3");
    EXPECT_EQ(rt::Format(2.675, L"0.00"), L"2.68");
    EXPECT_EQ(rt::Format(1.5, L"###00.000"), L"01.500");
    EXPECT_EQ(rt::Format(123456.78949, L"###00.000"), L"123456.789");
    EXPECT_EQ(rt::Format(1e20, L"0"), L"100000000000000000000");
}

TEST(RuntimeClock, TimerAndLocaleTexts) {
    rt::SystemTime t{2024, 3, 9, 0, 5, 7, 250};
    EXPECT_DOUBLE_EQ(rt::SecondsSinceMidnight(t), 307.25);
    EXPECT_EQ(rt::TimeText(t, L"HH:mm:ss"), L"00:05:07");
    EXPECT_EQ(rt::TimeText(t, L"h:mm:ss tt"), L"12:05:07 AM");
    rt::SystemTime pm{2024, 3, 9, 23, 59, 58, 0};
    EXPECT_EQ(rt::TimeText(pm, L"H'h'mm t"), L"23h59 P");
    EXPECT_EQ(rt::DateText(t, L"d/M/yyyy"), L"9/3/2024");
    EXPECT_EQ(rt::DateText(t, L"dddd d MMMM 'de l''an' yyyy"), L"Saturday 9 March de l'an 2024");
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
    EXPECT_EQ(rt::ReadFileBytes(name), std::vector<uint8_t>(bytes, bytes + 7));
    rt::WriteFileBytes(name, "x", 1); // replaces, does not append
    EXPECT_EQ(rt::ReadFileBytes(name).size(), 1u);

    EXPECT_EQ(ErrorOf([&] { rt::ReadFileBytes(P(L"missing.bmp")); }), 53);
    EXPECT_EQ(ErrorOf([&] { rt::ReadFileBytes(P(L"")); }), 75); // the folder itself
    EXPECT_EQ(ErrorOf([&] { rt::WriteFileBytes(P(L"nofolder\\a.txt"), "x", 1); }), 76);
    EXPECT_EQ(ErrorOf([&] { rt::WriteFileBytes(P(L""), "x", 1); }), 75);
#ifndef _WIN32
    EXPECT_EQ(ErrorOf([] { rt::WriteFileBytes(L"\\dev\\full", "x", 1); }), 61);
#endif
}

TEST_F(RuntimeFiles, FoldersKillAndCopy) {
    const std::wstring sub = P(L"Vignettes_é");
    rt::MkDir(sub);
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
    EXPECT_EQ(rt::FolderNames(P(L""), false), std::vector<std::wstring>{L"copy.bmp"});
    EXPECT_EQ(rt::FolderNames(P(L""), true), std::vector<std::wstring>{L"Vignettes_é"});
    EXPECT_TRUE(rt::FolderNames(P(L"none"), true).empty());
    EXPECT_TRUE(rt::FolderNames(dst, false).empty());
    EXPECT_EQ(rt::FileWriteTicks(P(L"none.bmp")), 0);

    rt::Kill(src);
    EXPECT_EQ(ErrorOf([&] { rt::Kill(src); }), 53);
    EXPECT_EQ(ErrorOf([&] { rt::Kill(sub); }), 53); // a folder is not a file
    rt::RmDir(sub + L"\\");
    EXPECT_EQ(ErrorOf([&] { rt::RmDir(sub); }), 76);
}

} // namespace
