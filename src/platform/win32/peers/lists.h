// Push buttons, list boxes and sliders: built-in controls whose notifications come back
// through their form.
#pragma once

#include "platform/ui/controls.h"
#include "platform/win32/peers/child.h"

namespace win32 {

class ButtonPeer : public ChildPeer {
public:
    ButtonPeer(Win32Backend& be, ui::CommandButton& b);
    void Update(ui::Change what) override;
    bool Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    ui::CommandButton& button_;
};

class ListPeer : public ChildPeer {
public:
    ListPeer(Win32Backend& be, ui::ListBox& l);
    void Update(ui::Change what) override;
    bool Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;
    LRESULT HandleMessage(UINT msg, WPARAM wp, LPARAM lp) override;

private:
    ui::ListBox& list_;
};

class SliderPeer : public ChildPeer {
public:
    SliderPeer(Win32Backend& be, ui::Slider& s);
    void Update(ui::Change what) override;
    bool Reflect(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    ui::Slider& slider_;
};

} // namespace win32
