// A menu entry: an item of its parent's pop-up or of its form's menu bar, with a pop-up
// handle of its own when it has sub-entries. It has no window; its handle is the pop-up.
#pragma once

#include "platform/win32/peers/peer.h"

#include <vector>

namespace win32 {

// Puts the visible entries of a menu list into a menu handle, replacing its items.
void FillMenu(HMENU h, const std::vector<ui::Menu*>& items);

class MenuPeer : public WindowPeer {
public:
    MenuPeer(Win32Backend& be, ui::Menu& m);
    ~MenuPeer() override;
    ui::WindowHandle Handle() const override { return ui::WindowHandle(popup_.get()); }
    void Update(ui::Change what) override;

private:
    // The menu handle this entry is an item of: its parent's pop-up or the menu bar.
    HMENU Container() const;
    void RebuildContainer();
    ui::Menu& menu_;
    MenuHandle popup_;
};

} // namespace win32
