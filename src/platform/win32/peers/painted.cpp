#include "platform/win32/peers/painted.h"

#include "platform/ui/form.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace win32 {

namespace {

void FillSolid(HDC dc, const RECT& r, COLORREF c) {
    BrushHandle b(CreateSolidBrush(c));
    FillRect(dc, &r, b.get());
}

// Paints a surface at (0, 0) of a DC, only the part inside the DC's clip box: a picture
// box may hold a picture of several screens, of which a paint often needs a few rows.
void PaintSurface(HDC dc, const gdi::Surface& s) {
    if (s.Empty()) return;
    RECT box{0, 0, s.Width(), s.Height()};
    RECT clip;
    const int region = GetClipBox(dc, &clip);
    if (region == NULLREGION) return;
    if (region != ERROR) IntersectRect(&box, &box, &clip);
    if (IsRectEmpty(&box)) return;
    // The rows from box.top on, as a top-down picture of their own.
    const int rows = box.bottom - box.top;
    BITMAPINFO bi = TopDownBitmapInfo(s.Width(), rows);
    SetDIBitsToDevice(dc, box.left, box.top, DWORD(box.right - box.left), DWORD(rows), box.left, 0,
                      0, UINT(rows), s.Row(box.top), &bi, DIB_RGB_COLORS);
}

// A cursor of an icon picture with its hot spot: the AND mask as a monochrome bitmap (1
// keeps the screen), the colours as a 32-bit bitmap. Null for an empty picture.
HCURSOR MakeCursor(const gdi::IconImage& icon) {
    if (icon.width <= 0 || icon.height <= 0) return nullptr;
    const size_t w = size_t(icon.width), h = size_t(icon.height), count = w * h;
    if (icon.color.size() < count) return nullptr;
    const bool masked = icon.mask.size() >= count;
    // Monochrome rows are padded to 16 bits, the leftmost pixel in the high bit.
    const size_t stride = (w + 15) / 16 * 2;
    std::vector<BYTE> andBits(stride * h, 0);
    for (size_t y = 0; y < h; ++y) {
        for (size_t x = 0; x < w; ++x) {
            const size_t i = y * w + x;
            // With alpha, the transparent pixels are those of alpha 0; a classic picture
            // without a mask is opaque, as gdi::DrawIcon draws it.
            const bool keep =
                icon.hasAlpha ? (icon.color[i] >> 24) == 0 : masked && icon.mask[i] != 0;
            if (keep) andBits[y * stride + x / 8] |= BYTE(0x80 >> (x % 8));
        }
    }
    Bitmap mask(CreateBitmap(icon.width, icon.height, 1, 1, andBits.data()));
    BITMAPINFO bi = TopDownBitmapInfo(icon.width, icon.height);
    void* bits = nullptr;
    Bitmap color(CreateDIBSection(nullptr, &bi, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!mask || !color || !bits) return nullptr;
    auto* out = static_cast<uint32_t*>(bits);
    for (size_t i = 0; i < count; ++i) {
        uint32_t p = icon.color[i];
        if (icon.hasAlpha) {
            // The picture's alpha is premultiplied; cursors hold straight alpha.
            const uint32_t a = p >> 24;
            auto straight = [a](uint32_t v) {
                return a ? std::min<uint32_t>(255, (v * 255 + a / 2) / a) : 0;
            };
            p = (a << 24) | (straight((p >> 16) & 255) << 16) | (straight((p >> 8) & 255) << 8) |
                straight(p & 255);
        } else {
            // No alpha byte, or the system would take the picture for an alpha one.
            p &= 0x00FFFFFFu;
        }
        out[i] = p;
    }
    GdiFlush();
    ICONINFO ii{};
    ii.fIcon = FALSE;
    ii.xHotspot = DWORD(std::clamp(icon.hotspotX, 0, icon.width - 1));
    ii.yHotspot = DWORD(std::clamp(icon.hotspotY, 0, icon.height - 1));
    ii.hbmMask = mask.get();
    ii.hbmColor = color.get();
    // The system copies both bitmaps; ours go with their owners.
    return HCURSOR(CreateIconIndirect(&ii));
}

HCURSOR Arrow() {
    return LoadCursorW(nullptr, IDC_ARROW);
}

} // namespace

// ---- PaintedPeer ------------------------------------------------------------------------

PaintedPeer::PaintedPeer(Win32Backend& be, ui::Control& c) : ChildPeer(be, c) {
    CreateOwnChild();
}

void PaintedPeer::Paint(HDC dc, RECT r) {
    FillSolid(dc, r, Color(c_.BackColor()));
    PaintContained(dc);
}

void PaintedPeer::PaintContained(HDC dc) {
    for (ui::Control* k : c_.Owner()->Controls()) {
        if (k->Container() != &c_ || !k->Visible() || !k->HasPeer()) continue;
        if (auto* p = dynamic_cast<WindowPeer*>(k->GetPeer())) p->PaintOnOwner(dc);
    }
}

LRESULT PaintedPeer::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
    ui::Control& c = c_;
    LRESULT result = 0;
    switch (msg) {
    case WM_ERASEBKGND:
        return 1;
    case WM_SETCURSOR:
        if (SetPointerCursor(wp, lp)) return TRUE;
        return Default(msg, wp, lp);
    // The notifications of the windows this control holds, as its form reflects them.
    case WM_COMMAND:
    case WM_VSCROLL:
    case WM_HSCROLL:
        if (lp) ReflectToChild(HWND(lp), msg, wp, lp, result);
        return 0;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
        if (ReflectToChild(HWND(lp), msg, wp, lp, result)) return result;
        return Default(msg, wp, lp);
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

PicturePeer::PicturePeer(Win32Backend& be, ui::PictureBox& p) : PaintedPeer(be, p), picture_(p) {
    BuildCursor();
}

PicturePeer::~PicturePeer() {
    // The screen does not keep showing a cursor that is gone.
    if (cursor_ && GetCursor() == cursor_.get()) SetCursor(Arrow());
}

void PicturePeer::BuildCursor() {
    cursor_.reset(picture_.MousePointer() == ui::kPointerCustom ? MakeCursor(picture_.MouseIcon())
                                                                : nullptr);
}

void PicturePeer::Update(ui::Change what) {
    if (what != ui::Change::Pointer) {
        PaintedPeer::Update(what);
        return;
    }
    // The old cursor lives until the new one is on the screen.
    CursorOwner old = std::move(cursor_);
    BuildCursor();
    PaintedPeer::Update(what);
    if (old && GetCursor() == old.get()) SetCursor(Arrow());
}

void PicturePeer::Paint(HDC dc, RECT r) {
    const gdi::Surface& s = picture_.Image();
    if (s.Width() < r.right || s.Height() < r.bottom) FillSolid(dc, r, Color(picture_.BackColor()));
    PaintSurface(dc, s);
    PaintContained(dc);
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
