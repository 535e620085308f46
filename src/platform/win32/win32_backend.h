// The real backend: every control is a window, pictures are painted from their surfaces
// on WM_PAINT, timers are SetTimer, dialogs are the common dialogs.
#pragma once

#include "platform/ui/backend.h"
#include "platform/win32/handles.h"
#include "platform/win32/win32_print.h"

#include <map>
#include <memory>

namespace win32 {

class Win32Backend : public ui::Backend {
public:
    Win32Backend();
    ~Win32Backend() override;

    std::unique_ptr<ui::Peer> CreatePeer(ui::Control& c) override;
    void TimerChanged(ui::Timer& t) override;
    void DoEvents() override;
    void RunModal(ui::Form& f) override;
    int MsgBox(const std::wstring& prompt, int style, const std::wstring& title) override;
    bool InputBox(const std::wstring& prompt, const std::wstring& title,
                  std::wstring& text) override;
    void PopupMenu(ui::Form& f, ui::Menu& m) override;
    bool FileDialog(ui::CommonDialog& d, ui::FileDialogKind kind) override;
    ui::ScreenMetrics Screen() const override;
    rt::SystemTime Now() const override;
    [[noreturn]] void End() override;
    void ReportError(const rt::RuntimeError& e) override;
    ui::Form* ActiveForm() const override;
    platform::Desktop& GetDesktop() override { return *desktop_; }
    platform::Cursor& GetCursor() override { return *cursor_; }
    platform::Keyboard& GetKeyboard() override { return *keyboard_; }
    platform::Clipboard& GetClipboard() override { return *clipboard_; }
    platform::Shell& GetShell() override { return *shell_; }
    platform::ImageCodec& GetCodec() override { return *codec_; }
    platform::Tray& GetTray() override { return *tray_; }
    platform::Printer& GetPrinter() override { return *printer_; }
    platform::WaveAudio& GetWaveAudio() override { return *audio_; }
    platform::Processes& GetProcesses() override { return *processes_; }
    platform::Mailer& GetMailer() override { return *mailer_; }
    platform::GuiResources GuiResourceCounts() override;

    // The main loop: runs until the last form is gone or the program ends.
    int Run();

    // Bookkeeping of the peers.
    void FormCreated(HWND h, ui::Form* f);
    void FormDestroyed(HWND h);
    ui::Form* FormOf(HWND h) const;
    // The window of any loaded form, as owner of message boxes.
    HWND OwnerWindow() const;

private:
    static LRESULT CALLBACK TimerProc(HWND h, UINT msg, WPARAM wp, LPARAM lp);
    std::map<ui::Timer*, UINT_PTR> timerIds_;
    std::map<UINT_PTR, ui::Timer*> timers_;
    UINT_PTR nextTimerId_ = 1;
    std::map<HWND, ui::Form*> forms_;
    // The forms running modal, innermost last.
    std::vector<HWND> modal_;
    std::unique_ptr<platform::Desktop> desktop_;
    std::unique_ptr<platform::Cursor> cursor_;
    std::unique_ptr<platform::Keyboard> keyboard_;
    std::unique_ptr<platform::Clipboard> clipboard_;
    std::unique_ptr<platform::Shell> shell_;
    std::unique_ptr<platform::ImageCodec> codec_;
    std::unique_ptr<platform::Tray> tray_;
    std::unique_ptr<PrinterDevice> printer_;
    std::unique_ptr<platform::WaveAudio> audio_;
    std::unique_ptr<platform::Processes> processes_;
    std::unique_ptr<platform::Mailer> mailer_;
    // Last, so that it is destroyed first: no timer outlives the services.
    WindowHandleOwner timerWindow_;
};

// Services, in win32_services.cpp.
std::unique_ptr<platform::Desktop> MakeDesktop();
std::unique_ptr<platform::Cursor> MakeCursor();
std::unique_ptr<platform::Keyboard> MakeKeyboard();
std::unique_ptr<platform::Clipboard> MakeClipboard();
std::unique_ptr<platform::Shell> MakeShell();
std::unique_ptr<platform::WaveAudio> MakeWaveAudio();
// Started programs and the running list, in win32_process.cpp.
std::unique_ptr<platform::Processes> MakeProcesses();
// The Simple MAPI mail client, in win32_mail.cpp.
std::unique_ptr<platform::Mailer> MakeMailer();
// The GDI+ codec, in win32_codec.cpp; the notification-area icon, in win32_tray.cpp.
std::unique_ptr<platform::ImageCodec> MakeCodec();
std::unique_ptr<platform::Tray> MakeTray();

// The input box, in win32_inputbox.cpp: false on Cancel.
bool RunInputBox(HWND owner, const std::wstring& prompt, const std::wstring& title,
                 std::wstring& text);

// Peers, in peers/: the peer of a control, and the window classes of our own windows.
std::unique_ptr<ui::Peer> MakePeer(Win32Backend& be, ui::Control& c);
void RegisterWindowClasses();
// Runs a handler of the model from a window procedure.
void Fire(Win32Backend& be, const std::function<void()>& f);

// A path's short (8.3) form; the path itself when the disk gives none.
std::wstring ShortPathOf(const std::wstring& path);

} // namespace win32
