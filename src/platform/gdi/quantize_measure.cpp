// A quantized picture back to pixels, and how close two pictures are: for the tests and
// the benchmark of the colour reduction.
#include "platform/gdi/quantize.h"

#include <cmath>
#include <limits>

namespace gdi {

Surface Expand(const IndexedImage& image) {
    Surface s(image.width, image.height);
    if (s.Empty()) return s;
    const size_t n = size_t(s.Width()) * size_t(s.Height());
    Pixel* px = s.Data();
    for (size_t i = 0; i < n && i < image.indices.size(); ++i) {
        const size_t k = image.indices[i];
        px[i] = k < image.palette.size() ? image.palette[k] & 0xFFFFFFu : 0; // no alpha
    }
    return s;
}

double Psnr(const Surface& a, const Surface& b) {
    if (a.Width() != b.Width() || a.Height() != b.Height()) return 0;
    const size_t n = size_t(a.Width()) * size_t(a.Height());
    uint64_t sum = 0;
    const Pixel* pa = a.Data();
    const Pixel* pb = b.Data();
    for (size_t i = 0; i < n; ++i) {
        const int dr = RedOf(pa[i]) - RedOf(pb[i]);
        const int dg = GreenOf(pa[i]) - GreenOf(pb[i]);
        const int db = BlueOf(pa[i]) - BlueOf(pb[i]);
        sum += uint64_t(dr * dr + dg * dg + db * db);
    }
    if (sum == 0) return std::numeric_limits<double>::infinity();
    const double mse = double(sum) / (3.0 * double(n));
    return 10.0 * std::log10(255.0 * 255.0 / mse);
}

} // namespace gdi
