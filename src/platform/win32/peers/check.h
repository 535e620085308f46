// Check boxes and option buttons: built-in buttons whose clicks change the model's value.
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

// An option button: a plain radio button whose click turns the model's button on, which
// turns the form's others off.
class OptionPeer : public ChildPeer {
public:
    OptionPeer(Win32Backend& be, ui::OptionButton& b);
    void Update(ui::Change what) override;
    bool Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    ui::OptionButton& button_;
};

} // namespace win32
