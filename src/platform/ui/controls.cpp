#include "platform/ui/controls.h"

#include "platform/ui/backend.h"
#include "platform/ui/form.h"
#include "platform/ui/units.h"
#include "runtime/errors.h"

#include <cmath>
#include <utility>

namespace ui {

// ---- PictureBox -------------------------------------------------------------------------

PictureBox::PictureBox(Form* owner, std::wstring name)
    : Control(owner, std::move(name), Kind::PictureBox) {}

void PictureBox::SetBorderStyle(int style) {
    if (style != 0 && style != 1) rt::Raise(rt::kInvalidPropertyValue);
    if (borderStyle_ == style) return;
    borderStyle_ = style;
    Changed(Change::Border);
}

void PictureBox::OnResized() {
    if (!Owner()) return;
    int w = ToPixels(Width(), TppX());
    int h = ToPixels(Height(), TppY());
    if (w == image_.Width() && h == image_.Height()) return;
    const gdi::Surface old =
        std::exchange(image_, gdi::Surface(w, h, gdi::FromColorRef(ResolveColor(BackColor()))));
    DrawPicture();
    // The new area shows the back colour and the picture; what was drawn stays over them,
    // except over a stretched picture, which is drawn anew at the new size.
    if (!stretch) gdi::BitBlt(image_, 0, 0, old.Width(), old.Height(), old, 0, 0);
    Changed(Change::Image);
}

void PictureBox::DrawPicture() {
    if (picture_.Empty()) return;
    const int w = picture_.Width(), h = picture_.Height();
    const int iw = image_.Width(), ih = image_.Height();
    if (!stretch || (iw == w && ih == h)) {
        gdi::BitBlt(image_, 0, 0, w, h, picture_, 0, 0);
        return;
    }
    const bool whole = iw % w == 0 && ih % h == 0;
    gdi::StretchBlt(image_, 0, 0, iw, ih, picture_, 0, 0, w, h,
                    whole ? gdi::kColorOnColor : gdi::kHalftone);
}

void PictureBox::SetPicture(const gdi::Surface& s) {
    picture_ = s;
    if (autoSize && !s.Empty() && Owner())
        Move(Left(), Top(), ToTwips(s.Width(), TppX()), ToTwips(s.Height(), TppY()));
    Cls();
}

void PictureBox::Cls() {
    image_.Fill(gdi::FromColorRef(ResolveColor(BackColor())));
    DrawPicture();
    Changed(Change::Image);
}

void PictureBox::SetMouseIcon(gdi::IconImage icon) {
    mouseIcon_ = std::move(icon);
    Changed(Change::Pointer);
}

void PictureBox::Refresh() {
    Changed(Change::Image);
}

void PictureBox::CopyFrom(const Control& other) {
    const auto& o = static_cast<const PictureBox&>(other);
    borderStyle_ = o.borderStyle_;
    autoSize = o.autoSize;
    stretch = o.stretch;
    picture_ = o.picture_;
    image_ = gdi::Surface();
    Control::CopyFrom(other);
    Cls();
}

// ---- Label ------------------------------------------------------------------------------

Label::Label(Form* owner, std::wstring name) : Control(owner, std::move(name), Kind::Label) {}

void Label::SetCaption(std::wstring c) {
    if (caption_ == c) return;
    caption_ = std::move(c);
    Changed(Change::Caption);
}

void Label::SetFont(Font f) {
    font_ = std::move(f);
    Changed(Change::Style);
}

void Label::SetAlignment(int a) {
    if (a < 0 || a > 2) rt::Raise(rt::kInvalidPropertyValue);
    alignment_ = a;
    Changed(Change::Style);
}

void Label::SetTransparent(bool t) {
    transparent_ = t;
    Changed(Change::Style);
}

void Label::SetBorderStyle(int b) {
    if (b != 0 && b != 1) rt::Raise(rt::kInvalidPropertyValue);
    borderStyle_ = b;
    Changed(Change::Border);
}

void Label::CopyFrom(const Control& other) {
    const auto& o = static_cast<const Label&>(other);
    caption_ = o.caption_;
    font_ = o.font_;
    alignment_ = o.alignment_;
    transparent_ = o.transparent_;
    borderStyle_ = o.borderStyle_;
    Control::CopyFrom(other);
}

// ---- TextBox ----------------------------------------------------------------------------

TextBox::TextBox(Form* owner, std::wstring name) : Control(owner, std::move(name), Kind::TextBox) {
    SetBackColor(0x80000005);
}

void TextBox::SetText(std::wstring t) {
    if (text_ == t) return;
    text_ = std::move(t);
    Changed(Change::Caption);
    if (OnChange) OnChange();
}

void TextBox::TextEdited(std::wstring t) {
    if (text_ == t) return;
    text_ = std::move(t);
    if (OnChange) OnChange();
}

void TextBox::SetMaxLength(int n) {
    if (n < 0) rt::Raise(rt::kInvalidPropertyValue);
    maxLength_ = n;
    Changed(Change::Style);
}

void TextBox::SetLocked(bool l) {
    locked_ = l;
    Changed(Change::Style);
}

void TextBox::CopyFrom(const Control& other) {
    const auto& o = static_cast<const TextBox&>(other);
    text_ = o.text_;
    maxLength_ = o.maxLength_;
    locked_ = o.locked_;
    Control::CopyFrom(other);
}

// ---- OptionButton -----------------------------------------------------------------------

OptionButton::OptionButton(Form* owner, std::wstring name)
    : Control(owner, std::move(name), Kind::OptionButton) {}

void OptionButton::SetValue(bool v) {
    if (value_ == v) return;
    value_ = v;
    Changed(Change::Value);
    if (!v) return;
    for (Control* c : Owner()->Controls())
        if (c != this && c->GetKind() == Kind::OptionButton)
            static_cast<OptionButton*>(c)->SetValue(false);
    if (OnClick) OnClick();
}

void OptionButton::SetCaption(std::wstring c) {
    caption_ = std::move(c);
    Changed(Change::Caption);
}

void OptionButton::CopyFrom(const Control& other) {
    const auto& o = static_cast<const OptionButton&>(other);
    caption_ = o.caption_;
    Control::CopyFrom(other);
}

// ---- CheckBox ---------------------------------------------------------------------------

CheckBox::CheckBox(Form* owner, std::wstring name)
    : Control(owner, std::move(name), Kind::CheckBox) {}

void CheckBox::SetValue(int v) {
    if (v < 0 || v > 2) rt::Raise(rt::kInvalidPropertyValue);
    if (value_ == v) return;
    value_ = v;
    Changed(Change::Value);
    // Setting the value from code raises Click, as the toolkit does.
    if (OnClick) OnClick();
}

void CheckBox::SetCaption(std::wstring c) {
    caption_ = std::move(c);
    Changed(Change::Caption);
}

void CheckBox::UserToggled() {
    SetValue(value_ == 0 ? 1 : 0);
}

void CheckBox::CopyFrom(const Control& other) {
    const auto& o = static_cast<const CheckBox&>(other);
    value_ = o.value_;
    caption_ = o.caption_;
    Control::CopyFrom(other);
}

// ---- VScrollBar -------------------------------------------------------------------------

VScrollBar::VScrollBar(Form* owner, std::wstring name)
    : Control(owner, std::move(name), Kind::VScrollBar) {}

VScrollBar::VScrollBar(Form* owner, std::wstring name, Kind kind)
    : Control(owner, std::move(name), kind) {}

Slider::Slider(Form* owner, std::wstring name) : VScrollBar(owner, std::move(name), Kind::Slider) {}

// ---- CommandButton ----------------------------------------------------------------------

CommandButton::CommandButton(Form* owner, std::wstring name)
    : Control(owner, std::move(name), Kind::CommandButton) {}

void CommandButton::SetCaption(std::wstring c) {
    caption_ = std::move(c);
    Changed(Change::Caption);
}

void CommandButton::CopyFrom(const Control& other) {
    caption_ = static_cast<const CommandButton&>(other).caption_;
    Control::CopyFrom(other);
}

// ---- ListBox ----------------------------------------------------------------------------

ListBox::ListBox(Form* owner, std::wstring name) : Control(owner, std::move(name), Kind::ListBox) {}

const std::wstring& ListBox::List(int i) const {
    if (i < 0 || i >= ListCount()) rt::Raise(rt::kInvalidPropertyArrayIndex);
    return items_[size_t(i)];
}

void ListBox::SetList(int i, std::wstring t) {
    if (i < 0 || i >= ListCount()) rt::Raise(rt::kInvalidPropertyArrayIndex);
    items_[size_t(i)] = std::move(t);
    Changed(Change::Items);
}

void ListBox::AddItem(std::wstring t) {
    items_.push_back(std::move(t));
    Changed(Change::Items);
}

void ListBox::RemoveItem(int i) {
    if (i < 0 || i >= ListCount()) rt::Raise(rt::kInvalidCall);
    items_.erase(items_.begin() + i);
    if (index_ == i)
        index_ = -1;
    else if (index_ > i)
        --index_;
    Changed(Change::Items);
}

void ListBox::Clear() {
    items_.clear();
    index_ = -1;
    Changed(Change::Items);
}

void ListBox::SetListIndex(int i) {
    if (i < -1 || i >= ListCount()) rt::Raise(rt::kInvalidPropertyValue);
    if (index_ == i) return;
    index_ = i;
    Changed(Change::Value);
    if (OnClick) OnClick();
}

void ListBox::UserSelected(int i, int button) {
    if (i >= -1 && i < ListCount()) SetListIndex(i);
    if (OnMouseDown) OnMouseDown({button, 0, 0, 0});
}

void ListBox::CopyFrom(const Control& other) {
    const auto& o = static_cast<const ListBox&>(other);
    items_ = o.items_;
    index_ = o.index_;
    Control::CopyFrom(other);
}

void VScrollBar::SetMin(int v) {
    min_ = v;
    if (value_ < std::min(min_, max_)) value_ = std::min(min_, max_);
    Changed(Change::Range);
}

void VScrollBar::SetMax(int v) {
    max_ = v;
    if (value_ > std::max(min_, max_)) value_ = std::max(min_, max_);
    Changed(Change::Range);
}

void VScrollBar::SetValue(int v) {
    if (v < std::min(min_, max_) || v > std::max(min_, max_)) rt::Raise(rt::kInvalidPropertyValue);
    if (value_ == v) return;
    value_ = v;
    Changed(Change::Value);
    if (OnChange) OnChange();
}

void VScrollBar::CopyFrom(const Control& other) {
    const auto& o = static_cast<const VScrollBar&>(other);
    min_ = o.min_;
    max_ = o.max_;
    value_ = o.value_;
    small_ = o.small_;
    large_ = o.large_;
    Control::CopyFrom(other);
}

// ---- Frame, Shape, Line -----------------------------------------------------------------

Frame::Frame(Form* owner, std::wstring name) : Control(owner, std::move(name), Kind::Frame) {}

Shape::Shape(Form* owner, std::wstring name) : Control(owner, std::move(name), Kind::Shape) {}

void Shape::SetBorderColor(uint32_t c) {
    if (borderColor_ == c) return;
    borderColor_ = c;
    Changed(Change::Style);
}

void Shape::SetFilled(bool f) {
    if (filled_ == f) return;
    filled_ = f;
    Changed(Change::Style);
}

void Shape::SetFillColor(uint32_t c) {
    if (fillColor_ == c) return;
    fillColor_ = c;
    Changed(Change::Style);
}

void Shape::CopyFrom(const Control& other) {
    const auto& o = static_cast<const Shape&>(other);
    borderColor_ = o.borderColor_;
    fillColor_ = o.fillColor_;
    filled_ = o.filled_;
    Control::CopyFrom(other);
}

Line::Line(Form* owner, std::wstring name) : Control(owner, std::move(name), Kind::Line) {}

void Line::SetPoints(float x1, float y1, float x2, float y2) {
    x1_ = x1;
    y1_ = y1;
    x2_ = x2;
    y2_ = y2;
    Changed(Change::Bounds);
}

void Line::SetBorderColor(uint32_t c) {
    borderColor_ = c;
    Changed(Change::Style);
}

// ---- Timer ------------------------------------------------------------------------------

Timer::Timer(Form* owner, std::wstring name, int interval, bool enabled)
    : Control(owner, std::move(name), Kind::Timer), interval_(interval) {
    Control::SetEnabled(enabled);
}

Timer::~Timer() {
    if (Running()) {
        Control::SetEnabled(false);
        GetBackend().TimerChanged(*this);
    }
}

void Timer::SetInterval(int ms) {
    if (ms < 0 || ms > 65535) rt::Raise(rt::kInvalidPropertyValue);
    if (interval_ == ms) return;
    interval_ = ms;
    if (Owner() && Owner()->IsLoaded()) GetBackend().TimerChanged(*this);
}

void Timer::SetEnabled(bool v) {
    if (Enabled() == v) return;
    Control::SetEnabled(v);
    if (Owner() && Owner()->IsLoaded()) GetBackend().TimerChanged(*this);
}

bool Timer::Running() const {
    return Enabled() && interval_ > 0 && Owner() && Owner()->IsLoaded();
}

void Timer::Tick() {
    if (Running() && OnTimer) OnTimer();
}

// ---- Menu -------------------------------------------------------------------------------

namespace {
int NextMenuId() {
    static int id = 1000;
    return ++id;
}
} // namespace

Menu::Menu(Form* owner, std::wstring name, Menu* parent)
    : Control(owner, std::move(name), Kind::Menu), parent_(parent), commandId_(NextMenuId()) {
    if (parent_) parent_->children_.push_back(this);
}

void Menu::SetCaption(std::wstring c) {
    if (caption_ == c) return;
    caption_ = std::move(c);
    Changed(Change::Caption);
}

void Menu::SetChecked(bool c) {
    if (checked_ == c) return;
    checked_ = c;
    Changed(Change::Checked);
}

void Menu::SetVisible(bool v) {
    if (Visible() == v) return;
    Control::SetVisible(v);
    // The entry's container is rebuilt: the parent's list, or the form's menu bar.
    if (parent_) {
        if (parent_->GetPeer()) parent_->GetPeer()->Update(Change::Children);
    } else if (Owner() && Owner()->GetPeer()) {
        Owner()->GetPeer()->Update(Change::Children);
    }
}

void Menu::SetEnabled(bool v) {
    Control::SetEnabled(v);
}

// ---- CommonDialog -----------------------------------------------------------------------

CommonDialog::CommonDialog(Form* owner, std::wstring name)
    : Control(owner, std::move(name), Kind::CommonDialog) {}

namespace {
bool RunDialog(CommonDialog& d, FileDialogKind kind) {
    bool ok = d.GetBackend().FileDialog(d, kind);
    if (!ok && d.cancelError) rt::Raise(rt::kCancelError);
    return ok;
}
} // namespace

bool CommonDialog::ShowOpen() {
    return RunDialog(*this, FileDialogKind::Open);
}
bool CommonDialog::ShowSave() {
    return RunDialog(*this, FileDialogKind::Save);
}
bool CommonDialog::ShowPrinter() {
    return RunDialog(*this, FileDialogKind::Printer);
}

// ---- ImageList --------------------------------------------------------------------------

void ImageList::Add(std::wstring key, gdi::Surface picture) {
    items_.emplace_back(std::move(key), std::move(picture));
}

void ImageList::Clear() {
    items_.clear();
}

const gdi::Surface& ImageList::Item(int index1) const {
    if (index1 < 1 || index1 > int(items_.size())) rt::Raise(rt::kSubscriptOutOfRange);
    return items_[size_t(index1 - 1)].second;
}

const gdi::Surface& ImageList::Item(const std::wstring& key) const {
    for (const auto& it : items_)
        if (it.first == key) return it.second;
    rt::Raise(35603, L"Invalid key");
}

const std::wstring& ImageList::Key(int index1) const {
    if (index1 < 1 || index1 > int(items_.size())) rt::Raise(rt::kSubscriptOutOfRange);
    return items_[size_t(index1 - 1)].first;
}

// ---- control array support --------------------------------------------------------------

void RaiseNoElement(const std::wstring& name, int index) {
    rt::Raise(340, L"Control array element '" + std::to_wstring(index) + L"' doesn't exist");
}

void RaiseAlreadyLoaded() {
    rt::Raise(360, L"Object already loaded");
}

void RaiseDesignElement() {
    rt::Raise(362, L"Can't unload controls created at design time");
}

void LoadArrayElement(Form* owner, Control& el) {
    if (!owner->IsLoaded()) owner->Load();
    el.CreatePeer();
    if (el.GetKind() == Kind::Timer) el.GetBackend().TimerChanged(static_cast<Timer&>(el));
}

void UnloadArrayElement(Control& el) {
    el.SetVisible(false);
    el.DestroyPeer();
}

void RegisterArrayUnloader(Form* owner, std::function<void()> unload) {
    owner->AddArrayUnloader(std::move(unload));
}

} // namespace ui
