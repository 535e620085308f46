// The windows of the controls: one window procedure style for the whole program, the
// object pointer travelling in lpCreateParams, notifications reflected to the child's peer.
#include "platform/win32/win32_backend.h"

#include "platform/ui/form.h"

#include <commctrl.h>

#include <cmath>
#include <map>
#include <vector>

namespace win32 {

namespace {

const wchar_t kFormClass[] = L"MirovantaForm";
const wchar_t kChildClass[] = L"MirovantaChild";

int Px(float twips, float tpp) {
    return int(std::floor(double(twips) / double(tpp) + 1e-6));
}

COLORREF Color(uint32_t c) {
    return COLORREF(ui::ResolveColor(c));
}

int ShiftState() {
    return (GetKeyState(VK_SHIFT) < 0 ? ui::kShiftMask : 0) |
           (GetKeyState(VK_CONTROL) < 0 ? ui::kCtrlMask : 0) |
           (GetKeyState(VK_MENU) < 0 ? ui::kAltMask : 0);
}

int ButtonsOf(WPARAM wp) {
    return ((wp & MK_LBUTTON) ? ui::kLeftButton : 0) | ((wp & MK_RBUTTON) ? ui::kRightButton : 0) |
           ((wp & MK_MBUTTON) ? ui::kMiddleButton : 0);
}

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

ui::MouseEvent MouseArgs(WPARAM wp, LPARAM lp, float tppX, float tppY, int button = 0) {
    ui::MouseEvent e;
    e.button = button ? button : ButtonsOf(wp);
    e.shift = ShiftState();
    e.x = float(short(LOWORD(lp))) * tppX;
    e.y = float(short(HIWORD(lp))) * tppY;
    return e;
}

class FormPeer;

// What every peer shares: its window, its control and the screen's scale.
class PeerBase : public ui::Peer {
public:
    PeerBase(Win32Backend& be, ui::Control& c) : be_(be), c_(c) {
        auto m = be.Screen();
        tppX_ = m.tppX;
        tppY_ = m.tppY;
    }
    ui::WindowHandle Handle() const override { return ui::WindowHandle(hwnd_); }
    static PeerBase* From(HWND h) {
        return reinterpret_cast<PeerBase*>(GetWindowLongPtrW(h, GWLP_USERDATA));
    }
    ui::Control& Control() { return c_; }
    // Notifications of native controls, reflected from the parent.
    virtual void Command(int) {}
    virtual void Scroll(int, int) {}

protected:
    Win32Backend& be_;
    ui::Control& c_;
    HWND hwnd_ = nullptr;
    float tppX_ = 15, tppY_ = 15;
};

class FormPeer : public PeerBase {
public:
    FormPeer(Win32Backend& be, ui::Form& f);
    ~FormPeer() override;
    void Update(ui::Change what) override;
    LRESULT Proc(UINT msg, WPARAM wp, LPARAM lp);

    // Menus of this form by command identifier and by pop-up handle.
    std::map<int, ui::Menu*> menus;
    std::map<HMENU, ui::Menu*> popups;
    void RebuildBar();
    HMENU Bar() const { return bar_.get(); }
    void SetTooltip(HWND child, const std::wstring& text);
    void RemoveTooltip(HWND child);
    HBRUSH BackBrush();

private:
    ui::Form& form() { return static_cast<ui::Form&>(c_); }
    void ApplyBounds();
    void ReportGeometry();
    MenuHandle bar_;
    HWND tooltip_ = nullptr;
    BrushHandle backBrush_;
    COLORREF backBrushColor_ = CLR_INVALID;
    bool applying_ = false;
};

// Inserts the visible entries of a menu list into a menu handle, replacing its items.
void FillMenu(HMENU h, const std::vector<ui::Menu*>& items) {
    while (GetMenuItemCount(h) > 0) RemoveMenu(h, 0, MF_BYPOSITION);
    UINT pos = 0;
    for (ui::Menu* m : items) {
        if (!m->Visible() || !m->GetPeer()) continue;
        MENUITEMINFOW mi{};
        mi.cbSize = sizeof mi;
        mi.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_STRING | MIIM_SUBMENU;
        mi.fType = m->IsSeparator() ? MFT_SEPARATOR : MFT_STRING;
        mi.fState = (m->Checked() ? MFS_CHECKED : 0) | (m->Enabled() ? 0 : MFS_GRAYED);
        mi.wID = UINT(m->CommandId());
        mi.hSubMenu = reinterpret_cast<HMENU>(m->GetPeer()->Handle());
        std::wstring text = m->Caption();
        mi.dwTypeData = text.data();
        InsertMenuItemW(h, pos++, TRUE, &mi);
    }
}

FormPeer* FormPeerOf(ui::Control& c) {
    return c.Owner() ? dynamic_cast<FormPeer*>(c.Owner()->GetPeer()) : nullptr;
}

class MenuPeer : public PeerBase {
public:
    MenuPeer(Win32Backend& be, ui::Menu& m) : PeerBase(be, m), menu_(m) {
        if (!m.Children().empty()) popup_.reset(CreatePopupMenu());
        if (FormPeer* f = FormPeerOf(m)) {
            f->menus[m.CommandId()] = &m;
            if (popup_) f->popups[popup_.get()] = &m;
        }
        RebuildContainer();
    }
    ~MenuPeer() override {
        HMENU container = Container();
        if (container && IsMenu(container)) {
            for (int i = GetMenuItemCount(container) - 1; i >= 0; --i)
                if (GetMenuItemID(container, i) == UINT(menu_.CommandId()) ||
                    (popup_ && GetSubMenu(container, i) == popup_.get()))
                    RemoveMenu(container, UINT(i), MF_BYPOSITION);
        }
        if (popup_)
            while (GetMenuItemCount(popup_.get()) > 0) RemoveMenu(popup_.get(), 0, MF_BYPOSITION);
        if (FormPeer* f = FormPeerOf(menu_)) {
            f->menus.erase(menu_.CommandId());
            if (popup_) f->popups.erase(popup_.get());
        }
    }
    ui::WindowHandle Handle() const override { return ui::WindowHandle(popup_.get()); }
    void Update(ui::Change what) override {
        if (what == ui::Change::Children) {
            if (popup_) FillMenu(popup_.get(), menu_.Children());
            return;
        }
        RebuildContainer();
    }

private:
    HMENU Container() {
        if (menu_.Parent()) {
            auto* p = menu_.Parent()->GetPeer();
            return p ? reinterpret_cast<HMENU>(p->Handle()) : nullptr;
        }
        FormPeer* f = FormPeerOf(menu_);
        return f ? f->Bar() : nullptr;
    }
    void RebuildContainer() {
        if (menu_.Parent()) {
            HMENU h = Container();
            if (h) FillMenu(h, menu_.Parent()->Children());
        } else if (FormPeer* f = FormPeerOf(menu_)) {
            f->RebuildBar();
        }
    }
    ui::Menu& menu_;
    MenuHandle popup_;
};

// Controls drawn by the form itself: lines and shapes.
class WindowlessPeer : public PeerBase {
public:
    WindowlessPeer(Win32Backend& be, ui::Control& c) : PeerBase(be, c) { Invalidate(); }
    ~WindowlessPeer() override { Invalidate(); }
    void Update(ui::Change) override { Invalidate(); }

private:
    void Invalidate() {
        if (c_.Owner() && c_.Owner()->Handle())
            InvalidateRect(HWND(c_.Owner()->Handle()), nullptr, TRUE);
    }
};

class ChildPeer : public PeerBase {
public:
    ChildPeer(Win32Backend& be, ui::Control& c);
    ~ChildPeer() override;
    void Update(ui::Change what) override;
    void Command(int code) override;
    void Scroll(int code, int pos) override;
    LRESULT Proc(UINT msg, WPARAM wp, LPARAM lp);
    // A brush of the control's back colour, for the native controls' own painting.
    HBRUSH Brush(COLORREF c) {
        if (!brush_ || c != brushColor_) {
            brush_.reset(CreateSolidBrush(c));
            brushColor_ = c;
        }
        return brush_.get();
    }
    static LRESULT CALLBACK EditProc(HWND h, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id,
                                     DWORD_PTR data);

private:
    void Paint(HDC dc);
    void ApplyBounds();
    void ApplyFont();
    bool native_ = false;
    bool afterDouble_ = false;
    FontHandle font_;
    BrushHandle brush_;
    COLORREF brushColor_ = CLR_INVALID;
};

LRESULT CALLBACK FormProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_NCCREATE) {
        auto* cs = reinterpret_cast<CREATESTRUCTW*>(lp);
        SetWindowLongPtrW(h, GWLP_USERDATA, LONG_PTR(cs->lpCreateParams));
    }
    auto* p = static_cast<FormPeer*>(PeerBase::From(h));
    if (p && msg != WM_NCCREATE) return p->Proc(msg, wp, lp);
    return DefWindowProcW(h, msg, wp, lp);
}

LRESULT CALLBACK ChildProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_NCCREATE) {
        auto* cs = reinterpret_cast<CREATESTRUCTW*>(lp);
        SetWindowLongPtrW(h, GWLP_USERDATA, LONG_PTR(cs->lpCreateParams));
    }
    auto* p = static_cast<ChildPeer*>(PeerBase::From(h));
    if (p && msg != WM_NCCREATE) return p->Proc(msg, wp, lp);
    return DefWindowProcW(h, msg, wp, lp);
}

// ---- FormPeer ---------------------------------------------------------------------------

FormPeer::FormPeer(Win32Backend& be, ui::Form& f) : PeerBase(be, f) {
    DWORD style = WS_CLIPCHILDREN;
    DWORD ex = 0;
    switch (f.borderStyle) {
    case 0:
        style |= WS_POPUP;
        break;
    case 1:
        style |= WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;
        break;
    case 3:
        style |= WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
        break;
    case 4:
        style |= WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;
        ex |= WS_EX_TOOLWINDOW;
        break;
    case 5:
        style |= WS_OVERLAPPEDWINDOW;
        ex |= WS_EX_TOOLWINDOW;
        break;
    default:
        style |= WS_OVERLAPPEDWINDOW;
        break;
    }
    if (f.borderStyle != 0 && f.minButton) style |= WS_MINIMIZEBOX;
    if (!f.maxButton) style &= ~DWORD(WS_MAXIMIZEBOX);
    if (!f.controlBox) style &= ~DWORD(WS_SYSMENU);
    if (!f.showInTaskbar) ex |= WS_EX_TOOLWINDOW;
    if (f.topMost) ex |= WS_EX_TOPMOST;
    hwnd_ = CreateWindowExW(ex, kFormClass, f.Caption().c_str(), style, Px(f.Left(), tppX_),
                            Px(f.Top(), tppY_), Px(f.Width(), tppX_), Px(f.Height(), tppY_),
                            nullptr, nullptr, GetModuleHandleW(nullptr), this);
    be_.FormCreated(hwnd_, &f);
    if (f.TransparentKey() >= 0) Update(ui::Change::Style);
}

FormPeer::~FormPeer() {
    HWND h = hwnd_;
    SetMenu(h, nullptr);
    if (tooltip_) DestroyWindow(tooltip_);
    SetWindowLongPtrW(h, GWLP_USERDATA, 0);
    DestroyWindow(h);
    be_.FormDestroyed(h);
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
    applying_ = true;
    SetWindowPos(hwnd_, nullptr, Px(form().Left(), tppX_), Px(form().Top(), tppY_),
                 Px(form().Width(), tppX_), Px(form().Height(), tppY_),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    applying_ = false;
}

void FormPeer::ReportGeometry() {
    if (applying_ || IsIconic(hwnd_) || !IsWindowVisible(hwnd_)) return;
    RECT r;
    GetWindowRect(hwnd_, &r);
    // Only a real change by the system or the user reaches the model: the model's twips
    // stay exact when they round to the same pixels.
    if (r.left == Px(form().Left(), tppX_) && r.top == Px(form().Top(), tppY_) &&
        r.right - r.left == Px(form().Width(), tppX_) &&
        r.bottom - r.top == Px(form().Height(), tppY_))
        return;
    ui::Form& f = form();
    Fire(be_, [&] {
        f.SystemMoved(float(r.left) * tppX_, float(r.top) * tppY_, float(r.right - r.left) * tppX_,
                      float(r.bottom - r.top) * tppY_);
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

void FormPeer::SetTooltip(HWND child, const std::wstring& text) {
    if (!tooltip_) {
        tooltip_ =
            CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP,
                            CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, hwnd_,
                            nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    TTTOOLINFOW ti{};
    ti.cbSize = sizeof ti;
    ti.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    ti.hwnd = hwnd_;
    ti.uId = UINT_PTR(child);
    SendMessageW(tooltip_, TTM_DELTOOLW, 0, LPARAM(&ti));
    if (text.empty()) return;
    std::wstring t = text;
    ti.lpszText = t.data();
    SendMessageW(tooltip_, TTM_ADDTOOLW, 0, LPARAM(&ti));
}

void FormPeer::RemoveTooltip(HWND child) {
    if (!tooltip_) return;
    TTTOOLINFOW ti{};
    ti.cbSize = sizeof ti;
    ti.hwnd = hwnd_;
    ti.uId = UINT_PTR(child);
    SendMessageW(tooltip_, TTM_DELTOOLW, 0, LPARAM(&ti));
}

void FormPeer::Update(ui::Change what) {
    ui::Form& f = form();
    switch (what) {
    case ui::Change::Bounds:
        ApplyBounds();
        break;
    case ui::Change::Visible:
        if (f.Visible()) {
            int cmd = f.WindowState() == ui::kMinimized   ? SW_SHOWMINIMIZED
                      : f.WindowState() == ui::kMaximized ? SW_SHOWMAXIMIZED
                                                          : SW_SHOW;
            ShowWindow(hwnd_, cmd);
            UpdateWindow(hwnd_);
        } else {
            ShowWindow(hwnd_, SW_HIDE);
        }
        break;
    case ui::Change::Caption:
        SetWindowTextW(hwnd_, f.Caption().c_str());
        break;
    case ui::Change::State:
        if (IsWindowVisible(hwnd_)) {
            applying_ = true;
            ShowWindow(hwnd_, f.WindowState() == ui::kMinimized   ? SW_MINIMIZE
                              : f.WindowState() == ui::kMaximized ? SW_MAXIMIZE
                                                                  : SW_RESTORE);
            applying_ = false;
        }
        break;
    case ui::Change::Style:
        if (f.TransparentKey() >= 0) {
            LONG_PTR ex = GetWindowLongPtrW(hwnd_, GWL_EXSTYLE);
            SetWindowLongPtrW(hwnd_, GWL_EXSTYLE, ex | WS_EX_LAYERED);
            SetLayeredWindowAttributes(hwnd_, COLORREF(f.TransparentKey()), 0, LWA_COLORKEY);
        }
        InvalidateRect(hwnd_, nullptr, TRUE);
        break;
    case ui::Change::Children:
        RebuildBar();
        break;
    case ui::Change::Enabled:
        EnableWindow(hwnd_, f.Enabled());
        break;
    default:
        break;
    }
}

LRESULT FormPeer::Proc(UINT msg, WPARAM wp, LPARAM lp) {
    ui::Form& f = form();
    switch (msg) {
    case WM_ERASEBKGND: {
        RECT r;
        GetClientRect(hwnd_, &r);
        FillRect(HDC(wp), &r, BackBrush());
        return 1;
    }
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(hwnd_, &ps);
        for (ui::Control* c : f.Controls()) {
            if (!c->Visible() || !c->HasPeer()) continue;
            if (c->GetKind() == ui::Kind::Line) {
                auto* l = static_cast<ui::Line*>(c);
                PenHandle pen(CreatePen(PS_SOLID, 1, Color(l->BorderColor())));
                Selected sel(dc, pen.get());
                MoveToEx(dc, Px(l->X1(), tppX_), Px(l->Y1(), tppY_), nullptr);
                LineTo(dc, Px(l->X2(), tppX_), Px(l->Y2(), tppY_));
            } else if (c->GetKind() == ui::Kind::Shape) {
                auto* s = static_cast<ui::Shape*>(c);
                PenHandle pen(CreatePen(PS_SOLID, 1, Color(s->BorderColor())));
                Selected sel(dc, pen.get());
                Selected noBrush(dc, GetStockObject(NULL_BRUSH));
                Rectangle(dc, Px(s->Left(), tppX_), Px(s->Top(), tppY_),
                          Px(s->Left() + s->Width(), tppX_), Px(s->Top() + s->Height(), tppY_));
            }
        }
        EndPaint(hwnd_, &ps);
        return 0;
    }
    case WM_CLOSE:
        Fire(be_, [&] { f.CloseRequested(ui::kFormControlMenu); });
        return 0;
    case WM_QUERYENDSESSION:
        return TRUE;
    case WM_ENDSESSION:
        if (wp) Fire(be_, [&] { f.CloseRequested(ui::kAppWindows); });
        return 0;
    case WM_ACTIVATE:
        // Activation from another program is not an activation of the form.
        if (LOWORD(wp) != WA_INACTIVE && (lp == 0 || be_.FormOf(HWND(lp))))
            Fire(be_, [&] { f.Activated(); });
        break;
    case WM_SIZE:
        if (!applying_) {
            int state = wp == SIZE_MINIMIZED   ? ui::kMinimized
                        : wp == SIZE_MAXIMIZED ? ui::kMaximized
                                               : ui::kNormal;
            if (state != f.WindowState() && IsWindowVisible(hwnd_))
                Fire(be_, [&] { f.SystemStateChanged(state); });
            if (state == ui::kNormal) ReportGeometry();
        }
        break;
    case WM_MOVE:
        ReportGeometry();
        break;
    case WM_COMMAND:
        if (lp == 0) {
            auto it = menus.find(int(LOWORD(wp)));
            if (it != menus.end()) {
                ui::Menu* m = it->second;
                Fire(be_, [m] {
                    if (m->OnClick) m->OnClick();
                });
            }
        } else if (auto* child = PeerBase::From(HWND(lp))) {
            child->Command(HIWORD(wp));
        }
        return 0;
    case WM_INITMENUPOPUP: {
        auto it = popups.find(HMENU(wp));
        if (it != popups.end()) {
            ui::Menu* m = it->second;
            Fire(be_, [m] {
                if (m->OnClick) m->OnClick();
            });
        }
        return 0;
    }
    case WM_VSCROLL:
        if (lp)
            if (auto* child = PeerBase::From(HWND(lp))) child->Scroll(LOWORD(wp), HIWORD(wp));
        return 0;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
        if (auto* child = PeerBase::From(HWND(lp))) {
            COLORREF c = Color(child->Control().BackColor());
            SetBkColor(HDC(wp), c);
            return LRESULT(static_cast<ChildPeer*>(child)->Brush(c));
        }
        break;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: {
        int16_t key = int16_t(wp);
        int16_t shift = int16_t(ShiftState());
        Fire(be_, [&] {
            if (f.OnKeyDown) f.OnKeyDown(key, shift);
        });
        if (msg == WM_KEYDOWN) return 0;
        break;
    }
    case WM_MOUSEMOVE:
        Fire(be_, [&] {
            if (f.OnMouseMove) f.OnMouseMove(MouseArgs(wp, lp, tppX_, tppY_));
        });
        return 0;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
        Fire(be_, [&] {
            if (f.OnMouseDown)
                f.OnMouseDown(
                    MouseArgs(wp, lp, tppX_, tppY_,
                              msg == WM_LBUTTONDOWN ? ui::kLeftButton : ui::kRightButton));
        });
        return 0;
    default:
        break;
    }
    return DefWindowProcW(hwnd_, msg, wp, lp);
}

// ---- ChildPeer --------------------------------------------------------------------------

ChildPeer::ChildPeer(Win32Backend& be, ui::Control& c) : PeerBase(be, c) {
    HWND parent = HWND(c.Owner()->Handle());
    DWORD style = WS_CHILD | WS_CLIPSIBLINGS | (c.Visible() ? WS_VISIBLE : 0);
    const wchar_t* cls = kChildClass;
    std::wstring text;
    switch (c.GetKind()) {
    case ui::Kind::TextBox:
        cls = WC_EDITW;
        style |= WS_BORDER | ES_AUTOHSCROLL | ES_CENTER;
        text = static_cast<ui::TextBox&>(c).Text();
        native_ = true;
        break;
    case ui::Kind::CheckBox:
        cls = WC_BUTTONW;
        style |= BS_3STATE;
        text = static_cast<ui::CheckBox&>(c).Caption();
        native_ = true;
        break;
    case ui::Kind::VScrollBar:
        cls = WC_SCROLLBARW;
        style |= SBS_VERT;
        native_ = true;
        break;
    default:
        break;
    }
    hwnd_ = CreateWindowExW(0, cls, text.c_str(), style, Px(c.Left(), tppX_), Px(c.Top(), tppY_),
                            Px(c.Width(), tppX_), Px(c.Height(), tppY_), parent, nullptr,
                            GetModuleHandleW(nullptr), native_ ? nullptr : this);
    if (native_) {
        SetWindowLongPtrW(hwnd_, GWLP_USERDATA, LONG_PTR(static_cast<PeerBase*>(this)));
        if (c.GetKind() == ui::Kind::TextBox)
            SetWindowSubclass(hwnd_, EditProc, 1, DWORD_PTR(this));
        SendMessageW(hwnd_, WM_SETFONT, WPARAM(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
        Update(ui::Change::Value);
        Update(ui::Change::Range);
    }
    // A control made later stands in front of the earlier ones.
    SetWindowPos(hwnd_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (!c.Enabled()) EnableWindow(hwnd_, FALSE);
    ApplyFont();
    if (!c.ToolTipText().empty())
        if (FormPeer* f = FormPeerOf(c)) f->SetTooltip(hwnd_, c.ToolTipText());
}

ChildPeer::~ChildPeer() {
    if (FormPeer* f = FormPeerOf(c_)) f->RemoveTooltip(hwnd_);
    if (c_.GetKind() == ui::Kind::TextBox) RemoveWindowSubclass(hwnd_, EditProc, 1);
    SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
    DestroyWindow(hwnd_);
}

void ChildPeer::ApplyFont() {
    if (c_.GetKind() != ui::Kind::Label) return;
    const ui::Font& f = static_cast<ui::Label&>(c_).GetFont();
    HDC dc = GetDC(nullptr);
    int height = -MulDiv(int(std::lround(f.size * 10)), GetDeviceCaps(dc, LOGPIXELSY), 720);
    ReleaseDC(nullptr, dc);
    std::wstring face = f.name == L"MS Sans Serif" ? L"Tahoma" : f.name;
    font_.reset(CreateFontW(height, 0, 0, 0, f.bold ? FW_BOLD : FW_NORMAL, f.italic, FALSE, FALSE,
                            face == L"Wingdings" ? SYMBOL_CHARSET : DEFAULT_CHARSET,
                            OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                            DEFAULT_PITCH, face.c_str()));
}

void ChildPeer::ApplyBounds() {
    SetWindowPos(hwnd_, nullptr, Px(c_.Left(), tppX_), Px(c_.Top(), tppY_), Px(c_.Width(), tppX_),
                 Px(c_.Height(), tppY_), SWP_NOZORDER | SWP_NOACTIVATE);
}

void ChildPeer::Update(ui::Change what) {
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
        if (FormPeer* f = FormPeerOf(c_)) f->SetTooltip(hwnd_, c_.ToolTipText());
        break;
    case ui::Change::Caption:
        if (c_.GetKind() == ui::Kind::TextBox) {
            const std::wstring& t = static_cast<ui::TextBox&>(c_).Text();
            wchar_t current[512];
            GetWindowTextW(hwnd_, current, 512);
            if (t != current) SetWindowTextW(hwnd_, t.c_str());
        } else if (c_.GetKind() == ui::Kind::CheckBox) {
            SetWindowTextW(hwnd_, static_cast<ui::CheckBox&>(c_).Caption().c_str());
        } else {
            InvalidateRect(hwnd_, nullptr, FALSE);
        }
        break;
    case ui::Change::Value:
        if (c_.GetKind() == ui::Kind::CheckBox)
            SendMessageW(hwnd_, BM_SETCHECK, WPARAM(static_cast<ui::CheckBox&>(c_).Value()), 0);
        else if (c_.GetKind() == ui::Kind::VScrollBar)
            SetScrollPos(hwnd_, SB_CTL, static_cast<ui::VScrollBar&>(c_).Value(), TRUE);
        break;
    case ui::Change::Range:
        if (c_.GetKind() == ui::Kind::VScrollBar) {
            auto& s = static_cast<ui::VScrollBar&>(c_);
            SetScrollRange(hwnd_, SB_CTL, s.Min(), s.Max(), FALSE);
            SetScrollPos(hwnd_, SB_CTL, s.Value(), TRUE);
        }
        break;
    case ui::Change::Style:
        ApplyFont();
        InvalidateRect(hwnd_, nullptr, TRUE);
        break;
    default:
        InvalidateRect(hwnd_, nullptr, FALSE);
        break;
    }
}

void ChildPeer::Command(int code) {
    if (c_.GetKind() == ui::Kind::CheckBox && code == BN_CLICKED) {
        auto& box = static_cast<ui::CheckBox&>(c_);
        Fire(be_, [&] { box.UserToggled(); });
    } else if (c_.GetKind() == ui::Kind::TextBox && code == EN_CHANGE) {
        int n = GetWindowTextLengthW(hwnd_);
        std::wstring t(size_t(n) + 1, L'\0');
        GetWindowTextW(hwnd_, t.data(), n + 1);
        t.resize(size_t(n));
        auto& box = static_cast<ui::TextBox&>(c_);
        Fire(be_, [&] { box.TextEdited(t); });
    }
}

void ChildPeer::Scroll(int code, int pos) {
    auto& s = static_cast<ui::VScrollBar&>(c_);
    int v = s.Value();
    switch (code) {
    case SB_LINEUP:
        v -= s.SmallChange();
        break;
    case SB_LINEDOWN:
        v += s.SmallChange();
        break;
    case SB_PAGEUP:
        v -= s.LargeChange();
        break;
    case SB_PAGEDOWN:
        v += s.LargeChange();
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        v = pos;
        break;
    default:
        return;
    }
    v = std::max(std::min(s.Min(), s.Max()), std::min(v, std::max(s.Min(), s.Max())));
    Fire(be_, [&] { s.SetValue(v); });
}

LRESULT CALLBACK ChildPeer::EditProc(HWND h, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR,
                                     DWORD_PTR data) {
    if (msg == WM_KEYDOWN) {
        auto* self = reinterpret_cast<ChildPeer*>(data);
        auto& box = static_cast<ui::TextBox&>(self->c_);
        ui::Form* form = box.Owner();
        int16_t key = int16_t(wp);
        int16_t shift = int16_t(ShiftState());
        Fire(self->be_, [&] {
            if (form->keyPreview && form->OnKeyDown) form->OnKeyDown(key, shift);
            if (key && box.OnKeyDown) box.OnKeyDown(key, shift);
        });
        if (key == 0) return 0;
    }
    return DefSubclassProc(h, msg, wp, lp);
}

void ChildPeer::Paint(HDC dc) {
    RECT r;
    GetClientRect(hwnd_, &r);
    switch (c_.GetKind()) {
    case ui::Kind::PictureBox: {
        auto& p = static_cast<ui::PictureBox&>(c_);
        const gdi::Surface& s = p.Image();
        if (s.Width() < r.right || s.Height() < r.bottom) FillSolid(dc, r, Color(p.BackColor()));
        PaintSurface(dc, s);
        if (p.BorderStyle() == 1) DrawEdge(dc, &r, EDGE_SUNKEN, BF_RECT);
        break;
    }
    case ui::Kind::Label: {
        auto& l = static_cast<ui::Label&>(c_);
        COLORREF back = l.Transparent() ? Color(l.Owner()->BackColor()) : Color(l.BackColor());
        FillSolid(dc, r, back);
        if (l.BorderStyle() == 1) {
            FrameRect(dc, &r, HBRUSH(GetStockObject(BLACK_BRUSH)));
            InflateRect(&r, -2, -1);
        }
        Selected sel(dc, font_ ? HGDIOBJ(font_.get()) : GetStockObject(DEFAULT_GUI_FONT));
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, Color(l.ForeColor()));
        UINT align = l.Alignment() == 1 ? DT_RIGHT : l.Alignment() == 2 ? DT_CENTER : DT_LEFT;
        std::wstring text = l.Caption();
        DrawTextW(dc, text.c_str(), int(text.size()), &r, align | DT_WORDBREAK | DT_NOPREFIX);
        break;
    }
    default:
        FillSolid(dc, r, Color(c_.BackColor()));
        break;
    }
}

LRESULT ChildPeer::Proc(UINT msg, WPARAM wp, LPARAM lp) {
    ui::Control& c = c_;
    switch (msg) {
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(hwnd_, &ps);
        Paint(dc);
        EndPaint(hwnd_, &ps);
        return 0;
    }
    case WM_MOUSEMOVE:
        Fire(be_, [&] {
            if (c.OnMouseMove) c.OnMouseMove(MouseArgs(wp, lp, tppX_, tppY_));
        });
        return 0;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
        SetCapture(hwnd_);
        afterDouble_ = false;
        Fire(be_, [&] {
            if (c.OnMouseDown)
                c.OnMouseDown(
                    MouseArgs(wp, lp, tppX_, tppY_,
                              msg == WM_LBUTTONDOWN ? ui::kLeftButton : ui::kRightButton));
        });
        return 0;
    case WM_LBUTTONDBLCLK:
        SetCapture(hwnd_);
        afterDouble_ = true;
        Fire(be_, [&] {
            if (c.OnMouseDown) c.OnMouseDown(MouseArgs(wp, lp, tppX_, tppY_, ui::kLeftButton));
            if (c.OnDblClick) c.OnDblClick();
        });
        return 0;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP: {
        if (GetCapture() == hwnd_) ReleaseCapture();
        POINT p{short(LOWORD(lp)), short(HIWORD(lp))};
        RECT r;
        GetClientRect(hwnd_, &r);
        const bool inside = PtInRect(&r, p) != FALSE;
        const bool click = msg == WM_LBUTTONUP && inside && !afterDouble_;
        afterDouble_ = false;
        Fire(be_, [&] {
            if (c.OnMouseUp)
                c.OnMouseUp(MouseArgs(wp, lp, tppX_, tppY_,
                                      msg == WM_LBUTTONUP ? ui::kLeftButton : ui::kRightButton));
            if (click && c.OnClick) c.OnClick();
        });
        return 0;
    }
    default:
        break;
    }
    return DefWindowProcW(hwnd_, msg, wp, lp);
}

} // namespace

void RegisterWindowClasses() {
    INITCOMMONCONTROLSEX icc{sizeof icc, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&icc);
    HINSTANCE inst = GetModuleHandleW(nullptr);
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.style = CS_DBLCLKS;
    wc.lpfnWndProc = FormProc;
    wc.hInstance = inst;
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.hIcon = LoadIconW(inst, MAKEINTRESOURCEW(1));
    if (!wc.hIcon) wc.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    wc.lpszClassName = kFormClass;
    RegisterClassExW(&wc);
    wc.lpfnWndProc = ChildProc;
    wc.hIcon = nullptr;
    wc.lpszClassName = kChildClass;
    RegisterClassExW(&wc);
}

std::unique_ptr<ui::Peer> MakePeer(Win32Backend& be, ui::Control& c) {
    switch (c.GetKind()) {
    case ui::Kind::Form:
        return std::make_unique<FormPeer>(be, static_cast<ui::Form&>(c));
    case ui::Kind::Menu:
        return std::make_unique<MenuPeer>(be, static_cast<ui::Menu&>(c));
    case ui::Kind::Line:
    case ui::Kind::Shape:
        return std::make_unique<WindowlessPeer>(be, c);
    case ui::Kind::Timer:
    case ui::Kind::CommonDialog:
        return nullptr;
    default:
        return std::make_unique<ChildPeer>(be, c);
    }
}

} // namespace win32
