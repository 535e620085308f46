#include "runtime/integer.h"

#include "runtime/errors.h"

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

} // namespace rt
