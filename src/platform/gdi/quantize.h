// Colour reduction to an 8-bit indexed picture. GDI+'s GIF encoder takes only 8-bit indexed
// bitmaps (from 24 or 32 bits Wine's writes an empty image), so a GIF is always made from the
// result of Quantize.
#pragma once

#include "platform/gdi/surface.h"

#include <cstdint>
#include <vector>

namespace gdi {

struct IndexedImage {
    int width = 0;
    int height = 0;
    std::vector<Pixel> palette;   // at most 256 entries, 0x00RRGGBB
    std::vector<uint8_t> indices; // width*height, top-down rows, each < palette.size()
};

// Reduces a surface to at most maxColors colours (clamped to 1..256); the top byte of the
// pixels is ignored. A picture with no more distinct colours than that comes back exactly,
// its palette in order of first appearance (row by row). Any other gets a palette fitted to
// it (variance-minimising cut refined by k-means) and each pixel its nearest entry, without
// dithering. The output depends on the pixels alone. An empty surface gives an empty palette
// and no indices.
IndexedImage Quantize(const Surface& s, int maxColors = 256);

// The picture an indexed image stands for. An index beyond the palette, or a missing one,
// reads as black.
Surface Expand(const IndexedImage& image);

// Peak signal-to-noise ratio in dB over the red, green and blue channels, peak 255. Infinity
// when the pictures are equal (two empty ones included), 0 when their sizes differ.
double Psnr(const Surface& a, const Surface& b);

} // namespace gdi
