// The program's icon: drawn anew at each size so that every size stays sharp.
#pragma once

#include <cstdint>
#include <vector>

namespace mk {

// The sizes the icon file holds, smallest first.
constexpr int kIconSizes[] = {16, 20, 24, 32, 48};

// A complete .ico file: one 32-bit image with alpha (and its mask) for each size.
std::vector<uint8_t> ProgramIcon();

} // namespace mk
