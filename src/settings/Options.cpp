#include "settings/Options.h"

namespace mv {

Options::Options(App& a) : ui::Form(a.be, L"Options"), app(a) {}

void Options::Design() {
    SetCaption(L"Options");
    borderStyle = ui::kBorderFixedDialog;
    for (int i = 0; i <= 7; ++i) {
        if (!Check1.Exists(i)) Check1.Design(i);
        Check1[i].SetValue(0);
    }
}

void Options::ShowDialog() {}

void Options::ShowNonModal() {}

} // namespace mv
