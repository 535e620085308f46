#include "sound.h"
#include "platform/gdi/little_endian.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

namespace mk {

namespace {

using gdi::Put16;
using gdi::Put32;

constexpr int kRate = 22050;

// A small fixed generator: the standard library's distributions differ between
// implementations, and the sound must not.
class Noise {
public:
    double Next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return double(state_) / 2147483648.0 - 1.0; // -1 .. 1
    }

private:
    uint32_t state_ = 0x5eed1234u;
};

// Band-pass biquad (constant peak gain), direct form I.
class BandPass {
public:
    BandPass(double centre, double q) {
        double w = 2 * std::numbers::pi * centre / kRate;
        double alpha = std::sin(w) / (2 * q);
        double a0 = 1 + alpha;
        b0_ = alpha / a0;
        b2_ = -alpha / a0;
        a1_ = -2 * std::cos(w) / a0;
        a2_ = (1 - alpha) / a0;
    }
    double Step(double x) {
        double y = b0_ * x + b2_ * x2_ - a1_ * y1_ - a2_ * y2_;
        x2_ = x1_;
        x1_ = x;
        y2_ = y1_;
        y1_ = y;
        return y;
    }

private:
    double b0_, b2_, a1_, a2_;
    double x1_ = 0, x2_ = 0, y1_ = 0, y2_ = 0;
};

// One movement of the shutter: a filtered noise burst with a fast attack and exponential
// decay, a short unfiltered tick for the edge, and a low damped thump for the body.
void AddBurst(std::vector<double>& out, Noise& noise, double start, double amplitude, double decay,
              double centre, double thumpHz) {
    BandPass filter(centre, 0.9);
    size_t first = size_t(start * kRate);
    for (size_t i = first; i < out.size(); ++i) {
        double t = double(i - first) / kRate;
        double attack = std::min(1.0, t / 0.0004);
        double n = noise.Next();
        double body = filter.Step(n) * 2.5 * std::exp(-t / decay);
        double tick = n * 0.45 * std::exp(-t / 0.0007);
        double thump = 0.4 * std::sin(2 * std::numbers::pi * thumpHz * t) * std::exp(-t / 0.012);
        out[i] += amplitude * attack * (body + tick + thump);
    }
}

void PutTag(std::vector<uint8_t>& b, std::string_view tag) {
    for (char ch : tag) b.push_back(uint8_t(ch));
}

} // namespace

std::vector<uint8_t> ShutterWav() {
    std::vector<double> mix(size_t(kRate / 4), 0.0);
    Noise noise;
    AddBurst(mix, noise, 0.004, 1.0, 0.006, 3200, 190); // the blades open
    AddBurst(mix, noise, 0.078, 0.7, 0.009, 2200, 150); // and snap shut
    double peak = 0;
    for (double v : mix) peak = std::max(peak, std::abs(v));
    const double gain = peak > 0 ? 0.8 / peak : 0.0;
    // A short fade so the file ends in silence whatever the tail holds.
    const size_t fade = size_t(kRate * 0.01);

    const uint32_t dataBytes = uint32_t(mix.size() * 2);
    std::vector<uint8_t> wav;
    wav.reserve(44 + dataBytes);
    PutTag(wav, "RIFF");
    Put32(wav, 36 + dataBytes);
    PutTag(wav, "WAVE");
    PutTag(wav, "fmt ");
    Put32(wav, 16);
    Put16(wav, 1); // PCM
    Put16(wav, 1); // mono
    Put32(wav, kRate);
    Put32(wav, kRate * 2);
    Put16(wav, 2);
    Put16(wav, 16);
    PutTag(wav, "data");
    Put32(wav, dataBytes);
    for (size_t i = 0; i < mix.size(); ++i) {
        double v = mix[i] * gain;
        size_t left = mix.size() - i;
        if (left < fade) v *= double(left) / double(fade);
        long s = std::clamp(std::lround(v * 32767.0), -32768L, 32767L);
        Put16(wav, uint32_t(uint16_t(int16_t(s))));
    }
    return wav;
}

} // namespace mk
