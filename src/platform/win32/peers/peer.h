// The base of every peer: its window, its control, the backend, and the one way messages
// reach a peer. Windows of our own classes carry the peer from lpCreateParams (picked up
// at WM_NCCREATE); built-in controls are subclassed with the peer as subclass data.
// Either way the peer's HandleMessage sees the window's messages, and the parent form
// reflects a child's notifications to the child's Reflect.
#pragma once

#include "platform/ui/backend.h"
#include "platform/win32/win32_backend.h"

#include <functional>
#include <string>

namespace win32 {

// The window classes of forms and of the controls painted by their peers.
inline constexpr wchar_t kFormClass[] = L"MirovantaForm";
inline constexpr wchar_t kChildClass[] = L"MirovantaChild";

// A colour of the model, system colours resolved.
COLORREF Color(uint32_t c);
// The toolkit's shift bits of the keys held now.
int ShiftState();

class WindowPeer : public ui::Peer {
public:
    WindowPeer(Win32Backend& be, ui::Control& c) : be_(be), c_(c) {}
    ~WindowPeer() override;
    WindowPeer(const WindowPeer&) = delete;
    WindowPeer& operator=(const WindowPeer&) = delete;

    ui::WindowHandle Handle() const override { return ui::WindowHandle(hwnd_); }

    // A message of the peer's window. The default passes it on (DefWindowProc, or the
    // built-in control's own procedure).
    virtual LRESULT HandleMessage(UINT msg, WPARAM wp, LPARAM lp);
    // A notification of this peer's window that its parent form received (WM_COMMAND,
    // WM_VSCROLL, WM_CTLCOLOR...). True when handled, with the answer in `result`.
    virtual bool Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result);
    // Draws a windowless control during the WM_PAINT of the window that holds it: its
    // container picture box's, or its form's.
    virtual void PaintOnOwner(HDC) {}

    // The peer of a window made by a peer, or null for any other window.
    static WindowPeer* FromWindow(HWND h);

protected:
    // Makes the peer's window of one of our classes; the peer receives its messages from
    // WM_NCCREATE on.
    void CreateOwnWindow(DWORD exStyle, const wchar_t* cls, const std::wstring& text, DWORD style,
                         int x, int y, int w, int h, HWND parent);
    // Makes a built-in control (edit, button, scroll bar) and subclasses it.
    void CreateNativeWindow(const wchar_t* cls, const std::wstring& text, DWORD style, int x, int y,
                            int w, int h, HWND parent);
    // Detaches the peer from its window, then destroys the window.
    void DestroyPeerWindow();
    LRESULT Default(UINT msg, WPARAM wp, LPARAM lp);

    // The screen's scale, read at each use so that a change of DPI reaches every window.
    ui::ScreenMetrics Screen() const { return be_.Screen(); }
    // A mouse message's position in twips and its buttons (or `button` when given).
    ui::MouseEvent MouseArgs(WPARAM wp, LPARAM lp, int button = 0) const;
    // Runs a handler of the model.
    void Fire(const std::function<void()>& f) { win32::Fire(be_, f); }
    // Hands a notification of a child window to the child's peer.
    static bool ReflectToChild(HWND child, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result);

    // WM_SETCURSOR: over the window's own client area, sets the cursor of the control's
    // mouse pointer and answers true; false leaves it to the default processing.
    bool SetPointerCursor(WPARAM wp, LPARAM lp) const;
    // Shows a changed mouse pointer at once when the mouse is over the window or captured
    // by it (no WM_SETCURSOR comes during a capture).
    void ShowPointerNow();
    // The cursor of the custom pointer; null where the control has none (the arrow then).
    virtual HCURSOR CustomCursor() const { return nullptr; }
    // The window was destroyed by the system (with its parent) while the peer lives on.
    virtual void WindowGone() { hwnd_ = nullptr; }

    Win32Backend& be_;
    ui::Control& c_;
    HWND hwnd_ = nullptr;

private:
    // The cursor of the control's mouse pointer; null for the default.
    HCURSOR PointerCursor() const;
    static LRESULT CALLBACK WindowProc(HWND h, UINT msg, WPARAM wp, LPARAM lp);
    static LRESULT CALLBACK SubclassProc(HWND h, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id,
                                         DWORD_PTR data);
    friend void RegisterWindowClasses();
    bool native_ = false;
};

} // namespace win32
