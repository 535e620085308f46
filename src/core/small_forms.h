// The small windows of the main window's life: the splash between the language load and
// the main window, the notice of a session end, and the about box.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

namespace mv {

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
    ui::CommandButton cmdOK{this, L"cmdOK"};
    // Writes to the support address through the mail client.
    ui::CommandButton cmdMail{this, L"cmdMail"};
    // Closes the box; during a slow timed run the plain periodic timer, stopped on the
    // way in, runs again.
    void cmdOK_Click();

protected:
    void Design() override;
};

} // namespace mv
