// Colour reduction to 8-bit indexed pictures (what the GIF encoder is given).
#include "platform/gdi/quantize.h"
#include "platform/gdi/surface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace gdi {
namespace {

// Deterministic noise.
uint32_t Next(uint32_t& state) {
    state = state * 1664525u + 1013904223u;
    return state >> 8;
}

// Smooth two-dimensional colour fields, like a photograph; `noise` adds up to that much
// either way to each channel.
Surface PhotoLike(int w, int h, int noise) {
    Surface s(w, h);
    uint32_t seed = 5;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const double u = double(x) / w, v = double(y) / h;
            const double c[3] = {128 + 100 * std::sin(3.1 * u + 1.3 * v) * std::cos(2.2 * v),
                                 110 + 90 * std::sin(2.0 * v + 0.7) * std::cos(4.1 * u * v),
                                 100 + 80 * std::cos(5.0 * u - 2.0 * v) + 40 * v};
            int q[3];
            for (int k = 0; k < 3; ++k) {
                const int n = noise ? int(Next(seed) % uint32_t(2 * noise + 1)) - noise : 0;
                q[k] = std::clamp(int(std::lround(c[k])) + n, 0, 255);
            }
            s.At(x, y) = Rgb(q[0], q[1], q[2]);
        }
    return s;
}

void ExpectWellFormed(const IndexedImage& q, const Surface& s) {
    EXPECT_EQ(q.width, s.Width());
    EXPECT_EQ(q.height, s.Height());
    ASSERT_EQ(q.indices.size(), size_t(s.Width()) * size_t(s.Height()));
    EXPECT_LE(q.palette.size(), 256u);
    for (uint8_t i : q.indices) ASSERT_LT(i, q.palette.size());
}

// Few colours come back exactly (the fuzz target checks that for small pictures); here the
// full 256 and the top byte.
TEST(Quantize, PicturesWithFewColoursComeBackExactly) {
    // Exactly 256 colours scattered over the picture.
    Surface s(48, 40);
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 48; ++x) {
            const int k = (x * 7 + y * 13) % 256;
            s.At(x, y) = Rgb(k, 255 - k, (k * 37) & 255);
        }
    IndexedImage q = Quantize(s);
    ExpectWellFormed(q, s);
    EXPECT_EQ(Expand(q), s);

    // The top byte of a pixel is not colour: 0xFF00FF00 and 0x0000FF00 share one entry.
    Surface marked(2, 1);
    marked.At(0, 0) = 0xFF00FF00;
    marked.At(1, 0) = 0x0000FF00;
    q = Quantize(marked);
    EXPECT_EQ(q.palette, std::vector<Pixel>{0x00FF00});
    EXPECT_EQ(q.indices, (std::vector<uint8_t>{0, 0}));
}

TEST(Quantize, MoreColoursThanEntriesGetAFittedPalette) {
    // 256 heavy colours and 43 near neighbours: the heavy ones (the flat
    // areas of a screen picture) come back exact and each neighbour goes to its heavy one.
    Surface screen(256, 64);
    for (int k = 0; k < 256; ++k) {
        const Pixel heavy = Rgb((k & 7) * 36, ((k >> 3) & 7) * 36, (k >> 6) * 80);
        screen.FillRect(k, 0, 1, 64, heavy);
        if (k % 6 == 0) screen.At(k, 63) = heavy ^ 1; // blue one step away
    }
    IndexedImage q = Quantize(screen);
    ExpectWellFormed(q, screen);
    const Surface flat = Expand(q);
    for (int k = 0; k < 256; ++k) {
        ASSERT_EQ(flat.At(k, 0), screen.At(k, 0)) << "column " << k;
        ASSERT_EQ(flat.At(k, 63), screen.At(k, 0)) << "column " << k;
    }

    // 300 colours in pairs one blue step apart, each pair inside one histogram cell: the cut
    // finds only 150 boxes, the other entries must still be used.
    Surface pairs(300, 2);
    for (int k = 0; k < 150; ++k) {
        const Pixel base = Rgb((k % 6) * 48, (k / 6 % 5) * 60, (k / 30) * 60);
        pairs.FillRect(2 * k, 0, 1, 2, base);
        pairs.FillRect(2 * k + 1, 0, 1, 2, base + 1);
    }
    q = Quantize(pairs);
    ExpectWellFormed(q, pairs);
    EXPECT_EQ(q.palette.size(), 256u);
    const Surface near = Expand(q);
    for (int x = 0; x < 300; ++x) {
        ASSERT_EQ(near.At(x, 0) & ~Pixel(0xFF), pairs.At(x, 0) & ~Pixel(0xFF)) << x;
        ASSERT_LE(std::abs(BlueOf(near.At(x, 0)) - BlueOf(pairs.At(x, 0))), 1) << x;
    }

    // The limit is clamped to 1..256.
    EXPECT_EQ(Quantize(pairs, 0).palette.size(), 1u);
    EXPECT_EQ(Quantize(pairs, 1000).palette.size(), 256u);
}

TEST(Quantize, PhotographsKeepAHighPsnrAndComeOutTheSameEachTime) {
    // The thresholds lie a little under what this code reaches and above ImageMagick 6.9's
    // undithered "convert +dither -colors 256": smooth 320x180 (43 352 colours, k-means on the
    // exact colours) 37.57 dB against 35.91; 640x360 with noise (150 597 colours, k-means on
    // the histogram cells) 37.18 against 35.50. Its default, dithered, gives about 31.5.
    const Surface smooth = PhotoLike(320, 180, 0);
    const IndexedImage a = Quantize(smooth);
    ExpectWellFormed(a, smooth);
    EXPECT_EQ(a.palette.size(), 256u);
    EXPECT_GE(Psnr(smooth, Expand(a)), 37.0);
    const IndexedImage b = Quantize(smooth);
    EXPECT_EQ(a.palette, b.palette);
    EXPECT_EQ(a.indices, b.indices);

    const Surface noisy = PhotoLike(640, 360, 2);
    const IndexedImage c = Quantize(noisy);
    ExpectWellFormed(c, noisy);
    EXPECT_GE(Psnr(noisy, Expand(c)), 36.7);
}

// Empty pictures give nothing. The measure the thresholds above rely on: one step on one
// channel everywhere is an MSE of 1/3 (Psnr and Expand serve only the tests and benches,
// so their odd inputs go unchecked).
TEST(Quantize, EmptyPicturesAndPsnr) {
    for (const Surface& empty : {Surface(), Surface(0, 5), Surface(-3, 2)}) {
        const IndexedImage q = Quantize(empty);
        EXPECT_TRUE(q.palette.empty());
        EXPECT_TRUE(q.indices.empty());
    }
    Surface a(4, 3, Rgb(10, 20, 30)), b(4, 3, Rgb(10, 21, 30));
    EXPECT_NEAR(Psnr(a, b), 10 * std::log10(255.0 * 255.0 * 3), 1e-9);
}

} // namespace
} // namespace gdi
