// Small value types shared by the toolkit model, the backends and the services.
#pragma once

#include <cstdint>

namespace ui {

// An opaque handle of a platform window (HWND on Windows).
using WindowHandle = intptr_t;
// A 32-bit cursor handle as the program stores it (HCURSOR on Windows).
using CursorHandle = int32_t;

struct Rect {
    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;
};

struct Point {
    int32_t x = 0;
    int32_t y = 0;
};

// Mouse buttons and shift states as the toolkit's events report them.
enum MouseButton { kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };
enum ShiftState { kShiftMask = 1, kCtrlMask = 2, kAltMask = 4 };

// Key codes of the key events and of the keyboard state (the virtual-key numbers).
enum KeyCode {
    kKeyControl = 17,
    kKeyDelete = 46,
    kKeyQ = 81,
    kKeyNumpad1 = 97,
    kKeyNumpad9 = 105,
    kKeyF1 = 112,
    kKeyF5 = 116,
};

// Window states of a form.
enum WindowState { kNormal = 0, kMinimized = 1, kMaximized = 2 };

// Message box styles and answers (the classic values).
enum MsgBoxStyle {
    kOkOnly = 0,
    kOkCancel = 1,
    kAbortRetryIgnore = 2,
    kYesNoCancel = 3,
    kYesNo = 4,
    kRetryCancel = 5,
    kCritical = 16,
    kQuestion = 32,
    kExclamation = 48,
    kInformation = 64,
};
enum MsgBoxResult { kOk = 1, kCancel = 2, kAbort = 3, kRetry = 4, kIgnore = 5, kYes = 6, kNo = 7 };

} // namespace ui
