// The full-screen selection overlay: the frozen desktop on which a zone is drawn.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

namespace mv {

class FrmFull : public ui::Form {
public:
    explicit FrmFull(App& app);
    App& app;
    // The selection rectangle, in twips.
    ui::Shape rectsel{this, L"rectsel"};
    // Freezes the desktop for a new zone (Index 0 or 19) or reopens the last one. Empty
    // until the overlay is built: the command then reaches an empty form.
    void InitFull(int16_t Index);

protected:
    void Design() override;
};

} // namespace mv
