#include "browser/Flistimages.h"

#include "core/CursTransp.h"
#include "core/commands.h"
#include "core/frmMain.h"

namespace mv {

Flistimages::Flistimages(App& a) : ui::Form(a.be, L"Flistimages"), app(a) {
    OnLoad = [this] { Form_Load(); };
    OnQueryUnload = [this](int& cancel, int mode) { Form_QueryUnload(cancel, mode); };
    OnResize = [this] { Form_Resize(); };
    TimerCache.OnTimer = [this] { TimerCache_Timer(); };
}

void Flistimages::Design() {
    SetCaption(L"Collection");
    borderStyle = ui::kBorderFixedToolWindow;
    maxButton = false;
    showInTaskbar = false;
    Move(0, 0, 3500, 2000);
    SetBackColor(kFondTransparent);

    if (!Image1.Exists(0)) {
        Image1.Design(0);
        Gimage1.Design(0);
        Lbldim.Design(0);
        Txtordre.Design(0);
        Chkmail.Design(0);
        Chksav.Design(0);
        PictSave.Design(0);
        pictmail.Design(0);
    }
    Image1[0].Move(40, 840, 1450, 1485);
    Gimage1[0].Move(40, 1440, 2720, 2720);
    Gimage1[0].SetVisible(false);
    Lbldim[0].Move(1560, 600, 1215, 345);
    Lbldim[0].SetFont({L"Arial", 8, false, false});
    Txtordre[0].Move(2160, 120, 495, 285);
    Chkmail[0].Move(1680, 1200, 255, 255);
    Chkmail[0].SetVisible(false);
    Chksav[0].Move(2160, 1200, 255, 195);
    Chksav[0].SetVisible(false);
    PictSave[0].Move(0, 0, 240, 225);
    PictSave[0].SetVisible(false);
    pictmail[0].Move(0, 0, 240, 225);
    pictmail[0].SetVisible(false);
    for (ui::PictureBox* p : {&Image1[0], &Gimage1[0]}) p->SetBackColor(0xFFFFFF);

    Frame1.Move(0, 720, 2800, 1000);
    Vscroll1.Move(2900, 30, 575, 1195);
    Vscroll1.SetMin(1);
    Vscroll1.SetSmallChange(1);
    Vscroll1.SetLargeChange(5);
    Vscroll1.SetEnabled(false);
    RectSlide.Move(2870, 10, 615, 1215);
    Labscroll.Move(3000, 1300, 400, 255);
    Labscroll.SetFont({L"Arial", 8, true, false});
    Labscroll.SetTransparent(true);
    Labflech.Move(2830, 800, 375, 375);
    Labflech.SetFont({L"Arial", 14, true, false});
    Labflech.SetCaption(L"\u25C4");
    Labflech.SetTransparent(true);
    LabGif.Move(40, 200, 2000, 285);
    LblcheckHlp.Move(40, 50, 2700, 500);
    LblcheckHlp.SetBackColor(0xC0FFFF);
    LblcheckHlp.SetVisible(false);
}

void Flistimages::Form_Load() {
    Frame1.SetBackColor(app.main->BackColor());
    // The strip stays behind the thumbnails made later.
    Frame1.ZOrder(1);
    Lbldim[0].SetBackColor(app.main->BackColor());
    // The tick boxes stand on the strip: the window's own colour would be see-through.
    Chkmail[0].SetBackColor(app.main->BackColor());
    Chksav[0].SetBackColor(app.main->BackColor());
    Labflech.SetLeft(Frame1.Left() + Frame1.Width() + 30);
    // The background colour is the layered window's colour key: it vanishes and lets the
    // mouse through, so the thumbnails seem to float on the desktop.
    FenCleCouleur(*this, kFondTransparent, 0);
    SetTop(0);
    SetLeft(0);
    Gimage1[0].SetTop(Image1[0].Top());
    LabGif.SetCaption(L"");
    LabGif.SetToolTipText(app.Lang(217));
    Txtordre[0].SetToolTipText(app.Lang(250));
}

void Flistimages::Form_QueryUnload(int& cancel, int) {
    // No close: the window goes only with the main window.
    if (!app.SortieDemandee) cancel = 1;
}

void Flistimages::Form_Resize() {
    if (WindowState() == ui::kMinimized)
        app.main->bouton[kCmdListe].SetBorderStyle(ui::kBorderNone);
}

void Flistimages::TimerCache_Timer() {
    // Slides away, leaving a strip of 50 twips on the screen.
    if (WindowState() == ui::kNormal) SetLeft(50 - Width());
}

void Flistimages::clickimage1(int16_t, bool) {}

} // namespace mv
