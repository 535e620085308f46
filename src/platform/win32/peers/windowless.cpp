#include "platform/win32/peers/windowless.h"

#include "platform/ui/form.h"

#include <algorithm>

namespace win32 {

WindowlessPeer::~WindowlessPeer() {
    if (!placed_) return;
    if (HWND h = Host()) InvalidateRect(h, &last_, TRUE);
}

HWND WindowlessPeer::Host() const {
    // A contained control shows in its container only: the form does not draw it.
    if (const ui::Control* k = c_.Container()) return HWND(k->Handle());
    return c_.Owner() ? HWND(c_.Owner()->Handle()) : nullptr;
}

void WindowlessPeer::Repaint() {
    HWND h = Host();
    if (!h) return;
    const RECT now = Extent();
    // The container may be a picture of several screens: only the two places repaint.
    if (placed_) InvalidateRect(h, &last_, TRUE);
    InvalidateRect(h, &now, TRUE);
    last_ = now;
    placed_ = true;
}

RECT LinePeer::Extent() const {
    const ui::Line& l = line_;
    const ui::ScreenMetrics m = Screen();
    const int x1 = m.PxX(l.X1()), y1 = m.PxY(l.Y1()), x2 = m.PxX(l.X2()), y2 = m.PxY(l.Y2());
    // One pixel around, for the pen's width and the end point.
    return RECT{std::min(x1, x2) - 1, std::min(y1, y2) - 1, std::max(x1, x2) + 2,
                std::max(y1, y2) + 2};
}

void LinePeer::PaintOnOwner(HDC dc) {
    const ui::Line& l = line_;
    const ui::ScreenMetrics m = Screen();
    PenHandle pen(CreatePen(PS_SOLID, 1, Color(l.BorderColor())));
    Selected sel(dc, pen.get());
    MoveToEx(dc, m.PxX(l.X1()), m.PxY(l.Y1()), nullptr);
    LineTo(dc, m.PxX(l.X2()), m.PxY(l.Y2()));
}

RECT ShapePeer::Extent() const {
    const ui::Shape& s = shape_;
    const ui::ScreenMetrics m = Screen();
    RECT r{m.PxX(s.Left()), m.PxY(s.Top()), m.PxX(s.Left() + s.Width()),
           m.PxY(s.Top() + s.Height())};
    InflateRect(&r, 1, 1);
    return r;
}

void ShapePeer::PaintOnOwner(HDC dc) {
    const ui::Shape& s = shape_;
    const ui::ScreenMetrics m = Screen();
    PenHandle pen(CreatePen(PS_SOLID, 1, Color(s.BorderColor())));
    Selected sel(dc, pen.get());
    BrushHandle fill(s.Filled() ? CreateSolidBrush(Color(s.FillColor())) : nullptr);
    Selected brush(dc, fill ? HGDIOBJ(fill.get()) : GetStockObject(NULL_BRUSH));
    Rectangle(dc, m.PxX(s.Left()), m.PxY(s.Top()), m.PxX(s.Left() + s.Width()),
              m.PxY(s.Top() + s.Height()));
}

} // namespace win32
