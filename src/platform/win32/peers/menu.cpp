#include "platform/win32/peers/menu.h"

#include "platform/win32/peers/form.h"

namespace win32 {

void FillMenu(HMENU h, const std::vector<ui::Menu*>& items) {
    while (GetMenuItemCount(h) > 0) RemoveMenu(h, 0, MF_BYPOSITION);
    UINT pos = 0;
    for (ui::Menu* m : items) {
        if (!m->Visible() || !m->GetPeer()) continue;
        MENUITEMINFOW mi{};
        mi.cbSize = sizeof mi;
        mi.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_STRING | MIIM_SUBMENU;
        mi.fType = m->IsSeparator() ? MFT_SEPARATOR : MFT_STRING;
        mi.fState = (m->Checked() ? MFS_CHECKED : 0) | (m->Enabled() ? 0 : MFS_GRAYED);
        mi.wID = UINT(m->CommandId());
        mi.hSubMenu = reinterpret_cast<HMENU>(m->GetPeer()->Handle());
        std::wstring text = m->Caption();
        mi.dwTypeData = text.data();
        InsertMenuItemW(h, pos++, TRUE, &mi);
    }
}

MenuPeer::MenuPeer(Win32Backend& be, ui::Menu& m) : WindowPeer(be, m), menu_(m) {
    if (!m.Children().empty()) popup_.reset(CreatePopupMenu());
    if (FormPeer* f = FormPeer::Of(m)) {
        f->menus[m.CommandId()] = &m;
        if (popup_) f->popups[popup_.get()] = &m;
    }
    RebuildContainer();
}

MenuPeer::~MenuPeer() {
    HMENU container = Container();
    if (container && IsMenu(container)) {
        for (int i = GetMenuItemCount(container) - 1; i >= 0; --i)
            if (GetMenuItemID(container, i) == UINT(menu_.CommandId()) ||
                (popup_ && GetSubMenu(container, i) == popup_.get()))
                RemoveMenu(container, UINT(i), MF_BYPOSITION);
    }
    if (popup_)
        while (GetMenuItemCount(popup_.get()) > 0) RemoveMenu(popup_.get(), 0, MF_BYPOSITION);
    if (FormPeer* f = FormPeer::Of(menu_)) {
        f->menus.erase(menu_.CommandId());
        if (popup_) f->popups.erase(popup_.get());
    }
}

void MenuPeer::Update(ui::Change what) {
    if (what == ui::Change::Children) {
        if (popup_) FillMenu(popup_.get(), menu_.Children());
        return;
    }
    RebuildContainer();
}

HMENU MenuPeer::Container() const {
    if (menu_.Parent()) {
        auto* p = menu_.Parent()->GetPeer();
        return p ? reinterpret_cast<HMENU>(p->Handle()) : nullptr;
    }
    FormPeer* f = FormPeer::Of(menu_);
    return f ? f->Bar() : nullptr;
}

void MenuPeer::RebuildContainer() {
    if (menu_.Parent()) {
        HMENU h = Container();
        if (h) FillMenu(h, menu_.Parent()->Children());
    } else if (FormPeer* f = FormPeer::Of(menu_)) {
        f->RebuildBar();
    }
}

} // namespace win32
