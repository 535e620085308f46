#include "platform/ui/form.h"

#include "platform/ui/backend.h"
#include "runtime/errors.h"

#include <algorithm>

namespace ui {

Form::Form(Backend& backend, std::wstring name)
    : Control(this, std::move(name), Kind::Form), backend_(backend) {
    Control::SetVisible(false);
}

Form::~Form() = default;

void Form::SetCaption(std::wstring c) {
    if (caption_ == c) return;
    caption_ = std::move(c);
    Changed(Change::Caption);
}

void Form::SetWindowState(int s) {
    if (s < kNormal || s > kMaximized) rt::Raise(rt::kInvalidPropertyValue);
    if (windowState_ == s) return;
    windowState_ = s;
    Changed(Change::State);
    if (OnResize) OnResize();
}

void Form::SetTransparentKey(int64_t key) {
    transparentKey_ = key;
    Changed(Change::Style);
}

void Form::Register(Control* c) {
    controls_.push_back(c);
}

void Form::Unregister(Control* c) {
    controls_.erase(std::remove(controls_.begin(), controls_.end(), c), controls_.end());
}

std::vector<Menu*> Form::TopMenus() const {
    std::vector<Menu*> out;
    for (Control* c : controls_)
        if (c->GetKind() == Kind::Menu && !static_cast<Menu*>(c)->Parent())
            out.push_back(static_cast<Menu*>(c));
    return out;
}

void Form::Load() {
    if (loaded_ || loading_) return;
    loading_ = true;
    Design();
    loaded_ = true;
    CreatePeer();
    for (Control* c : std::vector<Control*>(controls_)) c->CreatePeer();
    for (Control* c : std::vector<Control*>(controls_))
        if (c->GetKind() == Kind::Timer) backend_.TimerChanged(*static_cast<Timer*>(c));
    loading_ = false;
    if (OnLoad) OnLoad();
}

bool Form::Unload() {
    if (!loaded_) return true;
    int cancel = 0;
    if (OnQueryUnload) OnQueryUnload(cancel, kFormCode);
    if (cancel) return false;
    if (OnUnload) OnUnload(cancel);
    if (cancel) return false;
    Unloaded();
    return true;
}

void Form::Unloaded() {
    if (!loaded_) return;
    Control::SetVisible(false);
    for (auto& unload : arrayUnloaders_) unload();
    loaded_ = false;
    for (Control* c : std::vector<Control*>(controls_)) {
        if (c->GetKind() == Kind::Timer) backend_.TimerChanged(*static_cast<Timer*>(c));
        c->DestroyPeer();
    }
    DestroyPeer();
}

void Form::Show(bool modal) {
    Load();
    if (!loaded_) return;
    Control::SetVisible(true);
    if (modal) backend_.RunModal(*this);
}

void Form::Hide() {
    if (!loaded_) Load();
    Control::SetVisible(false);
}

void Form::SetVisible(bool v) {
    if (v)
        Show(false);
    else
        Hide();
}

void Form::PopupMenu(Menu& menu) {
    backend_.PopupMenu(*this, menu);
}

void Form::CenterOnScreen(float width, float height) {
    const ScreenMetrics screen = backend_.Screen();
    Move((screen.WidthTwips() - width) / 2, (screen.HeightTwips() - height) / 2, width, height);
}

float Form::ScaleWidth() const {
    return Width();
}
float Form::ScaleHeight() const {
    return Height();
}

void Form::CloseRequested(int mode) {
    int cancel = 0;
    if (OnQueryUnload) OnQueryUnload(cancel, mode);
    if (cancel || !loaded_) return;
    if (OnUnload) OnUnload(cancel);
    if (cancel) return;
    Unloaded();
}

void Form::Activated() {
    if (OnActivate) OnActivate();
}

void Form::SystemMoved(float left, float top, float width, float height) {
    Control::Move(left, top, width, height);
    if (OnResize) OnResize();
}

void Form::SystemStateChanged(int state) {
    if (windowState_ == state) return;
    windowState_ = state;
    if (OnResize) OnResize();
}

} // namespace ui
