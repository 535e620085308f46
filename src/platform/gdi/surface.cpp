// Surface storage and the unstretched raster operations: BitBlt, AlphaBlend, DrawIcon.
#include "platform/gdi/surface.h"

#include "runtime/errors.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>

namespace gdi {

namespace {

// A rectangle copied from one surface to another at the same size, reduced so that it
// lies inside both. Works in 64 bits so that no offset or size can overflow.
struct CopyRect {
    int64_t dx, dy, sx, sy, w, h;
};

bool ClipToBoth(CopyRect& r, int dstW, int dstH, int srcW, int srcH) {
    if (r.w <= 0 || r.h <= 0) return false;
    if (r.dx < 0) r.sx -= r.dx, r.w += r.dx, r.dx = 0;
    if (r.dy < 0) r.sy -= r.dy, r.h += r.dy, r.dy = 0;
    if (r.sx < 0) r.dx -= r.sx, r.w += r.sx, r.sx = 0;
    if (r.sy < 0) r.dy -= r.sy, r.h += r.sy, r.sy = 0;
    r.w = std::min({r.w, int64_t(dstW) - r.dx, int64_t(srcW) - r.sx});
    r.h = std::min({r.h, int64_t(dstH) - r.dy, int64_t(srcH) - r.sy});
    return r.w > 0 && r.h > 0;
}

// Exact (x + 127) / 255 for the blend sums, which stay below 255 * 256.
inline uint32_t Div255(uint32_t x) {
    return (x + 127) / 255;
}

inline Pixel BlendConstant(Pixel s, Pixel d, uint32_t a) {
    uint32_t na = 255 - a;
    uint32_t r = Div255(uint32_t(RedOf(s)) * a + uint32_t(RedOf(d)) * na);
    uint32_t g = Div255(uint32_t(GreenOf(s)) * a + uint32_t(GreenOf(d)) * na);
    uint32_t b = Div255(uint32_t(BlueOf(s)) * a + uint32_t(BlueOf(d)) * na);
    return (r << 16) | (g << 8) | b;
}

} // namespace

Surface::Surface(int width, int height, Pixel fill)
    : width_(std::max(width, 0)), height_(std::max(height, 0)) {
    try {
        pixels_.assign(size_t(width_) * size_t(height_), fill);
    } catch (const std::bad_alloc&) {
        rt::Raise(rt::kOutOfMemory);
    } catch (const std::length_error&) {
        rt::Raise(rt::kOutOfMemory);
    }
}

void Surface::Fill(Pixel p) {
    std::fill(pixels_.begin(), pixels_.end(), p);
}

void Surface::FillRect(int x, int y, int w, int h, Pixel p) {
    int64_t x0 = std::max<int64_t>(x, 0), y0 = std::max<int64_t>(y, 0);
    int64_t x1 = std::min<int64_t>(int64_t(x) + w, width_);
    int64_t y1 = std::min<int64_t>(int64_t(y) + h, height_);
    for (int64_t row = y0; row < y1 && x0 < x1; ++row) {
        Pixel* line = Row(int(row));
        std::fill(line + x0, line + x1, p);
    }
}

void Surface::Resize(int width, int height, Pixel fill) {
    Surface next(width, height, fill);
    int w = std::min(width_, next.width_), h = std::min(height_, next.height_);
    for (int y = 0; y < h && w > 0; ++y)
        std::memcpy(next.Row(y), Row(y), size_t(w) * sizeof(Pixel));
    *this = std::move(next);
}

void BitBlt(Surface& dst, int dx, int dy, int w, int h, const Surface& src, int sx, int sy) {
    CopyRect r{dx, dy, sx, sy, w, h};
    // A negative size names the rectangle that ends at the given corner, as the platform does.
    if (r.w < 0) r.dx += r.w + 1, r.sx += r.w + 1, r.w = -r.w;
    if (r.h < 0) r.dy += r.h + 1, r.sy += r.h + 1, r.h = -r.h;
    if (!ClipToBoth(r, dst.Width(), dst.Height(), src.Width(), src.Height())) return;
    size_t bytes = size_t(r.w) * sizeof(Pixel);
    // Within one surface the rows must be walked away from the overlap.
    bool upward = &dst == &src && r.dy > r.sy;
    for (int64_t i = 0; i < r.h; ++i) {
        int64_t row = upward ? r.h - 1 - i : i;
        std::memmove(dst.Row(int(r.dy + row)) + r.dx, src.Row(int(r.sy + row)) + r.sx, bytes);
    }
}

void AlphaBlend(Surface& dst, int dx, int dy, int w, int h, const Surface& src, int sx, int sy,
                uint8_t alpha) {
    AlphaBlend(dst, dx, dy, w, h, src, sx, sy, w, h, alpha);
}

void AlphaBlend(Surface& dst, int dx, int dy, int dw, int dh, const Surface& src, int sx, int sy,
                int sw, int sh, uint8_t alpha) {
    // The platform call refuses negative sizes and a source rectangle outside the source.
    if (dw <= 0 || dh <= 0 || sw <= 0 || sh <= 0 || sx < 0 || sy < 0) return;
    if (int64_t(sx) + sw > src.Width() || int64_t(sy) + sh > src.Height()) return;
    const Surface* from = &src;
    Surface copy;
    if (&dst == &src) from = &(copy = src);
    int64_t x0 = std::max<int64_t>(0, -int64_t(dx));
    int64_t x1 = std::min<int64_t>(dw, int64_t(dst.Width()) - dx);
    int64_t y0 = std::max<int64_t>(0, -int64_t(dy));
    int64_t y1 = std::min<int64_t>(dh, int64_t(dst.Height()) - dy);
    if (x0 >= x1 || y0 >= y1) return;
    // A source of one colour (a tint) blends through a table per channel.
    const Pixel c = from->Row(sy)[sx];
    bool uni = true;
    for (int y = sy; y < sy + sh && uni; ++y)
        uni = std::all_of(from->Row(y) + sx, from->Row(y) + sx + sw,
                          [c](Pixel p) { return ((p ^ c) & 0xFFFFFF) == 0; });
    if (uni) {
        uint8_t tr[256], tg[256], tb[256];
        const uint32_t na = 255u - alpha;
        for (uint32_t v = 0; v < 256; ++v) {
            tr[v] = uint8_t(Div255(uint32_t(RedOf(c)) * alpha + v * na));
            tg[v] = uint8_t(Div255(uint32_t(GreenOf(c)) * alpha + v * na));
            tb[v] = uint8_t(Div255(uint32_t(BlueOf(c)) * alpha + v * na));
        }
        for (int64_t y = y0; y < y1; ++y) {
            Pixel* d = dst.Row(int(dy + y)) + dx;
            for (int64_t x = x0; x < x1; ++x) {
                const Pixel p = d[x];
                d[x] = (Pixel(tr[RedOf(p)]) << 16) | (Pixel(tg[GreenOf(p)]) << 8) | tb[BlueOf(p)];
            }
        }
        return;
    }
    std::vector<int> column(size_t(x1 - x0));
    for (int64_t x = x0; x < x1; ++x) column[size_t(x - x0)] = int(sx + x * sw / dw);
    for (int64_t y = y0; y < y1; ++y) {
        const Pixel* s = from->Row(int(sy + y * sh / dh));
        Pixel* d = dst.Row(int(dy + y)) + dx;
        for (int64_t x = x0; x < x1; ++x)
            d[x] = BlendConstant(s[column[size_t(x - x0)]], d[x], alpha);
    }
}

void DrawIcon(Surface& dst, int x, int y, const IconImage& icon) {
    if (icon.width <= 0 || icon.height <= 0) return;
    size_t count = size_t(icon.width) * size_t(icon.height);
    if (icon.color.size() < count) return;
    // A classic icon without a mask is drawn opaque.
    bool masked = !icon.hasAlpha && icon.mask.size() >= count;
    int64_t x0 = std::max<int64_t>(0, -int64_t(x));
    int64_t x1 = std::min<int64_t>(icon.width, int64_t(dst.Width()) - x);
    int64_t y0 = std::max<int64_t>(0, -int64_t(y));
    int64_t y1 = std::min<int64_t>(icon.height, int64_t(dst.Height()) - y);
    for (int64_t iy = y0; iy < y1; ++iy) {
        // Indexed from the row's start: x may be negative, and no pointer may point
        // outside the picture.
        Pixel* row = dst.Row(int(y + iy));
        size_t base = size_t(iy) * size_t(icon.width);
        for (int64_t ix = x0; ix < x1; ++ix) {
            Pixel& dp = row[x + ix];
            uint32_t c = icon.color[base + size_t(ix)];
            if (icon.hasAlpha) {
                // Premultiplied source over destination.
                uint32_t na = 255 - (c >> 24);
                Pixel p = dp;
                uint32_t r = std::min<uint32_t>(255, ((c >> 16) & 255) + Div255(RedOf(p) * na));
                uint32_t g = std::min<uint32_t>(255, ((c >> 8) & 255) + Div255(GreenOf(p) * na));
                uint32_t b = std::min<uint32_t>(255, (c & 255) + Div255(BlueOf(p) * na));
                dp = (r << 16) | (g << 8) | b;
            } else {
                Pixel keep = masked && icon.mask[base + size_t(ix)] ? 0x00FFFFFFu : 0u;
                dp = ((dp & keep) ^ c) & 0x00FFFFFFu;
            }
        }
    }
}

} // namespace gdi
