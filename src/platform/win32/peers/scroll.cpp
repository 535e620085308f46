#include "platform/win32/peers/scroll.h"

#include <commctrl.h>

#include <algorithm>

namespace win32 {

ScrollPeer::ScrollPeer(Win32Backend& be, ui::VScrollBar& s) : ChildPeer(be, s), bar_(s) {
    CreateNativeChild(WC_SCROLLBARW, L"", SBS_VERT);
    Update(ui::Change::Value);
    Update(ui::Change::Range);
}

void ScrollPeer::Update(ui::Change what) {
    switch (what) {
    case ui::Change::Value:
        SetScrollPos(hwnd_, SB_CTL, bar_.Value(), TRUE);
        break;
    case ui::Change::Range:
        SetScrollRange(hwnd_, SB_CTL, bar_.Min(), bar_.Max(), FALSE);
        SetScrollPos(hwnd_, SB_CTL, bar_.Value(), TRUE);
        break;
    default:
        ChildPeer::Update(what);
        break;
    }
}

bool ScrollPeer::Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    if (msg != WM_VSCROLL) return ChildPeer::Reflect(msg, wp, lp, result);
    Scroll(LOWORD(wp), HIWORD(wp));
    return true;
}

void ScrollPeer::Scroll(int code, int pos) {
    ui::VScrollBar& s = bar_;
    int v = s.Value();
    switch (code) {
    case SB_LINEUP:
        v -= s.SmallChange();
        break;
    case SB_LINEDOWN:
        v += s.SmallChange();
        break;
    case SB_PAGEUP:
        v -= s.LargeChange();
        break;
    case SB_PAGEDOWN:
        v += s.LargeChange();
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        v = pos;
        break;
    default:
        return;
    }
    v = std::max(std::min(s.Min(), s.Max()), std::min(v, std::max(s.Min(), s.Max())));
    Fire([&] { s.SetValue(v); });
}

} // namespace win32
