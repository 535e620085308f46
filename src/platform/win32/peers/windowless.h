// Lines and shapes: no window of their own; their form draws them while it paints, and
// any change repaints the form.
#pragma once

#include "platform/ui/controls.h"
#include "platform/win32/peers/peer.h"

namespace win32 {

class WindowlessPeer : public WindowPeer {
public:
    WindowlessPeer(Win32Backend& be, ui::Control& c) : WindowPeer(be, c) { InvalidateOwner(); }
    ~WindowlessPeer() override { InvalidateOwner(); }
    void Update(ui::Change) override { InvalidateOwner(); }

private:
    void InvalidateOwner();
};

class LinePeer : public WindowlessPeer {
public:
    LinePeer(Win32Backend& be, ui::Line& l) : WindowlessPeer(be, l), line_(l) {}
    void PaintOnOwner(HDC dc) override;

private:
    const ui::Line& line_;
};

// A rectangle outline in the border colour.
class ShapePeer : public WindowlessPeer {
public:
    ShapePeer(Win32Backend& be, ui::Shape& s) : WindowlessPeer(be, s), shape_(s) {}
    void PaintOnOwner(HDC dc) override;

private:
    const ui::Shape& shape_;
};

} // namespace win32
