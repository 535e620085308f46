// The program's own GIF writer for one indexed picture.
#pragma once

#include "platform/gdi/quantize.h"

#include <cstdint>
#include <vector>

namespace gdi {

// A complete GIF89a file of one image: the palette as the global table (2 to 256 entries,
// padded with black to a power of two), no extension, an image descriptor with no local
// table, the LZW data in 255-byte sub-blocks, the trailer. Raises 5 for an empty picture,
// a side beyond 65535, an empty palette or more than 256 entries.
std::vector<uint8_t> EncodeGif(const IndexedImage& image);

// A picture ready for the animated builder, which marks colour 0 of every frame as
// transparent: at most 255 colours, none of its pixels on entry 0 (that entry is black and
// unused).
IndexedImage QuantizeForGif(const Surface& s);

} // namespace gdi
