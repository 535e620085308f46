#include "platform/win32/peers/peer.h"

#include <commctrl.h>

namespace win32 {

namespace {
// The subclass of the built-in controls; its data is the peer.
constexpr UINT_PTR kPeerSubclass = 1;
ATOM g_formAtom = 0;
ATOM g_childAtom = 0;

int ButtonsOf(WPARAM wp) {
    return ((wp & MK_LBUTTON) ? ui::kLeftButton : 0) | ((wp & MK_RBUTTON) ? ui::kRightButton : 0) |
           ((wp & MK_MBUTTON) ? ui::kMiddleButton : 0);
}
} // namespace

COLORREF Color(uint32_t c) {
    return COLORREF(ui::ResolveColor(c));
}

int ShiftState() {
    return (GetKeyState(VK_SHIFT) < 0 ? ui::kShiftMask : 0) |
           (GetKeyState(VK_CONTROL) < 0 ? ui::kCtrlMask : 0) |
           (GetKeyState(VK_MENU) < 0 ? ui::kAltMask : 0);
}

void RegisterWindowClasses() {
    INITCOMMONCONTROLSEX icc{sizeof icc, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&icc);
    HINSTANCE inst = GetModuleHandleW(nullptr);
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.style = CS_DBLCLKS;
    wc.lpfnWndProc = WindowPeer::WindowProc;
    wc.hInstance = inst;
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    // The program's icon at the sizes of the caption and the task bar.
    wc.hIcon = HICON(LoadImageW(inst, MAKEINTRESOURCEW(1), IMAGE_ICON, GetSystemMetrics(SM_CXICON),
                                GetSystemMetrics(SM_CYICON), LR_DEFAULTCOLOR));
    wc.hIconSm =
        HICON(LoadImageW(inst, MAKEINTRESOURCEW(1), IMAGE_ICON, GetSystemMetrics(SM_CXSMICON),
                         GetSystemMetrics(SM_CYSMICON), LR_DEFAULTCOLOR));
    if (!wc.hIcon) wc.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    wc.lpszClassName = kFormClass;
    g_formAtom = RegisterClassExW(&wc);
    wc.hIcon = nullptr;
    wc.hIconSm = nullptr;
    wc.lpszClassName = kChildClass;
    g_childAtom = RegisterClassExW(&wc);
}

WindowPeer::~WindowPeer() {
    DestroyPeerWindow();
}

LRESULT CALLBACK WindowPeer::WindowProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_NCCREATE) {
        auto* p = static_cast<WindowPeer*>(reinterpret_cast<CREATESTRUCTW*>(lp)->lpCreateParams);
        SetWindowLongPtrW(h, GWLP_USERDATA, LONG_PTR(p));
        if (p) p->hwnd_ = h;
        return DefWindowProcW(h, msg, wp, lp);
    }
    auto* p = reinterpret_cast<WindowPeer*>(GetWindowLongPtrW(h, GWLP_USERDATA));
    if (!p) return DefWindowProcW(h, msg, wp, lp);
    if (msg == WM_NCDESTROY) {
        // A peer detaches before it destroys its window: this one went with its parent.
        const LRESULT r = p->HandleMessage(msg, wp, lp);
        SetWindowLongPtrW(h, GWLP_USERDATA, 0);
        p->WindowGone();
        return r;
    }
    return p->HandleMessage(msg, wp, lp);
}

LRESULT CALLBACK WindowPeer::SubclassProc(HWND h, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR,
                                          DWORD_PTR data) {
    auto* p = reinterpret_cast<WindowPeer*>(data);
    if (msg == WM_NCDESTROY) {
        // Destroyed with its parent: the subclass goes before the window does.
        RemoveWindowSubclass(h, SubclassProc, kPeerSubclass);
        const LRESULT r = p->HandleMessage(msg, wp, lp);
        p->WindowGone();
        return r;
    }
    return p->HandleMessage(msg, wp, lp);
}

WindowPeer* WindowPeer::FromWindow(HWND h) {
    if (!h) return nullptr;
    const auto atom = ATOM(GetClassLongPtrW(h, GCW_ATOM));
    if (atom && (atom == g_formAtom || atom == g_childAtom))
        return reinterpret_cast<WindowPeer*>(GetWindowLongPtrW(h, GWLP_USERDATA));
    // GetWindowSubclass, which MinGW's x64 import library lacks; comctl32 exports it as
    // ordinal 411 in every version that has subclasses.
    using GetSubclass = BOOL(WINAPI*)(HWND, SUBCLASSPROC, UINT_PTR, DWORD_PTR*);
    static const auto getSubclass = reinterpret_cast<GetSubclass>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"comctl32.dll"), MAKEINTRESOURCEA(411))));
    DWORD_PTR data = 0;
    if (getSubclass && getSubclass(h, SubclassProc, kPeerSubclass, &data))
        return reinterpret_cast<WindowPeer*>(data);
    return nullptr;
}

void WindowPeer::CreateOwnWindow(DWORD exStyle, const wchar_t* cls, const std::wstring& text,
                                 DWORD style, int x, int y, int w, int h, HWND parent) {
    native_ = false;
    // The window procedure sets hwnd_ at WM_NCCREATE already; a window that failed after
    // it is gone again.
    hwnd_ = CreateWindowExW(exStyle, cls, text.c_str(), style, x, y, w, h, parent, nullptr,
                            GetModuleHandleW(nullptr), this);
}

void WindowPeer::CreateNativeWindow(const wchar_t* cls, const std::wstring& text, DWORD style,
                                    int x, int y, int w, int h, HWND parent) {
    native_ = true;
    hwnd_ = CreateWindowExW(0, cls, text.c_str(), style, x, y, w, h, parent, nullptr,
                            GetModuleHandleW(nullptr), nullptr);
    if (hwnd_) SetWindowSubclass(hwnd_, SubclassProc, kPeerSubclass, DWORD_PTR(this));
}

void WindowPeer::DestroyPeerWindow() {
    if (!hwnd_) return;
    if (native_)
        RemoveWindowSubclass(hwnd_, SubclassProc, kPeerSubclass);
    else
        SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
    DestroyWindow(hwnd_);
    hwnd_ = nullptr;
}

LRESULT WindowPeer::Default(UINT msg, WPARAM wp, LPARAM lp) {
    return native_ ? DefSubclassProc(hwnd_, msg, wp, lp) : DefWindowProcW(hwnd_, msg, wp, lp);
}

LRESULT WindowPeer::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
    return Default(msg, wp, lp);
}

bool WindowPeer::Reflect(UINT, WPARAM, LPARAM, LRESULT&) {
    return false;
}

bool WindowPeer::ReflectToChild(HWND child, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    WindowPeer* p = WindowPeer::FromWindow(child);
    return p && p->Reflect(msg, wp, lp, result);
}

HCURSOR WindowPeer::PointerCursor() const {
    LPCWSTR id = nullptr;
    switch (c_.MousePointer()) {
    case ui::kPointerArrow:
        id = IDC_ARROW;
        break;
    case ui::kPointerSizeAll:
        id = IDC_SIZEALL;
        break;
    case ui::kPointerSizeNESW:
        id = IDC_SIZENESW;
        break;
    case ui::kPointerSizeNS:
        id = IDC_SIZENS;
        break;
    case ui::kPointerSizeNWSE:
        id = IDC_SIZENWSE;
        break;
    case ui::kPointerSizeWE:
        id = IDC_SIZEWE;
        break;
    case ui::kPointerCustom:
        if (HCURSOR own = CustomCursor()) return own;
        id = IDC_ARROW;
        break;
    default:
        return nullptr;
    }
    return LoadCursorW(nullptr, id);
}

bool WindowPeer::SetPointerCursor(WPARAM wp, LPARAM lp) const {
    // A child window under the mouse has its own pointer, even where ours is set.
    if (HWND(wp) != hwnd_ || LOWORD(lp) != HTCLIENT) return false;
    HCURSOR cursor = PointerCursor();
    if (!cursor) return false;
    SetCursor(cursor);
    return true;
}

void WindowPeer::ShowPointerNow() {
    if (!hwnd_) return;
    if (GetCapture() == hwnd_) {
        HCURSOR cursor = PointerCursor();
        SetCursor(cursor ? cursor : HCURSOR(GetClassLongPtrW(hwnd_, GCLP_HCURSOR)));
        return;
    }
    POINT p{};
    if (!GetCursorPos(&p) || WindowFromPoint(p) != hwnd_) return;
    // What the next mouse move would do: our pointer over the client area, the system's
    // over the frame, the class cursor for the default pointer.
    const LRESULT hit = SendMessageW(hwnd_, WM_NCHITTEST, 0, MAKELPARAM(p.x, p.y));
    SendMessageW(hwnd_, WM_SETCURSOR, WPARAM(hwnd_), MAKELPARAM(LOWORD(hit), WM_MOUSEMOVE));
}

ui::MouseEvent WindowPeer::MouseArgs(WPARAM wp, LPARAM lp, int button) const {
    const ui::ScreenMetrics m = Screen();
    ui::MouseEvent e;
    e.button = button ? button : ButtonsOf(wp);
    e.shift = ShiftState();
    e.x = ui::ToTwips(short(LOWORD(lp)), m.tppX);
    e.y = ui::ToTwips(short(HIWORD(lp)), m.tppY);
    return e;
}

} // namespace win32
