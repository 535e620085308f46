#include "platform/win32/peers/painted.h"

#include <cmath>

namespace win32 {

namespace {

void FillSolid(HDC dc, const RECT& r, COLORREF c) {
    BrushHandle b(CreateSolidBrush(c));
    FillRect(dc, &r, b.get());
}

// Paints a surface at (0, 0) of a DC.
void PaintSurface(HDC dc, const gdi::Surface& s) {
    if (s.Empty()) return;
    BITMAPINFO bi = TopDownBitmapInfo(s.Width(), s.Height());
    SetDIBitsToDevice(dc, 0, 0, DWORD(s.Width()), DWORD(s.Height()), 0, 0, 0, UINT(s.Height()),
                      s.Data(), &bi, DIB_RGB_COLORS);
}

} // namespace

// ---- PaintedPeer ------------------------------------------------------------------------

PaintedPeer::PaintedPeer(Win32Backend& be, ui::Control& c) : ChildPeer(be, c) {
    CreateOwnChild();
}

void PaintedPeer::Paint(HDC dc, RECT r) {
    FillSolid(dc, r, Color(c_.BackColor()));
}

LRESULT PaintedPeer::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
    ui::Control& c = c_;
    switch (msg) {
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(hwnd_, &ps);
        RECT r;
        GetClientRect(hwnd_, &r);
        Paint(dc, r);
        EndPaint(hwnd_, &ps);
        return 0;
    }
    case WM_MOUSEMOVE:
        Fire([&] {
            if (c.OnMouseMove) c.OnMouseMove(MouseArgs(wp, lp));
        });
        return 0;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
        SetCapture(hwnd_);
        afterDouble_ = false;
        Fire([&] {
            if (c.OnMouseDown)
                c.OnMouseDown(
                    MouseArgs(wp, lp, msg == WM_LBUTTONDOWN ? ui::kLeftButton : ui::kRightButton));
        });
        return 0;
    case WM_LBUTTONDBLCLK:
        SetCapture(hwnd_);
        afterDouble_ = true;
        Fire([&] {
            if (c.OnMouseDown) c.OnMouseDown(MouseArgs(wp, lp, ui::kLeftButton));
            if (c.OnDblClick) c.OnDblClick();
        });
        return 0;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
        return ButtonUp(msg, wp, lp);
    default:
        return Default(msg, wp, lp);
    }
}

LRESULT PaintedPeer::ButtonUp(UINT msg, WPARAM wp, LPARAM lp) {
    ui::Control& c = c_;
    if (GetCapture() == hwnd_) ReleaseCapture();
    POINT p{short(LOWORD(lp)), short(HIWORD(lp))};
    RECT r;
    GetClientRect(hwnd_, &r);
    const bool inside = PtInRect(&r, p) != FALSE;
    // The release of a double click is no click of its own.
    const bool click = msg == WM_LBUTTONUP && inside && !afterDouble_;
    afterDouble_ = false;
    Fire([&] {
        if (c.OnMouseUp)
            c.OnMouseUp(
                MouseArgs(wp, lp, msg == WM_LBUTTONUP ? ui::kLeftButton : ui::kRightButton));
        if (click && c.OnClick) c.OnClick();
    });
    return 0;
}

// ---- PicturePeer ------------------------------------------------------------------------

void PicturePeer::Paint(HDC dc, RECT r) {
    const gdi::Surface& s = picture_.Image();
    if (s.Width() < r.right || s.Height() < r.bottom) FillSolid(dc, r, Color(picture_.BackColor()));
    PaintSurface(dc, s);
    if (picture_.BorderStyle() == ui::kBorderFixedSingle) DrawEdge(dc, &r, EDGE_SUNKEN, BF_RECT);
}

// ---- LabelPeer --------------------------------------------------------------------------

LabelPeer::LabelPeer(Win32Backend& be, ui::Label& l) : PaintedPeer(be, l), label_(l) {
    ApplyFont();
}

void LabelPeer::Update(ui::Change what) {
    if (what == ui::Change::Style) ApplyFont();
    PaintedPeer::Update(what);
}

void LabelPeer::ApplyFont() {
    const ui::Font& f = label_.GetFont();
    const int dpiY = GetDeviceCaps(WindowDCHandle(nullptr).get(), LOGPIXELSY);
    const int height = -MulDiv(int(std::lround(f.size * 10)), dpiY, 720);
    // The toolkit's default face is a bitmap font; Tahoma is its outline successor.
    std::wstring face = f.name == L"MS Sans Serif" ? L"Tahoma" : f.name;
    font_.reset(CreateFontW(height, 0, 0, 0, f.bold ? FW_BOLD : FW_NORMAL, f.italic, FALSE, FALSE,
                            face == L"Wingdings" ? SYMBOL_CHARSET : DEFAULT_CHARSET,
                            OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                            DEFAULT_PITCH, face.c_str()));
}

void LabelPeer::Paint(HDC dc, RECT r) {
    const ui::Label& l = label_;
    COLORREF back = l.Transparent() ? Color(l.Owner()->BackColor()) : Color(l.BackColor());
    FillSolid(dc, r, back);
    if (l.BorderStyle() == ui::kBorderFixedSingle) {
        FrameRect(dc, &r, HBRUSH(GetStockObject(BLACK_BRUSH)));
        InflateRect(&r, -2, -1);
    }
    Selected sel(dc, font_ ? HGDIOBJ(font_.get()) : GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, Color(l.ForeColor()));
    UINT align = l.Alignment() == 1 ? DT_RIGHT : l.Alignment() == 2 ? DT_CENTER : DT_LEFT;
    std::wstring text = l.Caption();
    DrawTextW(dc, text.c_str(), int(text.size()), &r, align | DT_WORDBREAK | DT_NOPREFIX);
}

} // namespace win32
