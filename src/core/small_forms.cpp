#include "core/small_forms.h"

#include "core/frmMain.h"
#include "output/output.h"
#include "platform/gdi/bmp.h"
#include "runtime/files.h"

namespace mv {

frmSplash::frmSplash(App& a) : ui::Form(a.be, L"frmSplash"), app(a) {
    OnLoad = [this] { Form_Load(); };
    OnQueryUnload = [this](int& cancel, int mode) { Form_QueryUnload(cancel, mode); };
    Timstart.OnTimer = [this] { Timstart_Timer(); };
}

void frmSplash::Design() {
    borderStyle = ui::kBorderNone;
    showInTaskbar = false;
    SetBackColor(0xFFFFFF);
    CenterOnScreen(4800, 1500);
    PictLogo.Move(360, 360, 480, 480);
    PictLogo.SetBackColor(0xFFFFFF);
    LabTitre.Move(1080, 300, 3400, 480);
    LabTitre.SetFont({L"Arial", 18, true, false});
    LabTitre.SetCaption(L"Mirovanta");
    LabTitre.SetTransparent(true);
    LabVersion.Move(1080, 840, 3400, 300);
    LabVersion.SetCaption(std::wstring(L"Version ") + kVersion);
    LabVersion.SetForeColor(0x606060);
    LabVersion.SetTransparent(true);
}

void frmSplash::Form_Load() {
    PictLogo.SetPicture(gdi::LoadBmp(app.be.GetShell().ProgramFolder() + L"\\camera.bmp"));
    if (!rt::DirExists(app.DossierParams)) rt::MkDir(app.DossierParams);
    Timstart.SetEnabled(true);
}

void frmSplash::Timstart_Timer() {
    // Only the first tick: the unload shows the main window, whose load may wait on a
    // question (a damaged settings file), and a second tick meanwhile would load it again
    // inside the first load, with a second question over the first.
    Timstart.SetEnabled(false);
    Unload();
}

void frmSplash::Form_QueryUnload(int&, int) {
    app.main->Show();
}

FrmSortie::FrmSortie(App& a) : ui::Form(a.be, L"FrmSortie"), app(a) {}

void FrmSortie::Design() {
    borderStyle = ui::kBorderNone;
    showInTaskbar = false;
    topMost = true;
    SetBackColor(0xFFFFFF);
    CenterOnScreen(5400, 1200);
    Label1.Move(240, 240, 4920, 720);
    Label1.SetAlignment(2);
    Label1.SetFont({L"Arial", 10, true, false});
    Label1.SetTransparent(true);
}

frmAbout::frmAbout(App& a) : ui::Form(a.be, L"frmAbout"), app(a) {
    OnLoad = [this] {
        PictLogo.SetPicture(gdi::LoadBmp(app.be.GetShell().ProgramFolder() + L"\\camera.bmp"));
        cmdMail.SetCaption(app.Lang(183));
    };
    cmdOK.OnClick = [this] { cmdOK_Click(); };
    cmdMail.OnClick = [this] { envoimail(app); };
}

void frmAbout::cmdOK_Click() {
    if (app.main->MnuCaptper.Checked()) app.main->TimPeriod.SetEnabled(true);
    Unload();
}

void frmAbout::Design() {
    SetCaption(L"Mirovanta");
    borderStyle = ui::kBorderFixedDialog;
    Move(4000, 3000, 5400, 2400);
    SetBackColor(0xFFFFFF);
    PictLogo.Move(240, 240, 480, 480);
    PictLogo.SetBackColor(0xFFFFFF);
    LabProduit.Move(960, 240, 4200, 400);
    LabProduit.SetFont({L"Arial", 14, true, false});
    LabProduit.SetCaption(L"Mirovanta");
    LabProduit.SetTransparent(true);
    LabVersion.Move(960, 700, 4200, 900);
    LabVersion.SetCaption(std::wstring(L"Version ") + kVersion + L"\r\nScreen capture for Windows");
    LabVersion.SetTransparent(true);
    cmdMail.Move(960, 1500, 2000, 400);
    cmdOK.Move(3900, 1500, 1200, 400);
    cmdOK.SetCaption(L"OK");
}

} // namespace mv
