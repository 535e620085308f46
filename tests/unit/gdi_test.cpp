// Pixel surfaces, raster operations and BMP files.
#include "platform/gdi/bmp.h"
#include "platform/gdi/surface.h"
#include "runtime/errors.h"
#include "test_util.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>

namespace gdi {
namespace {

Surface Numbered(int w, int h) {
    Surface s(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) s.At(x, y) = Rgb(x * 37 + y * 11, y * 53 + 7, (x ^ y) * 29);
    return s;
}

// A BMP file with a BITMAPINFOHEADER (or a longer header, padded with zeros). `extra` follows
// the header (masks, palette); `rows` are the pixel bytes in file order.
std::vector<uint8_t> MakeBmp(int32_t width, int32_t height, int bpp, uint32_t compression,
                             const std::vector<uint8_t>& extra, const std::vector<uint8_t>& rows,
                             uint32_t headerSize = 40, uint32_t colorsUsed = 0) {
    std::vector<uint8_t> f(14 + headerSize);
    auto put = [&](size_t at, uint32_t v, int n) {
        for (int i = 0; i < n; ++i) f[at + size_t(i)] = uint8_t(v >> (8 * i));
    };
    f[0] = 'B', f[1] = 'M';
    put(10, uint32_t(14 + headerSize + extra.size()), 4);
    put(14, headerSize, 4);
    put(18, uint32_t(width), 4);
    put(22, uint32_t(height), 4);
    put(26, 1, 2);
    put(28, uint32_t(bpp), 2);
    put(30, compression, 4);
    put(46, colorsUsed, 4);
    f.insert(f.end(), extra.begin(), extra.end());
    f.insert(f.end(), rows.begin(), rows.end());
    put(2, uint32_t(f.size()), 4);
    return f;
}

Surface Decode(const std::vector<uint8_t>& f) {
    return DecodeBmp(f.data(), f.size());
}

TEST(GdiBmp, RoundTripsEveryWidthWithPaddedBottomUpRows) {
    for (int bpp : {24, 32}) {
        for (int w = 1; w <= 6; ++w) {
            Surface s = Numbered(w, 3);
            std::vector<uint8_t> f = EncodeBmp(s, bpp);
            size_t rowBytes = (size_t(w) * size_t(bpp) / 8 + 3) / 4 * 4;
            ASSERT_EQ(f.size(), 54 + 3 * rowBytes);
            // The first row in the file is the bottom one.
            EXPECT_EQ(f[54], BlueOf(s.At(0, 2)));
            EXPECT_EQ(f[54 + 2], RedOf(s.At(0, 2)));
            EXPECT_EQ(Decode(f), s) << bpp << " bits, width " << w;
        }
    }
}

TEST(GdiBmp, ReadsTopDownPaletteBitfieldAndOlderHeaders) {
    // 24-bit top-down, width 1: each row is 3 bytes and one of padding.
    Surface s = Decode(MakeBmp(1, -2, 24, 0, {}, {1, 2, 3, 0, 4, 5, 6, 0}));
    EXPECT_EQ(s.At(0, 0), Rgb(3, 2, 1));
    EXPECT_EQ(s.At(0, 1), Rgb(6, 5, 4));

    // 8-bit with two palette entries; index 7 lies past them and reads black.
    std::vector<uint8_t> pal = {10, 20, 30, 0, 40, 50, 60, 0};
    s = Decode(MakeBmp(3, 1, 8, 0, pal, {1, 0, 7, 0}, 40, 2));
    EXPECT_EQ(s.At(0, 0), Rgb(60, 50, 40));
    EXPECT_EQ(s.At(1, 0), Rgb(30, 20, 10));
    EXPECT_EQ(s.At(2, 0), 0u);

    // 4-bit and 1-bit: the leftmost pixel is in the high bits.
    std::vector<uint8_t> pal16(64, 0);
    pal16[4 * 15 + 2] = 255;
    s = Decode(MakeBmp(3, 1, 4, 0, pal16, {0xF0, 0xF0, 0, 0}));
    EXPECT_EQ(s.At(0, 0), Rgb(255, 0, 0));
    EXPECT_EQ(s.At(1, 0), 0u);
    EXPECT_EQ(s.At(2, 0), Rgb(255, 0, 0));
    s = Decode(MakeBmp(10, 1, 1, 0, {0, 0, 0, 0, 255, 255, 255, 0}, {0x81, 0x40, 0, 0}));
    for (int x = 0; x < 10; ++x) EXPECT_EQ(s.At(x, 0), x == 0 || x == 7 || x == 9 ? 0xFFFFFFu : 0u);

    // 32-bit bitfields after a 40-byte header, and inside a V5 header; the fourth byte is
    // ignored.
    std::vector<uint8_t> masks = {0, 0, 0xFF, 0, 0, 0xFF, 0, 0, 0xFF, 0, 0, 0};
    s = Decode(MakeBmp(1, 1, 32, 3, masks, {7, 8, 9, 0xEE}));
    EXPECT_EQ(s.At(0, 0), Rgb(9, 8, 7));
    std::vector<uint8_t> v5 = MakeBmp(1, 1, 32, 3, {}, {7, 8, 9, 0xEE}, 124);
    std::memcpy(&v5[54], masks.data(), masks.size());
    EXPECT_EQ(Decode(v5).At(0, 0), Rgb(9, 8, 7));

    // 16-bit 5-6-5: full channels read 255.
    std::vector<uint8_t> m565 = {0, 0xF8, 0, 0, 0xE0, 0x07, 0, 0, 0x1F, 0, 0, 0};
    s = Decode(MakeBmp(2, 1, 16, 3, m565, {0x00, 0xF8, 0x1F, 0x00}));
    EXPECT_EQ(s.At(0, 0), Rgb(255, 0, 0));
    EXPECT_EQ(s.At(1, 0), Rgb(0, 0, 255));

    // BITMAPCOREHEADER, 8-bit with 3-byte palette entries.
    std::vector<uint8_t> core = {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 32, 0, 0, 0, 12, 0, 0, 0,
                                 1,   0,   1, 0, 1, 0, 8, 0, 1, 2, 3,  4, 5, 6, 1,  0, 0, 0};
    EXPECT_EQ(Decode(core).At(0, 0), Rgb(6, 5, 4));
}

TEST(GdiBmp, MalformedFilesRaiseInvalidPicture) {
    std::vector<uint8_t> pal = {1, 2, 3, 0, 4, 5, 6, 0};
    std::vector<uint8_t> good8 = MakeBmp(3, 2, 8, 0, pal, {0, 1, 0, 0, 1, 0, 1, 0}, 40, 2);
    std::vector<uint8_t> good24 = EncodeBmp(Numbered(3, 2));
    ASSERT_NO_THROW(Decode(good8));
    auto patched = [](std::vector<uint8_t> f, size_t at, uint32_t v, int n = 4) {
        for (int i = 0; i < n; ++i) f[at + size_t(i)] = uint8_t(v >> (8 * i));
        return f;
    };
    struct Case {
        const char* what;
        std::vector<uint8_t> file;
    };
    std::vector<uint8_t> row = {0, 0, 0, 0};
    const Case cases[] = {
        {"wrong signature", patched(good24, 0, 'X', 1)},
        {"header size 64", patched(good24, 14, 64)},
        {"header size past end", patched(good24, 14, 1000)},
        {"negative width", patched(good24, 18, uint32_t(-3))},
        {"zero height", patched(good24, 22, 0)},
        {"most negative height", patched(good24, 22, 0x80000000u)},
        {"huge sizes", MakeBmp(100000, 100000, 24, 0, {}, row)},
        {"too many pixels", MakeBmp(20001, 20001, 1, 0, {}, row)},
        {"two planes", patched(good24, 26, 2, 2)},
        {"2 bits", patched(good24, 28, 2, 2)},
        {"RLE8", patched(good8, 30, 1)},
        {"bitfields on 24 bits", patched(good24, 30, 3)},
        {"pixels past end", patched(good24, 10, uint32_t(good24.size()))},
        {"offset wraps around", patched(good24, 10, 0xFFFFFFFFu)},
        {"pixels inside the header", patched(good24, 10, 20)},
        {"palette past end", MakeBmp(1, 1, 8, 0, {}, {}, 40, 256)},
        {"mask with a gap",
         MakeBmp(1, 1, 32, 3, {0, 0xF0, 0xF0, 0, 0, 0xFF, 0, 0, 0xFF, 0, 0, 0}, row)},
        {"mask beyond 16 bits",
         MakeBmp(1, 1, 16, 3, {0, 0, 1, 0, 0xE0, 0x07, 0, 0, 0x1F, 0, 0, 0}, row)},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ErrorOf([&] { Decode(c.file); }), rt::kInvalidPicture) << c.what;
    EXPECT_EQ(ErrorOf([] { DecodeBmp(nullptr, 100); }), rt::kInvalidPicture);
    // Every truncation, of the header, palette or pixels.
    for (const auto* f : {&good8, &good24})
        for (size_t n = 0; n < f->size(); ++n)
            EXPECT_EQ(ErrorOf([&] { DecodeBmp(f->data(), n); }), rt::kInvalidPicture) << n;
}

// A whole, honest 1-bit file of 20000 x 20000 is 50 MB on disk and would be 1.6 GB in
// memory: it is refused before any pixel is allocated. The largest capture there is, a
// double-height 7680x4320 screen, still reads.
TEST(GdiBmp, PictureTooLargeForMemoryIsRefusedBeforeItsPixels) {
    const std::vector<uint8_t> pal = {0, 0, 0, 0, 255, 255, 255, 0};
    const std::vector<uint8_t> honest =
        MakeBmp(20000, 20000, 1, 0, pal, std::vector<uint8_t>(size_t(2500) * 20000, 0x55));
    EXPECT_EQ(ErrorOf([&] { Decode(honest); }), rt::kInvalidPicture);

    const std::vector<uint8_t> grand =
        MakeBmp(7680, -8640, 1, 0, pal, std::vector<uint8_t>(size_t(960) * 8640, 0x0F));
    const Surface s = Decode(grand);
    EXPECT_EQ(s.Width(), 7680);
    EXPECT_EQ(s.At(4, 8639), Rgb(255, 255, 255));
}

TEST(GdiBlit, BitBltClipsAgainstBothSurfacesAtEveryEdge) {
    const Surface src = Numbered(5, 4);
    const Pixel bg = Rgb(1, 2, 3);
    for (int dx = -6; dx <= 6; ++dx)
        for (int sx = -6; sx <= 6; sx += 3)
            for (int w : {-3, 0, 2, 7}) {
                int dy = dx / 2, sy = -sx / 3, h = w + 1;
                Surface dst(4, 5, bg);
                BitBlt(dst, dx, dy, w, h, src, sx, sy);
                // A negative size names the rectangle ending at the corner.
                int l = w < 0 ? dx + w + 1 : dx, t = h < 0 ? dy + h + 1 : dy;
                int ls = w < 0 ? sx + w + 1 : sx, ts = h < 0 ? sy + h + 1 : sy;
                for (int y = 0; y < 5; ++y)
                    for (int x = 0; x < 4; ++x) {
                        int u = x - l + ls, v = y - t + ts;
                        bool copied = x >= l && x < l + std::abs(w) && y >= t &&
                                      y < t + std::abs(h) && u >= 0 && u < 5 && v >= 0 && v < 4;
                        ASSERT_EQ(dst.At(x, y), copied ? src.At(u, v) : bg)
                            << dx << " " << dy << " " << w << " " << sx << " " << sy;
                    }
            }
}

// Checks that out, from (ox, oy), holds the area mean of src's rectangle (sx, sy, sw, sh)
// shrunk to dw x dh, worked out pixel by pixel (black outside the source).
void ExpectAreaMean(const Surface& out, int ox, int oy, const Surface& src, int sx, int sy, int sw,
                    int sh, int dw, int dh) {
    for (int y = 0; y < dh; ++y)
        for (int x = 0; x < dw; ++x) {
            double r = 0, g = 0, b = 0;
            for (int v = 0; v < sh; ++v)
                for (int u = 0; u < sw; ++u) {
                    // Overlap of source pixel u with destination pixel x, in source pixels.
                    double cx = std::max(0.0, std::min(u + 1.0, (x + 1.0) * sw / dw) -
                                                  std::max(double(u), double(x) * sw / dw));
                    double cy = std::max(0.0, std::min(v + 1.0, (y + 1.0) * sh / dh) -
                                                  std::max(double(v), double(y) * sh / dh));
                    int su = sx + u, sv = sy + v;
                    if (cx * cy == 0 || su < 0 || su >= src.Width() || sv < 0 || sv >= src.Height())
                        continue;
                    Pixel p = src.At(su, sv);
                    double w = cx * cy * dw * dh / (double(sw) * sh);
                    r += w * RedOf(p), g += w * GreenOf(p), b += w * BlueOf(p);
                }
            Pixel p = out.At(ox + x, oy + y);
            ASSERT_NEAR(RedOf(p), r, 0.51) << x << "," << y;
            ASSERT_NEAR(GreenOf(p), g, 0.51) << x << "," << y;
            ASSERT_NEAR(BlueOf(p), b, 0.51) << x << "," << y;
        }
}

TEST(GdiStretch, HalftoneAveragesWhenShrinking) {
    // Long columns: the row sums must not overflow.
    Surface one(1, 1);
    Surface tall(1, 1000, 0xFFFFFF);
    StretchBlt(one, 0, 0, 1, 1, tall, 0, 0, 1, 1000, kHalftone);
    EXPECT_EQ(one.At(0, 0), 0xFFFFFFu);

    // Any ratio, with a source rectangle reaching past the source.
    const Surface src = Numbered(50, 37);
    Surface out(13, 11);
    StretchBlt(out, 0, 0, 13, 11, src, 3, -2, 60, 30, kHalftone);
    ExpectAreaMean(out, 0, 0, src, 3, -2, 60, 30, 13, 11);

    // Halving and quartering average whole blocks on a road of their own, placed inside a
    // larger destination.
    for (int k : {2, 4}) {
        Surface big(8 + 48 / k, 6 + 32 / k, 0x123456);
        StretchBlt(big, 8, 6, 48 / k, 32 / k, src, 1, 2, 48, 32, kHalftone);
        ExpectAreaMean(big, 8, 6, src, 1, 2, 48, 32, 48 / k, 32 / k);
        EXPECT_EQ(big.At(7, 5), 0x123456u);
    }
}

TEST(GdiStretch, EnlargingNearestAndClipping) {
    const Surface src = Numbered(7, 5);
    // Halftone enlarges by interpolation between pixel centres.
    Surface pair(2, 1);
    pair.At(1, 0) = Rgb(200, 200, 200);
    Surface wide(4, 1);
    StretchBlt(wide, 0, 0, 4, 1, pair, 0, 0, 2, 1, kHalftone);
    EXPECT_EQ(wide.At(1, 0), Rgb(50, 50, 50));
    EXPECT_EQ(wide.At(2, 0), Rgb(150, 150, 150));

    // Colour on colour picks source pixel sx + x * sw / dw, black past the source.
    Surface picked(3, 2);
    StretchBlt(picked, 0, 0, 3, 2, src, 1, 0, 6, 5, kColorOnColor);
    EXPECT_EQ(picked.At(1, 0), src.At(3, 0));
    EXPECT_EQ(picked.At(2, 1), src.At(5, 2));
    StretchBlt(picked, 0, 0, 3, 2, src, 6, 4, 2, 2, kColorOnColor);
    EXPECT_EQ(picked.At(2, 1), 0u);

    // Clipped at each edge, the drawn part equals the same part of the whole stretch.
    for (StretchMode mode : {kHalftone, kColorOnColor}) {
        Surface whole(11, 9);
        StretchBlt(whole, 0, 0, 11, 9, src, 0, 0, 7, 5, mode);
        for (int off : {-4, 3}) {
            Surface part(11, 9, 0x123456);
            StretchBlt(part, off, -off, 11, 9, src, 0, 0, 7, 5, mode);
            for (int y = 0; y < 9; ++y)
                for (int x = 0; x < 11; ++x) {
                    int u = x - off, v = y + off;
                    bool in = u >= 0 && u < 11 && v >= 0 && v < 9;
                    ASSERT_EQ(part.At(x, y), in ? whole.At(u, v) : 0x123456u) << x << "," << y;
                }
        }
    }
}

TEST(GdiBlend, AlphaBlendIsExactAndDrawsOnlyAValidSource) {
    // A source rectangle that leaves the source draws nothing, as the platform call.
    Surface dst(3, 2, Rgb(0, 100, 255));
    AlphaBlend(dst, 0, 0, 3, 2, Surface(3, 2, Rgb(255, 200, 0)), 1, 0, 200);
    EXPECT_EQ(dst.At(0, 0), Rgb(0, 100, 255));
    // Every channel value under a one-colour tint (the overlay's dimming).
    auto blend = [](int s, int d, int a) { return (s * a + d * (255 - a) + 127) / 255; };
    Surface ramp(256, 1);
    for (int v = 0; v < 256; ++v) ramp.At(v, 0) = Rgb(v, 255 - v, v / 2);
    AlphaBlend(ramp, 0, 0, 256, 1, Surface(2, 2, Rgb(10, 20, 30)), 0, 0, 2, 2, 80);
    for (int v = 0; v < 256; ++v)
        ASSERT_EQ(ramp.At(v, 0),
                  Rgb(blend(10, v, 80), blend(20, 255 - v, 80), blend(30, v / 2, 80)));
}

TEST(GdiIcon, DrawIconAppliesMaskThenColourAndClips) {
    IconImage icon;
    icon.width = 2, icon.height = 2;
    icon.color = {0x000000, 0xFF0000, 0xFFFFFF, 0x0000FF};
    icon.mask = {1, 0, 1, 0}; // keep, replace, invert, replace
    Surface dst(3, 3, Rgb(10, 20, 30));
    DrawIcon(dst, 1, 1, icon);
    EXPECT_EQ(dst.At(1, 1), Rgb(10, 20, 30));
    EXPECT_EQ(dst.At(2, 1), Rgb(255, 0, 0));
    EXPECT_EQ(dst.At(1, 2), Rgb(245, 235, 225));

    // Every placement across the edges draws exactly the overlapping part.
    for (int x = -3; x <= 3; ++x)
        for (int y = -3; y <= 3; ++y) {
            Surface s(3, 3, Rgb(10, 20, 30));
            DrawIcon(s, x, y, icon);
            Surface whole(7, 7, Rgb(10, 20, 30));
            DrawIcon(whole, x + 2, y + 2, icon);
            for (int v = 0; v < 3; ++v)
                for (int u = 0; u < 3; ++u) ASSERT_EQ(s.At(u, v), whole.At(u + 2, v + 2));
        }

    // Premultiplied alpha: half-transparent red over white.
    IconImage alpha;
    alpha.width = 1, alpha.height = 1, alpha.hasAlpha = true;
    alpha.color = {0x80800000};
    Surface w(1, 1, 0xFFFFFF);
    DrawIcon(w, 0, 0, alpha);
    EXPECT_EQ(w.At(0, 0), Rgb(255, 127, 127));
}

} // namespace
} // namespace gdi
