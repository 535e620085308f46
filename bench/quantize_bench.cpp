// Colour reduction of a 1920x1080 screen-like and a photo-like picture: time of Quantize (best
// of five) and the PSNR of the result. With a folder as argument the two sources and their
// reduced pictures are also written there as BMP files, for comparison with other tools.
#include "platform/gdi/bmp.h"
#include "platform/gdi/quantize.h"
#include "platform/gdi/surface.h"
#include "runtime/files.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <string>

namespace {

// Deterministic noise.
uint32_t Next(uint32_t& state) {
    state = state * 1664525u + 1013904223u;
    return state >> 8;
}

// A desktop: a vertical gradient behind, flat windows with title-bar gradients and buttons,
// and rows of anti-aliased glyph-like marks.
gdi::Surface ScreenLike(int w, int h) {
    gdi::Surface s(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            s.At(x, y) = gdi::Rgb(20 + y * 60 / h, 60 + y * 90 / h, 140 + x * 80 / w);
    uint32_t seed = 7;
    const gdi::Pixel faces[] = {gdi::Rgb(240, 240, 240), gdi::Rgb(255, 255, 255),
                                gdi::Rgb(30, 30, 30), gdi::Rgb(250, 248, 230)};
    for (int win = 0; win < 6; ++win) {
        const int x0 = int(Next(seed) % uint32_t(w / 2)), y0 = int(Next(seed) % uint32_t(h / 2));
        const int ww = w / 3 + int(Next(seed) % uint32_t(w / 4));
        const int wh = h / 3 + int(Next(seed) % uint32_t(h / 4));
        const gdi::Pixel face = faces[win % 4];
        s.FillRect(x0, y0, ww, wh, face);
        for (int y = y0; y < std::min(h, y0 + 28); ++y)
            for (int x = x0; x < std::min(w, x0 + ww); ++x)
                s.At(x, y) = gdi::Rgb(0, 84 + (x - x0) * 100 / ww, 227 - (x - x0) * 60 / ww);
        for (int b = 0; b < 4; ++b)
            s.FillRect(x0 + 10 + b * 90, y0 + wh - 40, 80, 26, gdi::Rgb(225, 225, 225));
        // Text: glyph cells 7x12 with edge pixels blended between ink and face.
        const gdi::Pixel ink = face == gdi::Rgb(30, 30, 30) ? gdi::Rgb(220, 220, 220) : 0;
        for (int ty = y0 + 40; ty + 12 < std::min(h, y0 + wh - 50); ty += 16) {
            for (int tx = x0 + 8; tx + 7 < std::min(w, x0 + ww - 8); tx += 8) {
                if (Next(seed) % 6 == 0) continue; // a space
                for (int gy = 0; gy < 12; ++gy)
                    for (int gx = 0; gx < 7; ++gx) {
                        const uint32_t v = Next(seed) % 8;
                        if (v < 4) continue;
                        const int a = v == 7 ? 255 : int(v - 3) * 60;
                        auto mix = [&](int c0, int c1) { return (c0 * (255 - a) + c1 * a) / 255; };
                        s.At(tx + gx, ty + gy) =
                            gdi::Rgb(mix(gdi::RedOf(face), gdi::RedOf(ink)),
                                     mix(gdi::GreenOf(face), gdi::GreenOf(ink)),
                                     mix(gdi::BlueOf(face), gdi::BlueOf(ink)));
                    }
            }
        }
    }
    return s;
}

// Smooth colour fields with a little sensor noise.
gdi::Surface PhotoLike(int w, int h) {
    gdi::Surface s(w, h);
    uint32_t seed = 11;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const double u = double(x) / w, v = double(y) / h;
            const double r = 128 + 100 * std::sin(3.1 * u + 1.3 * v) * std::cos(2.2 * v);
            const double g = 110 + 90 * std::sin(2.0 * v + 0.7) * std::cos(4.1 * u * v + 0.3);
            const double b = 100 + 80 * std::cos(5.0 * u - 2.0 * v) + 40 * v;
            auto noisy = [&](double c) {
                return int(std::clamp(c + double(Next(seed) % 5) - 2.0, 0.0, 255.0));
            };
            s.At(x, y) = gdi::Rgb(noisy(r), noisy(g), noisy(b));
        }
    return s;
}

} // namespace

int main(int argc, char** argv) {
    const int w = 1920, h = 1080;
    const struct {
        const char* name;
        gdi::Surface picture;
    } cases[] = {{"screen", ScreenLike(w, h)}, {"photo", PhotoLike(w, h)}};

    std::printf("%-8s %10s %8s %10s\n", "picture", "ms", "colours", "PSNR dB");
    for (const auto& c : cases) {
        gdi::IndexedImage q;
        double best = 1e30;
        for (int i = 0; i < 5; ++i) {
            auto t0 = std::chrono::steady_clock::now();
            q = gdi::Quantize(c.picture);
            auto t1 = std::chrono::steady_clock::now();
            best = std::min(best, std::chrono::duration<double, std::milli>(t1 - t0).count());
        }
        const gdi::Surface back = gdi::Expand(q);
        std::printf("%-8s %10.2f %8zu %10.2f\n", c.name, best, q.palette.size(),
                    gdi::Psnr(c.picture, back));
        if (argc > 1) {
            const std::wstring folder = rt::FromUtf8(argv[1]) + L"\\";
            gdi::SaveBmp(c.picture, folder + rt::FromUtf8(c.name) + L".bmp");
            gdi::SaveBmp(back, folder + rt::FromUtf8(c.name) + L"_q.bmp");
        }
    }
    return 0;
}
