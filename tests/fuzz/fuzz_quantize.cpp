// libFuzzer target: any picture reduces to at most 256 colours with every index inside
// its palette; one of few colours comes back exactly.
#include "platform/gdi/quantize.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2) return 0;
    // The first two bytes give the width and the colour limit; the rest are pixels.
    const int width = 1 + data[0] % 64;
    const int limite = 1 + data[1];
    const size_t pixels = (size - 2) / 3;
    const int height = int(pixels / size_t(width));
    gdi::Surface s(width, height);
    const uint8_t* p = data + 2;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x, p += 3) s.At(x, y) = gdi::Rgb(p[0], p[1], p[2]);

    const gdi::IndexedImage q = gdi::Quantize(s, limite);
    if (q.palette.size() > size_t(std::min(limite, 256))) std::abort();
    if (q.indices.size() != size_t(width) * size_t(height)) std::abort();
    for (uint8_t i : q.indices)
        if (i >= q.palette.size()) std::abort();
    // Up to the limit the colours are exact.
    std::vector<gdi::Pixel> colours(s.Data(), s.Data() + size_t(width) * size_t(height));
    std::sort(colours.begin(), colours.end());
    const size_t distinct = size_t(std::unique(colours.begin(), colours.end()) - colours.begin());
    if (distinct <= size_t(std::min(limite, 256)) && !(gdi::Expand(q) == s)) std::abort();
    return 0;
}
