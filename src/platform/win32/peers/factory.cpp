// The peer of each kind of control.
#include "platform/win32/peers/check.h"
#include "platform/win32/peers/edit.h"
#include "platform/win32/peers/form.h"
#include "platform/win32/peers/lists.h"
#include "platform/win32/peers/menu.h"
#include "platform/win32/peers/painted.h"
#include "platform/win32/peers/scroll.h"
#include "platform/win32/peers/windowless.h"

namespace win32 {

std::unique_ptr<ui::Peer> MakePeer(Win32Backend& be, ui::Control& c) {
    switch (c.GetKind()) {
    case ui::Kind::Form:
        return std::make_unique<FormPeer>(be, static_cast<ui::Form&>(c));
    case ui::Kind::Menu:
        return std::make_unique<MenuPeer>(be, static_cast<ui::Menu&>(c));
    case ui::Kind::PictureBox:
        return std::make_unique<PicturePeer>(be, static_cast<ui::PictureBox&>(c));
    case ui::Kind::Label:
        return std::make_unique<LabelPeer>(be, static_cast<ui::Label&>(c));
    case ui::Kind::Frame:
        return std::make_unique<PaintedPeer>(be, c);
    case ui::Kind::TextBox:
        return std::make_unique<EditPeer>(be, static_cast<ui::TextBox&>(c));
    case ui::Kind::CheckBox:
        return std::make_unique<CheckPeer>(be, static_cast<ui::CheckBox&>(c));
    case ui::Kind::OptionButton:
        return std::make_unique<OptionPeer>(be, static_cast<ui::OptionButton&>(c));
    case ui::Kind::VScrollBar:
        return std::make_unique<ScrollPeer>(be, static_cast<ui::VScrollBar&>(c));
    case ui::Kind::Line:
        return std::make_unique<LinePeer>(be, static_cast<ui::Line&>(c));
    case ui::Kind::Shape:
        return std::make_unique<ShapePeer>(be, static_cast<ui::Shape&>(c));
    case ui::Kind::CommandButton:
        return std::make_unique<ButtonPeer>(be, static_cast<ui::CommandButton&>(c));
    case ui::Kind::ListBox:
        return std::make_unique<ListPeer>(be, static_cast<ui::ListBox&>(c));
    case ui::Kind::Slider:
        return std::make_unique<SliderPeer>(be, static_cast<ui::Slider&>(c));
    case ui::Kind::Timer:
    case ui::Kind::CommonDialog:
        // Timers run on the backend's timer window; dialogs are shown when asked.
        return nullptr;
    }
    return nullptr;
}

} // namespace win32
