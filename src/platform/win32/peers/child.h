// What the windows of a form's controls share: made at the control's bounds in its
// container picture box (or its form), moved, shown, enabled and stacked as the model says,
// with the control's tooltip and mouse pointer.
#pragma once

#include "platform/win32/peers/peer.h"

#include <string>

namespace win32 {

class ChildPeer : public WindowPeer {
public:
    ~ChildPeer() override;
    void Update(ui::Change what) override;
    // WM_CTLCOLORSTATIC and WM_CTLCOLORBTN: the built-in controls paint their background
    // in the control's back colour.
    bool Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

protected:
    ChildPeer(Win32Backend& be, ui::Control& c) : WindowPeer(be, c) {}
    void WindowGone() override;
    // Makes a window of our child class, painted by the peer.
    void CreateOwnChild();
    // Makes a built-in control with the default GUI font; `style` adds to the child styles.
    void CreateNativeChild(const wchar_t* cls, const std::wstring& text, DWORD style);

private:
    DWORD ChildStyle() const;
    // The window the control's window stands in: its container's, else its form's.
    HWND ParentWindow() const;
    // Stacks the new window in front, disables it with the control, gives it its tip.
    void Attach();
    void ApplyBounds();
    HBRUSH Brush(COLORREF c);
    BrushHandle brush_;
    COLORREF brushColor_ = CLR_INVALID;
};

} // namespace win32
