// Platform services: one small interface each, implemented by the Win32 backend and by
// the headless one.
#pragma once

#include "platform/gdi/surface.h"
#include "platform/ui/types.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace platform {

// A window's device context held between GetWindowDC and ReleaseDC (the destructor).
class WindowDC {
public:
    virtual ~WindowDC() = default;
    // BitBlt with SRCCOPY from this context at (sx, sy) into dst at (dx, dy).
    virtual void CopyTo(gdi::Surface& dst, int dx, int dy, int w, int h, int sx, int sy) = 0;
};

// Screen and window grab.
class Desktop {
public:
    virtual ~Desktop() = default;
    virtual ui::WindowHandle GetDesktopWindow() = 0;
    virtual ui::WindowHandle GetForegroundWindow() = 0;
    // False (and a zero rectangle) when the call fails.
    virtual bool GetWindowRect(ui::WindowHandle w, ui::Rect& r) = 0;
    virtual std::unique_ptr<WindowDC> GetWindowDC(ui::WindowHandle w) = 0;
    // Brings w to the front from whatever application is there: when the foreground
    // window belongs to another thread, its input is attached to ours for
    // SetForegroundWindow and detached again; then ShowWindow(w, SW_SHOW).
    virtual void ForceForeground(ui::WindowHandle w) = 0;
};

// The mouse cursor: handle, position and picture.
class Cursor {
public:
    virtual ~Cursor() = default;
    virtual ui::CursorHandle GetCursor() = 0;
    virtual ui::Point GetCursorPos() = 0;
    virtual void SetCursorPos(int x, int y) = 0;
    // The picture of a cursor handle; false when the handle names no cursor.
    virtual bool GetImage(ui::CursorHandle h, gdi::IconImage& out) = 0;
};

// GetAsyncKeyState: top bit while down, lowest bit when pressed since the previous query.
class Keyboard {
public:
    virtual ~Keyboard() = default;
    virtual int16_t GetAsyncKeyState(int virtualKey) = 0;
};

class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual void Clear() = 0;
    virtual void SetImage(const gdi::Surface& s) = 0;
    // False when the clipboard holds no picture.
    virtual bool GetImage(gdi::Surface& out) = 0;
};

// Folders and locale of the user.
class Shell {
public:
    virtual ~Shell() = default;
    // A value of the user's shell folders by its registry name ("AppData", "Personal").
    virtual std::wstring ShellFolder(const std::wstring& name) = 0;
    // The program's own folder, where its installation files stand.
    virtual std::wstring ProgramFolder() = 0;
    // Picture strings of the system's short date and time texts ("dd/MM/yyyy", "HH:mm:ss").
    virtual std::wstring ShortDatePattern() = 0;
    virtual std::wstring TimePattern() = 0;
    virtual void SetPriorityHigh() = 0;
    // The short (8.3) form of an existing path; the path itself when it has none.
    virtual std::wstring ShortPath(const std::wstring& path) = 0;
    // The long form of an existing path given short; the path itself when there is none.
    virtual std::wstring LongPath(const std::wstring& path) = 0;
    // The per-user store of one program's small settings (the registry, under
    // HKCU\Software\<program>\<section>), as text: def when the value is absent or is
    // not text. SaveSetting is false when the value cannot be written.
    virtual std::wstring GetSetting(const std::wstring& program, const std::wstring& section,
                                    const std::wstring& key, const std::wstring& def) = 0;
    virtual bool SaveSetting(const std::wstring& program, const std::wstring& section,
                             const std::wstring& key, const std::wstring& value) = 0;
};

// The image codec library (GDI+ on Windows), by the calls the conversion makes. Status 0
// is success; other values are the library's status numbers.
using ImageHandle = intptr_t;

struct EncoderInfo {
    std::array<uint8_t, 16> clsid{};
    std::wstring mimeType;
};

class ImageCodec {
public:
    virtual ~ImageCodec() = default;
    // Starts the library once; false when it cannot start.
    virtual bool Startup() = 0;
    virtual int LoadImageFromFile(const std::wstring& path, ImageHandle& image) = 0;
    // Every frame of a picture file as the library draws it (one for most files, each
    // frame of an animated GIF in turn), with its delay in hundredths of a second and the
    // file's loop count (0: for ever; -1: it gives none). Returns the library's status.
    virtual int LoadFrames(const std::wstring& path, std::vector<gdi::Surface>& frames,
                           std::vector<int>& delays, int& loops) = 0;
    // The encoders in the library's order; empty when it lists none.
    virtual std::vector<EncoderInfo> GetImageEncoders() = 0;
    // quality: the JPEG quality parameter (0 to 100), or nullptr for no parameter list.
    virtual int SaveImageToFile(ImageHandle image, const std::wstring& path,
                                const std::array<uint8_t, 16>& clsid, const int* quality) = 0;
    virtual void DisposeImage(ImageHandle image) = 0;
};

// An image of the codec, disposed when its scope ends, whatever the road out: an early
// return or a run-time error in a conversion cannot leak it.
class ScopedImage {
public:
    explicit ScopedImage(ImageCodec& codec) : codec_(codec) {}
    ~ScopedImage() { reset(); }
    ScopedImage(const ScopedImage&) = delete;
    ScopedImage& operator=(const ScopedImage&) = delete;
    ImageHandle get() const { return image_; }
    // The handle for a call that makes the image; what was held before is disposed.
    ImageHandle& out() {
        reset();
        return image_;
    }
    void reset() {
        if (image_) codec_.DisposeImage(image_);
        image_ = 0;
    }

private:
    ImageCodec& codec_;
    ImageHandle image_ = 0;
};

// The icon of the program in the notification area. Its mouse events reach the owner
// form as mouse moves whose x, in pixels, is the mouse message number.
class Tray {
public:
    virtual ~Tray() = default;
    virtual bool Add(ui::WindowHandle owner, const std::wstring& tip) = 0;
    virtual void Delete() = 0;
};

// The printer, by what the printer object asks of it. Positions and sizes are in twips
// from the top-left corner of the printable area.
class Printer {
public:
    virtual ~Printer() = default;
    // Opens a document with that many copies on the printer last chosen in the printer
    // dialog, else the default one; false when there is no printer.
    virtual bool BeginDocument(int copies) = 0;
    // Writes a line of text with its top-left corner at (x, y); returns the line's height.
    virtual float Text(float x, float y, const std::wstring& text) = 0;
    // Draws a picture stretched into a rectangle.
    virtual void Picture(const gdi::Surface& s, float x, float y, float w, float h) = 0;
    // Closes the document and sends it; false when the printer refused it.
    virtual bool EndDocument() = 0;
    // Drops an open document without printing it.
    virtual void AbortDocument() = 0;
};

// Wave audio on the platform's multimedia device (MCI "waveaudio" on Windows). A missing
// file or device makes the calls fail quietly: only the sound is lost.
class WaveAudio {
public:
    virtual ~WaveAudio() = default;
    // Opens the file on the device, closing what was open; false when it cannot.
    virtual bool Open(const std::wstring& path) = 0;
    // Starts the open file from its beginning and returns at once; false when nothing plays.
    virtual bool Play() = 0;
    // Stops and closes the device; nothing when it is not open.
    virtual void Close() = 0;
};

// Programs this one starts, and the processes that run on the machine.
class Processes {
public:
    virtual ~Processes() = default;
    // Starts a command line (the program first, in quotes when its path holds blanks) with a
    // ShowWindow style. Returns the process id, 0 when it cannot start. The process's handle
    // is kept, so that End reaches this very process and never one that later gets its id.
    virtual uint32_t Start(const std::wstring& commandLine, int showStyle) = 0;
    // The executable file name of each running process ("mspaint.exe").
    virtual std::vector<std::wstring> RunningNames() = 0;
    // Ends a process that Start gave this id and waits up to a second for it to go. Nothing
    // for an id Start never gave, or for a process that has ended on its own.
    virtual void End(uint32_t id) = 0;
    // The system folder ("C:\Windows\System32").
    virtual std::wstring SystemFolder() = 0;
};

// A message for the system's mail client (Simple MAPI on Windows).
struct MailMessage {
    std::wstring address; // the recipient; empty leaves it to the user
    std::wstring subject;
    std::wstring note;
    std::vector<std::wstring> attachments; // full paths, in order
};

// The system's mail client. Errors come back as the numbers of the mail controls: 32000
// plus the MAPI code (32001 the user's cancel, 32003 a failed logon ...), 0 for success.
class Mailer {
public:
    virtual ~Mailer() = default;
    // Number returned when no mail client is installed.
    static constexpr int kNoClient = 32026;
    // Signs on with the client's logon dialog allowed, mail download off.
    virtual int SignOn(ui::WindowHandle owner) = 0;
    // Sends through the client's own compose dialog, shown to the user.
    virtual int Send(ui::WindowHandle owner, const MailMessage& message) = 0;
};

// Counts of the process's window-system objects (GetGuiResources), its kernel handles and
// its working set, for leak checks.
struct GuiResources {
    int gdiObjects = 0;
    int userObjects = 0;
    int handles = 0;
    int64_t workingSetKb = 0;
};

} // namespace platform
