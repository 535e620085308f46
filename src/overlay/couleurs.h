// Colours of the overlay's outline, labels and handles, shared by its source files.
#pragma once

#include <cstdint>

namespace mv {

// Outline and label colours: light red and white of the 16-colour palette.
inline constexpr uint32_t kRouge = 0x0000FF;
inline constexpr uint32_t kBlanc = 0xFFFFFF;
// Pale yellow of the position labels; the list's see-through colour between sessions.
inline constexpr uint32_t kJaunePale = 0xC0FFFF;

} // namespace mv
