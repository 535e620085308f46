#include "platform/win32/peers/tooltip.h"

#include <commctrl.h>

namespace win32 {

namespace {
TTTOOLINFOW ToolOf(HWND form, HWND child) {
    TTTOOLINFOW ti{};
    ti.cbSize = sizeof ti;
    ti.hwnd = form;
    ti.uId = UINT_PTR(child);
    return ti;
}
} // namespace

void Tooltip::Set(HWND form, HWND child, const std::wstring& text) {
    if (!window_) {
        window_.reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                      WS_POPUP | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                                      CW_USEDEFAULT, CW_USEDEFAULT, form, nullptr,
                                      GetModuleHandleW(nullptr), nullptr));
    }
    TTTOOLINFOW ti = ToolOf(form, child);
    ti.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    SendMessageW(window_.get(), TTM_DELTOOLW, 0, LPARAM(&ti));
    if (text.empty()) return;
    std::wstring t = text;
    ti.lpszText = t.data();
    SendMessageW(window_.get(), TTM_ADDTOOLW, 0, LPARAM(&ti));
}

void Tooltip::Remove(HWND form, HWND child) {
    if (!window_) return;
    TTTOOLINFOW ti = ToolOf(form, child);
    SendMessageW(window_.get(), TTM_DELTOOLW, 0, LPARAM(&ti));
}

} // namespace win32
