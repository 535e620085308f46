// The window of a form: its frame and state, its menu bar, the tooltips of its controls,
// the lines and shapes drawn on it, its mouse pointer, and the notifications it reflects to
// its children.
#pragma once

#include "platform/ui/form.h"
#include "platform/win32/peers/peer.h"
#include "platform/win32/peers/tooltip.h"

#include <map>

namespace win32 {

class FormPeer : public WindowPeer {
public:
    FormPeer(Win32Backend& be, ui::Form& f);
    ~FormPeer() override;
    // The peer of the form that owns a control, if it has one.
    static FormPeer* Of(const ui::Control& c);

    void Update(ui::Change what) override;
    LRESULT HandleMessage(UINT msg, WPARAM wp, LPARAM lp) override;

    // Menus of this form by command identifier and by pop-up handle, kept by their peers.
    std::map<int, ui::Menu*> menus;
    std::map<HMENU, ui::Menu*> popups;
    // Fills the menu bar with the visible top menus, or takes it away when there is none.
    void RebuildBar();
    HMENU Bar() const { return bar_.get(); }

    void SetTooltip(HWND child, const std::wstring& text) { tooltip_.Set(hwnd_, child, text); }
    void RemoveTooltip(HWND child) { tooltip_.Remove(hwnd_, child); }

private:
    ui::Form& form() const { return static_cast<ui::Form&>(c_); }
    HBRUSH BackBrush();
    void Paint();
    void ApplyBounds();
    void ReportGeometry();
    void MenuCommand(int id);
    void Show();
    void ApplyState();
    void ApplyStyle();
    MenuHandle bar_;
    Tooltip tooltip_;
    BrushHandle backBrush_;
    COLORREF backBrushColor_ = CLR_INVALID;
    bool applying_ = false;
};

} // namespace win32
