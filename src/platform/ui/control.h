// The window toolkit as a model: every control holds its properties (geometry in twips),
// checks them like the original toolkit and tells its backend peer what changed. Events
// come from the backend into the handlers that the owning form installs.
#pragma once

#include "platform/gdi/surface.h"
#include "platform/ui/types.h"

#include <functional>
#include <memory>
#include <string>

namespace ui {

class Backend;
class Form;

enum class Kind {
    Form,
    PictureBox,
    Label,
    TextBox,
    CheckBox,
    VScrollBar,
    Frame,
    Shape,
    Line,
    Timer,
    Menu,
    CommonDialog,
    CommandButton,
    ListBox,
    Slider,
    OptionButton,
};

// What changed on a control, for its peer.
enum class Change {
    Bounds,
    Visible,
    Enabled,
    Caption, // caption or text
    Image,   // persistent image of a picture box
    Border,  // border style
    ZOrder,  // brought to the front
    Checked, // menu tick
    Value,   // check box or scroll bar value
    Range,   // scroll bar bounds
    Style,   // colours, font, alignment
    Tooltip,
    State,    // window state of a form
    Children, // menu entries added or shown/hidden
    Pointer,  // mouse pointer or its custom picture
    Items,    // the entries of a list box
    Focus,    // the keyboard focus asked for
};

// Mouse pointers of a control (the toolkit's MousePointer values).
enum Pointer {
    kPointerDefault = 0,
    kPointerArrow = 1,
    kPointerSizeAll = 5,
    kPointerSizeNESW = 6,
    kPointerSizeNS = 7,
    kPointerSizeNWSE = 8,
    kPointerSizeWE = 9,
    kPointerCustom = 99, // the control's MouseIcon
};

// The backend's side of one loaded control (a real window on Win32, nothing headless).
class Peer {
public:
    virtual ~Peer() = default;
    virtual void Update(Change what) = 0;
    virtual WindowHandle Handle() const { return 0; }
};

struct MouseEvent {
    int button = 0; // MouseButton bits
    int shift = 0;  // ShiftState bits
    float x = 0;    // twips, relative to the control
    float y = 0;
};

struct Font {
    std::wstring name = L"MS Sans Serif";
    float size = 8.25f;
    bool bold = false;
    bool italic = false;
};

class Control {
public:
    Control(Form* owner, std::wstring name, Kind kind);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Form* Owner() const { return owner_; }
    const std::wstring& Name() const { return name_; }
    Kind GetKind() const { return kind_; }
    int Index() const { return index_; } // -1 outside a control array
    void SetIndex(int i) { index_ = i; }

    // The picture box that holds the control, or nullptr for the form. Set at design time,
    // before the form loads; the geometry is then relative to the container's client area
    // and the control moves with it.
    Control* Container() const { return container_; }
    void SetContainer(Control* c) { container_ = c; }

    // Geometry in twips. A negative width or height raises 380.
    float Left() const { return left_; }
    float Top() const { return top_; }
    float Width() const { return width_; }
    float Height() const { return height_; }
    void SetLeft(float v);
    void SetTop(float v);
    void SetWidth(float v);
    void SetHeight(float v);
    void Move(float left, float top, float width, float height);

    bool Visible() const { return visible_; }
    virtual void SetVisible(bool v);
    bool Enabled() const { return enabled_; }
    virtual void SetEnabled(bool v);
    const std::wstring& ToolTipText() const { return tooltip_; }
    void SetToolTipText(std::wstring t);
    uint32_t BackColor() const { return backColor_; } // 0x00BBGGRR
    void SetBackColor(uint32_t c);
    uint32_t ForeColor() const { return foreColor_; }
    void SetForeColor(uint32_t c);
    int MousePointer() const { return pointer_; }
    void SetMousePointer(int p);
    // Brings the control in front of its siblings (position 0) or behind them (1).
    void ZOrder(int position = 0);
    // Gives the control the keyboard focus.
    void SetFocus() { Changed(Change::Focus); }
    int ZPosition() const { return zPosition_; }

    // Events raised by the backend (or by a test).
    std::function<void()> OnClick;
    std::function<void()> OnDblClick;
    std::function<void(const MouseEvent&)> OnMouseDown;
    std::function<void(const MouseEvent&)> OnMouseMove;
    std::function<void(const MouseEvent&)> OnMouseUp;

    // Copies the design properties of another control of the same kind: what a control
    // array's new element takes from its template. Not the peer, not the handlers.
    virtual void CopyFrom(const Control& other);

    // Backend side.
    Peer* GetPeer() const { return peer_.get(); }
    WindowHandle Handle() const { return peer_ ? peer_->Handle() : 0; }
    bool HasPeer() const { return peer_ != nullptr; }
    void CreatePeer();
    void DestroyPeer();
    Backend& GetBackend() const;
    // Twips per pixel of the screen, for controls that hold pixels.
    float TppX() const;
    float TppY() const;

protected:
    void Changed(Change what);
    virtual void OnResized() {}

private:
    Form* owner_;
    std::wstring name_;
    Kind kind_;
    int index_ = -1;
    float left_ = 0, top_ = 0, width_ = 0, height_ = 0;
    bool visible_ = true;
    bool enabled_ = true;
    std::wstring tooltip_;
    uint32_t backColor_ = 0x8000000F; // button face until set
    uint32_t foreColor_ = 0;
    int zPosition_ = 0;
    int pointer_ = kPointerDefault;
    Control* container_ = nullptr;
    std::unique_ptr<Peer> peer_;
};

// The system colours the toolkit uses by default resolve to these on every backend.
uint32_t ResolveColor(uint32_t c);

} // namespace ui
