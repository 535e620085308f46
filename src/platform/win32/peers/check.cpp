#include "platform/win32/peers/check.h"

#include <commctrl.h>

namespace win32 {

CheckPeer::CheckPeer(Win32Backend& be, ui::CheckBox& b) : ChildPeer(be, b), box_(b) {
    CreateNativeChild(WC_BUTTONW, b.Caption(), BS_3STATE);
    Update(ui::Change::Value);
}

void CheckPeer::Update(ui::Change what) {
    switch (what) {
    case ui::Change::Caption:
        SetWindowTextW(hwnd_, box_.Caption().c_str());
        break;
    case ui::Change::Value:
        SendMessageW(hwnd_, BM_SETCHECK, WPARAM(box_.Value()), 0);
        break;
    default:
        ChildPeer::Update(what);
        break;
    }
}

bool CheckPeer::Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    if (msg != WM_COMMAND) return ChildPeer::Reflect(msg, wp, lp, result);
    if (HIWORD(wp) == BN_CLICKED) {
        ui::CheckBox& box = box_;
        Fire([&] { box.UserToggled(); });
    }
    return true;
}

OptionPeer::OptionPeer(Win32Backend& be, ui::OptionButton& b) : ChildPeer(be, b), button_(b) {
    CreateNativeChild(WC_BUTTONW, b.Caption(), BS_RADIOBUTTON);
    Update(ui::Change::Value);
}

void OptionPeer::Update(ui::Change what) {
    switch (what) {
    case ui::Change::Caption:
        SetWindowTextW(hwnd_, button_.Caption().c_str());
        break;
    case ui::Change::Value:
        SendMessageW(hwnd_, BM_SETCHECK, button_.Value() ? BST_CHECKED : BST_UNCHECKED, 0);
        break;
    default:
        ChildPeer::Update(what);
        break;
    }
}

bool OptionPeer::Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    if (msg != WM_COMMAND) return ChildPeer::Reflect(msg, wp, lp, result);
    if (HIWORD(wp) == BN_CLICKED) {
        ui::OptionButton& button = button_;
        Fire([&] { button.SetValue(true); });
    }
    return true;
}

} // namespace win32
