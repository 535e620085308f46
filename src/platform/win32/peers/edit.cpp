#include "platform/win32/peers/edit.h"

#include <commctrl.h>

namespace win32 {

EditPeer::EditPeer(Win32Backend& be, ui::TextBox& t) : ChildPeer(be, t), box_(t) {
    CreateNativeChild(WC_EDITW, t.Text(), WS_BORDER | ES_AUTOHSCROLL | ES_CENTER);
    Update(ui::Change::Style);
}

void EditPeer::Update(ui::Change what) {
    if (what == ui::Change::Style) {
        SendMessageW(hwnd_, EM_SETLIMITTEXT, WPARAM(box_.MaxLength()), 0);
        SendMessageW(hwnd_, EM_SETREADONLY, box_.Locked() ? TRUE : FALSE, 0);
    }
    if (what != ui::Change::Caption) {
        ChildPeer::Update(what);
        return;
    }
    // Only a text that differs goes to the control, so that typing keeps the caret.
    const std::wstring& t = box_.Text();
    wchar_t current[512];
    GetWindowTextW(hwnd_, current, 512);
    if (t != current) SetWindowTextW(hwnd_, t.c_str());
}

bool EditPeer::Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    if (msg == WM_CTLCOLOREDIT) {
        // The text in the control's fore colour on the window colour.
        SetTextColor(HDC(wp), Color(box_.ForeColor()));
        SetBkColor(HDC(wp), GetSysColor(COLOR_WINDOW));
        result = LRESULT(GetSysColorBrush(COLOR_WINDOW));
        return true;
    }
    if (msg != WM_COMMAND) return ChildPeer::Reflect(msg, wp, lp, result);
    if (HIWORD(wp) == EN_CHANGE) {
        int n = GetWindowTextLengthW(hwnd_);
        std::wstring t(size_t(n) + 1, L'\0');
        GetWindowTextW(hwnd_, t.data(), n + 1);
        t.resize(size_t(n));
        ui::TextBox& box = box_;
        Fire([&] { box.TextEdited(t); });
    }
    return true;
}

LRESULT EditPeer::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_KEYDOWN) {
        ui::TextBox& box = box_;
        ui::Form* form = box.Owner();
        int16_t key = int16_t(wp);
        int16_t shift = int16_t(ShiftState());
        Fire([&] {
            if (form->keyPreview && form->OnKeyDown) form->OnKeyDown(key, shift);
            if (key && box.OnKeyDown) box.OnKeyDown(key, shift);
        });
        // A handler that set the key to 0 has eaten it.
        if (key == 0) return 0;
    }
    return Default(msg, wp, lp);
}

} // namespace win32
