// A text box: a built-in edit control. The user's edits reach the model's text; keys
// reach the form first when it previews them, then the text box.
#pragma once

#include "platform/ui/controls.h"
#include "platform/win32/peers/child.h"

namespace win32 {

class EditPeer : public ChildPeer {
public:
    EditPeer(Win32Backend& be, ui::TextBox& t);
    void Update(ui::Change what) override;
    bool Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;
    LRESULT HandleMessage(UINT msg, WPARAM wp, LPARAM lp) override;

private:
    ui::TextBox& box_;
};

} // namespace win32
