// Lines and shapes: no window of their own. The window that holds them draws them while it
// paints (their container picture box, or their form), and a change repaints where the
// control was and where it is now.
#pragma once

#include "platform/ui/controls.h"
#include "platform/win32/peers/peer.h"

namespace win32 {

class WindowlessPeer : public WindowPeer {
public:
    WindowlessPeer(Win32Backend& be, ui::Control& c) : WindowPeer(be, c) {}
    ~WindowlessPeer() override;
    void Update(ui::Change) override { Repaint(); }

protected:
    // The pixels the control covers in the client area of the window that draws it.
    virtual RECT Extent() const = 0;
    // Invalidates the last extent and the current one. Derived constructors call it once
    // the control can answer Extent.
    void Repaint();

private:
    // The container's window, or the form's; null when neither has one.
    HWND Host() const;
    RECT last_{};
    bool placed_ = false;
};

class LinePeer : public WindowlessPeer {
public:
    LinePeer(Win32Backend& be, ui::Line& l) : WindowlessPeer(be, l), line_(l) { Repaint(); }
    void PaintOnOwner(HDC dc) override;

protected:
    RECT Extent() const override;

private:
    const ui::Line& line_;
};

// A rectangle outline in the border colour.
class ShapePeer : public WindowlessPeer {
public:
    ShapePeer(Win32Backend& be, ui::Shape& s) : WindowlessPeer(be, s), shape_(s) { Repaint(); }
    void PaintOnOwner(HDC dc) override;

protected:
    RECT Extent() const override;

private:
    const ui::Shape& shape_;
};

} // namespace win32
