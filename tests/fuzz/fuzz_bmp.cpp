// libFuzzer target: any bytes given to the BMP reader either decode or raise error 481.
#include "platform/gdi/bmp.h"
#include "runtime/errors.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    try {
        gdi::Surface s = gdi::DecodeBmp(data, size);
        // A decoded picture is whole: touch its last pixel.
        if (s.Empty() || s.At(s.Width() - 1, s.Height() - 1) > 0xFFFFFFu) std::abort();
    } catch (const rt::RuntimeError& e) {
        if (e.number != rt::kInvalidPicture) std::abort();
    }
    return 0;
}
