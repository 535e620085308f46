#include "runtime/integer.h"

#include "runtime/errors.h"
#include "runtime/strings.h"

#include <cmath>

namespace rt {

namespace {

// Round half to even, whatever the floating-point rounding mode is.
double RoundHalfEven(double v) {
    double r = std::floor(v);
    double diff = v - r;
    if (diff > 0.5 || (diff == 0.5 && std::fmod(r, 2.0) != 0.0)) r += 1.0;
    return r;
}

} // namespace

int16_t CInt(double v) {
    double r = RoundHalfEven(v);
    if (!(r >= -32768.0 && r <= 32767.0)) Raise(kOverflow);
    return static_cast<int16_t>(r);
}

int16_t I16(long long v) {
    if (v < -32768 || v > 32767) Raise(kOverflow);
    return static_cast<int16_t>(v);
}

int32_t CLng(double v) {
    double r = RoundHalfEven(v);
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) Raise(kOverflow);
    return static_cast<int32_t>(r);
}

double Fix(double v) {
    return std::trunc(v);
}

double Int(double v) {
    return std::floor(v);
}

int16_t CIntText(std::wstring_view s) {
    const std::wstring t = Trim(s);
    size_t i = t.empty() || (t[0] != L'+' && t[0] != L'-') ? 0 : 1;
    bool chiffre = false, point = false;
    for (; i < t.size(); ++i) {
        if (t[i] >= L'0' && t[i] <= L'9')
            chiffre = true;
        else if (t[i] == L'.' && !point)
            point = true;
        else
            Raise(kTypeMismatch);
    }
    if (!chiffre) Raise(kTypeMismatch);
    return CInt(Val(t));
}

} // namespace rt
