// The notification-area icon.
#include "platform/win32/win32_backend.h"

#include <shellapi.h>

namespace win32 {

namespace {

class NotifyTray : public platform::Tray {
public:
    ~NotifyTray() override { Delete(); }
    bool Add(ui::WindowHandle owner, const std::wstring& tip) override {
        data_ = {};
        data_.cbSize = sizeof data_;
        data_.hWnd = HWND(owner);
        data_.uID = 1;
        data_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
        // Tray events come as mouse moves of the owner, the message number in x.
        data_.uCallbackMessage = WM_MOUSEMOVE;
        // The program's own icon drawn for the small size, else whatever the window has.
        data_.hIcon = HICON(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON,
                                       GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON),
                                       LR_SHARED));
        if (!data_.hIcon)
            data_.hIcon = HICON(SendMessageW(HWND(owner), WM_GETICON, ICON_SMALL2, 0));
        if (!data_.hIcon) data_.hIcon = HICON(GetClassLongPtrW(HWND(owner), GCLP_HICON));
        if (!data_.hIcon) data_.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
        lstrcpynW(data_.szTip, tip.c_str(), int(std::size(data_.szTip)));
        present_ = Shell_NotifyIconW(NIM_ADD, &data_) != FALSE;
        return present_;
    }
    void Delete() override {
        if (!present_) return;
        Shell_NotifyIconW(NIM_DELETE, &data_);
        present_ = false;
    }

private:
    NOTIFYICONDATAW data_{};
    bool present_ = false;
};

} // namespace

std::unique_ptr<platform::Tray> MakeTray() {
    return std::make_unique<NotifyTray>();
}

} // namespace win32
