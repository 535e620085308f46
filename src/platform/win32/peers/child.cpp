#include "platform/win32/peers/child.h"

#include "platform/win32/peers/form.h"

namespace win32 {

ChildPeer::~ChildPeer() {
    if (hwnd_)
        if (FormPeer* f = FormPeer::Of(c_)) f->RemoveTooltip(hwnd_);
    DestroyPeerWindow();
}

void ChildPeer::WindowGone() {
    if (FormPeer* f = FormPeer::Of(c_)) f->RemoveTooltip(hwnd_);
    WindowPeer::WindowGone();
}

DWORD ChildPeer::ChildStyle() const {
    return WS_CHILD | WS_CLIPSIBLINGS | (c_.Visible() ? WS_VISIBLE : 0);
}

HWND ChildPeer::ParentWindow() const {
    // A container is made before the controls it holds; without its window, the form.
    if (const ui::Control* k = c_.Container())
        if (HWND h = HWND(k->Handle())) return h;
    return HWND(c_.Owner()->Handle());
}

void ChildPeer::CreateOwnChild() {
    const ui::ScreenMetrics m = Screen();
    // Our windows paint over their whole client area: a container must leave its
    // children's windows alone.
    CreateOwnWindow(0, kChildClass, L"", ChildStyle() | WS_CLIPCHILDREN, m.PxX(c_.Left()),
                    m.PxY(c_.Top()), m.PxX(c_.Width()), m.PxY(c_.Height()), ParentWindow());
    Attach();
}

void ChildPeer::CreateNativeChild(const wchar_t* cls, const std::wstring& text, DWORD style) {
    const ui::ScreenMetrics m = Screen();
    CreateNativeWindow(cls, text, ChildStyle() | style, m.PxX(c_.Left()), m.PxY(c_.Top()),
                       m.PxX(c_.Width()), m.PxY(c_.Height()), ParentWindow());
    SendMessageW(hwnd_, WM_SETFONT, WPARAM(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    Attach();
}

void ChildPeer::Attach() {
    // A control made later stands in front of the earlier ones.
    SetWindowPos(hwnd_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (!c_.Enabled()) EnableWindow(hwnd_, FALSE);
    if (!c_.ToolTipText().empty())
        if (FormPeer* f = FormPeer::Of(c_)) f->SetTooltip(hwnd_, c_.ToolTipText());
}

void ChildPeer::ApplyBounds() {
    const ui::ScreenMetrics m = Screen();
    SetWindowPos(hwnd_, nullptr, m.PxX(c_.Left()), m.PxY(c_.Top()), m.PxX(c_.Width()),
                 m.PxY(c_.Height()), SWP_NOZORDER | SWP_NOACTIVATE);
}

HBRUSH ChildPeer::Brush(COLORREF c) {
    if (!brush_ || c != brushColor_) {
        brush_.reset(CreateSolidBrush(c));
        brushColor_ = c;
    }
    return brush_.get();
}

void ChildPeer::Update(ui::Change what) {
    // A null window would stand for every window to InvalidateRect.
    if (!hwnd_) return;
    switch (what) {
    case ui::Change::Bounds:
        ApplyBounds();
        break;
    case ui::Change::Visible:
        ShowWindow(hwnd_, c_.Visible() ? SW_SHOWNA : SW_HIDE);
        break;
    case ui::Change::Enabled:
        EnableWindow(hwnd_, c_.Enabled());
        break;
    case ui::Change::ZOrder:
        SetWindowPos(hwnd_, c_.ZPosition() >= 0 ? HWND_TOP : HWND_BOTTOM, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        break;
    case ui::Change::Tooltip:
        if (FormPeer* f = FormPeer::Of(c_)) f->SetTooltip(hwnd_, c_.ToolTipText());
        break;
    case ui::Change::Pointer:
        ShowPointerNow();
        break;
    case ui::Change::Value:
    case ui::Change::Range:
        break;
    case ui::Change::Focus:
        ::SetFocus(hwnd_);
        break;
    case ui::Change::Style:
        InvalidateRect(hwnd_, nullptr, TRUE);
        break;
    default:
        InvalidateRect(hwnd_, nullptr, FALSE);
        break;
    }
}

bool ChildPeer::Reflect(UINT msg, WPARAM wp, LPARAM, LRESULT& result) {
    if (msg != WM_CTLCOLORSTATIC && msg != WM_CTLCOLORBTN) return false;
    COLORREF c = Color(c_.BackColor());
    SetBkColor(HDC(wp), c);
    result = LRESULT(Brush(c));
    return true;
}

} // namespace win32
