// Small owners of Win32 handles, so that nothing leaks on an early return or a run-time
// error.
#pragma once

#include <windows.h>

#include <string>
#include <utility>

namespace win32 {

template <class H, class Traits> class Handle {
public:
    Handle() = default;
    explicit Handle(H h) : h_(h) {}
    ~Handle() { reset(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    Handle(Handle&& o) noexcept : h_(std::exchange(o.h_, H{})) {}
    Handle& operator=(Handle&& o) noexcept {
        if (this != &o) {
            reset();
            h_ = std::exchange(o.h_, H{});
        }
        return *this;
    }
    H get() const { return h_; }
    explicit operator bool() const { return h_ != H{}; }
    void reset(H h = H{}) {
        if (h_) Traits::Close(h_);
        h_ = h;
    }
    H release() { return std::exchange(h_, H{}); }

private:
    H h_{};
};

struct GdiObjectTraits {
    static void Close(HGDIOBJ h) { DeleteObject(h); }
};
struct DcTraits {
    static void Close(HDC h) { DeleteDC(h); }
};
struct MenuTraits {
    static void Close(HMENU h) { DestroyMenu(h); }
};
struct WindowTraits {
    static void Close(HWND h) { DestroyWindow(h); }
};
struct GlobalTraits {
    static void Close(HGLOBAL h) { GlobalFree(h); }
};

using Bitmap = Handle<HBITMAP, GdiObjectTraits>;
using FontHandle = Handle<HFONT, GdiObjectTraits>;
using BrushHandle = Handle<HBRUSH, GdiObjectTraits>;
using PenHandle = Handle<HPEN, GdiObjectTraits>;
using MemoryDC = Handle<HDC, DcTraits>;
using MenuHandle = Handle<HMENU, MenuTraits>;
using WindowHandleOwner = Handle<HWND, WindowTraits>;
using GlobalMemory = Handle<HGLOBAL, GlobalTraits>;

// A window's DC from GetDC/GetWindowDC, released with ReleaseDC.
class WindowDCHandle {
public:
    WindowDCHandle(HWND w, HDC dc) : w_(w), dc_(dc) {}
    ~WindowDCHandle() {
        if (dc_) ReleaseDC(w_, dc_);
    }
    WindowDCHandle(const WindowDCHandle&) = delete;
    WindowDCHandle& operator=(const WindowDCHandle&) = delete;
    HDC get() const { return dc_; }

private:
    HWND w_;
    HDC dc_;
};

// An object selected into a DC for a scope.
class Selected {
public:
    Selected(HDC dc, HGDIOBJ obj) : dc_(dc), old_(SelectObject(dc, obj)) {}
    ~Selected() { SelectObject(dc_, old_); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ old_;
};

// The clipboard, open for a scope.
class ClipboardOpen {
public:
    explicit ClipboardOpen(HWND owner) {
        for (int i = 0; i < 20 && !ok_; ++i) {
            ok_ = OpenClipboard(owner) != FALSE;
            if (!ok_) Sleep(10);
        }
    }
    ~ClipboardOpen() {
        if (ok_) CloseClipboard();
    }
    ClipboardOpen(const ClipboardOpen&) = delete;
    ClipboardOpen& operator=(const ClipboardOpen&) = delete;
    bool ok() const { return ok_; }

private:
    bool ok_ = false;
};

} // namespace win32
