#include "timed/timed.h"

namespace mv {

void MnuCaptper_Click(App&) {}

} // namespace mv
