// The tip of the day.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

namespace mv {

class frmTip : public ui::Form {
public:
    explicit frmTip(App& app);
    App& app;
    // Shows the tip of the day when tips are on; closes at once otherwise. Empty until
    // the tips are built.
    void ShowTip();
};

} // namespace mv
