#include "overlay/FrmFull.h"

namespace mv {

FrmFull::FrmFull(App& a) : ui::Form(a.be, L"FrmFull"), app(a) {}

void FrmFull::Design() {
    borderStyle = ui::kBorderNone;
    showInTaskbar = false;
    // The default rectangle, 420 x 260 pixels at 96 DPI.
    rectsel.Move(0, 0, 420 * 15, 260 * 15);
}

void FrmFull::InitFull(int16_t) {}

} // namespace mv
