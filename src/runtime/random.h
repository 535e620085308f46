// The original runtime's random numbers: a 24-bit linear congruential generator, so that a
// given seed gives the same sequence as the original did.
#pragma once

#include <cstdint>

namespace rt {

class Random {
public:
    // The next number in [0, 1): x = (x * 1140671485 + 12820163) mod 2^24, Rnd = x / 2^24.
    float Rnd();
    // Rnd(n): n < 0 restarts from a state made of n's bits, then draws; n = 0 repeats the
    // last number; n > 0 is Rnd().
    float Rnd(float n);
    // Mixes a seed (usually Timer) into the state, as Randomize did: the two 16-bit halves
    // of the upper 32 bits of the double are XORed and replace the middle two bytes of x.
    void Randomize(double seed);

    uint32_t State() const { return x_; }

private:
    uint32_t x_ = 0x50000;
};

} // namespace rt
