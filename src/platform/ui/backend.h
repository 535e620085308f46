// What a backend provides to the toolkit model: windows for controls, timers, the event
// pump, dialogs, the screen, the clock and the platform services.
#pragma once

#include "platform/services.h"
#include "platform/ui/form.h"
#include "platform/ui/units.h"
#include "runtime/clock.h"
#include "runtime/errors.h"

#include <functional>
#include <memory>
#include <string>

namespace ui {

struct ScreenMetrics {
    int widthPx = 1024;
    int heightPx = 768;
    float tppX = 15; // twips per pixel: 1440 / DPI
    float tppY = 15;
    int monitors = 1; // GetSystemMetrics(SM_CMONITORS)
    float WidthTwips() const { return ToTwips(widthPx, tppX); }
    float HeightTwips() const { return ToTwips(heightPx, tppY); }
    // Pixels of a horizontal or vertical length in twips.
    int PxX(float twips) const { return ToPixels(twips, tppX); }
    int PxY(float twips) const { return ToPixels(twips, tppY); }
    // Twips of a horizontal or vertical length in pixels.
    float TwipsX(int pixels) const { return ToTwips(pixels, tppX); }
    float TwipsY(int pixels) const { return ToTwips(pixels, tppY); }
};

enum class FileDialogKind { Open, Save, Printer };

class Backend {
public:
    virtual ~Backend() = default;

    // The window of a control of a loaded form (the form's own first).
    virtual std::unique_ptr<Peer> CreatePeer(Control& c) = 0;
    // A timer was enabled, disabled, given another interval, loaded or unloaded.
    virtual void TimerChanged(Timer& t) = 0;
    // Runs what is pending: input, paints, due timers.
    virtual void DoEvents() = 0;
    // Shows a form modally and returns when it is hidden or unloaded.
    virtual void RunModal(Form& f) = 0;
    virtual int MsgBox(const std::wstring& prompt, int style, const std::wstring& title) = 0;
    // Asks for a line of text; false when the user cancels.
    virtual bool InputBox(const std::wstring& prompt, const std::wstring& title,
                          std::wstring& text) = 0;
    virtual void PopupMenu(Form& f, Menu& m) = 0;
    // The common dialogs; false when cancelled.
    virtual bool FileDialog(CommonDialog& d, FileDialogKind kind) = 0;
    virtual ScreenMetrics Screen() const = 0;
    virtual rt::SystemTime Now() const = 0;
    // Ends the program at once (the End statement); never returns.
    [[noreturn]] virtual void End() = 0;
    // A run-time error that nothing trapped: the "Run-time error 'N':" box. The event that
    // raised it is abandoned and the run goes on with its captures.
    virtual void ReportError(const rt::RuntimeError& e) = 0;
    // The form that has the focus, if it is one of ours.
    virtual Form* ActiveForm() const = 0;

    virtual platform::Desktop& GetDesktop() = 0;
    virtual platform::Cursor& GetCursor() = 0;
    virtual platform::Keyboard& GetKeyboard() = 0;
    virtual platform::Clipboard& GetClipboard() = 0;
    virtual platform::Shell& GetShell() = 0;
    virtual platform::ImageCodec& GetCodec() = 0;
    virtual platform::Tray& GetTray() = 0;
    virtual platform::Printer& GetPrinter() = 0;
    virtual platform::WaveAudio& GetWaveAudio() = 0;
    virtual platform::Processes& GetProcesses() = 0;
    virtual platform::Mailer& GetMailer() = 0;
    virtual platform::GuiResources GuiResourceCounts() = 0;

    // Runs just before the program ends by End (the main form's Terminate).
    std::function<void()> onEnd;

    // Seconds since midnight, the runtime's Timer.
    double Timer() const { return rt::SecondsSinceMidnight(Now()); }
};

// Runs an event handler as the toolkit's event dispatcher does: a run-time error that
// nothing trapped shows its box and abandons the handler; the program goes on.
void Dispatch(Backend& backend, const std::function<void()>& handler);

} // namespace ui
