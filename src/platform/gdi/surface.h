// 32-bit pixel surfaces and the raster operations the program uses, written once in
// portable C++ so that they behave the same on Windows, under Wine and in tests.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace gdi {

// A pixel is 0x00RRGGBB in memory order B, G, R, X (the layout of a 32-bit DIB).
using Pixel = uint32_t;

constexpr Pixel Rgb(int r, int g, int b) {
    return (Pixel(r & 255) << 16) | (Pixel(g & 255) << 8) | Pixel(b & 255);
}
constexpr int RedOf(Pixel p) {
    return int((p >> 16) & 255);
}
constexpr int GreenOf(Pixel p) {
    return int((p >> 8) & 255);
}
constexpr int BlueOf(Pixel p) {
    return int(p & 255);
}

// Colours as the toolkit stores them (0x00BBGGRR, a COLORREF) to and from pixels.
constexpr Pixel FromColorRef(uint32_t c) {
    return Rgb(int(c & 255), int((c >> 8) & 255), int((c >> 16) & 255));
}
constexpr uint32_t ToColorRef(Pixel p) {
    return uint32_t(RedOf(p)) | (uint32_t(GreenOf(p)) << 8) | (uint32_t(BlueOf(p)) << 16);
}

// Top-down rows, no padding: pixel (x, y) is pixels[y * width + x].
class Surface {
public:
    Surface() = default;
    Surface(int width, int height, Pixel fill = 0); // a negative size counts as 0

    int Width() const { return width_; }
    int Height() const { return height_; }
    bool Empty() const { return width_ <= 0 || height_ <= 0; }

    Pixel At(int x, int y) const { return pixels_[size_t(y) * size_t(width_) + size_t(x)]; }
    Pixel& At(int x, int y) { return pixels_[size_t(y) * size_t(width_) + size_t(x)]; }
    Pixel* Row(int y) { return pixels_.data() + size_t(y) * size_t(width_); }
    const Pixel* Row(int y) const { return pixels_.data() + size_t(y) * size_t(width_); }
    Pixel* Data() { return pixels_.data(); }
    const Pixel* Data() const { return pixels_.data(); }

    void Fill(Pixel p);
    void FillRect(int x, int y, int w, int h, Pixel p);
    // New size; the old pixels stay at the top left, new area takes `fill`.
    void Resize(int width, int height, Pixel fill);

    bool operator==(const Surface& o) const {
        return width_ == o.width_ && height_ == o.height_ && pixels_ == o.pixels_;
    }

private:
    int width_ = 0;
    int height_ = 0;
    std::vector<Pixel> pixels_;
};

// Stretch modes of SetStretchBltMode.
enum StretchMode { kBlackOnWhite = 1, kWhiteOnBlack = 2, kColorOnColor = 3, kHalftone = 4 };

// SRCCOPY copy, clipped to both surfaces like the platform call. The two may be the same
// surface, with overlapping rectangles.
void BitBlt(Surface& dst, int dx, int dy, int w, int h, const Surface& src, int sx, int sy);

// SRCCOPY stretch of the source rectangle onto the destination rectangle, clipped to the
// destination. Source pixels outside the source surface read as black. A negative size names
// the rectangle that ends at the given coordinate; opposite signs of a destination and a
// source size mirror the picture along that axis. Sizes of 0 or beyond 2^30 draw nothing.
// kHalftone averages every source pixel that falls into a destination pixel, weighted by the
// part of it covered (area averaging), when shrinking, and interpolates linearly when
// enlarging (each axis on its own); the other modes pick the source pixel
// sx + x * sw / dw, sy + y * sh / dh.
void StretchBlt(Surface& dst, int dx, int dy, int dw, int dh, const Surface& src, int sx, int sy,
                int sw, int sh, StretchMode mode);

// Constant-alpha blend (AlphaBlend with SourceConstantAlpha, no per-pixel alpha):
// dst = (src * alpha + dst * (255 - alpha) + 127) / 255 per channel. Clipped to the
// destination; as with the platform call, nothing is drawn when a size is not positive or the
// source rectangle does not lie inside the source surface.
void AlphaBlend(Surface& dst, int dx, int dy, int w, int h, const Surface& src, int sx, int sy,
                uint8_t alpha);
// The same with the source rectangle stretched onto the destination one (nearest pixel).
void AlphaBlend(Surface& dst, int dx, int dy, int dw, int dh, const Surface& src, int sx, int sy,
                int sw, int sh, uint8_t alpha);

// A cursor or icon picture: either a colour image with an AND mask (classic icons:
// dst = (dst AND mask) XOR color), or a 32-bit image with per-pixel alpha.
struct IconImage {
    int width = 0;
    int height = 0;
    bool hasAlpha = false;
    std::vector<uint32_t> color; // width*height; with alpha: 0xAARRGGBB premultiplied
    std::vector<uint8_t> mask;   // width*height, 1 = keep destination (AND mask set)
    int hotspotX = 0;            // DrawIcon places the top left corner, not the hotspot
    int hotspotY = 0;
};

// DrawIcon: the icon's top-left corner at (x, y), clipped. A classic icon without a full mask
// is drawn opaque; an icon whose colour vector is short draws nothing.
void DrawIcon(Surface& dst, int x, int y, const IconImage& icon);

} // namespace gdi
