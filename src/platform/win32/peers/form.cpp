#include "platform/win32/peers/form.h"

#include "platform/win32/peers/menu.h"

#include <vector>

namespace win32 {

namespace {

DWORD FrameStyle(const ui::Form& f, DWORD& ex) {
    DWORD style = WS_CLIPCHILDREN;
    switch (f.borderStyle) {
    case ui::kBorderNone:
        style |= WS_POPUP;
        break;
    case ui::kBorderFixedSingle:
        style |= WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;
        break;
    case ui::kBorderFixedDialog:
        style |= WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
        break;
    case ui::kBorderFixedToolWindow:
        style |= WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;
        ex |= WS_EX_TOOLWINDOW;
        break;
    case ui::kBorderSizableToolWindow:
        style |= WS_OVERLAPPEDWINDOW;
        ex |= WS_EX_TOOLWINDOW;
        break;
    default:
        style |= WS_OVERLAPPEDWINDOW;
        break;
    }
    if (f.borderStyle != ui::kBorderNone && f.minButton) style |= WS_MINIMIZEBOX;
    if (!f.maxButton) style &= ~DWORD(WS_MAXIMIZEBOX);
    if (!f.controlBox) style &= ~DWORD(WS_SYSMENU);
    if (!f.showInTaskbar) ex |= WS_EX_TOOLWINDOW;
    if (f.topMost) ex |= WS_EX_TOPMOST;
    if (f.showNoActivate) ex |= WS_EX_NOACTIVATE;
    return style;
}

void RaiseClick(Win32Backend& be, ui::Menu* m) {
    Fire(be, [m] {
        if (m->OnClick) m->OnClick();
    });
}

} // namespace

FormPeer::FormPeer(Win32Backend& be, ui::Form& f) : WindowPeer(be, f) {
    DWORD ex = 0;
    const DWORD style = FrameStyle(f, ex);
    const ui::ScreenMetrics m = Screen();
    CreateOwnWindow(ex, kFormClass, f.Caption(), style, m.PxX(f.Left()), m.PxY(f.Top()),
                    m.PxX(f.Width()), m.PxY(f.Height()), nullptr);
    be_.FormCreated(hwnd_, &f);
    if (f.TransparentKey() >= 0) ApplyStyle();
}

FormPeer::~FormPeer() {
    HWND h = hwnd_;
    SetMenu(h, nullptr);
    tooltip_.Close();
    DestroyPeerWindow();
    be_.FormDestroyed(h);
}

FormPeer* FormPeer::Of(const ui::Control& c) {
    return c.Owner() ? dynamic_cast<FormPeer*>(c.Owner()->GetPeer()) : nullptr;
}

HBRUSH FormPeer::BackBrush() {
    COLORREF c = Color(form().BackColor());
    if (!backBrush_ || c != backBrushColor_) {
        backBrush_.reset(CreateSolidBrush(c));
        backBrushColor_ = c;
    }
    return backBrush_.get();
}

void FormPeer::ApplyBounds() {
    const ui::ScreenMetrics m = Screen();
    const ui::Form& f = form();
    applying_ = true;
    SetWindowPos(hwnd_, nullptr, m.PxX(f.Left()), m.PxY(f.Top()), m.PxX(f.Width()),
                 m.PxY(f.Height()), SWP_NOZORDER | SWP_NOACTIVATE);
    applying_ = false;
}

void FormPeer::ReportGeometry() {
    if (applying_ || IsIconic(hwnd_) || !IsWindowVisible(hwnd_)) return;
    RECT r;
    GetWindowRect(hwnd_, &r);
    const ui::ScreenMetrics m = Screen();
    ui::Form& f = form();
    // Only a real change by the system or the user reaches the model: the model's twips
    // stay exact when they round to the same pixels.
    if (r.left == m.PxX(f.Left()) && r.top == m.PxY(f.Top()) &&
        r.right - r.left == m.PxX(f.Width()) && r.bottom - r.top == m.PxY(f.Height()))
        return;
    Fire([&] {
        f.SystemMoved(ui::ToTwips(r.left, m.tppX), ui::ToTwips(r.top, m.tppY),
                      ui::ToTwips(r.right - r.left, m.tppX), ui::ToTwips(r.bottom - r.top, m.tppY));
    });
}

void FormPeer::RebuildBar() {
    std::vector<ui::Menu*> tops = form().TopMenus();
    bool any = false;
    for (ui::Menu* m : tops) any = any || (m->Visible() && m->GetPeer());
    if (!any) {
        if (GetMenu(hwnd_)) SetMenu(hwnd_, nullptr);
        if (bar_) FillMenu(bar_.get(), {});
        return;
    }
    if (!bar_) bar_.reset(CreateMenu());
    FillMenu(bar_.get(), tops);
    if (GetMenu(hwnd_) != bar_.get()) SetMenu(hwnd_, bar_.get());
    DrawMenuBar(hwnd_);
}

void FormPeer::Show() {
    const ui::Form& f = form();
    if (f.Visible()) {
        int cmd = f.WindowState() == ui::kMinimized   ? SW_SHOWMINIMIZED
                  : f.WindowState() == ui::kMaximized ? SW_SHOWMAXIMIZED
                  : f.showNoActivate                  ? SW_SHOWNOACTIVATE
                                                      : SW_SHOW;
        ShowWindow(hwnd_, cmd);
        UpdateWindow(hwnd_);
    } else {
        ShowWindow(hwnd_, SW_HIDE);
    }
}

void FormPeer::ApplyState() {
    if (!IsWindowVisible(hwnd_)) return;
    const ui::Form& f = form();
    applying_ = true;
    ShowWindow(hwnd_, f.WindowState() == ui::kMinimized   ? SW_MINIMIZE
                      : f.WindowState() == ui::kMaximized ? SW_MAXIMIZE
                                                          : SW_RESTORE);
    applying_ = false;
}

void FormPeer::ApplyStyle() {
    const ui::Form& f = form();
    const LONG_PTR ex = GetWindowLongPtrW(hwnd_, GWL_EXSTYLE);
    if (f.TransparentKey() >= 0) {
        SetWindowLongPtrW(hwnd_, GWL_EXSTYLE, ex | WS_EX_LAYERED);
        SetLayeredWindowAttributes(hwnd_, COLORREF(f.TransparentKey()), 0, LWA_COLORKEY);
    } else if (ex & WS_EX_LAYERED) {
        // No key any more: a plain window again, all of it drawn.
        SetWindowLongPtrW(hwnd_, GWL_EXSTYLE, ex & ~LONG_PTR(WS_EX_LAYERED));
    }
    RedrawWindow(hwnd_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void FormPeer::Update(ui::Change what) {
    switch (what) {
    case ui::Change::Bounds:
        ApplyBounds();
        break;
    case ui::Change::Visible:
        Show();
        break;
    case ui::Change::Caption:
        SetWindowTextW(hwnd_, form().Caption().c_str());
        break;
    case ui::Change::State:
        ApplyState();
        break;
    case ui::Change::Style:
        ApplyStyle();
        break;
    case ui::Change::Children:
        RebuildBar();
        break;
    case ui::Change::Enabled:
        EnableWindow(hwnd_, form().Enabled());
        break;
    case ui::Change::Pointer:
        ShowPointerNow();
        break;
    case ui::Change::ZOrder:
        // A form brought to the front comes above the others and takes the focus.
        if (form().ZPosition() > 0) {
            SetWindowPos(hwnd_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
            SetForegroundWindow(hwnd_);
        }
        break;
    default:
        break;
    }
}

void FormPeer::Paint() {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(hwnd_, &ps);
    for (ui::Control* c : form().Controls()) {
        // The lines and shapes of a container are drawn by the container.
        if (!c->Visible() || !c->HasPeer() || c->Container()) continue;
        if (auto* p = dynamic_cast<WindowPeer*>(c->GetPeer())) p->PaintOnOwner(dc);
    }
    EndPaint(hwnd_, &ps);
}

void FormPeer::MenuCommand(int id) {
    auto it = menus.find(id);
    if (it != menus.end()) RaiseClick(be_, it->second);
}

LRESULT FormPeer::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
    ui::Form& f = form();
    LRESULT result = 0;
    switch (msg) {
    case WM_ERASEBKGND: {
        RECT r;
        GetClientRect(hwnd_, &r);
        FillRect(HDC(wp), &r, BackBrush());
        return 1;
    }
    case WM_PAINT:
        Paint();
        return 0;
    case WM_SETCURSOR:
        if (SetPointerCursor(wp, lp)) return TRUE;
        break;
    case WM_CLOSE:
        Fire([&] { f.CloseRequested(ui::kFormControlMenu); });
        return 0;
    case WM_QUERYENDSESSION:
        return TRUE;
    case WM_ENDSESSION:
        if (wp) Fire([&] { f.CloseRequested(ui::kAppWindows); });
        return 0;
    case WM_ACTIVATE:
        // Activation from another program is not an activation of the form.
        if (LOWORD(wp) != WA_INACTIVE && (lp == 0 || be_.FormOf(HWND(lp))))
            Fire([&] { f.Activated(); });
        break;
    case WM_SIZE:
        if (!applying_) {
            int state = wp == SIZE_MINIMIZED   ? ui::kMinimized
                        : wp == SIZE_MAXIMIZED ? ui::kMaximized
                                               : ui::kNormal;
            if (state != f.WindowState() && IsWindowVisible(hwnd_))
                Fire([&] { f.SystemStateChanged(state); });
            if (state == ui::kNormal) ReportGeometry();
        }
        break;
    case WM_MOVE:
        ReportGeometry();
        break;
    case WM_COMMAND:
        if (lp == 0)
            MenuCommand(int(LOWORD(wp)));
        else
            ReflectToChild(HWND(lp), msg, wp, lp, result);
        return 0;
    case WM_INITMENUPOPUP: {
        auto it = popups.find(HMENU(wp));
        if (it != popups.end()) RaiseClick(be_, it->second);
        return 0;
    }
    case WM_VSCROLL:
    case WM_HSCROLL:
        if (lp) ReflectToChild(HWND(lp), msg, wp, lp, result);
        return 0;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
        if (ReflectToChild(HWND(lp), msg, wp, lp, result)) return result;
        break;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: {
        int16_t key = int16_t(wp);
        int16_t shift = int16_t(ShiftState());
        // Bit 30: the key was down already.
        const bool repeat = (lp & (LPARAM(1) << 30)) != 0;
        Fire([&] {
            f.keyRepeat = repeat;
            if (f.OnKeyDown) f.OnKeyDown(key, shift);
            f.keyRepeat = false;
        });
        if (msg == WM_KEYDOWN) return 0;
        break;
    }
    case WM_MOUSEMOVE:
        Fire([&] {
            if (f.OnMouseMove) f.OnMouseMove(MouseArgs(wp, lp));
        });
        return 0;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
        Fire([&] {
            if (f.OnMouseDown)
                f.OnMouseDown(
                    MouseArgs(wp, lp, msg == WM_LBUTTONDOWN ? ui::kLeftButton : ui::kRightButton));
        });
        return 0;
    default:
        break;
    }
    return Default(msg, wp, lp);
}

} // namespace win32
