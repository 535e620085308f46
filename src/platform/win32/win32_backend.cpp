#include "platform/win32/win32_backend.h"

#include "platform/ui/form.h"
#include "runtime/files.h"

#include <commdlg.h>
#include <psapi.h>

#include <algorithm>
#include <vector>

namespace win32 {

namespace {
const wchar_t kTimerClass[] = L"MirovantaTimers";
Win32Backend* g_backend = nullptr;

std::wstring FilterText(const std::wstring& filter) {
    // "Text|*.txt|All|*.*" becomes the double-zero-ended list of the dialogs.
    std::wstring out = filter;
    for (auto& c : out)
        if (c == L'|') c = L'\0';
    out.push_back(L'\0');
    out.push_back(L'\0');
    return out;
}
// The settings and language files are in the system's single-byte code page. A multi-byte
// page (Chinese, Japanese, Korean) keeps Windows-1252: the files' own texts are in it.
void InstallAnsiCodePage() {
    CPINFO info{};
    if (!GetCPInfo(CP_ACP, &info) || info.MaxCharSize != 1) return;
    rt::AnsiCodePage page;
    page.id = GetACP();
    for (int k = 0; k < 128; ++k) {
        const char b = static_cast<char>(0x80 + k);
        wchar_t w = 0;
        auto c = static_cast<char16_t>(0x80 + k);
        // A byte with no character of its own keeps its value, so that bytes round-trip.
        if (MultiByteToWideChar(CP_ACP, 0, &b, 1, &w, 1) == 1 && w >= 0x80 && w != 0xFFFD &&
            std::find(page.high.begin(), page.high.begin() + k, w) == page.high.begin() + k)
            c = static_cast<char16_t>(w);
        page.high[k] = c;
    }
    rt::SetAnsiCodePage(page);
}
} // namespace

void Fire(Win32Backend& be, const std::function<void()>& f) {
    ui::Dispatch(be, f);
}

Win32Backend::Win32Backend() {
    g_backend = this;
    InstallAnsiCodePage();
    RegisterWindowClasses();
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.lpfnWndProc = TimerProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = kTimerClass;
    RegisterClassExW(&wc);
    timerWindow_.reset(CreateWindowExW(0, kTimerClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                       wc.hInstance, nullptr));
    desktop_ = MakeDesktop();
    cursor_ = MakeCursor();
    keyboard_ = MakeKeyboard();
    clipboard_ = MakeClipboard();
    shell_ = MakeShell();
    codec_ = MakeCodec();
    tray_ = MakeTray();
    printer_ = MakePrinter();
    audio_ = MakeWaveAudio();
    processes_ = MakeProcesses();
    mailer_ = MakeMailer();
}

Win32Backend::~Win32Backend() {
    g_backend = nullptr;
}

std::unique_ptr<ui::Peer> Win32Backend::CreatePeer(ui::Control& c) {
    return MakePeer(*this, c);
}

LRESULT CALLBACK Win32Backend::TimerProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_TIMER && g_backend) {
        auto it = g_backend->timers_.find(wp);
        if (it != g_backend->timers_.end()) {
            ui::Timer* t = it->second;
            Fire(*g_backend, [t] { t->Tick(); });
        }
        return 0;
    }
    return DefWindowProcW(h, msg, wp, lp);
}

void Win32Backend::TimerChanged(ui::Timer& t) {
    auto it = timerIds_.find(&t);
    if (t.Running()) {
        UINT_PTR id;
        if (it == timerIds_.end()) {
            id = nextTimerId_++;
            timerIds_[&t] = id;
            timers_[id] = &t;
        } else {
            id = it->second;
        }
        // Setting it again restarts the interval, as the toolkit's timers do.
        SetTimer(timerWindow_.get(), id, UINT(t.Interval()), nullptr);
    } else if (it != timerIds_.end()) {
        KillTimer(timerWindow_.get(), it->second);
        timers_.erase(it->second);
        timerIds_.erase(it);
    }
}

void Win32Backend::DoEvents() {
    MSG msg;
    bool any = false;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        any = true;
        if (msg.message == WM_QUIT) {
            PostQuitMessage(int(msg.wParam));
            break;
        }
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    // Waits that loop on pending events give the processor away until input comes.
    if (!any) MsgWaitForMultipleObjects(0, nullptr, FALSE, 1, QS_ALLINPUT);
}

int Win32Backend::Run() {
    MSG msg;
    while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    return int(msg.wParam);
}

void Win32Backend::RunModal(ui::Form& f) {
    HWND self = HWND(f.Handle());
    // Boxes and dialogs shown meanwhile belong to this form (see OwnerWindow).
    modal_.push_back(self);
    struct Fin {
        std::vector<HWND>& v;
        ~Fin() { v.pop_back(); }
    } fin{modal_};
    std::vector<HWND> disabled;
    for (auto& [h, form] : forms_)
        if (h != self && IsWindowEnabled(h)) {
            EnableWindow(h, FALSE);
            disabled.push_back(h);
        }
    MSG msg;
    while (f.IsLoaded() && f.Visible()) {
        int r = GetMessageW(&msg, nullptr, 0, 0);
        if (r <= 0) {
            PostQuitMessage(0);
            break;
        }
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    for (HWND h : disabled)
        if (IsWindow(h)) EnableWindow(h, TRUE);
}

int Win32Backend::MsgBox(const std::wstring& prompt, int style, const std::wstring& title) {
    return MessageBoxW(OwnerWindow(), prompt.c_str(), title.c_str(),
                       UINT(style) | MB_SETFOREGROUND);
}

void Win32Backend::PopupMenu(ui::Form& f, ui::Menu& m) {
    // The menu's peer owns its pop-up handle; it asks for it through Update(Children).
    POINT p;
    GetCursorPos(&p);
    HMENU h = reinterpret_cast<HMENU>(m.GetPeer() ? m.GetPeer()->Handle() : 0);
    if (!h) return;
    HWND owner = HWND(f.Handle());
    SetForegroundWindow(owner);
    TrackPopupMenu(h, TPM_LEFTALIGN | TPM_RIGHTBUTTON, p.x, p.y, 0, owner, nullptr);
    PostMessageW(owner, WM_NULL, 0, 0);
}

bool Win32Backend::InputBox(const std::wstring& prompt, const std::wstring& title,
                            std::wstring& text) {
    return RunInputBox(OwnerWindow(), prompt, title, text);
}

bool Win32Backend::FileDialog(ui::CommonDialog& d, ui::FileDialogKind kind) {
    if (kind == ui::FileDialogKind::Printer) return printer_->Choose(OwnerWindow(), d.copies);
    std::vector<wchar_t> buffer(32768, L'\0');
    d.fileName.copy(buffer.data(), std::min(d.fileName.size(), buffer.size() - 1));
    const std::wstring filter = FilterText(d.filter);
    OPENFILENAMEW ofn{};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = OwnerWindow();
    ofn.lpstrFilter = d.filter.empty() ? nullptr : filter.c_str();
    ofn.nFilterIndex = DWORD(d.filterIndex);
    ofn.lpstrFile = buffer.data();
    ofn.nMaxFile = DWORD(buffer.size());
    // A folder longer than a path can be is no folder to start in: the dialog copies it
    // into a buffer of MAX_PATH.
    std::wstring dossier = d.initDir;
    while (!dossier.empty() && dossier.back() == L' ') dossier.pop_back();
    if (dossier.size() >= MAX_PATH) dossier.clear();
    ofn.lpstrInitialDir = dossier.empty() ? nullptr : dossier.c_str();
    ofn.lpstrTitle = d.dialogTitle.empty() ? nullptr : d.dialogTitle.c_str();
    ofn.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    BOOL ok = kind == ui::FileDialogKind::Save ? GetSaveFileNameW(&ofn) : GetOpenFileNameW(&ofn);
    if (!ok) return false;
    d.fileName = buffer.data();
    d.filterIndex = int(ofn.nFilterIndex);
    return true;
}

ui::ScreenMetrics Win32Backend::Screen() const {
    ui::ScreenMetrics m;
    m.widthPx = GetSystemMetrics(SM_CXSCREEN);
    m.heightPx = GetSystemMetrics(SM_CYSCREEN);
    m.monitors = GetSystemMetrics(SM_CMONITORS);
    WindowDCHandle screen(nullptr);
    m.tppX = ui::TwipsPerPixel(GetDeviceCaps(screen.get(), LOGPIXELSX));
    m.tppY = ui::TwipsPerPixel(GetDeviceCaps(screen.get(), LOGPIXELSY));
    return m;
}

rt::SystemTime Win32Backend::Now() const {
    SYSTEMTIME st;
    GetLocalTime(&st);
    return {st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond, st.wMilliseconds};
}

void Win32Backend::End() {
    if (onEnd) {
        auto f = std::move(onEnd);
        f();
    }
    ExitProcess(0);
}

void Win32Backend::ReportError(const rt::RuntimeError& e) {
    std::wstring text = L"Run-time error '" + std::to_wstring(e.number) + L"':\n\n" + e.text;
    MessageBoxW(OwnerWindow(), text.c_str(), L"Mirovanta", MB_OK | MB_ICONSTOP);
}

ui::Form* Win32Backend::ActiveForm() const {
    return FormOf(GetActiveWindow());
}

namespace {
BOOL CALLBACK CountWindow(HWND h, LPARAM counter) {
    ++*reinterpret_cast<int*>(counter);
    EnumChildWindows(h, CountWindow, counter);
    return TRUE;
}
} // namespace

platform::GuiResources Win32Backend::GuiResourceCounts() {
    platform::GuiResources r{int(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)),
                             int(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS))};
    if (r.gdiObjects == 0 && r.userObjects == 0) {
        // The system keeps no counts (Wine): count what our owners hold and our windows.
        int windows = 0;
        EnumThreadWindows(GetCurrentThreadId(), CountWindow, LPARAM(&windows));
        r.gdiObjects = LiveObjects::gdi;
        r.userObjects = windows + LiveObjects::menus + LiveObjects::cursors;
    }
    DWORD handles = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &handles)) r.handles = int(handles);
    PROCESS_MEMORY_COUNTERS memoire{};
    memoire.cb = sizeof memoire;
    if (K32GetProcessMemoryInfo(GetCurrentProcess(), &memoire, sizeof memoire))
        r.workingSetKb = int64_t(memoire.WorkingSetSize / 1024);
    return r;
}

void Win32Backend::FormCreated(HWND h, ui::Form* f) {
    forms_[h] = f;
}

void Win32Backend::FormDestroyed(HWND h) {
    forms_.erase(h);
    // The program ends with its last form, as the toolkit's programs do.
    if (forms_.empty()) PostQuitMessage(0);
}

ui::Form* Win32Backend::FormOf(HWND h) const {
    while (h) {
        auto it = forms_.find(h);
        if (it != forms_.end()) return it->second;
        h = GetParent(h);
    }
    return nullptr;
}

HWND Win32Backend::OwnerWindow() const {
    // The modal form in front owns what opens over it, so that it comes back to it.
    if (!modal_.empty() && IsWindowVisible(modal_.back())) return modal_.back();
    HWND active = GetActiveWindow();
    if (FormOf(active)) return active;
    for (auto& [h, f] : forms_)
        if (IsWindowVisible(h)) return h;
    return nullptr;
}

} // namespace win32
