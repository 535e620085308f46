// The in-memory backend for tests: a virtual clock that moves when the code waits or pumps
// events, a synthetic desktop, scripted keys and mouse, and recorded message boxes,
// dialogs and clipboard. No user ever runs it.
#pragma once

#include "platform/ui/backend.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace headless {

// Thrown by End(): the program has ended. Tests catch it.
struct ProgramEnded {};

struct BoxRecord {
    std::wstring prompt;
    int style = 0;
    std::wstring title;
    int answer = 0;
};

struct DialogRecord {
    ui::FileDialogKind kind;
    std::wstring initDir, filter, title, fileName;
    int filterIndex = 0;
};

class Backend;

// A synthetic screen: one picture, a set of top-level windows over it.
class Desktop : public platform::Desktop {
public:
    gdi::Surface screen{1024, 768, gdi::Rgb(40, 90, 160)};
    ui::WindowHandle foreground = 0;
    std::map<ui::WindowHandle, ui::Rect> windows; // other applications' windows
    int grabs = 0;                                // desktop contexts handed out
    std::vector<ui::WindowHandle> forced;         // windows brought to the front

    ui::WindowHandle GetDesktopWindow() override { return kDesktopHandle; }
    ui::WindowHandle GetForegroundWindow() override { return foreground; }
    bool GetWindowRect(ui::WindowHandle w, ui::Rect& r) override;
    std::unique_ptr<platform::WindowDC> GetWindowDC(ui::WindowHandle w) override;
    void ForceForeground(ui::WindowHandle w) override {
        forced.push_back(w);
        foreground = w;
    }

    static constexpr ui::WindowHandle kDesktopHandle = 0x10010;
};

class Cursor : public platform::Cursor {
public:
    ui::CursorHandle handle = 0x10003; // the arrow
    ui::Point pos{100, 100};
    std::map<ui::CursorHandle, gdi::IconImage> images;
    ui::CursorHandle GetCursor() override { return handle; }
    ui::Point GetCursorPos() override { return pos; }
    void SetCursorPos(int x, int y) override { pos = {x, y}; }
    bool GetImage(ui::CursorHandle h, gdi::IconImage& out) override;
};

class Keyboard : public platform::Keyboard {
public:
    void Press(int vk);   // down, and pressed since the last query
    void Release(int vk); // up (the sticky bit stays until queried)
    void Tap(int vk) {
        Press(vk);
        Release(vk);
    }
    int16_t GetAsyncKeyState(int vk) override;

private:
    std::set<int> down_;
    std::set<int> sticky_;
};

class Clipboard : public platform::Clipboard {
public:
    bool hasImage = false;
    gdi::Surface image;
    int clears = 0;
    void Clear() override {
        hasImage = false;
        image = gdi::Surface();
        ++clears;
    }
    void SetImage(const gdi::Surface& s) override {
        image = s;
        hasImage = true;
    }
    bool GetImage(gdi::Surface& out) override {
        if (hasImage) out = image;
        return hasImage;
    }
};

class Shell : public platform::Shell {
public:
    std::map<std::wstring, std::wstring> folders;
    std::wstring programFolder;
    std::wstring datePattern = L"dd/MM/yyyy";
    std::wstring timePattern = L"HH:mm:ss";
    bool highPriority = false;
    std::wstring ShellFolder(const std::wstring& name) override;
    std::wstring ProgramFolder() override { return programFolder; }
    std::wstring ShortDatePattern() override { return datePattern; }
    std::wstring TimePattern() override { return timePattern; }
    void SetPriorityHigh() override { highPriority = true; }
    // Short forms by long path; a path not listed has none.
    std::map<std::wstring, std::wstring> shortPaths;
    std::wstring ShortPath(const std::wstring& path) override {
        const auto it = shortPaths.find(path);
        return it == shortPaths.end() ? path : it->second;
    }
    std::wstring LongPath(const std::wstring& path) override {
        for (const auto& [long_, short_] : shortPaths)
            if (short_ == path) return long_;
        return path;
    }
    // The settings store, by "program\\section\\key".
    std::map<std::wstring, std::wstring> settings;
    bool settingsReadOnly = false;
    std::wstring GetSetting(const std::wstring& program, const std::wstring& section,
                            const std::wstring& key, const std::wstring& def) override {
        const auto it = settings.find(program + L"\\" + section + L"\\" + key);
        return it == settings.end() ? def : it->second;
    }
    bool SaveSetting(const std::wstring& program, const std::wstring& section,
                     const std::wstring& key, const std::wstring& value) override {
        if (settingsReadOnly) return false;
        settings[program + L"\\" + section + L"\\" + key] = value;
        return true;
    }
};

// A codec that keeps pictures in memory and writes every format as a BMP file, recording
// what it was asked for.
class Codec : public platform::ImageCodec {
public:
    struct Save {
        std::wstring path;
        std::wstring mimeType;
        int quality = -1; // -1: no parameter list
    };
    bool startupOk = true;
    int startups = 0;
    int nextSaveStatus = 0; // a status to return from the next save
    // The next save reports success and writes nothing, as an encoder given a picture it
    // cannot take may do.
    bool nextSaveWritesNothing = false;
    std::vector<Save> saves;
    std::vector<platform::EncoderInfo> encoders;

    Codec();
    bool Startup() override {
        ++startups;
        return startupOk;
    }
    int LoadImageFromFile(const std::wstring& path, platform::ImageHandle& image) override;
    // A BMP is one frame; any other file is one blank frame of 1x1, or the frames a test
    // gave for its path.
    int LoadFrames(const std::wstring& path, std::vector<gdi::Surface>& frames,
                   std::vector<int>& delays, int& loops) override;
    struct Animation {
        std::vector<gdi::Surface> frames;
        std::vector<int> delays;
        int loops = -1;
    };
    std::map<std::wstring, Animation> animations;
    std::vector<platform::EncoderInfo> GetImageEncoders() override { return encoders; }
    int SaveImageToFile(platform::ImageHandle image, const std::wstring& path,
                        const std::array<uint8_t, 16>& clsid, const int* quality) override;
    void DisposeImage(platform::ImageHandle image) override { images_.erase(image); }
    int LiveImages() const { return int(images_.size()); }

private:
    std::map<platform::ImageHandle, gdi::Surface> images_;
    platform::ImageHandle next_ = 1;
};

class Tray : public platform::Tray {
public:
    bool present = false;
    std::wstring tip;
    int deletes = 0;
    bool Add(ui::WindowHandle, const std::wstring& t) override {
        present = true;
        tip = t;
        return true;
    }
    void Delete() override {
        present = false;
        ++deletes;
    }
};

// A printer that records its documents instead of printing them.
class Printer : public platform::Printer {
public:
    struct Item {
        enum Kind { Text, Picture } kind = Text;
        float x = 0, y = 0, w = 0, h = 0;
        std::wstring text;
        gdi::Surface picture;
    };
    struct Document {
        int copies = 0;
        std::vector<Item> items;
    };
    bool present = true;    // false: no printer installed
    bool refuseEnd = false; // the printer fails the document at its end
    float lineHeight = 240; // twips
    std::vector<Document> printed;
    int aborted = 0;
    bool open = false;

    bool BeginDocument(int copies) override;
    float Text(float x, float y, const std::wstring& text) override;
    void Picture(const gdi::Surface& s, float x, float y, float w, float h) override;
    bool EndDocument() override;
    void AbortDocument() override;

private:
    Document doc_;
};

// A wave device that records what it was asked to do.
class WaveAudio : public platform::WaveAudio {
public:
    bool deviceMissing = false; // no audio device: every open fails
    bool open = false;
    std::wstring file;
    std::vector<std::wstring> played; // the file of each play, in order
    int closes = 0;

    bool Open(const std::wstring& path) override;
    bool Play() override;
    void Close() override;
};

// Processes that the test lists as running; Start adds the started program's file name,
// End removes it again.
class Processes : public platform::Processes {
public:
    struct Started {
        std::wstring commandLine;
        int showStyle = 0;
        uint32_t id = 0;
        std::wstring name; // the program's file name, from the command line
    };
    std::vector<Started> started;
    std::vector<std::wstring> running;
    std::vector<std::wstring> unstartable; // program paths that fail to start, as written
    std::vector<uint32_t> ended;
    std::wstring systemFolder = L"C:\\Windows\\System32";

    uint32_t Start(const std::wstring& commandLine, int showStyle) override;
    std::vector<std::wstring> RunningNames() override { return running; }
    void End(uint32_t id) override;
    std::wstring SystemFolder() override { return systemFolder; }
    // The program exits on its own: its name leaves the running list.
    void Exit(uint32_t id);

private:
    uint32_t nextId_ = 4000;
};

// A mail client that records what it was given; the test sets the numbers it answers.
class Mailer : public platform::Mailer {
public:
    struct Sent {
        platform::MailMessage message;
        std::vector<bool> attachmentsExisted; // each attachment's file, at the send
    };
    int signOnResult = 0;
    int sendResult = 0;
    int signOns = 0;
    std::vector<Sent> sent; // every message handed to Send, whatever it answered

    int SignOn(ui::WindowHandle owner) override;
    int Send(ui::WindowHandle owner, const platform::MailMessage& message) override;
};

struct InputRecord {
    std::wstring prompt, title, defaultText;
};

class Backend : public ui::Backend {
public:
    Backend();
    ~Backend() override;

    // --- the toolkit's side
    std::unique_ptr<ui::Peer> CreatePeer(ui::Control& c) override;
    void TimerChanged(ui::Timer& t) override;
    void DoEvents() override;
    void RunModal(ui::Form& f) override;
    int MsgBox(const std::wstring& prompt, int style, const std::wstring& title) override;
    bool InputBox(const std::wstring& prompt, const std::wstring& title,
                  std::wstring& text) override;
    void PopupMenu(ui::Form& f, ui::Menu& m) override;
    bool FileDialog(ui::CommonDialog& d, ui::FileDialogKind kind) override;
    ui::ScreenMetrics Screen() const override { return screen; }
    rt::SystemTime Now() const override;
    [[noreturn]] void End() override;
    void ReportError(const rt::RuntimeError& e) override;
    ui::Form* ActiveForm() const override { return active_; }
    platform::Desktop& GetDesktop() override { return desktop; }
    platform::Cursor& GetCursor() override { return cursor; }
    platform::Keyboard& GetKeyboard() override { return keyboard; }
    platform::Clipboard& GetClipboard() override { return clipboard; }
    platform::Shell& GetShell() override { return shell; }
    platform::ImageCodec& GetCodec() override { return codec; }
    platform::Tray& GetTray() override { return tray; }
    platform::Printer& GetPrinter() override { return printer; }
    platform::WaveAudio& GetWaveAudio() override { return audio; }
    platform::Processes& GetProcesses() override { return processes; }
    platform::Mailer& GetMailer() override { return mailer; }
    platform::GuiResources GuiResourceCounts() override { return {}; }

    // --- the test's side
    ui::ScreenMetrics screen;
    Desktop desktop;
    Cursor cursor;
    Keyboard keyboard;
    Clipboard clipboard;
    Shell shell;
    Codec codec;
    Tray tray;
    Printer printer;
    WaveAudio audio;
    Processes processes;
    Mailer mailer;

    // Virtual time in milliseconds since the start date below; each DoEvents moves it.
    int64_t nowMs = 0;
    rt::SystemTime startTime{2026, 11, 15, 14, 5, 9, 0};
    int stepMs = 1;
    // Moves the clock forward, running due timers and scripted events on the way.
    void RunFor(int ms);
    // Runs until pred() holds or maxMs pass; returns pred().
    bool RunUntil(const std::function<bool()>& pred, int maxMs);
    // Runs fn at virtual time `atMs` from now, as an input event.
    void Schedule(int atMs, std::function<void()> fn);

    // Message boxes: shown ones are recorded; answers come from the queue, else the
    // default button.
    std::vector<BoxRecord> boxes;
    std::deque<int> answers;
    // File dialogs: recorded; the responder fills the dialog and says OK (true) or Cancel.
    std::vector<DialogRecord> dialogs;
    std::function<bool(ui::CommonDialog&, ui::FileDialogKind)> dialogResponder;
    std::vector<std::wstring> popups;
    // Input boxes: recorded; each answer is the text typed, or nullopt for Cancel. With
    // no answer queued the default text is taken with OK.
    std::vector<InputRecord> inputs;
    std::deque<std::optional<std::wstring>> inputAnswers;
    bool ended = false;
    int lastError = 0; // the number of the last run-time error that nothing trapped

    // Raises a control's events as the window system would.
    void Click(ui::Control& c);
    void DblClick(ui::Control& c);
    void MouseMove(ui::Control& c, float x, float y, int button = 0, int shift = 0);
    void MouseDown(ui::Control& c, float x, float y, int button, int shift = 0);
    void MouseUp(ui::Control& c, float x, float y, int button, int shift = 0);
    void KeyDown(ui::Form& f, int keyCode, int shift, bool repeat = false);

    // Peer bookkeeping for tests: windows alive now.
    int livePeers = 0;

private:
    void Step();
    std::map<ui::Timer*, int64_t> timers_;
    std::multimap<int64_t, std::function<void()>> scheduled_;
    ui::Form* active_ = nullptr;
    friend class Peer;
    friend class HeadlessPeer;
};

} // namespace headless
