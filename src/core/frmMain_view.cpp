// frmMain: the view of the current capture and its zoom.
#include "core/frmMain.h"
#include "runtime/integer.h"

#include <algorithm>

namespace mv {

namespace {
constexpr double kFacteursZoom[] = {0.25, 0.5, 0.75, 1.0, 2.0};

} // namespace

void frmMain::CollerADroite(float marge) {
    SetLeft(std::max(0.f, app.Screen().WidthTwips() - Width() - marge));
}

void frmMain::MefImageF(int16_t Mode) {
    const auto ecran = app.Screen();
    const float largeurMin = LargeurMin();
    SetWindowState(ui::kNormal);
    for (ui::Menu* m : {&mnufichier, &mnuedition, &mnuoutils, &mnuHelp}) m->SetVisible(true);
    if (Mode == 0) {
        ImgTTscreen.SetWidth(float(rt::Int(0.75 * ecran.WidthTwips())));
        ImgTTscreen.SetHeight(float(rt::Int(0.75 * ecran.HeightTwips())));
        mnuzoomX[2].SetChecked(true);
        Picture1.SetVisible(false);
        ImgTTscreen.SetLeft(20);
        ImgTTscreen.SetTop(500);
        ImgTTscreen.SetVisible(!app.ModeReduit);
        if (EtatNormal()) {
            SetHeight(ImgTTscreen.Height() + 1400);
            SetWidth(ImgTTscreen.Width() + 180);
            CollerADroite();
        } else {
            app.HautNormal = rt::CLng(ImgTTscreen.Height() + 1400);
            app.LargNormal = rt::CLng(ImgTTscreen.Width() + 180);
        }
        app.VueCourante = L"image";
        Picture2.SetVisible(false);
        ImgTTscreen.Cls();
        app.LargCapt = ImgTTscreen.Width();
        app.HautCapt = ImgTTscreen.Height();
        gdi::StretchBlt(ImgTTscreen.Image(), 0, 0, ecran.PxX(ImgTTscreen.Width()),
                        ecran.PxY(ImgTTscreen.Height()), Picture1.Image(), 0, 0,
                        ecran.PxX(Picture1.Width()), ecran.PxY(Picture1.Height()), gdi::kHalftone);
        ImgTTscreen.Refresh();
        // The capture at full size: every zoom starts from it.
        Picture2S.SetPicture(Picture1.Image());
    } else {
        Picture1.SetVisible(false);
        Picture2.Move(20, 500, Picture1.Width(), Picture1.Height());
        // Reduced to the toolbar, the view waits to be shown again.
        Picture2.SetVisible(!app.ModeReduit);
        app.VueCourante = L"picture";
        Picture2.Cls();
        Picture2.SetPicture(Picture1.Image());
        Picture2.SetWidth(app.LargCapt);
        Picture2.SetHeight(app.HautCapt);
        ImgTTscreen.SetVisible(false);
        const float haut = Picture2.Height() + 1400;
        const float larg = largeurMin < Picture2.Width() ? Picture2.Width() + 180 : largeurMin;
        if (app.ModeReduit) {
            app.HautNormal = rt::CLng(haut);
            app.LargNormal = rt::CLng(larg);
        } else {
            SetHeight(haut);
            SetWidth(larg);
            CollerADroite();
        }
        app.LargCapt = Picture2.Width();
        app.HautCapt = Picture2.Height();
        Picture2S.SetPicture(Picture2.Image());
    }
}

void frmMain::mnuzoomX_Click(int16_t Index) {
    // One entry ticked: the factor applied.
    for (int i = 0; i <= 4; ++i) mnuzoomX[i].SetChecked(i == Index);
    const double facteur = Index >= 0 && Index <= 4 ? kFacteursZoom[Index] : 0;
    const float largeurMin = LargeurMin();

    auto zoomer = [&](ui::PictureBox& vue) {
        // Always from the capture at full size; the view takes its new size first.
        const gdi::Surface& src = Picture2S.Picture();
        vue.Move(vue.Left(), vue.Top(), float(Picture2S.Width() * facteur),
                 float(Picture2S.Height() * facteur));
        if (facteur == 1.0) {
            vue.SetPicture(src);
        } else {
            const int largDest = int(src.Width() * facteur);
            const int hautDest = int(src.Height() * facteur);
            // Shrinking averages; enlarging keeps each pixel a sharp square.
            gdi::StretchBlt(vue.Image(), 0, 0, largDest, hautDest, src, 0, 0, src.Width(),
                            src.Height(), facteur < 1 ? gdi::kHalftone : gdi::kColorOnColor);
        }
        vue.Refresh();
        const float larg = largeurMin < vue.Width() ? vue.Width() + 180 : largeurMin;
        const float haut = vue.Height() + 1430;
        if (EtatNormal()) {
            SetWidth(larg);
            if (largeurMin < vue.Width()) CollerADroite(50);
            SetHeight(haut);
        } else if (app.ModeReduit) {
            // Reduced to the toolbar: the size to come back to.
            app.HautNormal = rt::CLng(haut);
            app.LargNormal = rt::CLng(larg);
        }
    };
    // In reduced mode the view is hidden; the one to show again is zoomed all the same.
    const bool image = app.ModeReduit ? app.VueCourante == L"image" : ImgTTscreen.Visible();
    const bool picture = app.ModeReduit ? app.VueCourante == L"picture" : Picture2.Visible();
    if (picture) zoomer(Picture2);
    if (image) {
        ImgTTscreen.Cls();
        zoomer(ImgTTscreen);
    }
}

void frmMain::TimZoom_Timer() {
    const auto ecran = app.Screen();
    for (int i = 0; i <= 4; ++i) mnuzoomX[i].SetChecked(i == 3);
    app.DoEvents();
    int16_t pas = 3;
    while (pas > 0 && (Picture2.Width() - 500 > ecran.WidthTwips() ||
                       Picture2.Height() - 1500 > ecran.HeightTwips())) {
        pas = int16_t(pas - 1);
        mnuzoomX_Click(pas);
    }
    if (EtatNormal()) CollerADroite();
    TimZoom.SetEnabled(false);
}

} // namespace mv
