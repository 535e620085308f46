// The two flags of the language chooser: the French tricolour and the Union flag.
#pragma once

#include "platform/gdi/surface.h"

namespace mk {

constexpr int kFlagWidth = 96;
constexpr int kFlagHeight = 64;

gdi::Surface FlagFrench();
gdi::Surface FlagBritish();

} // namespace mk
