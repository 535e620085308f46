// Windows that later features fill in: the selection overlay, the options dialog, the
// tip of the day and the about box, as far as the rest of the program reaches them.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

namespace mv {

// Gives a form the size and places it in the middle of the screen.
void Centrer(ui::Form& f, float largeur, float hauteur);

// The full-screen selection overlay.
class FrmFull : public ui::Form {
public:
    explicit FrmFull(App& app);
    App& app;
    // The selection rectangle, in twips.
    ui::Shape rectsel{this, L"rectsel"};
    // Freezes the desktop for a new zone (Index 0 or 19) or reopens the last one.
    void InitFull(int16_t Index);

protected:
    void Design() override;
};

// The options dialog; Check1(2) is the on-screen form of GardeFenetres.
class Options : public ui::Form {
public:
    explicit Options(App& app);
    App& app;
    ui::ControlArray<ui::CheckBox> Check1{this, L"Check1"};
    // Shows the dialog modally, or without waiting for it.
    void ShowDialog();
    void ShowNonModal();

protected:
    void Design() override;
};

class frmTip : public ui::Form {
public:
    explicit frmTip(App& app);
    App& app;
    // Shows the tip of the day when tips are on; closes at once otherwise.
    void ShowTip();
};

// The short welcome window between the language load and the main window.
class frmSplash : public ui::Form {
public:
    explicit frmSplash(App& app);
    App& app;
    ui::PictureBox PictLogo{this, L"PictLogo"};
    ui::Label LabTitre{this, L"LabTitre"};
    ui::Label LabVersion{this, L"LabVersion"};
    ui::Timer Timstart{this, L"Timstart", 250, false};
    void Form_Load();
    void Timstart_Timer();
    void Form_QueryUnload(int& cancel, int unloadMode);

protected:
    void Design() override;
};

// The notice shown while the desktop session ends with captures saved on the way out.
class FrmSortie : public ui::Form {
public:
    explicit FrmSortie(App& app);
    App& app;
    ui::Label Label1{this, L"Label1"};

protected:
    void Design() override;
};

class frmAbout : public ui::Form {
public:
    explicit frmAbout(App& app);
    App& app;
    ui::Label LabProduit{this, L"LabProduit"};
    ui::Label LabVersion{this, L"LabVersion"};
    ui::PictureBox PictLogo{this, L"PictLogo"};

protected:
    void Design() override;
};

} // namespace mv
