#include "platform/win32/peers/windowless.h"

namespace win32 {

void WindowlessPeer::InvalidateOwner() {
    if (c_.Owner() && c_.Owner()->Handle())
        InvalidateRect(HWND(c_.Owner()->Handle()), nullptr, TRUE);
}

void LinePeer::PaintOnOwner(HDC dc) {
    const ui::Line& l = line_;
    const ui::ScreenMetrics m = Screen();
    PenHandle pen(CreatePen(PS_SOLID, 1, Color(l.BorderColor())));
    Selected sel(dc, pen.get());
    MoveToEx(dc, m.PxX(l.X1()), m.PxY(l.Y1()), nullptr);
    LineTo(dc, m.PxX(l.X2()), m.PxY(l.Y2()));
}

void ShapePeer::PaintOnOwner(HDC dc) {
    const ui::Shape& s = shape_;
    const ui::ScreenMetrics m = Screen();
    PenHandle pen(CreatePen(PS_SOLID, 1, Color(s.BorderColor())));
    Selected sel(dc, pen.get());
    Selected noBrush(dc, GetStockObject(NULL_BRUSH));
    Rectangle(dc, m.PxX(s.Left()), m.PxY(s.Top()), m.PxX(s.Left() + s.Width()),
              m.PxY(s.Top() + s.Height()));
}

} // namespace win32
