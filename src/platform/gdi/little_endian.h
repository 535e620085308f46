// Appending little-endian fields to the bytes of a file being written (BMP, GIF, ICO, WAV).
#pragma once

#include <cstdint>
#include <vector>

namespace gdi {

inline void Put16(std::vector<uint8_t>& out, uint32_t v) {
    out.push_back(uint8_t(v));
    out.push_back(uint8_t(v >> 8));
}

inline void Put32(std::vector<uint8_t>& out, uint32_t v) {
    Put16(out, v & 0xFFFF);
    Put16(out, v >> 16);
}

} // namespace gdi
