// libFuzzer target: the colour-table rewrite of a GIF takes any bytes without reading past
// them, and a file it rewrote is left alone the second time.
#include "output/gif_blocks.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::vector<uint8_t> gif(data, data + size);
    if (mv::TableLocaleEnGlobale(gif)) {
        const std::vector<uint8_t> once = gif;
        if (mv::TableLocaleEnGlobale(gif) || gif != once) std::abort();
    } else if (gif != std::vector<uint8_t>(data, data + size)) {
        std::abort();
    }
    return 0;
}
