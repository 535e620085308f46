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
    wc.hIcon = LoadIconW(inst, MAKEINTRESOURCEW(1));
    if (!wc.hIcon) wc.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    wc.lpszClassName = kFormClass;
    g_formAtom = RegisterClassExW(&wc);
    wc.hIcon = nullptr;
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
    return p ? p->HandleMessage(msg, wp, lp) : DefWindowProcW(h, msg, wp, lp);
}

LRESULT CALLBACK WindowPeer::SubclassProc(HWND, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR,
                                          DWORD_PTR data) {
    return reinterpret_cast<WindowPeer*>(data)->HandleMessage(msg, wp, lp);
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
