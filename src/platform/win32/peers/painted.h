// Controls whose peer paints the window itself: picture boxes, labels and frames. They
// raise the toolkit's mouse events, with the click on a button release inside.
#pragma once

#include "platform/ui/controls.h"
#include "platform/win32/peers/child.h"

namespace win32 {

// A frame, and the base of the other painted controls: the back colour fills it.
class PaintedPeer : public ChildPeer {
public:
    PaintedPeer(Win32Backend& be, ui::Control& c);
    LRESULT HandleMessage(UINT msg, WPARAM wp, LPARAM lp) override;

protected:
    virtual void Paint(HDC dc, RECT r);

private:
    LRESULT ButtonUp(UINT msg, WPARAM wp, LPARAM lp);
    bool afterDouble_ = false;
};

// The picture box's persistent image; where the window is larger, its back colour.
class PicturePeer : public PaintedPeer {
public:
    PicturePeer(Win32Backend& be, ui::PictureBox& p) : PaintedPeer(be, p), picture_(p) {}

protected:
    void Paint(HDC dc, RECT r) override;

private:
    const ui::PictureBox& picture_;
};

class LabelPeer : public PaintedPeer {
public:
    LabelPeer(Win32Backend& be, ui::Label& l);
    void Update(ui::Change what) override;

protected:
    void Paint(HDC dc, RECT r) override;

private:
    void ApplyFont();
    const ui::Label& label_;
    FontHandle font_;
};

} // namespace win32
