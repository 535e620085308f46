#include "language/frmTip.h"

namespace mv {

frmTip::frmTip(App& a) : ui::Form(a.be, L"frmTip"), app(a) {}

void frmTip::ShowTip() {}

} // namespace mv
