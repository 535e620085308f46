// The options dialog. Until it is built it holds what the rest of the program reads of
// it: Check1(2), the on-screen form of GardeFenetres.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

namespace mv {

class Options : public ui::Form {
public:
    explicit Options(App& app);
    App& app;
    ui::ControlArray<ui::CheckBox> Check1{this, L"Check1"};
    // Shows the dialog modally, or without waiting for it. Empty until the dialog is built.
    void ShowDialog();
    void ShowNonModal();

protected:
    void Design() override;
};

} // namespace mv
