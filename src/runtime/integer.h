// Checked integer conversions of the original runtime. A value out of range raises
// rt::RuntimeError 6 (Overflow) instead of wrapping.
#pragma once

#include <cstdint>
#include <string_view>

namespace rt {

// Double to Integer: rounds half to even (CInt(2.5) = 2, CInt(3.5) = 4); raises 6 outside
// -32768..32767 or for NaN.
int16_t CInt(double v);

// A text as an Integer, as assigning it to an Integer variable does: a number with blanks
// around it (sign, digits, one decimal point); anything else raises 13 (Type mismatch).
int16_t CIntText(std::wstring_view s);

// A whole number as a 16-bit Integer, for checked Integer arithmetic: I16(long long(a) + b).
// Raises 6 outside -32768..32767.
int16_t I16(long long v);

// Double to Long: rounds half to even; raises 6 outside the 32-bit range or for NaN.
int32_t CLng(double v);

// Whole part towards zero: Fix(-2.5) = -2.
double Fix(double v);
// Whole part towards minus infinity: Int(-2.5) = -3.
double Int(double v);

} // namespace rt
