// A form: a top-level window that owns its controls and menus.
#pragma once

#include "platform/ui/controls.h"

#include <vector>

namespace ui {

// Border styles of forms; controls take the first two (none, fixed single).
enum BorderStyle {
    kBorderNone = 0,
    kBorderFixedSingle = 1,
    kBorderSizable = 2,
    kBorderFixedDialog = 3,
    kBorderFixedToolWindow = 4,
    kBorderSizableToolWindow = 5,
};

// Unload modes passed to QueryUnload.
enum UnloadMode { kFormControlMenu = 0, kFormCode = 1, kAppWindows = 2, kAppTaskManager = 3 };

class Form : public Control {
public:
    Form(Backend& backend, std::wstring name);
    ~Form() override;

    Backend& FormBackend() const { return backend_; }

    const std::wstring& Caption() const { return caption_; }
    void SetCaption(std::wstring c);
    int WindowState() const { return windowState_; }
    void SetWindowState(int s); // 0, 1, 2; anything else raises 380

    // Design properties, fixed before the first load.
    int borderStyle = kBorderSizable;
    bool controlBox = true;
    bool minButton = true;
    bool maxButton = true;
    bool showInTaskbar = true;
    bool keyPreview = false;
    bool topMost = false;
    // Shown without becoming active: the keyboard stays where it was.
    bool showNoActivate = false;
    // Colour key of a layered see-through window (0x00BBGGRR); -1 for none.
    int64_t TransparentKey() const { return transparentKey_; }
    void SetTransparentKey(int64_t key);

    bool IsLoaded() const { return loaded_; }
    // Loads the form if needed: design properties, windows, then OnLoad.
    void Load();
    // Unloads it: QueryUnload (mode 1, may cancel), Unload, windows destroyed, run-time
    // elements of control arrays removed. Returns false when cancelled.
    bool Unload();
    void Show(bool modal = false);
    void Hide();
    void SetVisible(bool v) override;
    void PopupMenu(Menu& menu);
    // Gives the form a size and places it in the middle of the screen.
    void CenterOnScreen(float width, float height);
    // Client area in twips.
    float ScaleWidth() const;
    float ScaleHeight() const;

    // Events.
    std::function<void()> OnLoad;
    std::function<void()> OnActivate;
    std::function<void()> OnResize;
    std::function<void(int& cancel, int mode)> OnQueryUnload;
    std::function<void(int& cancel)> OnUnload;
    std::function<void(int16_t& keyCode, int16_t shift)> OnKeyDown;

    // Registry of controls and menus, in creation order.
    void Register(Control* c);
    void Unregister(Control* c);
    const std::vector<Control*>& Controls() const { return controls_; }
    std::vector<Menu*> TopMenus() const;
    void AddArrayUnloader(std::function<void()> f) { arrayUnloaders_.push_back(std::move(f)); }

    // Backend side: the user closed the window (mode 0) or the session ends (mode 2).
    void CloseRequested(int mode);
    // Backend side: true while OnKeyDown handles an auto-repeat of a held key.
    bool keyRepeat = false;
    // Backend side: the window became active.
    void Activated();
    // Backend side: the system moved, sized or changed the state of the window.
    void SystemMoved(float left, float top, float width, float height);
    void SystemStateChanged(int state);

protected:
    // Design-time properties of the form and its controls; runs at every load.
    virtual void Design() {}

private:
    void Unloaded();
    Backend& backend_;
    std::wstring caption_;
    int windowState_ = kNormal;
    int64_t transparentKey_ = -1;
    bool loaded_ = false;
    bool loading_ = false;
    std::vector<Control*> controls_;
    std::vector<std::function<void()>> arrayUnloaders_;
};

} // namespace ui
