#include "platform/headless/headless.h"

#include "platform/gdi/bmp.h"
#include "platform/ui/form.h"
#include "runtime/files.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace headless {

namespace {

using rt::DaysFromCivil;

// Back from days since 1970-01-01 to a civil date (proleptic Gregorian).

void CivilFromDays(int64_t z, int& y, int& m, int& d) {
    z += 719468;
    const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const int64_t doe = z - era * 146097;
    const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const int64_t mp = (5 * doy + 2) / 153;
    d = int(doy - (153 * mp + 2) / 5 + 1);
    m = int(mp < 10 ? mp + 3 : mp - 9);
    y = int(yoe + era * 400 + (m <= 2));
}

class HeadlessDC : public platform::WindowDC {
public:
    HeadlessDC(const gdi::Surface& screen, ui::Rect r) : screen_(screen), r_(r) {}
    void CopyTo(gdi::Surface& dst, int dx, int dy, int w, int h, int sx, int sy) override {
        // A window's context sees the screen under its rectangle.
        gdi::Surface part(w, h, 0);
        gdi::BitBlt(part, 0, 0, w, h, screen_, r_.left + sx, r_.top + sy);
        gdi::BitBlt(dst, dx, dy, w, h, part, 0, 0);
    }

private:
    const gdi::Surface& screen_;
    ui::Rect r_;
};

} // namespace

// A headless window: it only counts itself and reports form activation.
class HeadlessPeer : public ui::Peer {
public:
    HeadlessPeer(Backend& b, ui::Control& c) : b_(b), c_(c) { ++b_.livePeers; }
    ~HeadlessPeer() override { --b_.livePeers; }
    void Update(ui::Change what) override {
        if (c_.GetKind() != ui::Kind::Form || what != ui::Change::Visible) return;
        auto& f = static_cast<ui::Form&>(c_);
        if (f.Visible()) {
            if (f.showNoActivate) return;
            b_.active_ = &f;
            ui::Dispatch(b_, [&] { f.Activated(); });
        } else if (b_.active_ == &f) {
            b_.active_ = nullptr;
        }
    }

private:
    Backend& b_;
    ui::Control& c_;
};

// ---- services ---------------------------------------------------------------------------

bool Desktop::GetWindowRect(ui::WindowHandle w, ui::Rect& r) {
    if (w == kDesktopHandle) {
        r = {0, 0, screen.Width(), screen.Height()};
        return true;
    }
    auto it = windows.find(w);
    if (it == windows.end()) {
        r = {};
        return false;
    }
    r = it->second;
    return true;
}

std::unique_ptr<platform::WindowDC> Desktop::GetWindowDC(ui::WindowHandle w) {
    ui::Rect r;
    GetWindowRect(w, r);
    ++grabs;
    return std::make_unique<HeadlessDC>(screen, r);
}

bool Cursor::GetImage(ui::CursorHandle h, gdi::IconImage& out) {
    auto it = images.find(h);
    if (it == images.end()) return false;
    out = it->second;
    return true;
}

void Keyboard::Press(int vk) {
    down_.insert(vk);
    sticky_.insert(vk);
}

void Keyboard::Release(int vk) {
    down_.erase(vk);
}

int16_t Keyboard::GetAsyncKeyState(int vk) {
    int16_t v = 0;
    if (down_.count(vk)) v = int16_t(v | int16_t(0x8000));
    if (sticky_.erase(vk)) v = int16_t(v | 1);
    return v;
}

std::wstring Shell::ShellFolder(const std::wstring& name) {
    auto it = folders.find(name);
    return it == folders.end() ? std::wstring() : it->second;
}

// ---- codec ------------------------------------------------------------------------------

Codec::Codec() {
    const wchar_t* types[] = {L"image/bmp", L"image/jpeg", L"image/gif", L"image/tiff",
                              L"image/png"};
    uint8_t n = 0;
    for (const wchar_t* t : types) {
        platform::EncoderInfo e;
        e.clsid.fill(++n);
        e.mimeType = t;
        encoders.push_back(e);
    }
}

int Codec::LoadImageFromFile(const std::wstring& path, platform::ImageHandle& image) {
    image = 0;
    try {
        images_[next_] = gdi::LoadBmp(path);
    } catch (const rt::RuntimeError& e) {
        return e.number == rt::kFileNotFound ? 10 : 2; // FileNotFound, InvalidParameter
    }
    image = next_++;
    return 0;
}

int Codec::LoadFrames(const std::wstring& path, std::vector<gdi::Surface>& frames,
                      std::vector<int>& delays, int& loops) {
    frames.clear();
    delays.clear();
    loops = -1;
    const auto it = animations.find(path);
    if (it != animations.end()) {
        frames = it->second.frames;
        delays = it->second.delays;
        loops = it->second.loops;
        return 0;
    }
    if (!rt::FileExists(path)) return 10;
    try {
        frames.push_back(gdi::LoadBmp(path));
    } catch (const rt::RuntimeError&) {
        frames.emplace_back(1, 1);
    }
    delays.push_back(0);
    return 0;
}

int Codec::SaveImageToFile(platform::ImageHandle image, const std::wstring& path,
                           const std::array<uint8_t, 16>& clsid, const int* quality) {
    std::wstring mime;
    for (const auto& e : encoders)
        if (e.clsid == clsid) mime = e.mimeType;
    auto it = images_.find(image);
    saves.push_back({path, mime, quality ? *quality : -1});
    if (nextSaveStatus != 0) return std::exchange(nextSaveStatus, 0);
    if (it == images_.end()) return 2;
    if (std::exchange(nextSaveWritesNothing, false)) return 0;
    try {
        gdi::SaveBmp(it->second, path);
    } catch (const rt::RuntimeError&) {
        return 7; // Win32Error
    }
    return 0;
}

// ---- backend ----------------------------------------------------------------------------

Backend::Backend() = default;
Backend::~Backend() = default;

std::unique_ptr<ui::Peer> Backend::CreatePeer(ui::Control& c) {
    return std::make_unique<HeadlessPeer>(*this, c);
}

void Backend::TimerChanged(ui::Timer& t) {
    if (t.Running())
        timers_[&t] = nowMs + t.Interval();
    else
        timers_.erase(&t);
}

rt::SystemTime Backend::Now() const {
    int64_t base = DaysFromCivil(startTime.year, startTime.month, startTime.day) * 86400000LL +
                   ((startTime.hour * 60LL + startTime.minute) * 60LL + startTime.second) * 1000LL +
                   startTime.millisecond;
    int64_t t = base + nowMs;
    int64_t days = t / 86400000LL;
    int64_t ms = t % 86400000LL;
    rt::SystemTime s{};
    CivilFromDays(days, s.year, s.month, s.day);
    s.hour = int(ms / 3600000);
    s.minute = int(ms / 60000 % 60);
    s.second = int(ms / 1000 % 60);
    s.millisecond = int(ms % 1000);
    return s;
}

void Backend::Step() {
    nowMs += stepMs;
    // Scripted input first, then due timers, in due order.
    while (!scheduled_.empty() && scheduled_.begin()->first <= nowMs) {
        auto fn = std::move(scheduled_.begin()->second);
        scheduled_.erase(scheduled_.begin());
        ui::Dispatch(*this, fn);
    }
    std::vector<ui::Timer*> due;
    for (auto& [t, at] : timers_)
        if (at <= nowMs) due.push_back(t);
    for (ui::Timer* t : due) {
        auto it = timers_.find(t);
        if (it == timers_.end() || it->second > nowMs) continue; // changed by an earlier tick
        it->second = nowMs + t->Interval();
        ui::Dispatch(*this, [t] { t->Tick(); });
    }
}

void Backend::DoEvents() {
    Step();
}

void Backend::RunFor(int ms) {
    int64_t until = nowMs + ms;
    while (nowMs < until) Step();
}

bool Backend::RunUntil(const std::function<bool()>& pred, int maxMs) {
    int64_t until = nowMs + maxMs;
    while (!pred() && nowMs < until) Step();
    return pred();
}

void Backend::Schedule(int atMs, std::function<void()> fn) {
    scheduled_.emplace(nowMs + atMs, std::move(fn));
}

void Backend::RunModal(ui::Form& f) {
    // A modal form with nothing scripted to close it would wait for ever.
    int64_t limit = nowMs + 3600 * 1000;
    while (f.IsLoaded() && f.Visible()) {
        if (nowMs > limit) throw std::runtime_error("modal form never closed");
        Step();
    }
}

int Backend::MsgBox(const std::wstring& prompt, int style, const std::wstring& title) {
    int answer;
    if (!answers.empty()) {
        answer = answers.front();
        answers.pop_front();
    } else {
        switch (style & 7) {
        case ui::kOkCancel:
        case ui::kOkOnly:
            answer = ui::kOk;
            break;
        case ui::kAbortRetryIgnore:
            answer = ui::kAbort;
            break;
        case ui::kYesNoCancel:
        case ui::kYesNo:
            answer = ui::kYes;
            break;
        default:
            answer = ui::kRetry;
            break;
        }
    }
    boxes.push_back({prompt, style, title, answer});
    return answer;
}

void Backend::PopupMenu(ui::Form&, ui::Menu& m) {
    popups.push_back(m.Name());
}

bool Backend::InputBox(const std::wstring& prompt, const std::wstring& title, std::wstring& text) {
    inputs.push_back({prompt, title, text});
    if (inputAnswers.empty()) return true;
    auto answer = std::move(inputAnswers.front());
    inputAnswers.pop_front();
    if (!answer) return false;
    text = *answer;
    return true;
}

bool Backend::FileDialog(ui::CommonDialog& d, ui::FileDialogKind kind) {
    dialogs.push_back({kind, d.initDir, d.filter, d.dialogTitle, d.fileName, d.filterIndex});
    return dialogResponder ? dialogResponder(d, kind) : false;
}

void Backend::End() {
    if (onEnd) {
        auto f = std::move(onEnd);
        f();
    }
    ended = true;
    throw ProgramEnded{};
}

void Backend::ReportError(const rt::RuntimeError& e) {
    lastError = e.number;
    boxes.push_back({L"Run-time error '" + std::to_wstring(e.number) + L"':\n\n" + e.text,
                     ui::kCritical, L"", ui::kOk});
}

void Backend::Click(ui::Control& c) {
    ui::Dispatch(*this, [&] {
        if (c.GetKind() == ui::Kind::CheckBox) {
            static_cast<ui::CheckBox&>(c).UserToggled();
            return;
        }
        if (c.GetKind() == ui::Kind::OptionButton) {
            static_cast<ui::OptionButton&>(c).SetValue(true);
            return;
        }
        if (c.OnClick) c.OnClick();
    });
}

void Backend::DblClick(ui::Control& c) {
    ui::Dispatch(*this, [&] {
        if (c.OnDblClick) c.OnDblClick();
    });
}

void Backend::MouseMove(ui::Control& c, float x, float y, int button, int shift) {
    ui::Dispatch(*this, [&] {
        if (c.OnMouseMove) c.OnMouseMove({button, shift, x, y});
    });
}

void Backend::MouseDown(ui::Control& c, float x, float y, int button, int shift) {
    ui::Dispatch(*this, [&] {
        if (c.OnMouseDown) c.OnMouseDown({button, shift, x, y});
    });
}

void Backend::MouseUp(ui::Control& c, float x, float y, int button, int shift) {
    ui::Dispatch(*this, [&] {
        if (c.OnMouseUp) c.OnMouseUp({button, shift, x, y});
    });
}

void Backend::KeyDown(ui::Form& f, int keyCode, int shift, bool repeat) {
    ui::Dispatch(*this, [&] {
        int16_t k = int16_t(keyCode);
        f.keyRepeat = repeat;
        if (f.OnKeyDown) f.OnKeyDown(k, int16_t(shift));
        f.keyRepeat = false;
    });
}

} // namespace headless

namespace headless {

bool Printer::BeginDocument(int copies) {
    if (!present) return false;
    doc_ = Document{copies, {}};
    open = true;
    return true;
}

float Printer::Text(float x, float y, const std::wstring& text) {
    Item it;
    it.kind = Item::Text;
    it.x = x;
    it.y = y;
    it.text = text;
    doc_.items.push_back(std::move(it));
    return lineHeight;
}

void Printer::Picture(const gdi::Surface& s, float x, float y, float w, float h) {
    Item it;
    it.kind = Item::Picture;
    it.x = x;
    it.y = y;
    it.w = w;
    it.h = h;
    it.picture = s;
    doc_.items.push_back(std::move(it));
}

bool Printer::EndDocument() {
    open = false;
    if (refuseEnd) return false;
    printed.push_back(std::move(doc_));
    doc_ = {};
    return true;
}

void Printer::AbortDocument() {
    open = false;
    doc_ = {};
    ++aborted;
}

bool WaveAudio::Open(const std::wstring& path) {
    Close();
    if (deviceMissing || !rt::FileExists(path)) return false;
    open = true;
    file = path;
    return true;
}

bool WaveAudio::Play() {
    if (!open) return false;
    played.push_back(file);
    return true;
}

void WaveAudio::Close() {
    if (!open) return;
    open = false;
    ++closes;
}

namespace {

// The program of a command line: the quoted first part, or everything up to the first blank.
std::wstring ProgramOf(const std::wstring& commandLine) {
    if (!commandLine.empty() && commandLine[0] == L'"') {
        const size_t fin = commandLine.find(L'"', 1);
        return commandLine.substr(1, fin == std::wstring::npos ? std::wstring::npos : fin - 1);
    }
    return commandLine.substr(0, commandLine.find(L' '));
}

} // namespace

int Mailer::SignOn(ui::WindowHandle) {
    ++signOns;
    return signOnResult;
}

int Mailer::Send(ui::WindowHandle, const platform::MailMessage& message) {
    Sent s{message, {}};
    for (const auto& a : message.attachments) s.attachmentsExisted.push_back(rt::FileExists(a));
    sent.push_back(std::move(s));
    return sendResult;
}

uint32_t Processes::Start(const std::wstring& commandLine, int showStyle) {
    const std::wstring programme = ProgramOf(commandLine);
    for (const auto& u : unstartable)
        if (u == programme) return 0;
    const size_t barre = programme.find_last_of(L'\\');
    Started s{commandLine, showStyle, nextId_++,
              barre == std::wstring::npos ? programme : programme.substr(barre + 1)};
    started.push_back(s);
    running.push_back(s.name);
    return s.id;
}

void Processes::Exit(uint32_t id) {
    for (const auto& s : started) {
        if (s.id != id) continue;
        const auto it = std::find(running.begin(), running.end(), s.name);
        if (it != running.end()) running.erase(it);
    }
}

void Processes::End(uint32_t id) {
    for (const auto& s : started) {
        if (s.id != id) continue;
        const auto it = std::find(running.begin(), running.end(), s.name);
        if (it == running.end()) return;
        running.erase(it);
        ended.push_back(id);
    }
}

} // namespace headless
