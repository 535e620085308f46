// BMP files: read uncompressed 1, 4, 8, 16, 24 and 32-bit pictures (bottom-up or top-down,
// core, info and V4/V5 headers, bit-field masks), write 24 or 32-bit.
#pragma once

#include "platform/gdi/surface.h"

#include <cstdint>
#include <string>
#include <vector>

namespace gdi {

// Encodes a surface as a complete BMP file (BITMAPFILEHEADER + BITMAPINFOHEADER, bottom-up
// rows padded to 4 bytes, BI_RGB). Raises 5 for a size other than 24 or 32 bits or an empty
// surface.
std::vector<uint8_t> EncodeBmp(const Surface& s, int bitsPerPixel = 24);

// Decodes a BMP file held in memory. A malformed or unsupported file raises
// rt::RuntimeError 481 (invalid picture); never reads out of bounds. Run-length compressed
// pictures and sides beyond 65536 or 20000 x 20000 pixels in all count as malformed.
Surface DecodeBmp(const uint8_t* data, size_t size);

// File versions. Paths are the program's own (backslashes are folder separators on every
// platform). Writing raises 75/76/70 on a path or access failure; reading a missing file 53.
void SaveBmp(const Surface& s, const std::wstring& path, int bitsPerPixel = 24);
Surface LoadBmp(const std::wstring& path);

} // namespace gdi
