// A check box: a built-in three-state button whose clicks toggle the model's value.
#pragma once

#include "platform/ui/controls.h"
#include "platform/win32/peers/child.h"

namespace win32 {

class CheckPeer : public ChildPeer {
public:
    CheckPeer(Win32Backend& be, ui::CheckBox& b);
    void Update(ui::Change what) override;
    bool Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    ui::CheckBox& box_;
};

} // namespace win32
