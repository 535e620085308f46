// What the mouse and the keyboard do on the thumbnails: the enlarged picture, choosing the
// current capture, moving a capture by its position box, and the marquee.
#include "browser/Flistimages.h"

#include "capture/capture.h"
#include "core/commands.h"
#include "core/frmMain.h"
#include "gifanim/FrmGifAnim.h"
#include "output/output.h"
#include "platform/gdi/bmp.h"
#include "runtime/integer.h"
#include "runtime/strings.h"

namespace mv {

namespace {

// True when (x, y), in the window's twips, lies on control c.
bool Sur(const ui::Control& c, float x, float y) {
    return x >= c.Left() && x < c.Left() + c.Width() && y >= c.Top() && y < c.Top() + c.Height();
}

} // namespace

// ---- hover -------------------------------------------------------------------------------

void Flistimages::RetablirVignettes(bool marques) {
    survol_ = 0;
    for (int n = 1; n <= app.NbVignettes; ++n) {
        Gimage1[n].SetVisible(false);
        Image1[n].SetVisible(true);
        Lbldim[n].SetTop(Image1[n].Top() + 80);
        if (!marques) continue;
        pictmail[n].SetVisible(Chkmail[n].Value() == 2);
        PictSave[n].SetVisible(Chksav[n].Value() == 1);
    }
}

void Flistimages::Image1_MouseMove(int Index) {
    if (Index < 1 || Index > app.NbVignettes) return;
    LblcheckHlp.SetTop(50);
    LblcheckHlp.SetCaption(app.Lang(195));
    LblcheckHlp.SetVisible(true);
    LblcheckHlp.ZOrder(0);
    if (survol_ != Index) {
        for (int n = 1; n <= app.NbVignettes; ++n) {
            Gimage1[n].SetVisible(false);
            Image1[n].SetVisible(true);
            Lbldim[n].SetTop(Image1[n].Top() + 80);
            PictSave[n].SetVisible(false);
            pictmail[n].SetVisible(false);
        }
    }
    survol_ = Index;
    Gimage1[Index].SetVisible(true);
    Image1[Index].SetVisible(false);
    pictmail[Index].SetVisible(Chkmail[Index].Value() == 2);
    PictSave[Index].SetVisible(Chksav[Index].Value() == 1);
    Gimage1[Index].ZOrder(0);
    Lbldim[Index].SetTop(Gimage1[Index].Top() - 250);
    Lbldim[Index].ZOrder(0);
    TimerCache.SetEnabled(false);
}

void Flistimages::Gimage1_MouseMove(int Index, float X, float Y) {
    auto& g = Gimage1[Index];
    if (g.Height() <= 300 || (Y >= 50 && Y <= g.Height() - 50)) return;
    // Over its own thumbnail's place the picture stays: closing it there would open it
    // again at the next move.
    if (Sur(Image1[Index], g.Left() + X, g.Top() + Y)) return;
    g.SetVisible(false);
}

void Flistimages::Frame1_MouseMove(float X, float Y) {
    // The strip under the hidden thumbnail of the enlarged picture is still that thumbnail.
    if (survol_ != 0 && Image1.Exists(survol_) &&
        Sur(Image1[survol_], Frame1.Left() + X, Frame1.Top() + Y))
        return;
    RetablirVignettes(true);
    // The hint stands over the marquee: off the thumbnails it goes, so the marquee can be
    // clicked.
    LblcheckHlp.SetVisible(false);
}

void Flistimages::Chkmail_MouseMove() {
    LblcheckHlp.SetTop(50);
    LblcheckHlp.SetCaption(app.Lang(144));
    LblcheckHlp.SetVisible(true);
    LblcheckHlp.ZOrder(0);
}

// ---- the current capture ---------------------------------------------------------------

void Flistimages::Image1_MouseDown(int Index, int Button) {
    clickimage1(int16_t(Index), false);
    if (Button == ui::kRightButton) app.main->PopupMenu(app.main->Mnuflott);
}

void Flistimages::clickimage1(int16_t Index, bool Rappel) {
    // A capture under way owns the main window's pictures until it is filed.
    if (Index < 1 || Index > app.NbVignettes || app.CaptureEnCours) return;
    frmMain& M = *app.main;
    if (M.WindowState() == ui::kMaximized) M.Form_KeyDown(27, 0);
    if (Rappel) M.SetWindowState(ui::kNormal);
    ChoixPendantEdition(app, Index);

    const auto ecran = app.Screen();
    const std::wstring fichier = app.DossierTemp + L"\\" + app.tab.FichierV[Index];
    auto repeindre = [&](const gdi::Surface& src) {
        M.DessinerVignettes(src, Image1[Index], Gimage1[Index]);
    };
    auto cocherZoom = [&](int k) {
        for (int i = 0; i <= 4; ++i) M.mnuzoomX[i].SetChecked(i == k);
    };
    // Reduced to the toolbar, the window stays so: the view waits and the sizes are kept
    // for the way back.
    auto dimensionner = [&](float haut, float larg) {
        if (M.EtatNormal()) {
            M.SetHeight(haut);
            M.SetWidth(larg);
        } else if (app.ModeReduit) {
            app.HautNormal = rt::CLng(haut);
            app.LargNormal = rt::CLng(larg);
        }
    };
    if (app.tab.TypeV[Index] == L"e") {
        // A missing file raises here, before anything of the view changes.
        const gdi::Surface image = gdi::LoadBmp(fichier);
        M.Picture2.SetVisible(false);
        M.ImgTTscreen.SetVisible(!app.ModeReduit);
        app.VueCourante = L"image";
        M.Picture1.SetPicture(image);
        M.Picture2S.SetPicture(image);
        M.ImgTTscreen.Cls();
        const float largeur = float(rt::Int(ecran.WidthTwips() / 1.7));
        const float hauteur = float(rt::Int(ecran.HeightTwips() / 1.7));
        gdi::StretchBlt(M.ImgTTscreen.Image(), 0, 0, ecran.PxX(largeur), ecran.PxY(hauteur), image,
                        0, 0, image.Width(), image.Height(), gdi::kHalftone);
        M.ImgTTscreen.Refresh();
        repeindre(image);
        M.ImgTTscreen.Move(50, 500, largeur, hauteur);
        dimensionner(M.ImgTTscreen.Height() + 1400, M.ImgTTscreen.Width() + 180);
        cocherZoom(2);
        app.TypeCapt = L"e";
    } else {
        const gdi::Surface image = gdi::LoadBmp(fichier);
        M.ImgTTscreen.SetVisible(false);
        M.Picture2.SetVisible(!app.ModeReduit);
        app.VueCourante = L"picture";
        M.Picture2.SetPicture(image);
        repeindre(image);
        M.Picture2S.SetPicture(M.Picture2.Image());
        M.Picture2.Move(50, 500, float(app.tab.LargV[Index]), float(app.tab.HautV[Index]));
        dimensionner(float(app.tab.HautFenV[Index]), float(app.tab.LargFenV[Index]));
        cocherZoom(3);
        app.TypeCapt = L"z";
    }
    CopiePP(app, app.TypeCapt);
    if (!PaintActif(app))
        M.SetCaption(app.Lang(130) + std::to_wstring(Index) + L" / " +
                     std::to_wstring(app.NbVignettes));
    if (M.EtatNormal()) M.CollerADroite();
    M.Labtaille.SetCaption(app.tab.DimV[Index]);
    M.Labtaill2.SetVisible(false);
    for (int n = 1; n <= app.NbVignettes; ++n) Image1[n].SetBorderStyle(ui::kBorderNone);
    Image1[Index].SetBorderStyle(ui::kBorderFixedSingle);
    M.PictSave.SetVisible(PictSave[Index].Visible());
    app.VignetteCourante = Index;
    M.ZOrder(0);
}

// ---- moving a capture ------------------------------------------------------------------

void Flistimages::Txtordre_KeyDown(int Index, int16_t KeyCode) {
    for (int n = 1; n <= app.NbVignettes; ++n)
        if (n != Index) Txtordre[n].SetEnabled(false);
    if (KeyCode == 13) ReorgVign(int16_t(Index));
}

void Flistimages::CopierVignette(int de, int vers) {
    Image1[vers].SetPicture(Image1[de].Image());
    Gimage1[vers].SetPicture(Gimage1[de].Image());
    Lbldim[vers].SetCaption(Lbldim[de].Caption());
    // The saved state belongs to the capture: it travels with it.
    Chksav[vers].SetValue(Chksav[de].Value());
    PictSave[vers].SetVisible(PictSave[de].Visible());
    auto& t = app.tab;
    t.HautV[vers] = t.HautV[de];
    t.LargV[vers] = t.LargV[de];
    t.HautFenV[vers] = t.HautFenV[de];
    t.LargFenV[vers] = t.LargFenV[de];
    t.DimV[vers] = t.DimV[de];
    t.TypeV[vers] = t.TypeV[de];
    t.FichierV[vers] = t.FichierV[de];
    t.Horodatage[vers] = t.Horodatage[de];
}

void Flistimages::ReorgVign(int16_t Index) {
    const int i = Index;
    // Text that is no number raises here, before anything moves.
    const int p = rt::CIntText(Txtordre[i].Text());
    if (p == i) return;
    if (p > app.NbVignettes) {
        app.MsgBox(app.Lang(251) + std::to_wstring(app.NbVignettes), ui::kCritical);
        Txtordre[i].SetText(rt::Format(i, L"00"));
        return;
    }
    // Position 0 or below goes to the first row: row 0 is the swap slot, and rows below it
    // do not exist.
    const int cible = std::max(p, 1);
    if (cible != i) {
        CopierVignette(i, 0);
        if (cible < i)
            for (int j = i - 1; j >= cible; --j) CopierVignette(j, j + 1);
        else
            for (int j = i + 1; j <= cible; ++j) CopierVignette(j, j - 1);
        CopierVignette(0, cible);
        PictSave[0].SetVisible(false);
    }
    for (int n = 1; n <= app.NbVignettes; ++n) Txtordre[n].SetEnabled(true);
    Txtordre[i].SetText(rt::Format(i, L"00"));
}

// ---- the marquee -------------------------------------------------------------------------

void Flistimages::TimGif_Timer() {
    RappelBande();
    if (BuffGif.size() != 20) return;
    const wchar_t premier = BuffGif[0];
    // Cells 1 to 19 move down by one; the kept cell goes last.
    BuffGif.erase(0, 1);
    BuffGif.push_back(premier);
    LabGif.SetCaption(BuffGif);
}

void Flistimages::RappelBande() {
    // The strip left on the screen is the window's frame and the slider's edge, which get
    // no mouse move of the form: the mouse anywhere on it brings the window back.
    if (WindowState() != ui::kNormal || Left() >= 0 || !Visible()) return;
    const auto ecran = app.Screen();
    const ui::Point p = app.be.GetCursor().GetCursorPos();
    if (p.x < ecran.PxX(Left() + Width()) && p.y >= ecran.PxY(Top()) &&
        p.y < ecran.PxY(Top() + Height()))
        Form_MouseMove();
}

void Flistimages::LabGif_Click() {
    // With fewer than two captures there is nothing to animate.
    if (app.NbVignettes <= 1) {
        app.MsgBox(app.Lang(248), ui::kExclamation);
        return;
    }
    OuvrirGifAnim(app, true);
}

} // namespace mv
