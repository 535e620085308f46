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
    // The windows kept on screen during a grab (column 109 of the settings line).
    Check1[2].SetValue(app.params.GardeFenetres != 0 ? 1 : 0);
}

void Options::ShowDialog() {}

void Options::ShowNonModal() {}

} // namespace mv
