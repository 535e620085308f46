// The shutter click played after a capture.
#pragma once

#include <cstdint>
#include <vector>

namespace mk {

// A complete WAV file: about a quarter of a second of a mechanical shutter, 22050 Hz,
// 16-bit mono PCM. The noise comes from a fixed seed, so every run gives the same bytes.
std::vector<uint8_t> ShutterWav();

} // namespace mk
