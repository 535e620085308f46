// Colour reduction for GIF output.
//
// Screen pictures mostly hold a few hundred colours at most; those come back exactly. Any
// other picture gets a palette fitted to it: Wu's variance-minimising cut of a 6-bit-per-channel
// histogram, refined by k-means over the picture's colours (its exact colours when there are
// not too many, else the mean colours of the histogram cells). Each pixel then takes its
// nearest entry, found once per distinct colour through a cache, and each entry moves to the
// mean of its pixels. There is no dithering: flat areas and text, which make up most screen
// pictures, look best undithered, and the noise that dithering spreads lowers the PSNR.
#include "platform/gdi/quantize.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace gdi {
namespace {

constexpr Pixel kRgbMask = 0xFFFFFF;

// Multiplicative hash; callers take its top bits.
inline uint32_t Hash(Pixel p) {
    return p * 0x9E3779B1u;
}

size_t PixelCount(const Surface& s) {
    return s.Empty() ? 0 : size_t(s.Width()) * size_t(s.Height());
}

// Calls run(colour, first, end) for each run of equal colours, in pixel order, until it
// returns false.
template <class Run> void ForEachRun(const Surface& s, Run run) {
    const Pixel* px = s.Data();
    const size_t n = PixelCount(s);
    size_t i = 0;
    while (i < n) {
        const Pixel p = px[i] & kRgbMask;
        size_t j = i + 1;
        while (j < n && (px[j] & kRgbMask) == p) ++j;
        if (!run(p, i, j)) return;
        i = j;
    }
}

// ---- Distinct colours -------------------------------------------------------------------

// Exact colours with their pixel counts, in order of first appearance.
struct ColourCount {
    std::vector<Pixel> colours;
    std::vector<uint64_t> counts;
    bool complete = true; // false: the picture has more than the limit, counts are partial
};

// Counts distinct colours in an open-addressing table until more than `limit` turn up. While
// there are no more than `exactMax`, each pixel's rank is written to `indices`.
ColourCount CountColours(const Surface& s, size_t exactMax, size_t limit,
                         std::vector<uint8_t>& indices) {
    ColourCount cc;
    int bits = 10;
    std::vector<int32_t> slots(size_t(1) << bits, -1);
    auto slotOf = [&](Pixel p) {
        const size_t mask = slots.size() - 1;
        size_t h = Hash(p) >> (32 - bits);
        while (slots[h] >= 0 && cc.colours[size_t(slots[h])] != p) h = (h + 1) & mask;
        return h;
    };
    ForEachRun(s, [&](Pixel p, size_t first, size_t end) {
        size_t h = slotOf(p);
        if (slots[h] < 0) {
            if (cc.colours.size() == limit) {
                cc.complete = false;
                return false;
            }
            slots[h] = int32_t(cc.colours.size());
            cc.colours.push_back(p);
            cc.counts.push_back(0);
            if (cc.colours.size() * 2 > slots.size()) { // keep the load under a half
                ++bits;
                slots.assign(size_t(1) << bits, -1);
                for (size_t k = 0; k < cc.colours.size(); ++k)
                    slots[slotOf(cc.colours[k])] = int32_t(k);
                h = slotOf(p);
            }
        }
        const size_t rank = size_t(slots[h]);
        cc.counts[rank] += end - first;
        if (cc.colours.size() <= exactMax)
            std::fill(indices.begin() + std::ptrdiff_t(first),
                      indices.begin() + std::ptrdiff_t(end), uint8_t(rank));
        return true;
    });
    return cc;
}

// ---- Histogram and Wu's cut -------------------------------------------------------------

constexpr int kCellBits = 6;
constexpr int kShift = 8 - kCellBits;
constexpr int kSide = (1 << kCellBits) + 1; // plane 0 is the zero border of the running sums

struct Moments {
    int64_t w = 0, r = 0, g = 0, b = 0, rgb2 = 0; // pixels, channel sums, sum of squares

    Moments& operator+=(const Moments& o) {
        w += o.w, r += o.r, g += o.g, b += o.b, rgb2 += o.rgb2;
        return *this;
    }
    Moments& operator-=(const Moments& o) {
        w -= o.w, r -= o.r, g -= o.g, b -= o.b, rgb2 -= o.rgb2;
        return *this;
    }
    // Sum of squared channel sums over the weight: what a cut maximises.
    double Spread() const {
        return (double(r) * double(r) + double(g) * double(g) + double(b) * double(b)) / double(w);
    }
    double Variance() const { return w > 0 ? double(rgb2) - Spread() : 0.0; }
};

// A box of cells: lo exclusive, hi inclusive, per channel (red, green, blue).
struct Box {
    std::array<int, 3> lo{0, 0, 0};
    std::array<int, 3> hi{kSide - 1, kSide - 1, kSide - 1};
};

// Colour samples for k-means: a colour and how many pixels it stands for.
struct Sample {
    float r, g, b;
    double w;
};

class Histogram {
public:
    Histogram() : cells_(size_t(kSide) * kSide * kSide) {}

    void Add(Pixel p, uint64_t count) {
        const int64_t n = int64_t(count), r = RedOf(p), g = GreenOf(p), b = BlueOf(p);
        Moments& m = At((r >> kShift) + 1, (g >> kShift) + 1, (b >> kShift) + 1);
        m.w += n, m.r += n * r, m.g += n * g, m.b += n * b, m.rgb2 += n * (r * r + g * g + b * b);
    }

    // Mean colours of the cells in use. Only before Accumulate.
    std::vector<Sample> CellMeans() const {
        std::vector<Sample> out;
        for (const Moments& m : cells_) {
            if (m.w == 0) continue;
            const double w = double(m.w);
            out.push_back(
                {float(double(m.r) / w), float(double(m.g) / w), float(double(m.b) / w), w});
        }
        return out;
    }

    // Turns the cells into running sums over each box from the origin, so that the moments of
    // any box take eight look-ups.
    void Accumulate() {
        for (int r = 1; r < kSide; ++r)
            for (int g = 1; g < kSide; ++g)
                for (int b = 1; b < kSide; ++b) At(r, g, b) += At(r, g, b - 1);
        for (int r = 1; r < kSide; ++r)
            for (int g = 1; g < kSide; ++g)
                for (int b = 1; b < kSide; ++b) At(r, g, b) += At(r, g - 1, b);
        for (int r = 1; r < kSide; ++r)
            for (int g = 1; g < kSide; ++g)
                for (int b = 1; b < kSide; ++b) At(r, g, b) += At(r - 1, g, b);
    }

    Moments Of(const Box& x) const {
        const auto& [r0, g0, b0] = x.lo;
        const auto& [r1, g1, b1] = x.hi;
        Moments m = At(r1, g1, b1);
        m -= At(r1, g1, b0), m -= At(r1, g0, b1), m += At(r1, g0, b0);
        m -= At(r0, g1, b1), m += At(r0, g1, b0), m += At(r0, g0, b1), m -= At(r0, g0, b0);
        return m;
    }

private:
    Moments& At(int r, int g, int b) {
        return cells_[(size_t(r) * kSide + size_t(g)) * kSide + size_t(b)];
    }
    const Moments& At(int r, int g, int b) const {
        return cells_[(size_t(r) * kSide + size_t(g)) * kSide + size_t(b)];
    }

    std::vector<Moments> cells_;
};

// Splits `box` where the two halves lose the most variance; the far half goes to `other`.
// False when no cut leaves pixels on both sides.
bool Cut(const Histogram& h, Box& box, Box& other) {
    const Moments whole = h.Of(box);
    double best = -1;
    int bestAxis = -1, bestAt = 0;
    for (int axis = 0; axis < 3; ++axis) {
        for (int at = box.lo[axis] + 1; at < box.hi[axis]; ++at) {
            Box near = box;
            near.hi[axis] = at;
            const Moments a = h.Of(near);
            if (a.w == 0) continue;
            Moments b = whole;
            b -= a;
            if (b.w == 0) break;
            const double score = a.Spread() + b.Spread();
            if (score > best) best = score, bestAxis = axis, bestAt = at;
        }
    }
    if (bestAxis < 0) return false;
    other = box;
    box.hi[size_t(bestAxis)] = bestAt;
    other.lo[size_t(bestAxis)] = bestAt;
    return true;
}

struct Centroid {
    double r, g, b;
};

// Wu's colour quantizer: cut the box of greatest variance until there are maxColors boxes or
// none can be cut; the palette is the boxes' mean colours.
std::vector<Centroid> WuPalette(const Histogram& h, size_t maxColors) {
    std::vector<Box> boxes(1);
    std::vector<double> variance{h.Of(boxes[0]).Variance()};
    while (boxes.size() < maxColors) {
        const size_t k =
            size_t(std::max_element(variance.begin(), variance.end()) - variance.begin());
        if (variance[k] <= 0) break;
        Box other;
        if (!Cut(h, boxes[k], other)) {
            variance[k] = 0;
            continue;
        }
        boxes.push_back(other);
        variance[k] = h.Of(boxes[k]).Variance();
        variance.push_back(h.Of(other).Variance());
    }
    std::vector<Centroid> out;
    for (const Box& x : boxes) {
        const Moments m = h.Of(x);
        const double w = double(m.w);
        out.push_back({double(m.r) / w, double(m.g) / w, double(m.b) / w});
    }
    return out;
}

// ---- Nearest colour ---------------------------------------------------------------------

// Nearest of up to 256 colours by squared RGB distance, through a lookup cube: when a cell of
// the cube is first met, the entries that can be nearest to some colour in it are listed
// (those no farther from the cell than the smallest farthest-corner distance of any entry),
// and a query compares only those, typically a handful. Ties go to the lower index.
class NearestColour {
public:
    // `bits` per channel number the cells: fewer, larger cells cost less to list and more to
    // search, which pays when few queries fall into each cell.
    NearestColour(const std::vector<Centroid>& set, int bits)
        : bits_(bits), shift_(8 - bits), cells_(size_t(1) << (3 * bits)) {
        // Unused entries lie far outside the colour cube, so that List can always work on
        // the whole arrays (which the compiler vectorises).
        r_.fill(kFarAway), g_.fill(kFarAway), b_.fill(kFarAway);
        size_ = std::min(set.size(), kMaxEntries);
        for (size_t i = 0; i < size_; ++i)
            r_[i] = float(set[i].r), g_[i] = float(set[i].g), b_[i] = float(set[i].b);
    }

    // Index of the nearest entry to a colour with channels in 0..255; its squared distance
    // in `distance`.
    int Find(float r, float g, float b, float& distance) {
        const int cr = std::clamp(int(r), 0, 255) >> shift_;
        const int cg = std::clamp(int(g), 0, 255) >> shift_;
        const int cb = std::clamp(int(b), 0, 255) >> shift_;
        Cell& c = cells_[size_t((cr << (2 * bits_)) | (cg << bits_) | cb)];
        if (c.count == 0) List(cr, cg, cb, c);
        float best = std::numeric_limits<float>::infinity();
        int bestIndex = 0;
        for (size_t i = c.first; i < c.first + c.count; ++i) {
            const size_t k = candidates_[i];
            const float d = Square(r_[k] - r) + Square(g_[k] - g) + Square(b_[k] - b);
            if (d < best) best = d, bestIndex = int(k);
        }
        distance = best;
        return bestIndex;
    }

private:
    static constexpr size_t kMaxEntries = 256;
    static constexpr float kFarAway = 1e6f;

    struct Cell {
        uint32_t first = 0;
        uint32_t count = 0; // 0: not listed yet
    };

    static float Square(float v) { return v * v; }

    void List(int cr, int cg, int cb, Cell& c) {
        // The cell's box; queries may have fractions, hence the open upper side.
        const float r0 = float(cr << shift_), r1 = r0 + float(1 << shift_);
        const float g0 = float(cg << shift_), g1 = g0 + float(1 << shift_);
        const float b0 = float(cb << shift_), b1 = b0 + float(1 << shift_);
        std::array<float, kMaxEntries> near, far;
        for (size_t i = 0; i < kMaxEntries; ++i) {
            const float nr = std::max(std::max(r0 - r_[i], r_[i] - r1), 0.0f);
            const float ng = std::max(std::max(g0 - g_[i], g_[i] - g1), 0.0f);
            const float nb = std::max(std::max(b0 - b_[i], b_[i] - b1), 0.0f);
            near[i] = nr * nr + ng * ng + nb * nb;
            const float fr = std::max(r_[i] - r0, r1 - r_[i]);
            const float fg = std::max(g_[i] - g0, g1 - g_[i]);
            const float fb = std::max(b_[i] - b0, b1 - b_[i]);
            far[i] = fr * fr + fg * fg + fb * fb;
        }
        float bound = std::numeric_limits<float>::infinity();
        for (size_t i = 0; i < size_; ++i) bound = std::min(bound, far[i]);
        bound += 1.0f; // against rounding: a spare candidate costs little
        c.first = uint32_t(candidates_.size());
        for (size_t i = 0; i < size_; ++i)
            if (near[i] <= bound) candidates_.push_back(uint8_t(i));
        c.count = uint32_t(candidates_.size() - c.first);
    }

    int bits_, shift_;
    std::array<float, kMaxEntries> r_, g_, b_;
    size_t size_ = 0;
    std::vector<Cell> cells_;
    std::vector<uint8_t> candidates_;
};

// Bits per channel of the cube for about `queries` look-ups, at most `most`: listing a cell
// costs about three plain searches of every entry, so a cell should serve several queries;
// a small picture, whose colours each fall into a cell of their own, takes fewer, larger
// cells. The answers are the same at any size.
int CellBits(size_t queries, int most) {
    int bits = 1;
    while (bits < most && (size_t(1) << (3 * (bits + 1))) * 8 <= queries) ++bits;
    return bits;
}

// ---- K-means ----------------------------------------------------------------------------

// Lloyd's iterations over the samples, starting from `centroids`. A centroid left without
// samples, and every slot up to maxColors still free, is given the sample that costs the most
// (weight times squared distance to its centroid), so that no entry is wasted.
void Refine(const std::vector<Sample>& samples, std::vector<Centroid>& centroids,
            size_t maxColors) {
    constexpr int kMaxPasses = 8;
    constexpr double kMinGain = 1e-3; // stop when a pass lowers the error by less than this part
    std::vector<double> cost(samples.size());
    double previous = std::numeric_limits<double>::infinity();
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        NearestColour nearest(centroids, CellBits(samples.size(), 4));
        std::vector<std::array<double, 4>> sums(centroids.size(), {0, 0, 0, 0});
        double total = 0;
        for (size_t i = 0; i < samples.size(); ++i) {
            const Sample& s = samples[i];
            float d = 0;
            const int k = nearest.Find(s.r, s.g, s.b, d);
            auto& sum = sums[size_t(k)];
            sum[0] += s.w * s.r, sum[1] += s.w * s.g, sum[2] += s.w * s.b, sum[3] += s.w;
            cost[i] = s.w * double(d);
            total += cost[i];
        }
        std::vector<size_t> free;
        for (size_t k = 0; k < centroids.size(); ++k) {
            const auto& sum = sums[k];
            if (sum[3] > 0)
                centroids[k] = {sum[0] / sum[3], sum[1] / sum[3], sum[2] / sum[3]};
            else
                free.push_back(k);
        }
        for (size_t k = centroids.size(); k < maxColors; ++k) free.push_back(k);
        std::vector<size_t> order;
        for (size_t i = 0; i < samples.size(); ++i)
            if (cost[i] > 0) order.push_back(i);
        const size_t seeds = std::min(free.size(), order.size());
        if (seeds == 0 && pass > 0 && previous - total <= previous * kMinGain) break;
        previous = total;
        std::partial_sort(
            order.begin(), order.begin() + std::ptrdiff_t(seeds), order.end(),
            [&](size_t a, size_t b) { return cost[a] != cost[b] ? cost[a] > cost[b] : a < b; });
        for (size_t j = 0; j < seeds; ++j) {
            const Sample& s = samples[order[j]];
            const Centroid c{s.r, s.g, s.b};
            if (free[j] < centroids.size())
                centroids[free[j]] = c;
            else
                centroids.push_back(c);
        }
    }
}

// ---- Mapping ----------------------------------------------------------------------------

// Gives each pixel its nearest palette entry (one look-up per distinct colour, through a
// direct-mapped cache), then moves each entry to the mean of its pixels, which can only lower
// the error, and drops the unused ones.
void MapPixels(const Surface& s, std::vector<Pixel>& palette, std::vector<uint8_t>& indices) {
    std::vector<Centroid> set;
    set.reserve(palette.size());
    for (Pixel p : palette)
        set.push_back({double(RedOf(p)), double(GreenOf(p)), double(BlueOf(p))});
    NearestColour nearest(set, CellBits(PixelCount(s), 5));
    constexpr int kCacheBits = 16;
    constexpr uint32_t kUnused = 0xFF000000; // never equal to a masked colour
    std::vector<uint32_t> keys(size_t(1) << kCacheBits, kUnused);
    std::vector<uint8_t> values(keys.size());
    std::vector<std::array<uint64_t, 4>> sums(palette.size(), {0, 0, 0, 0});
    ForEachRun(s, [&](Pixel p, size_t first, size_t end) {
        const size_t slot = Hash(p) >> (32 - kCacheBits);
        if (keys[slot] != p) {
            float d = 0;
            keys[slot] = p;
            values[slot] =
                uint8_t(nearest.Find(float(RedOf(p)), float(GreenOf(p)), float(BlueOf(p)), d));
        }
        const uint8_t k = values[slot];
        std::fill(indices.begin() + std::ptrdiff_t(first), indices.begin() + std::ptrdiff_t(end),
                  k);
        const uint64_t n = end - first;
        auto& sum = sums[k];
        sum[0] += n * uint64_t(RedOf(p)), sum[1] += n * uint64_t(GreenOf(p));
        sum[2] += n * uint64_t(BlueOf(p)), sum[3] += n;
        return true;
    });
    std::vector<uint8_t> renumber(palette.size());
    std::vector<Pixel> kept;
    for (size_t k = 0; k < palette.size(); ++k) {
        const auto& sum = sums[k];
        if (sum[3] == 0) continue;
        const uint64_t n = sum[3], half = n / 2;
        renumber[k] = uint8_t(kept.size());
        kept.push_back(
            Rgb(int((sum[0] + half) / n), int((sum[1] + half) / n), int((sum[2] + half) / n)));
    }
    if (kept.size() != palette.size())
        for (uint8_t& i : indices) i = renumber[i];
    palette = std::move(kept);
}

} // namespace

IndexedImage Quantize(const Surface& s, int maxColors) {
    // Up to this many distinct colours k-means works on the exact colours, beyond it on the
    // histogram cells.
    constexpr size_t kExactSamples = size_t(1) << 16;
    IndexedImage out;
    out.width = s.Width();
    out.height = s.Height();
    const size_t n = PixelCount(s);
    if (n == 0) return out;
    const size_t colours = size_t(std::clamp(maxColors, 1, 256));
    out.indices.resize(n);

    ColourCount cc = CountColours(s, colours, kExactSamples, out.indices);
    if (cc.complete && cc.colours.size() <= colours) {
        out.palette = std::move(cc.colours);
        return out;
    }

    Histogram h;
    std::vector<Sample> samples;
    if (cc.complete) {
        for (size_t k = 0; k < cc.colours.size(); ++k) {
            const Pixel p = cc.colours[k];
            h.Add(p, cc.counts[k]);
            samples.push_back(
                {float(RedOf(p)), float(GreenOf(p)), float(BlueOf(p)), double(cc.counts[k])});
        }
    } else {
        ForEachRun(s, [&](Pixel p, size_t first, size_t end) {
            h.Add(p, end - first);
            return true;
        });
        samples = h.CellMeans();
    }
    h.Accumulate();
    std::vector<Centroid> centroids = WuPalette(h, colours);
    Refine(samples, centroids, colours);

    for (const Centroid& c : centroids) {
        auto channel = [](double v) { return int(std::lround(std::clamp(v, 0.0, 255.0))); };
        out.palette.push_back(Rgb(channel(c.r), channel(c.g), channel(c.b)));
    }
    MapPixels(s, out.palette, out.indices);
    return out;
}

} // namespace gdi
