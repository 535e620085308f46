#include "runtime/random.h"

#include <cstring>

namespace rt {

namespace {

constexpr uint32_t kMask = 0xFFFFFF;
constexpr float kScale = 1.0f / 16777216.0f;

} // namespace

float Random::Rnd() {
    x_ = (x_ * 1140671485u + 12820163u) & kMask;
    return static_cast<float>(x_) * kScale;
}

float Random::Rnd(float n) {
    if (n < 0) {
        uint32_t bits;
        std::memcpy(&bits, &n, sizeof bits);
        x_ = (bits + (bits >> 24)) & kMask;
        return Rnd();
    }
    if (n == 0) return static_cast<float>(x_) * kScale;
    return Rnd();
}

void Random::Randomize(double seed) {
    uint64_t bits;
    std::memcpy(&bits, &seed, sizeof bits);
    uint32_t hi = static_cast<uint32_t>(bits >> 32);
    uint32_t mixed = ((hi & 0xFFFF) ^ (hi >> 16)) << 8;
    x_ = (x_ & 0xFF0000FF) | (mixed & 0xFFFF00);
}

} // namespace rt
