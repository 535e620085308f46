// The controls of the toolkit model.
#pragma once

#include "platform/ui/control.h"

#include <map>
#include <vector>

namespace ui {

// A picture box with a persistent image (the toolkit's AutoRedraw): drawing goes into
// Image(), whose size follows the control's size in pixels; Picture is the loaded picture
// beneath it.
class PictureBox : public Control {
public:
    PictureBox(Form* owner, std::wstring name);

    int BorderStyle() const { return borderStyle_; }
    void SetBorderStyle(int style); // 0 flat, 1 framed; anything else raises 380
    // With AutoSize the control takes the size of each picture it is given.
    bool autoSize = false;
    // With stretch the picture fills the control: a toolbar bitmap keeps its place at any
    // screen scale. At a whole multiple it is drawn by whole pixels, sharp.
    bool stretch = false;

    // The Picture property. An empty surface is "no picture" (LoadPicture()).
    const gdi::Surface& Picture() const { return picture_; }
    void SetPicture(const gdi::Surface& s);
    void ClearPicture() { SetPicture(gdi::Surface()); }

    // The persistent image. After drawing into it, call Refresh().
    gdi::Surface& Image() { return image_; }
    const gdi::Surface& Image() const { return image_; }
    void Refresh();
    // Back to the back colour with the picture at the top left.
    void Cls();

    // The picture of pointer 99 (kPointerCustom), with its hot spot.
    const gdi::IconImage& MouseIcon() const { return mouseIcon_; }
    void SetMouseIcon(gdi::IconImage icon);

    int ImageWidth() const { return image_.Width(); }
    int ImageHeight() const { return image_.Height(); }

    void CopyFrom(const Control& other) override;

protected:
    void OnResized() override;

private:
    void DrawPicture();

    int borderStyle_ = 0;
    gdi::Surface picture_;
    gdi::Surface image_;
    gdi::IconImage mouseIcon_;
};

class Label : public Control {
public:
    Label(Form* owner, std::wstring name);
    const std::wstring& Caption() const { return caption_; }
    void SetCaption(std::wstring c);
    const Font& GetFont() const { return font_; }
    void SetFont(Font f);
    int Alignment() const { return alignment_; } // 0 left, 1 right, 2 centre
    void SetAlignment(int a);
    bool Transparent() const { return transparent_; }
    void SetTransparent(bool t);
    int BorderStyle() const { return borderStyle_; }
    void SetBorderStyle(int b);
    void CopyFrom(const Control& other) override;

private:
    std::wstring caption_;
    Font font_;
    int alignment_ = 0;
    bool transparent_ = false;
    int borderStyle_ = 0;
};

class TextBox : public Control {
public:
    TextBox(Form* owner, std::wstring name);
    const std::wstring& Text() const { return text_; }
    void SetText(std::wstring t); // raises OnChange
    // Called by the backend when the user edited the text.
    void TextEdited(std::wstring t);
    std::function<void()> OnChange;
    std::function<void(int16_t& keyCode, int16_t shift)> OnKeyDown;
    // The most characters the user can type; 0 for no limit. Code may set a longer text.
    int MaxLength() const { return maxLength_; }
    void SetMaxLength(int n);
    // A locked box shows its text and lets it be selected, not typed over.
    bool Locked() const { return locked_; }
    void SetLocked(bool l);
    void CopyFrom(const Control& other) override;

private:
    std::wstring text_;
    int maxLength_ = 0;
    bool locked_ = false;
};

class CheckBox : public Control {
public:
    CheckBox(Form* owner, std::wstring name);
    int Value() const { return value_; } // 0, 1 or 2 (grayed); other values raise 380
    void SetValue(int v);
    const std::wstring& Caption() const { return caption_; }
    void SetCaption(std::wstring c);
    // Called by the backend when the user clicked it: 0 -> 1 -> 0, then OnClick.
    void UserToggled();
    void CopyFrom(const Control& other) override;

private:
    int value_ = 0;
    std::wstring caption_;
};

// An option button: of the option buttons of a form, one at most is on. Turning one on
// turns the others off and raises its Click.
class OptionButton : public Control {
public:
    OptionButton(Form* owner, std::wstring name);
    bool Value() const { return value_; }
    void SetValue(bool v);
    const std::wstring& Caption() const { return caption_; }
    void SetCaption(std::wstring c);
    void CopyFrom(const Control& other) override;

private:
    bool value_ = false;
    std::wstring caption_;
};

class VScrollBar : public Control {
public:
    VScrollBar(Form* owner, std::wstring name);
    VScrollBar(Form* owner, std::wstring name, Kind kind);
    int Min() const { return min_; }
    int Max() const { return max_; }
    int Value() const { return value_; }
    int SmallChange() const { return small_; }
    int LargeChange() const { return large_; }
    void SetMin(int v);
    void SetMax(int v);
    void SetValue(int v); // outside the bounds raises 380; raises OnChange when it moves
    void SetSmallChange(int v) { small_ = v; }
    void SetLargeChange(int v) { large_ = v; }
    std::function<void()> OnChange;
    void CopyFrom(const Control& other) override;

private:
    int min_ = 0, max_ = 32767, value_ = 0, small_ = 1, large_ = 1;
};

// A horizontal slider with a tick at each value: a scroll bar's model.
class Slider : public VScrollBar {
public:
    Slider(Form* owner, std::wstring name);
};

// A push button; a click raises OnClick.
class CommandButton : public Control {
public:
    CommandButton(Form* owner, std::wstring name);
    const std::wstring& Caption() const { return caption_; }
    void SetCaption(std::wstring c);
    void CopyFrom(const Control& other) override;

private:
    std::wstring caption_;
};

// A list of texts with one entry selected, or none (-1).
class ListBox : public Control {
public:
    ListBox(Form* owner, std::wstring name);
    int ListCount() const { return int(items_.size()); }
    // Raises 381 outside the list.
    const std::wstring& List(int i) const;
    void SetList(int i, std::wstring t);
    void AddItem(std::wstring t);
    void RemoveItem(int i); // raises 5 outside the list
    void Clear();
    int ListIndex() const { return index_; }
    // -1 to ListCount()-1, else 380; a change raises OnClick, as the toolkit does.
    void SetListIndex(int i);
    // Called by the backend when the user picked an entry: the selection, then OnMouseDown.
    void UserSelected(int i, int button);
    std::function<void(int16_t& keyCode, int16_t shift)> OnKeyDown;
    void CopyFrom(const Control& other) override;

private:
    std::vector<std::wstring> items_;
    int index_ = -1;
};

// A plain container rectangle painted in its back colour.
class Frame : public Control {
public:
    Frame(Form* owner, std::wstring name);
};

// Windowless shapes painted by their form.
class Shape : public Control {
public:
    Shape(Form* owner, std::wstring name);
    uint32_t BorderColor() const { return borderColor_; }
    void SetBorderColor(uint32_t c);
    // Filled shapes are painted solid in the fill colour inside their outline.
    bool Filled() const { return filled_; }
    void SetFilled(bool f);
    uint32_t FillColor() const { return fillColor_; }
    void SetFillColor(uint32_t c);
    void CopyFrom(const Control& other) override;

private:
    uint32_t borderColor_ = 0;
    uint32_t fillColor_ = 0;
    bool filled_ = false;
};

class Line : public Control {
public:
    Line(Form* owner, std::wstring name);
    float X1() const { return x1_; }
    float Y1() const { return y1_; }
    float X2() const { return x2_; }
    float Y2() const { return y2_; }
    void SetPoints(float x1, float y1, float x2, float y2);
    uint32_t BorderColor() const { return borderColor_; }
    void SetBorderColor(uint32_t c);

private:
    float x1_ = 0, y1_ = 0, x2_ = 0, y2_ = 0;
    uint32_t borderColor_ = 0x808080;
};

// A timer: Enabled and Interval switch a behaviour on and off. Ticks only while its form
// is loaded, and an interval of 0 never ticks.
class Timer : public Control {
public:
    Timer(Form* owner, std::wstring name, int interval, bool enabled);
    ~Timer() override;
    int Interval() const { return interval_; }
    void SetInterval(int ms); // negative raises 380
    void SetEnabled(bool v) override;
    bool Running() const;
    std::function<void()> OnTimer;
    void Tick(); // called by the backend

private:
    int interval_;
};

// A menu entry. Top-level entries of a form form its menu bar (the visible ones) or
// serve as pop-up menus (hidden ones). Clicking an entry with sub-entries raises its
// OnClick as the menu opens.
class Menu : public Control {
public:
    Menu(Form* owner, std::wstring name, Menu* parent = nullptr);
    Menu* Parent() const { return parent_; }
    const std::vector<Menu*>& Children() const { return children_; }
    const std::wstring& Caption() const { return caption_; }
    void SetCaption(std::wstring c);
    bool Checked() const { return checked_; }
    void SetChecked(bool c);
    void SetVisible(bool v) override;
    void SetEnabled(bool v) override;
    bool IsSeparator() const { return caption_ == L"-"; }
    int CommandId() const { return commandId_; }

private:
    Menu* parent_;
    std::vector<Menu*> children_;
    std::wstring caption_;
    bool checked_ = false;
    int commandId_;
};

// The common dialog control: properties in, the user's answer out.
class CommonDialog : public Control {
public:
    CommonDialog(Form* owner, std::wstring name);
    std::wstring initDir;
    std::wstring filter; // "Text|*.txt|All|*.*"
    int filterIndex = 1;
    std::wstring fileName;
    std::wstring dialogTitle;
    bool cancelError = false;
    int copies = 1;
    int flags = 0;
    // Run the dialogs. Cancel returns false, or raises 32755 when cancelError is set.
    bool ShowOpen();
    bool ShowSave();
    bool ShowPrinter();
};

// Pictures by index (from 1) and key.
class ImageList {
public:
    void Add(std::wstring key, gdi::Surface picture);
    void Clear();
    int Count() const { return int(items_.size()); }
    const gdi::Surface& Item(int index1) const;              // 9 when out of range
    const gdi::Surface& Item(const std::wstring& key) const; // 35603 when unknown
    const std::wstring& Key(int index1) const;

private:
    std::vector<std::pair<std::wstring, gdi::Surface>> items_;
};

// A control array: element 0 (or the lowest) exists at design time, others come and go
// with Load and Unload. Array-level handlers receive the index.
template <class T> class ControlArray {
public:
    ControlArray(Form* owner, std::wstring name);

    // The design-time element. Extra arguments are passed to T's constructor.
    template <class... A> T& Design(int index, A&&... args);
    bool Exists(int index) const { return items_.count(index) != 0; }
    T& operator[](int index); // 340 when the element does not exist
    const T& operator[](int index) const;
    // A new element copying the template's (lowest element's) properties, hidden.
    // 360 when it exists already.
    T& Load(int index);
    // Removes an element loaded at run time; design elements raise 362.
    void Unload(int index);
    // Unloads every element loaded at run time (the form is going away).
    void UnloadRuntime();
    int UBound() const { return items_.empty() ? -1 : items_.rbegin()->first; }
    int LBound() const { return items_.empty() ? 0 : items_.begin()->first; }
    int Count() const { return int(items_.size()); }
    const std::wstring& Name() const { return name_; }

    std::function<void(int)> OnClick;
    std::function<void(int)> OnDblClick;
    std::function<void(int, const MouseEvent&)> OnMouseDown;
    std::function<void(int, const MouseEvent&)> OnMouseMove;
    std::function<void(int, const MouseEvent&)> OnMouseUp;
    // Kind-specific events, bound where the element has them.
    std::function<void(int)> OnChange;
    std::function<void(int, int16_t&, int16_t)> OnKeyDown;

private:
    void Bind(T& el, int index);
    Form* owner_;
    std::wstring name_;
    std::map<int, std::unique_ptr<T>> items_;
    std::map<int, bool> design_;
};

} // namespace ui

#include "platform/ui/control_array.inl"
