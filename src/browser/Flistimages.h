// The capture browser: a narrow see-through window with one column of thumbnails.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

namespace mv {

class Flistimages : public ui::Form {
public:
    explicit Flistimages(App& app);

    App& app;

    // Thumbnail elements, indexed like the capture list; element 0 is the template.
    ui::ControlArray<ui::PictureBox> Image1{this, L"Image1"};
    ui::ControlArray<ui::PictureBox> Gimage1{this, L"Gimage1"};
    ui::ControlArray<ui::Label> Lbldim{this, L"Lbldim"};
    ui::ControlArray<ui::TextBox> Txtordre{this, L"Txtordre"};
    ui::ControlArray<ui::PictureBox> PictSave{this, L"PictSave"};
    ui::ControlArray<ui::PictureBox> pictmail{this, L"pictmail"};
    ui::ControlArray<ui::CheckBox> Chkmail{this, L"Chkmail"};
    ui::ControlArray<ui::CheckBox> Chksav{this, L"Chksav"};

    ui::Frame Frame1{this, L"Frame1"};
    ui::VScrollBar Vscroll1{this, L"Vscroll1"};
    ui::Shape RectSlide{this, L"RectSlide"};
    ui::Label Labscroll{this, L"Labscroll"};
    ui::Label Labflech{this, L"Labflech"};
    ui::Label LabGif{this, L"LabGif"};
    ui::Label LblcheckHlp{this, L"LblcheckHlp"};
    ui::Timer TimerCache{this, L"TimerCache", 40000, false};
    ui::Timer TimGif{this, L"TimGif", 100, true};

    void Form_Load();
    void Form_QueryUnload(int& cancel, int unloadMode);
    void Form_Resize();
    void TimerCache_Timer();
    // Makes capture Index the current one in the main window.
    void clickimage1(int16_t Index, bool Rappel);

    // The see-through colour of the window's background.
    static constexpr uint32_t kFondTransparent = 0xC0FFFF;

protected:
    void Design() override;
};

} // namespace mv
