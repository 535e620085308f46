// The block structure of single-image GIF files.
#pragma once

#include <cstdint>
#include <vector>

namespace mv {

// Gives a GIF of one image the structure the animated builder reads: its colour table as
// the global table, none in the image. A file that has a global table already, or that is
// not a GIF of that shape, is left as it was; returns whether it changed.
bool TableLocaleEnGlobale(std::vector<uint8_t>& gif);

} // namespace mv
