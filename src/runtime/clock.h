// The runtime's clock: Timer, and the Time and Date texts, read from an injectable clock so
// that tests run on a virtual one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace rt {

// A local date and time, as GetLocalTime gives it. month and day are 1-based.
struct SystemTime {
    int year, month, day, hour, minute, second, millisecond;
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual SystemTime Now() const = 0;
};

// Days since 1970-01-01 of a civil date (proleptic Gregorian).
int64_t DaysFromCivil(int year, int month, int day);

// The runtime's Timer: seconds since midnight, milliseconds as the fraction.
double SecondsSinceMidnight(const SystemTime& t);

// The Time text rendered from a Windows time picture (LOCALE_STIMEFORMAT):
//   h hh   hour on 12 hours, without / with a leading zero
//   H HH   hour on 24 hours, without / with a leading zero
//   m mm   minutes;  s ss  seconds;  t tt  "A"/"P", "AM"/"PM"
//   '...'  quoted literal text ('' inside quotes is one quote); anything else is copied.
std::wstring TimeText(const SystemTime& t, std::wstring_view pattern);

// The Date text rendered from a Windows date picture (LOCALE_SSHORTDATE):
//   d dd ddd dddd   day, with a leading zero, English short and long day name
//   M MM MMM MMMM   month, with a leading zero, English short and long month name
//   y yy yyyy       year in two digits without / with a leading zero, in four digits
//   g gg            era, rendered as nothing;  '...' quoted literal text as for TimeText.
std::wstring DateText(const SystemTime& t, std::wstring_view pattern);

// Day of the week, 0 = Sunday .. 6 = Saturday, of a Gregorian date.
int DayOfWeek(int year, int month, int day);

// English names: MonthName(1) = "January", WeekdayName(1) = "Sunday"; abbreviated to three
// letters. Outside 1..12 / 1..7 raises 5.
std::wstring MonthName(int month, bool abbreviate = false);
std::wstring WeekdayName(int weekday, bool abbreviate = false);

} // namespace rt
