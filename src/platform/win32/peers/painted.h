// Controls whose peer paints the window itself: picture boxes, labels and frames. They
// raise the toolkit's mouse events, with the click on a button release inside, and show
// the control's mouse pointer. As containers they paint the lines and shapes they hold and
// reflect their child windows' notifications, as a form does.
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
    // Draws the lines and shapes this control holds, in the form's control order.
    void PaintContained(HDC dc);

private:
    LRESULT ButtonUp(UINT msg, WPARAM wp, LPARAM lp);
    bool afterDouble_ = false;
};

// The picture box's persistent image; where the window is larger, its back colour.
class PicturePeer : public PaintedPeer {
public:
    PicturePeer(Win32Backend& be, ui::PictureBox& p);
    ~PicturePeer() override;
    void Update(ui::Change what) override;

protected:
    void Paint(HDC dc, RECT r) override;
    HCURSOR CustomCursor() const override { return cursor_.get(); }

private:
    // The cursor of the MouseIcon, made while the custom pointer is chosen.
    void BuildCursor();
    const ui::PictureBox& picture_;
    CursorOwner cursor_;
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
