#include "app/forms.h"

#include "platform/gdi/bmp.h"

namespace mv {

FrmFull::FrmFull(App& a) : ui::Form(a.be, L"FrmFull"), app(a) {}

void FrmFull::Design() {
    borderStyle = 0;
    showInTaskbar = false;
    rectsel.Move(0, 0, 420 * 15, 260 * 15);
}

void FrmFull::InitFull(int16_t) {}

Options::Options(App& a) : ui::Form(a.be, L"Options"), app(a) {}

void Options::Design() {
    SetCaption(L"Options");
    borderStyle = 3;
    for (int i = 0; i <= 7; ++i) {
        if (!Check1.Exists(i)) Check1.Design(i);
        Check1[i].SetValue(0);
    }
}

void Options::ShowDialog() {}

frmTip::frmTip(App& a) : ui::Form(a.be, L"frmTip"), app(a) {}

frmAbout::frmAbout(App& a) : ui::Form(a.be, L"frmAbout"), app(a) {
    OnLoad = [this] {
        PictLogo.SetPicture(gdi::LoadBmp(app.be.GetShell().ProgramFolder() + L"\\camera.bmp"));
    };
}

void frmAbout::Design() {
    SetCaption(L"Mirovanta");
    borderStyle = 3;
    Move(4000, 3000, 5400, 2400);
    SetBackColor(0xFFFFFF);
    PictLogo.Move(240, 240, 480, 480);
    PictLogo.SetBackColor(0xFFFFFF);
    LabProduit.Move(960, 240, 4200, 400);
    LabProduit.SetFont({L"Arial", 14, true, false});
    LabProduit.SetCaption(L"Mirovanta");
    LabProduit.SetTransparent(true);
    LabVersion.Move(960, 700, 4200, 900);
    LabVersion.SetCaption(L"Version 0.1.0\r\nScreen capture for Windows");
    LabVersion.SetTransparent(true);
}

} // namespace mv
