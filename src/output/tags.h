// Date and time tags of file names, from the system's short date and time texts.
#pragma once

#include <string>

namespace mv {

// YYYYMMDD from a day-first short date text ("15/11/2026" -> "20261115").
std::wstring CalcTagDate(const std::wstring& dateText);
// Seven characters from the time text ("14:05:09" -> "H140509").
std::wstring CalcTagHeure(const std::wstring& timeText);
// YYMMDD_hhmmss on a day-first system.
std::wstring CalcHorodatage(const std::wstring& dateText, const std::wstring& timeText);

} // namespace mv
