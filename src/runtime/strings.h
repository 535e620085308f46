// String functions of the original runtime on UTF-16 style wide strings. Positions are
// 1-based; an invalid position or length raises rt::RuntimeError 5.
#pragma once

#include "runtime/clock.h"

#include <string>
#include <string_view>

namespace rt {

// First / last n characters (all of s when n is past its end). n < 0 raises 5.
std::wstring Left(std::wstring_view s, long long n);
std::wstring Right(std::wstring_view s, long long n);
// Characters from start on, at most length of them; "" when start is past the end.
// start < 1 or length < 0 raises 5.
std::wstring Mid(std::wstring_view s, long long start);
std::wstring Mid(std::wstring_view s, long long start, long long length);
int Len(std::wstring_view s);

// Position of find in s searching from start, 0 when absent or when start is past the end;
// an empty find gives start. start < 1 raises 5.
int InStr(std::wstring_view s, std::wstring_view find);
int InStr(long long start, std::wstring_view s, std::wstring_view find);
// Position of the last find that ends at or before start (-1: the end of s); 0 when absent.
// start 0 or below -1 raises 5.
int InStrRev(std::wstring_view s, std::wstring_view find, long long start = -1);

// Case mapping of ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic letters.
std::wstring UCase(std::wstring_view s);
std::wstring LCase(std::wstring_view s);
// Remove leading / trailing spaces (spaces only, not tabs).
std::wstring Trim(std::wstring_view s);
std::wstring LTrim(std::wstring_view s);
std::wstring RTrim(std::wstring_view s);
// Every occurrence of find replaced, left to right; an empty find leaves s as is.
std::wstring Replace(std::wstring_view s, std::wstring_view find, std::wstring_view repl);
// n spaces / n copies of ch (of the first character of ch). n < 0 or empty ch raises 5.
std::wstring Space(long long n);
std::wstring String(long long n, wchar_t ch);
std::wstring String(long long n, std::wstring_view ch);

// Character codes: Asc/Chr in the system code page (Chr outside 0..255 raises 5; Asc of a character
// with no byte gives the code of '?'), AscW/ChrW in UTF-16 units. An empty Asc raises 5.
int Asc(std::wstring_view s);
std::wstring Chr(int code);
int AscW(std::wstring_view s);
std::wstring ChrW(int code);

// The leading number of s: blanks (space, tab, line feed) are skipped anywhere; an optional
// sign, digits, one decimal point, an exponent (E or D); or &H hex / &O octal, where up to
// four hex digits are a 16-bit Integer (Val("&HFFFF") = -1) unless a trailing '&' follows.
// Reading stops at the first character that cannot continue; no digits gives 0. A value
// too large for a Double (or a hex value past 32 bits) raises 6.
double Val(std::wstring_view s);

// The number's text with up to 15 significant digits, scientific outside 1E-4..1E15
// (" 1E-05", " 1.23456789012346E+15"). Str puts a blank before a non-negative value and
// drops the zero before the point (Str(0.25) = " .25"); CStr keeps it (CStr(0.25) = "0.25").
std::wstring Str(double v);
std::wstring CStr(double v);

// Numeric Format. In the picture: '0' a forced digit, '#' an optional digit, '.' the
// decimal point, ',' between digit places groups thousands and right of the last one
// divides by 1000, '%' multiplies by 100; "..." and \c are literal; other characters are
// copied. Up to three ';' sections: positive;negative;zero. Rounds half away from zero on
// the value's 15 significant digits; the integer part widens to hold every digit
// (Format(1000, "000") = "1000"). An empty picture gives CStr(v).
std::wstring Format(double v, std::wstring_view fmt);

// Date/time Format, case-insensitive: h hh hour, n nn minutes, m mm minutes right after an
// hour or right before seconds and month otherwise, mmm mmmm month name, s ss seconds,
// d dd day, ddd dddd day name, y day of the year, yy yyyy year, AM/PM am/pm A/P a/p
// (these make the hour 12-hour), "..." and \c literal, other characters copied.
// Format(t, "hhmmss") = "093005".
std::wstring FormatTime(const SystemTime& t, std::wstring_view fmt);

} // namespace rt
