// The platform services on the Windows API: desktop grab, cursor, keys, clipboard, shell.
#include "platform/gdi/bmp.h"
#include "platform/win32/win32_backend.h"

#include <shlobj.h>

#include <cstring>
#include <vector>

namespace win32 {

namespace {

// A 32-bit top-down DIB section with its memory DC.
struct DibSection {
    DibSection(int w, int h) {
        BITMAPINFO bi = TopDownBitmapInfo(w, h);
        dc.reset(CreateCompatibleDC(nullptr));
        bitmap.reset(CreateDIBSection(dc.get(), &bi, DIB_RGB_COLORS, &bits, nullptr, 0));
        if (bitmap) old = SelectObject(dc.get(), bitmap.get());
    }
    ~DibSection() {
        if (old) SelectObject(dc.get(), old);
    }
    DCHandle dc;
    Bitmap bitmap;
    void* bits = nullptr;
    HGDIOBJ old = nullptr;
};

class Win32WindowDC : public platform::WindowDC {
public:
    Win32WindowDC(HWND w) : dc_(w, GetWindowDC(w)) {}
    void CopyTo(gdi::Surface& dst, int dx, int dy, int w, int h, int sx, int sy) override {
        if (w <= 0 || h <= 0 || !dc_.get()) return;
        DibSection dib(w, h);
        if (!dib.bits) return;
        BitBlt(dib.dc.get(), 0, 0, w, h, dc_.get(), sx, sy, SRCCOPY);
        GdiFlush();
        // Straight into the surface, clipped; the unused fourth byte is cleared.
        const auto* src = static_cast<const uint32_t*>(dib.bits);
        for (int y = 0; y < h; ++y) {
            const int ty = dy + y;
            if (ty < 0 || ty >= dst.Height()) continue;
            const int x0 = std::max(0, -dx);
            const int x1 = std::min(w, dst.Width() - dx);
            gdi::Pixel* row = dst.Row(ty);
            const uint32_t* s = src + size_t(y) * size_t(w);
            for (int x = x0; x < x1; ++x) row[dx + x] = s[x] & 0xFFFFFFu;
        }
    }

private:
    WindowDCHandle dc_;
};

class Win32Desktop : public platform::Desktop {
public:
    ui::WindowHandle GetDesktopWindow() override { return ui::WindowHandle(::GetDesktopWindow()); }
    ui::WindowHandle GetForegroundWindow() override {
        return ui::WindowHandle(::GetForegroundWindow());
    }
    bool GetWindowRect(ui::WindowHandle w, ui::Rect& r) override {
        RECT rc{};
        if (!w || !::GetWindowRect(HWND(w), &rc)) {
            r = {};
            return false;
        }
        r = {rc.left, rc.top, rc.right, rc.bottom};
        return true;
    }
    std::unique_ptr<platform::WindowDC> GetWindowDC(ui::WindowHandle w) override {
        return std::make_unique<Win32WindowDC>(HWND(w));
    }
    void ForceForeground(ui::WindowHandle w) override {
        const HWND target = HWND(w);
        const HWND front = ::GetForegroundWindow();
        if (front == target) return;
        const DWORD frontThread = GetWindowThreadProcessId(front, nullptr);
        const DWORD ownThread = GetWindowThreadProcessId(target, nullptr);
        if (frontThread != ownThread) {
            // Windows lets a thread take the foreground when its input is attached to the
            // foreground thread's; attached threads share one input state, so detach again.
            AttachThreadInput(frontThread, ownThread, TRUE);
            SetForegroundWindow(target);
            AttachThreadInput(frontThread, ownThread, FALSE);
        } else {
            SetForegroundWindow(target);
        }
        ShowWindow(target, SW_SHOW);
    }
};

// Reads a bitmap's pixels as 32-bit top-down rows.
bool ReadBitmap(HBITMAP bm, int w, int h, std::vector<uint32_t>& out) {
    BITMAPINFO bi = TopDownBitmapInfo(w, h);
    out.assign(size_t(w) * size_t(h), 0);
    WindowDCHandle screen(nullptr);
    return GetDIBits(screen.get(), bm, 0, UINT(h), out.data(), &bi, DIB_RGB_COLORS) == h;
}

class Win32Cursor : public platform::Cursor {
public:
    ui::CursorHandle GetCursor() override {
        return ui::CursorHandle(reinterpret_cast<intptr_t>(::GetCursor()));
    }
    ui::Point GetCursorPos() override {
        POINT p{};
        ::GetCursorPos(&p);
        return {p.x, p.y};
    }
    void SetCursorPos(int x, int y) override { ::SetCursorPos(x, y); }
    bool GetImage(ui::CursorHandle h, gdi::IconImage& out) override {
        if (!h) return false;
        ICONINFO ii{};
        if (!GetIconInfo(HICON(intptr_t(h)), &ii)) return false;
        Bitmap mask(ii.hbmMask), color(ii.hbmColor);
        BITMAP bm{};
        GetObjectW(mask.get(), sizeof bm, &bm);
        const int w = bm.bmWidth;
        // A monochrome cursor holds its AND and XOR masks one above the other.
        const int h2 = color ? bm.bmHeight : bm.bmHeight / 2;
        std::vector<uint32_t> m;
        if (w <= 0 || h2 <= 0 || !ReadBitmap(mask.get(), w, color ? h2 : h2 * 2, m)) return false;
        out = {};
        out.width = w;
        out.height = h2;
        out.hotspotX = int(ii.xHotspot);
        out.hotspotY = int(ii.yHotspot);
        out.mask.resize(size_t(w) * size_t(h2));
        out.color.resize(size_t(w) * size_t(h2));
        for (size_t i = 0; i < out.mask.size(); ++i) out.mask[i] = (m[i] & 0xFFFFFF) ? 1 : 0;
        if (color) {
            std::vector<uint32_t> c;
            if (!ReadBitmap(color.get(), w, h2, c)) return false;
            bool alpha = false;
            for (uint32_t p : c) alpha = alpha || (p >> 24) != 0;
            out.hasAlpha = alpha;
            for (size_t i = 0; i < c.size(); ++i) {
                uint32_t p = c[i];
                if (alpha) {
                    // Icons hold straight alpha; the blend wants it premultiplied.
                    uint32_t a = p >> 24;
                    uint32_t r = ((p >> 16) & 255) * a / 255, g = ((p >> 8) & 255) * a / 255,
                             b = (p & 255) * a / 255;
                    p = (a << 24) | (r << 16) | (g << 8) | b;
                } else {
                    p &= 0xFFFFFF;
                }
                out.color[i] = p;
            }
        } else {
            for (size_t i = 0; i < out.color.size(); ++i)
                out.color[i] = m[out.color.size() + i] & 0xFFFFFF;
        }
        return true;
    }
};

class Win32Keyboard : public platform::Keyboard {
public:
    int16_t GetAsyncKeyState(int vk) override { return int16_t(::GetAsyncKeyState(vk)); }
};

class Win32Clipboard : public platform::Clipboard {
public:
    void Clear() override {
        ClipboardOpen open(nullptr);
        if (open.ok()) EmptyClipboard();
    }
    void SetImage(const gdi::Surface& s) override {
        if (s.Empty()) return;
        // CF_DIB is the file without its 14-byte file header.
        std::vector<uint8_t> file = gdi::EncodeBmp(s, 24);
        const size_t n = file.size() - 14;
        GlobalMemory mem(GlobalAlloc(GMEM_MOVEABLE, n));
        if (!mem) return;
        {
            GlobalLocked p(mem.get());
            if (!p.get()) return;
            std::memcpy(p.get(), file.data() + 14, n);
        }
        ClipboardOpen open(nullptr);
        if (!open.ok()) return;
        EmptyClipboard();
        if (SetClipboardData(CF_DIB, mem.get())) mem.release();
    }
    bool GetImage(gdi::Surface& out) override {
        ClipboardOpen open(nullptr);
        if (!open.ok()) return false;
        HANDLE h = GetClipboardData(CF_DIB);
        if (!h) return false;
        const size_t n = GlobalSize(h);
        GlobalLocked locked(h);
        const auto* p = static_cast<const uint8_t*>(locked.get());
        if (!p || n < sizeof(BITMAPINFOHEADER)) return false;
        // Rebuild a file header so that the one BMP reader does the work.
        const auto* bih = reinterpret_cast<const BITMAPINFOHEADER*>(p);
        uint32_t offset = 14 + bih->biSize;
        if (bih->biCompression == BI_BITFIELDS && bih->biSize == sizeof(BITMAPINFOHEADER))
            offset += 12;
        if (bih->biBitCount <= 8)
            offset += 4 * (bih->biClrUsed ? bih->biClrUsed : (1u << bih->biBitCount));
        std::vector<uint8_t> file(14 + n);
        file[0] = 'B';
        file[1] = 'M';
        const uint32_t size = uint32_t(file.size());
        std::memcpy(&file[2], &size, 4);
        std::memcpy(&file[10], &offset, 4);
        std::memcpy(&file[14], p, n);
        try {
            out = gdi::DecodeBmp(file.data(), file.size());
        } catch (const rt::RuntimeError&) {
            return false;
        }
        return true;
    }
};

// A path's short or long form by GetShortPathNameW or GetLongPathNameW; the path itself
// when the disk has no such form for it (or it does not exist).
std::wstring OtherForm(DWORD(WINAPI* form)(LPCWSTR, LPWSTR, DWORD), const std::wstring& path) {
    std::wstring out(32768, L'\0');
    const DWORD n = form(path.c_str(), out.data(), DWORD(out.size()));
    if (n == 0 || n >= out.size()) return path;
    out.resize(n);
    return out;
}

class Win32Shell : public platform::Shell {
public:
    std::wstring ShellFolder(const std::wstring& name) override {
        wchar_t buf[MAX_PATH * 4];
        DWORD size = sizeof buf;
        if (RegGetValueW(HKEY_CURRENT_USER,
                         L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
                         name.c_str(), RRF_RT_REG_SZ, nullptr, buf, &size) == ERROR_SUCCESS)
            return buf;
        // The value is missing on some systems: ask for the known folder instead.
        const KNOWNFOLDERID& id =
            name == L"Personal" ? FOLDERID_Documents : FOLDERID_RoamingAppData;
        PWSTR path = nullptr;
        const HRESULT hr = SHGetKnownFolderPath(id, 0, nullptr, &path);
        CoTaskMemory owned(path); // the caller frees it whether the call succeeded or not
        return hr == S_OK ? std::wstring(path) : std::wstring();
    }
    std::wstring ProgramFolder() override {
        std::wstring path(32768, L'\0');
        DWORD n = GetModuleFileNameW(nullptr, path.data(), DWORD(path.size()));
        path.resize(n);
        size_t slash = path.find_last_of(L'\\');
        return slash == std::wstring::npos ? std::wstring() : path.substr(0, slash);
    }
    std::wstring ShortDatePattern() override {
        return LocaleText(LOCALE_SSHORTDATE, L"dd/MM/yyyy");
    }
    std::wstring TimePattern() override { return LocaleText(LOCALE_STIMEFORMAT, L"HH:mm:ss"); }
    void SetPriorityHigh() override {
        SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_HIGHEST);
        SetPriorityClass(GetCurrentProcess(), HIGH_PRIORITY_CLASS);
    }
    std::wstring ShortPath(const std::wstring& path) override { return ShortPathOf(path); }
    std::wstring LongPath(const std::wstring& path) override {
        return OtherForm(GetLongPathNameW, path);
    }
    std::wstring GetSetting(const std::wstring& program, const std::wstring& section,
                            const std::wstring& key, const std::wstring& def) override {
        const std::wstring chemin = L"Software\\" + program + L"\\" + section;
        DWORD size = 0;
        if (RegGetValueW(HKEY_CURRENT_USER, chemin.c_str(), key.c_str(), RRF_RT_REG_SZ, nullptr,
                         nullptr, &size) != ERROR_SUCCESS ||
            size < sizeof(wchar_t))
            return def;
        std::wstring texte(size / sizeof(wchar_t), L'\0');
        if (RegGetValueW(HKEY_CURRENT_USER, chemin.c_str(), key.c_str(), RRF_RT_REG_SZ, nullptr,
                         texte.data(), &size) != ERROR_SUCCESS)
            return def;
        texte.resize(wcsnlen(texte.c_str(), texte.size()));
        return texte;
    }
    bool SaveSetting(const std::wstring& program, const std::wstring& section,
                     const std::wstring& key, const std::wstring& value) override {
        const std::wstring chemin = L"Software\\" + program + L"\\" + section;
        HKEY cle = nullptr;
        if (RegCreateKeyExW(HKEY_CURRENT_USER, chemin.c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                            nullptr, &cle, nullptr) != ERROR_SUCCESS)
            return false;
        const LSTATUS r = RegSetValueExW(cle, key.c_str(), 0, REG_SZ,
                                         reinterpret_cast<const BYTE*>(value.c_str()),
                                         DWORD((value.size() + 1) * sizeof(wchar_t)));
        RegCloseKey(cle);
        return r == ERROR_SUCCESS;
    }

private:
    static std::wstring LocaleText(LCTYPE type, const wchar_t* fallback) {
        wchar_t buf[128];
        int n = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, buf, 128);
        return n > 1 ? std::wstring(buf) : std::wstring(fallback);
    }
};

} // namespace

std::wstring ShortPathOf(const std::wstring& path) {
    return OtherForm(GetShortPathNameW, path);
}

std::unique_ptr<platform::Desktop> MakeDesktop() {
    return std::make_unique<Win32Desktop>();
}
std::unique_ptr<platform::Cursor> MakeCursor() {
    return std::make_unique<Win32Cursor>();
}
std::unique_ptr<platform::Keyboard> MakeKeyboard() {
    return std::make_unique<Win32Keyboard>();
}
std::unique_ptr<platform::Clipboard> MakeClipboard() {
    return std::make_unique<Win32Clipboard>();
}
std::unique_ptr<platform::Shell> MakeShell() {
    return std::make_unique<Win32Shell>();
}

} // namespace win32
