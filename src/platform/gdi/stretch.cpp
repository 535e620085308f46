// StretchBlt: nearest-pixel stretch for the colour modes, area averaging for kHalftone.
//
// The halftone stretch is what makes the thumbnails, so it is separable and reads every
// source pixel once: for each destination row the source rows it covers are summed
// (plain integer adds for the fully covered rows, which all weigh the same), then each
// destination pixel takes the weighted sum of the columns it covers.
#include "platform/gdi/surface.h"

#include <algorithm>
#include <cstdlib>

namespace gdi {

namespace {

// Larger sizes are refused: they cannot name real pixels, and the 64-bit products of the
// weight tables stay far from overflow below this.
constexpr int64_t kMaxExtent = int64_t(1) << 30;

// Per destination index along one axis, the source indices it reads and their weights.
// Only indices inside the source surface are listed; the others read as black.
struct Taps {
    std::vector<size_t> first; // destination index -> first tap; one more entry at the end
    std::vector<int> source;
    std::vector<double> weight;

    void Add(int64_t s, double w, int64_t limit) {
        if (s < 0 || s >= limit || w == 0) return;
        source.push_back(int(s));
        weight.push_back(w);
    }
};

// Source interval [start, start+len) seen by destination indices [o0, o1) of dlen.
// Shrinking (and equal sizes): each destination index averages the source interval it
// covers, a partly covered source pixel weighing by the part covered.
Taps AreaTaps(int64_t start, int64_t len, int64_t dlen, int64_t o0, int64_t o1, int64_t limit) {
    Taps t;
    // All distances are in units of 1/dlen source pixel, so every bound is an integer.
    for (int64_t o = o0; o < o1; ++o) {
        t.first.push_back(t.source.size());
        int64_t from = o * len, to = from + len;
        int64_t lo = std::max(from / dlen, -start),
                hi = std::min((to - 1) / dlen, limit - 1 - start);
        for (int64_t i = lo; i <= hi; ++i) {
            int64_t covered = std::min(to, (i + 1) * dlen) - std::max(from, i * dlen);
            t.Add(start + i, double(covered) / double(len), limit);
        }
    }
    t.first.push_back(t.source.size());
    return t;
}

// Enlarging: linear interpolation between the two nearest source pixel centres, the edge
// pixels of the source rectangle held beyond the outermost centres.
Taps LinearTaps(int64_t start, int64_t len, int64_t dlen, int64_t o0, int64_t o1, int64_t limit) {
    Taps t;
    for (int64_t o = o0; o < o1; ++o) {
        t.first.push_back(t.source.size());
        // Centre of o in source pixels, less one half: num / den.
        int64_t num = (2 * o + 1) * len - dlen, den = 2 * dlen;
        int64_t i = num > 0 ? num / den : 0;
        if (num <= 0 || i >= len - 1) {
            t.Add(start + std::min(i, len - 1), 1.0, limit);
        } else {
            double f = double(num - i * den) / double(den);
            t.Add(start + i, 1.0 - f, limit);
            t.Add(start + i + 1, f, limit);
        }
    }
    t.first.push_back(t.source.size());
    return t;
}

Taps HalftoneTaps(int64_t start, int64_t len, int64_t dlen, int64_t o0, int64_t o1, int64_t limit) {
    return len >= dlen ? AreaTaps(start, len, dlen, o0, o1, limit)
                       : LinearTaps(start, len, dlen, o0, o1, limit);
}

// Where the unflipped result [o0, o1) lands: destination index = base + step * o.
struct Placement {
    int64_t o0, o1, base, step;
};

// A negative size names the rectangle ending at the given coordinate (inclusive), as the
// platform normalises it; opposite signs of the two sizes mirror the picture.
bool Place(int64_t d, int64_t dlen, int64_t slen, int64_t limit, int64_t& s, Placement& p) {
    bool flip = (dlen < 0) != (slen < 0);
    int64_t left = dlen < 0 ? d + dlen + 1 : d;
    int64_t n = std::llabs(dlen);
    if (slen < 0) s = s + slen + 1;
    int64_t i0 = std::max<int64_t>(0, -left), i1 = std::min(n, limit - left);
    if (i0 >= i1) return false;
    p = flip ? Placement{n - i1, n - i0, left + n - 1, -1} : Placement{i0, i1, left, 1};
    return true;
}

inline Pixel ToPixel(float b, float g, float r) {
    // v is a mean of channels, never negative: adding a half rounds it to the nearest.
    auto channel = [](float v) {
        return Pixel(std::clamp(int(v + 0.5f), 0, 255)); // NOLINT(bugprone-incorrect-roundings)
    };
    return (channel(r) << 16) | (channel(g) << 8) | channel(b);
}

void Nearest(Surface& dst, const Placement& px, const Placement& py, const Surface& src, int64_t sx,
             int64_t sy, int64_t sw, int64_t sh, int64_t dw, int64_t dh) {
    std::vector<int64_t> column;
    for (int64_t o = px.o0; o < px.o1; ++o) column.push_back(sx + o * sw / dw);
    for (int64_t o = py.o0; o < py.o1; ++o) {
        int64_t y = sy + o * sh / dh;
        Pixel* out = dst.Row(int(py.base + py.step * o));
        const Pixel* in = y >= 0 && y < src.Height() ? src.Row(int(y)) : nullptr;
        for (int64_t j = px.o0; j < px.o1; ++j) {
            int64_t x = column[size_t(j - px.o0)];
            out[px.base + px.step * j] = in && x >= 0 && x < src.Width() ? in[x] : 0;
        }
    }
}

// The loops below are written out four pixels at a time, which compilers turn into vector
// code even at -O2, where loop vectorisation may be off.

// Adds one source row into the running sums, two channels to a 32-bit word: blue and red
// (mask 0x00FF00FF), green and the unused byte. A 16-bit field holds 256 rows.
void SumRow(const Pixel* __restrict in, uint32_t* __restrict rb, uint32_t* __restrict ga,
            size_t n) {
    size_t x = 0;
    for (; x + 4 <= n; x += 4) {
        uint32_t p0 = in[x], p1 = in[x + 1], p2 = in[x + 2], p3 = in[x + 3];
        rb[x] += p0 & 0x00FF00FFu;
        rb[x + 1] += p1 & 0x00FF00FFu;
        rb[x + 2] += p2 & 0x00FF00FFu;
        rb[x + 3] += p3 & 0x00FF00FFu;
        ga[x] += (p0 >> 8) & 0x00FF00FFu;
        ga[x + 1] += (p1 >> 8) & 0x00FF00FFu;
        ga[x + 2] += (p2 >> 8) & 0x00FF00FFu;
        ga[x + 3] += (p3 >> 8) & 0x00FF00FFu;
    }
    for (; x < n; ++x) {
        rb[x] += in[x] & 0x00FF00FFu;
        ga[x] += (in[x] >> 8) & 0x00FF00FFu;
    }
}

// acc += w * sums, for one group of rows summed by SumRow.
void AddSums(const uint32_t* __restrict rb, const uint32_t* __restrict ga, float w,
             float* __restrict b, float* __restrict g, float* __restrict r, size_t n) {
    size_t x = 0;
    for (; x + 4 <= n; x += 4) {
        for (size_t k = x; k < x + 4; ++k) b[k] += w * float(int32_t(rb[k] & 0xFFFF));
        for (size_t k = x; k < x + 4; ++k) g[k] += w * float(int32_t(ga[k] & 0xFFFF));
        for (size_t k = x; k < x + 4; ++k) r[k] += w * float(int32_t(rb[k] >> 16));
    }
    for (; x < n; ++x) {
        b[x] += w * float(int32_t(rb[x] & 0xFFFF));
        g[x] += w * float(int32_t(ga[x] & 0xFFFF));
        r[x] += w * float(int32_t(rb[x] >> 16));
    }
}

// acc += w * row, for a row that is a group of its own (a partly covered one).
void AddRow(const Pixel* __restrict in, float w, float* __restrict b, float* __restrict g,
            float* __restrict r, size_t n) {
    size_t x = 0;
    for (; x + 4 <= n; x += 4) {
        for (size_t k = x; k < x + 4; ++k) b[k] += w * float(int32_t(in[k] & 255));
        for (size_t k = x; k < x + 4; ++k) g[k] += w * float(int32_t((in[k] >> 8) & 255));
        for (size_t k = x; k < x + 4; ++k) r[k] += w * float(int32_t((in[k] >> 16) & 255));
    }
    for (; x < n; ++x) {
        b[x] += w * float(int32_t(in[x] & 255));
        g[x] += w * float(int32_t((in[x] >> 8) & 255));
        r[x] += w * float(int32_t((in[x] >> 16) & 255));
    }
}

// Shrinking by the same power of two on both axes, unmirrored and inside the source (the
// zoom's 50 and 25 %): each destination pixel is the rounded mean of its k x k block, in
// integers. The weights of the general road are then exact, so the values are the same.
bool HalftoneBlocks(Surface& dst, const Placement& px, const Placement& py, const Surface& src,
                    int64_t sx, int64_t sy, int64_t sw, int64_t sh, int64_t dw, int64_t dh) {
    if (px.step != 1 || py.step != 1 || sw % dw != 0 || sh % dh != 0) return false;
    const int64_t k = sw / dw;
    if (sh / dh != k || k < 2 || k > 16 || (k & (k - 1)) != 0) return false;
    const int64_t x0 = sx + px.o0 * k, y0 = sy + py.o0 * k;
    if (x0 < 0 || y0 < 0 || sx + px.o1 * k > src.Width() || sy + py.o1 * k > src.Height())
        return false;
    const size_t largeur = size_t(px.o1 - px.o0), n = largeur * size_t(k);
    if (k == 2) {
        // Halving, the common case: four pixels at once in packed channel pairs.
        constexpr uint32_t m = 0x00FF00FFu, arrondi = 0x00020002u;
        for (int64_t o = py.o0; o < py.o1; ++o) {
            const Pixel* a = src.Row(int(sy + o * 2)) + x0;
            const Pixel* b = src.Row(int(sy + o * 2 + 1)) + x0;
            Pixel* out = dst.Row(int(py.base + o)) + px.base + px.o0;
            for (size_t j = 0; j < largeur; ++j, a += 2, b += 2) {
                const uint32_t rb = (a[0] & m) + (a[1] & m) + (b[0] & m) + (b[1] & m) + arrondi;
                const uint32_t ga = ((a[0] >> 8) & m) + ((a[1] >> 8) & m) + ((b[0] >> 8) & m) +
                                    ((b[1] >> 8) & m) + arrondi;
                out[j] = ((rb >> 2) & m) | (((ga >> 2) & m) << 8);
            }
        }
        return true;
    }
    const uint32_t aire = uint32_t(k * k), moitie = aire / 2;
    std::vector<uint32_t> rb(n), ga(n);
    for (int64_t o = py.o0; o < py.o1; ++o) {
        std::fill(rb.begin(), rb.end(), 0u);
        std::fill(ga.begin(), ga.end(), 0u);
        for (int64_t i = 0; i < k; ++i)
            SumRow(src.Row(int(sy + o * k + i)) + x0, rb.data(), ga.data(), n);
        Pixel* out = dst.Row(int(py.base + o)) + px.base + px.o0;
        for (size_t j = 0; j < largeur; ++j) {
            uint32_t b = 0, g = 0, r = 0;
            for (size_t x = j * size_t(k); x < (j + 1) * size_t(k); ++x) {
                b += rb[x] & 0xFFFF;
                r += rb[x] >> 16;
                g += ga[x] & 0xFFFF;
            }
            out[j] = ((r + moitie) / aire << 16) | ((g + moitie) / aire << 8) | (b + moitie) / aire;
        }
    }
    return true;
}

void Halftone(Surface& dst, const Placement& px, const Placement& py, const Surface& src,
              int64_t sx, int64_t sy, int64_t sw, int64_t sh, int64_t dw, int64_t dh) {
    if (HalftoneBlocks(dst, px, py, src, sx, sy, sw, sh, dw, dh)) return;
    Taps tx = HalftoneTaps(sx, sw, dw, px.o0, px.o1, src.Width());
    Taps ty = HalftoneTaps(sy, sh, dh, py.o0, py.o1, src.Height());
    // The source columns any destination pixel reads: [c0, c1).
    int c0 = 0, c1 = 0;
    if (!tx.source.empty()) {
        auto [lo, hi] = std::minmax_element(tx.source.begin(), tx.source.end());
        c0 = *lo, c1 = *hi + 1;
    }
    size_t n = size_t(c1 - c0);
    std::vector<float> accB(n), accG(n), accR(n);
    std::vector<uint32_t> rb(n), ga(n);
    for (int64_t o = py.o0; o < py.o1; ++o) {
        std::fill(accB.begin(), accB.end(), 0.0f);
        std::fill(accG.begin(), accG.end(), 0.0f);
        std::fill(accR.begin(), accR.end(), 0.0f);
        size_t t = ty.first[size_t(o - py.o0)], tEnd = ty.first[size_t(o - py.o0) + 1];
        while (t < tEnd && n > 0) {
            // Rows of equal weight (the fully covered ones) are summed as integers and
            // weighted once.
            size_t group = t + 1;
            float w = float(ty.weight[t]);
            while (group < tEnd && ty.weight[group] == ty.weight[t] && group - t < 256) ++group;
            if (group == t + 1) {
                AddRow(src.Row(ty.source[t]) + c0, w, accB.data(), accG.data(), accR.data(), n);
                t = group;
                continue;
            }
            std::fill(rb.begin(), rb.end(), 0u);
            std::fill(ga.begin(), ga.end(), 0u);
            for (; t < group; ++t) SumRow(src.Row(ty.source[t]) + c0, rb.data(), ga.data(), n);
            AddSums(rb.data(), ga.data(), w, accB.data(), accG.data(), accR.data(), n);
        }
        Pixel* out = dst.Row(int(py.base + py.step * o));
        for (int64_t j = px.o0; j < px.o1; ++j) {
            float b = 0, g = 0, r = 0;
            for (size_t k = tx.first[size_t(j - px.o0)]; k < tx.first[size_t(j - px.o0) + 1]; ++k) {
                size_t x = size_t(tx.source[k] - c0);
                float w = float(tx.weight[k]);
                b += w * accB[x], g += w * accG[x], r += w * accR[x];
            }
            out[px.base + px.step * j] = ToPixel(b, g, r);
        }
    }
}

} // namespace

void StretchBlt(Surface& dst, int dx, int dy, int dw, int dh, const Surface& src, int sx, int sy,
                int sw, int sh, StretchMode mode) {
    for (int64_t v : {dw, dh, sw, sh})
        if (v == 0 || std::llabs(v) > kMaxExtent) return;
    if (&dst == &src) {
        // The source is the destination: the copy keeps what is read from being overwritten.
        Surface copy = src; // NOLINT(performance-unnecessary-copy-initialization)
        StretchBlt(dst, dx, dy, dw, dh, copy, sx, sy, sw, sh, mode);
        return;
    }
    int64_t x = sx, y = sy;
    Placement px, py;
    if (!Place(dx, dw, sw, dst.Width(), x, px) || !Place(dy, dh, sh, dst.Height(), y, py)) return;
    int64_t asw = std::llabs(int64_t(sw)), ash = std::llabs(int64_t(sh));
    int64_t adw = std::llabs(int64_t(dw)), adh = std::llabs(int64_t(dh));
    if (mode == kHalftone)
        Halftone(dst, px, py, src, x, y, asw, ash, adw, adh);
    else
        Nearest(dst, px, py, src, x, y, asw, ash, adw, adh);
}

} // namespace gdi
