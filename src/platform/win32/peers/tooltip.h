// The tooltips of a form's controls: one tooltip window per form, made at the first tip.
#pragma once

#include "platform/win32/handles.h"

#include <string>

namespace win32 {

class Tooltip {
public:
    // Gives `child` of `form` the tip `text`; an empty text takes its tip away.
    void Set(HWND form, HWND child, const std::wstring& text);
    void Remove(HWND form, HWND child);
    // Destroys the tooltip window (before its form goes).
    void Close() { window_.reset(); }

private:
    WindowHandleOwner window_;
};

} // namespace win32
