// Thumbnail stretch against one plain read of a 4K screen grab. Prints a table; the ratio
// column is the cost of each stretch in plain reads of the whole source.
#include "platform/gdi/surface.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>

namespace {

// Best of five runs, in milliseconds.
double BestMs(const std::function<void()>& run) {
    double best = 1e30;
    for (int i = 0; i < 5; ++i) {
        auto t0 = std::chrono::steady_clock::now();
        run();
        auto t1 = std::chrono::steady_clock::now();
        best = std::min(best, std::chrono::duration<double, std::milli>(t1 - t0).count());
    }
    return best;
}

} // namespace

int main() {
    const int w = 3840, h = 2160;
    gdi::Surface screen(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) screen.At(x, y) = gdi::Rgb(x * 7 + y, x ^ y, (x * y) >> 3);

    volatile uint64_t sink = 0;
    double plain = BestMs([&] {
        uint64_t sum = 0;
        for (int y = 0; y < h; ++y) {
            const gdi::Pixel* row = screen.Row(y);
            for (int x = 0; x < w; ++x) sum += row[x];
        }
        sink = sink + sum;
    });

    std::printf("%-28s %10s %8s\n", "operation", "ms", "ratio");
    std::printf("%-28s %10.3f %8.2f\n", "plain read 3840x2160", plain, 1.0);
    const int sizes[][2] = {{97, 54}, {165, 92}};
    for (const auto& size : sizes) {
        const int tw = size[0], th = size[1];
        gdi::Surface thumb(tw, th);
        double ms = BestMs(
            [&] { gdi::StretchBlt(thumb, 0, 0, tw, th, screen, 0, 0, w, h, gdi::kHalftone); });
        char label[64];
        std::snprintf(label, sizeof label, "halftone to %dx%d", tw, th);
        std::printf("%-28s %10.3f %8.2f\n", label, ms, ms / plain);
        sink = sink + thumb.At(0, 0);
    }
    return 0;
}
