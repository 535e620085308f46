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
    void Form_Activate();
    void Form_QueryUnload(int& cancel, int unloadMode);
    void Form_Resize();
    // The background strip: the window comes back and the hover is undone.
    void Form_MouseMove();
    // Re-stacks the column so that the slider's thumbnail comes first.
    void Vscroll1_Change();
    void TimerCache_Timer();
    void Labflech_MouseMove() { TimerCache_Timer(); }

    // ---- the thumbnails (Flistimages_vignettes.cpp)
    // The enlarged picture of thumbnail Index, its marks, and the window kept in place.
    void Image1_MouseMove(int Index);
    void Image1_MouseDown(int Index, int Button);
    // X and Y: the mouse on the enlarged picture, in its own twips.
    void Gimage1_MouseMove(int Index, float X, float Y);
    // X and Y: the mouse on the strip, in its own twips.
    void Frame1_MouseMove(float X, float Y);
    void Chkmail_MouseMove();
    // Makes capture Index the current one in the main window; Rappel brings that window
    // back to its normal state.
    void clickimage1(int16_t Index, bool Rappel);
    void Txtordre_KeyDown(int Index, int16_t KeyCode);
    // Moves capture Index to the position typed in its box.
    void ReorgVign(int16_t Index);
    // Every 100 ms: the marquee turns, and the slid-away window comes back when the mouse
    // is on its strip.
    void TimGif_Timer();
    void LabGif_Click();
    // The enlarged thumbnail under the mouse, 0 for none.
    int Survol() const { return survol_; }
    // The marquee's 20 cells.
    std::wstring BuffGif;

    // The see-through colour of the window's background.
    static constexpr uint32_t kFondTransparent = 0xC0FFFF;

protected:
    void Design() override;

private:
    void WireEvents();
    // All thumbnails small again with their labels at offset 80; the marks too when
    // `marques` is set.
    void RetablirVignettes(bool marques);
    // One capture's pictures, caption and fields copied from row `de` to row `vers`.
    void CopierVignette(int de, int vers);
    void RappelBande();
    int survol_ = 0;
};

} // namespace mv
