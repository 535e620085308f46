// Small owners of Win32 handles, so that nothing leaks on an early return or a run-time
// error.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <atomic>
#include <string>
#include <utility>

namespace Gdiplus {
class GpImage;
} // namespace Gdiplus

namespace win32 {

// Objects held by the owners below, for the leak check where the system reports no
// counts (Wine's GetGuiResources answers 0).
struct LiveObjects {
    static inline std::atomic<int> gdi{0};
    static inline std::atomic<int> menus{0};
    static inline std::atomic<int> cursors{0};
};

template <class H, class Traits> class Handle {
public:
    Handle() = default;
    explicit Handle(H h) : h_(h) {
        if (h_) Traits::Count(1);
    }
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
        if (h_) {
            Traits::Close(h_);
            Traits::Count(-1);
        }
        h_ = h;
        if (h_) Traits::Count(1);
    }
    // Gives the handle away (to the system, as the clipboard takes its memory).
    H release() {
        if (h_) Traits::Count(-1);
        return std::exchange(h_, H{});
    }

private:
    H h_{};
};

struct GdiObjectTraits {
    static void Close(HGDIOBJ h) { DeleteObject(h); }
    static void Count(int d) { LiveObjects::gdi += d; }
};
struct DcTraits {
    static void Close(HDC h) { DeleteDC(h); }
    static void Count(int d) { LiveObjects::gdi += d; }
};
struct MenuTraits {
    static void Close(HMENU h) { DestroyMenu(h); }
    static void Count(int d) { LiveObjects::menus += d; }
};
// A cursor made by CreateIconIndirect, which DestroyIcon frees.
struct CursorTraits {
    static void Close(HCURSOR h) { DestroyIcon(h); }
    static void Count(int d) { LiveObjects::cursors += d; }
};
struct WindowTraits {
    static void Close(HWND h) { DestroyWindow(h); }
    static void Count(int) {}
};
struct GlobalTraits {
    static void Close(HGLOBAL h) { GlobalFree(h); }
    static void Count(int) {}
};
struct CoTaskMemTraits {
    static void Close(void* p) { CoTaskMemFree(p); }
    static void Count(int) {}
};
// Disposed with GdipDisposeImage, defined with the codec.
struct GdiplusImageTraits {
    static void Close(Gdiplus::GpImage* image);
    static void Count(int) {}
};

using Bitmap = Handle<HBITMAP, GdiObjectTraits>;
using FontHandle = Handle<HFONT, GdiObjectTraits>;
using BrushHandle = Handle<HBRUSH, GdiObjectTraits>;
using PenHandle = Handle<HPEN, GdiObjectTraits>;
// A DC made by CreateDC or CreateCompatibleDC.
using DCHandle = Handle<HDC, DcTraits>;
using MenuHandle = Handle<HMENU, MenuTraits>;
using CursorOwner = Handle<HCURSOR, CursorTraits>;
using WindowHandleOwner = Handle<HWND, WindowTraits>;
using GlobalMemory = Handle<HGLOBAL, GlobalTraits>;
// Memory the system allocated with CoTaskMemAlloc for us (a known folder's path).
using CoTaskMemory = Handle<void*, CoTaskMemTraits>;
using GdiplusImage = Handle<Gdiplus::GpImage*, GdiplusImageTraits>;

// The header of a 32-bit top-down DIB, the layout of gdi::Surface.
inline BITMAPINFO TopDownBitmapInfo(int width, int height) {
    BITMAPINFO bi{};
    bi.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    bi.bmiHeader.biWidth = width;
    bi.bmiHeader.biHeight = -height;
    bi.bmiHeader.biPlanes = 1;
    bi.bmiHeader.biBitCount = 32;
    bi.bmiHeader.biCompression = BI_RGB;
    return bi;
}

// A window's DC from GetDC/GetWindowDC, released with ReleaseDC.
class WindowDCHandle {
public:
    // GetDC of a window's client area; of the screen for a null window.
    explicit WindowDCHandle(HWND w) : w_(w), dc_(GetDC(w)) {}
    // A DC the caller got for `w` (GetWindowDC).
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

// An object selected into a DC for a scope; a null object selects nothing.
class Selected {
public:
    Selected(HDC dc, HGDIOBJ obj) : dc_(dc), old_(obj ? SelectObject(dc, obj) : nullptr) {}
    ~Selected() {
        if (old_) SelectObject(dc_, old_);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ old_;
};

// The memory of a global block, locked for a scope; null when the lock failed.
class GlobalLocked {
public:
    explicit GlobalLocked(HGLOBAL h) : h_(h), p_(h ? GlobalLock(h) : nullptr) {}
    ~GlobalLocked() {
        if (p_) GlobalUnlock(h_);
    }
    GlobalLocked(const GlobalLocked&) = delete;
    GlobalLocked& operator=(const GlobalLocked&) = delete;
    void* get() const { return p_; }

private:
    HGLOBAL h_;
    void* p_;
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
