#include "platform/win32/peers/lists.h"

#include <commctrl.h>

namespace win32 {

// ---- ButtonPeer --------------------------------------------------------------------------

ButtonPeer::ButtonPeer(Win32Backend& be, ui::CommandButton& b) : ChildPeer(be, b), button_(b) {
    CreateNativeChild(WC_BUTTONW, b.Caption(), BS_PUSHBUTTON);
}

void ButtonPeer::Update(ui::Change what) {
    if (what == ui::Change::Caption)
        SetWindowTextW(hwnd_, button_.Caption().c_str());
    else
        ChildPeer::Update(what);
}

bool ButtonPeer::Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    if (msg != WM_COMMAND) return ChildPeer::Reflect(msg, wp, lp, result);
    if (HIWORD(wp) == BN_CLICKED) {
        ui::CommandButton& b = button_;
        Fire([&] {
            if (b.OnClick) b.OnClick();
        });
    }
    return true;
}

// ---- ListPeer ----------------------------------------------------------------------------

ListPeer::ListPeer(Win32Backend& be, ui::ListBox& l) : ChildPeer(be, l), list_(l) {
    CreateNativeChild(WC_LISTBOXW, L"", WS_BORDER | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT);
    Update(ui::Change::Items);
}

void ListPeer::Update(ui::Change what) {
    switch (what) {
    case ui::Change::Items:
        SendMessageW(hwnd_, WM_SETREDRAW, FALSE, 0);
        SendMessageW(hwnd_, LB_RESETCONTENT, 0, 0);
        for (int i = 0; i < list_.ListCount(); ++i)
            SendMessageW(hwnd_, LB_ADDSTRING, 0, LPARAM(list_.List(i).c_str()));
        SendMessageW(hwnd_, LB_SETCURSEL, WPARAM(list_.ListIndex()), 0);
        SendMessageW(hwnd_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(hwnd_, nullptr, TRUE);
        break;
    case ui::Change::Value:
        SendMessageW(hwnd_, LB_SETCURSEL, WPARAM(list_.ListIndex()), 0);
        break;
    default:
        ChildPeer::Update(what);
        break;
    }
}

bool ListPeer::Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    if (msg != WM_COMMAND) return ChildPeer::Reflect(msg, wp, lp, result);
    if (HIWORD(wp) == LBN_SELCHANGE) {
        const int i = int(SendMessageW(hwnd_, LB_GETCURSEL, 0, 0));
        ui::ListBox& l = list_;
        Fire([&] { l.UserSelected(i, ui::kLeftButton); });
    }
    return true;
}

LRESULT ListPeer::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_KEYDOWN) {
        ui::ListBox& l = list_;
        int16_t key = int16_t(wp);
        const int16_t shift = int16_t(ShiftState());
        Fire([&] {
            if (l.OnKeyDown) l.OnKeyDown(key, shift);
        });
        if (key == 0) return 0;
    }
    return Default(msg, wp, lp);
}

// ---- SliderPeer --------------------------------------------------------------------------

SliderPeer::SliderPeer(Win32Backend& be, ui::Slider& s) : ChildPeer(be, s), slider_(s) {
    CreateNativeChild(TRACKBAR_CLASSW, L"", TBS_HORZ | TBS_AUTOTICKS | TBS_BOTTOM);
    Update(ui::Change::Range);
}

void SliderPeer::Update(ui::Change what) {
    switch (what) {
    case ui::Change::Range:
        SendMessageW(hwnd_, TBM_SETRANGEMIN, FALSE, slider_.Min());
        SendMessageW(hwnd_, TBM_SETRANGEMAX, FALSE, slider_.Max());
        SendMessageW(hwnd_, TBM_SETLINESIZE, 0, slider_.SmallChange());
        SendMessageW(hwnd_, TBM_SETPAGESIZE, 0, slider_.LargeChange());
        SendMessageW(hwnd_, TBM_SETTICFREQ, 1, 0);
        SendMessageW(hwnd_, TBM_SETPOS, TRUE, slider_.Value());
        break;
    case ui::Change::Value:
        SendMessageW(hwnd_, TBM_SETPOS, TRUE, slider_.Value());
        break;
    default:
        ChildPeer::Update(what);
        break;
    }
}

bool SliderPeer::Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    if (msg != WM_HSCROLL) return ChildPeer::Reflect(msg, wp, lp, result);
    const int v = int(SendMessageW(hwnd_, TBM_GETPOS, 0, 0));
    ui::Slider& s = slider_;
    if (v != s.Value()) Fire([&] { s.SetValue(v); });
    return true;
}

} // namespace win32
