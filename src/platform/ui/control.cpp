#include "platform/ui/control.h"

#include "platform/ui/backend.h"
#include "platform/ui/form.h"
#include "runtime/errors.h"

#include <cmath>

namespace ui {

Control::Control(Form* owner, std::wstring name, Kind kind)
    : owner_(owner), name_(std::move(name)), kind_(kind) {
    if (owner_ && owner_ != this) owner_->Register(this);
}

Control::~Control() {
    if (owner_ && owner_ != this) owner_->Unregister(this);
}

Backend& Control::GetBackend() const {
    return owner_->FormBackend();
}

float Control::TppX() const {
    return GetBackend().Screen().tppX;
}
float Control::TppY() const {
    return GetBackend().Screen().tppY;
}

void Control::Changed(Change what) {
    if (peer_) peer_->Update(what);
}

void Control::SetLeft(float v) {
    if (left_ == v) return;
    left_ = v;
    Changed(Change::Bounds);
}

void Control::SetTop(float v) {
    if (top_ == v) return;
    top_ = v;
    Changed(Change::Bounds);
}

void Control::SetWidth(float v) {
    if (v < 0 || !std::isfinite(v)) rt::Raise(rt::kInvalidPropertyValue);
    if (width_ == v) return;
    width_ = v;
    OnResized();
    Changed(Change::Bounds);
}

void Control::SetHeight(float v) {
    if (v < 0 || !std::isfinite(v)) rt::Raise(rt::kInvalidPropertyValue);
    if (height_ == v) return;
    height_ = v;
    OnResized();
    Changed(Change::Bounds);
}

void Control::SetMousePointer(int p) {
    if (pointer_ == p) return;
    pointer_ = p;
    Changed(Change::Pointer);
}

void Control::Move(float left, float top, float width, float height) {
    if (width < 0 || height < 0) rt::Raise(rt::kInvalidPropertyValue);
    bool resized = width != width_ || height != height_;
    left_ = left;
    top_ = top;
    width_ = width;
    height_ = height;
    if (resized) OnResized();
    Changed(Change::Bounds);
}

void Control::SetVisible(bool v) {
    if (visible_ == v) return;
    visible_ = v;
    Changed(Change::Visible);
}

void Control::SetEnabled(bool v) {
    if (enabled_ == v) return;
    enabled_ = v;
    Changed(Change::Enabled);
}

void Control::SetToolTipText(std::wstring t) {
    tooltip_ = std::move(t);
    Changed(Change::Tooltip);
}

void Control::SetBackColor(uint32_t c) {
    backColor_ = c;
    Changed(Change::Style);
}

void Control::SetForeColor(uint32_t c) {
    foreColor_ = c;
    Changed(Change::Style);
}

void Control::ZOrder(int position) {
    static int counter = 0;
    zPosition_ = position == 0 ? ++counter : -(++counter);
    Changed(Change::ZOrder);
}

void Control::CopyFrom(const Control& o) {
    left_ = o.left_;
    top_ = o.top_;
    width_ = o.width_;
    height_ = o.height_;
    visible_ = o.visible_;
    enabled_ = o.enabled_;
    tooltip_ = o.tooltip_;
    backColor_ = o.backColor_;
    foreColor_ = o.foreColor_;
    pointer_ = o.pointer_;
    container_ = o.container_;
    OnResized();
}

void Control::CreatePeer() {
    if (!peer_) peer_ = GetBackend().CreatePeer(*this);
}

void Control::DestroyPeer() {
    peer_.reset();
}

uint32_t ResolveColor(uint32_t c) {
    if ((c & 0x80000000u) == 0) return c & 0xFFFFFF;
    switch (c & 0xFF) {
    case 0x05:
        return 0xFFFFFF; // window background
    case 0x08:
        return 0x000000; // window text
    case 0x0F:
        return 0xF0F0F0; // button face
    case 0x10:
        return 0xA0A0A0; // button shadow
    case 0x12:
        return 0x000000; // button text
    case 0x18:
        return 0xE1FFFF; // tooltip background
    default:
        return 0xF0F0F0;
    }
}

void Dispatch(Backend& backend, const std::function<void()>& handler) {
    try {
        handler();
    } catch (const rt::RuntimeError& e) {
        backend.ReportError(e);
    } catch (const std::bad_alloc&) {
        // Memory that ran out anywhere under an event is the runtime's error 7, never a
        // C++ exception crossing a window procedure.
        backend.ReportError(rt::RuntimeError(rt::kOutOfMemory));
    }
}

} // namespace ui
