// The shutter: a small camera window and a sound after each capture.
#include "capture/capture.h"

namespace mv {

void RideauPhoto(App&) {}

} // namespace mv
