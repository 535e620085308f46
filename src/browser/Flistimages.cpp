#include "browser/Flistimages.h"

#include "core/CursTransp.h"
#include "core/commands.h"
#include "core/frmMain.h"
#include "platform/gdi/bmp.h"
#include "runtime/errors.h"

#include <algorithm>

namespace mv {

namespace {

constexpr float kPas = 1600; // the pitch of the column

} // namespace

Flistimages::Flistimages(App& a) : ui::Form(a.be, L"Flistimages"), app(a) {
    WireEvents();
}

void Flistimages::WireEvents() {
    OnLoad = [this] { Form_Load(); };
    OnActivate = [this] { Form_Activate(); };
    OnQueryUnload = [this](int& cancel, int mode) { Form_QueryUnload(cancel, mode); };
    OnResize = [this] { Form_Resize(); };
    OnMouseMove = [this](const ui::MouseEvent&) { Form_MouseMove(); };
    TimerCache.OnTimer = [this] { TimerCache_Timer(); };
    TimGif.OnTimer = [this] { TimGif_Timer(); };
    Vscroll1.OnChange = [this] { Vscroll1_Change(); };
    Labflech.OnMouseMove = [this](const ui::MouseEvent&) { Labflech_MouseMove(); };
    LabGif.OnClick = [this] { LabGif_Click(); };
    Frame1.OnMouseMove = [this](const ui::MouseEvent& e) { Frame1_MouseMove(e.x, e.y); };
    Image1.OnMouseMove = [this](int i, const ui::MouseEvent&) { Image1_MouseMove(i); };
    Image1.OnMouseDown = [this](int i, const ui::MouseEvent& e) { Image1_MouseDown(i, e.button); };
    Image1.OnDblClick = [this](int i) { clickimage1(int16_t(i), true); };
    Gimage1.OnMouseMove = [this](int i, const ui::MouseEvent& e) {
        Gimage1_MouseMove(i, e.x, e.y);
    };
    // A press on the enlarged picture is a press on its thumbnail; its click restores the
    // main window.
    Gimage1.OnMouseDown = [this](int i, const ui::MouseEvent& e) { Image1_MouseDown(i, e.button); };
    Gimage1.OnClick = [this](int i) { clickimage1(int16_t(i), true); };
    Chkmail.OnMouseMove = [this](int, const ui::MouseEvent&) { Chkmail_MouseMove(); };
    Txtordre.OnKeyDown = [this](int i, int16_t& key, int16_t) { Txtordre_KeyDown(i, key); };
}

void Flistimages::Design() {
    keyPreview = true;
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
    LabGif.SetFont({L"Arial", 9, true, false});
    LabGif.SetForeColor(0x8B0000);
    LblcheckHlp.Move(40, 50, 2700, 660);
    // Light yellow, a shade off the see-through colour so that the hint stays readable.
    LblcheckHlp.SetBackColor(0xE1FFFF);
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
    // The marks' small pictures beside the program; without them the marks stay plain.
    const std::wstring dossier = app.be.GetShell().ProgramFolder();
    auto marque = [&](ui::PictureBox& p, const wchar_t* nom) {
        try {
            p.SetPicture(gdi::LoadBmp(dossier + nom));
        } catch (const rt::RuntimeError&) {}
    };
    marque(PictSave[0], L"\\marksave.bmp");
    marque(pictmail[0], L"\\markmail.bmp");
    marque(app.main->PictSave, L"\\marksave.bmp");
    Labflech.SetLeft(Frame1.Left() + Frame1.Width() + 30);
    // The background colour is the layered window's colour key: it vanishes and lets the
    // mouse through, so the thumbnails seem to float on the desktop.
    FenCleCouleur(*this, kFondTransparent, 0);
    SetTop(0);
    SetLeft(0);
    Gimage1[0].SetTop(Image1[0].Top());
    LabGif.SetCaption(L"");
    LabGif.SetBackColor(app.main->BackColor());
    // The marquee's cells: the first 20 characters of its text.
    BuffGif = app.Lang(216).substr(0, 20);
    BuffGif.resize(20, L' ');
    LabGif.SetToolTipText(app.Lang(217));
    Txtordre[0].SetToolTipText(app.Lang(250));
}

void Flistimages::Form_Activate() {
    const int n = app.NbVignettes;
    if (WindowState() == ui::kNormal) {
        Vscroll1.SetMin(1);
        Vscroll1.SetEnabled(n > 1);
        if (n > 1) Vscroll1.SetMax(n);
        Labscroll.SetCaption(std::to_wstring(n));
    }
    SetVisible(true);
    Frame1.SetTop(0);
    if (n > 0) Frame1.SetHeight(Height() > 1000 ? Height() - 1000 : 0);
    Vscroll1.ZOrder(0);
    RectSlide.SetTop(10);
    RectSlide.SetLeft(Width() - RectSlide.Width() - 10);
    // Read before the slider moves below: the count stands where the last showing left the
    // slider.
    Labscroll.SetLeft(Vscroll1.Left() + 200);
    Vscroll1.Move(RectSlide.Left() + 8, RectSlide.Top() + 18, RectSlide.Width() - 40,
                  RectSlide.Height() - 20);
    Labscroll.SetTop(RectSlide.Top() + RectSlide.Height() + 90);
}

void Flistimages::Form_QueryUnload(int& cancel, int unloadMode) {
    // The user cannot close it while the program runs; the program's own unload and the end
    // of the desktop session always pass.
    if (unloadMode == ui::kFormControlMenu && !app.SortieDemandee) cancel = 1;
}

void Flistimages::Form_Resize() {
    const int n = app.NbVignettes;
    if (WindowState() == ui::kNormal && n > 0 && Image1.Exists(n)) {
        const float voulu = Gimage1[n].Height() + Image1[n].Top() + 800;
        const float hauteur = std::min(voulu, app.Screen().HeightTwips() - 500);
        if (hauteur != Height()) SetHeight(hauteur);
    }
    if (WindowState() == ui::kMinimized)
        app.main->bouton[kCmdListe].SetBorderStyle(ui::kBorderNone);
}

void Flistimages::Form_MouseMove() {
    // Only what is not see-through gets here: the strip left on the screen brings the
    // window back.
    SetLeft(0);
    TimerCache.SetEnabled(true);
    RetablirVignettes(false);
    LblcheckHlp.SetVisible(false);
}

void Flistimages::Vscroll1_Change() {
    const int n = app.NbVignettes;
    survol_ = 0;
    for (int i = 1; i <= n; ++i) {
        Gimage1[i].SetVisible(false);
        Image1[i].SetVisible(true);
    }
    if (n == 0) return;
    const int v = Vscroll1.Value();
    if (v < 1 || v > n) return;
    auto place = [&](int i, float haut, float decalage) {
        Image1[i].SetTop(haut);
        Gimage1[i].SetTop(haut);
        Lbldim[i].SetTop(haut + decalage);
        Txtordre[i].SetTop(Lbldim[i].Top() + 450);
        PictSave[i].SetTop(haut);
        pictmail[i].SetTop(haut);
    };
    place(v, 800, 80);
    Chkmail[v].SetTop(Lbldim[v].Top() + Lbldim[v].Height() + 100);
    for (int i = v + 1; i <= n; ++i) {
        place(i, Image1[i - 1].Top() + kPas, 0);
        Chkmail[i].SetTop(Lbldim[i].Top() + Lbldim[i].Height() + 100);
    }
    // The ones before v wait above the window.
    for (int i = v - 1; i >= 1; --i) {
        place(i, -1500, 80);
        Gimage1[i].SetTop(-1900);
        Chkmail[i].SetTop(Image1[i].Top());
    }
    if (WindowState() == ui::kNormal) {
        const float voulu = Gimage1[n].Height() + Image1[n].Top() + 800;
        SetHeight(std::min(voulu, app.Screen().HeightTwips() - 500));
        app.DoEvents();
    }
}

void Flistimages::TimerCache_Timer() {
    // Slides away, leaving a strip of 50 twips on the screen.
    if (WindowState() == ui::kNormal) SetLeft(50 - Width());
}

} // namespace mv
