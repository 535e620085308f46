// A vertical scroll bar: a built-in scroll bar control whose moves set the model's value,
// kept within its bounds.
#pragma once

#include "platform/ui/controls.h"
#include "platform/win32/peers/child.h"

namespace win32 {

class ScrollPeer : public ChildPeer {
public:
    ScrollPeer(Win32Backend& be, ui::VScrollBar& s);
    void Update(ui::Change what) override;
    bool Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    void Scroll(int code, int pos);
    ui::VScrollBar& bar_;
};

} // namespace win32
