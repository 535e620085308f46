// FrmFull: the rectangle followed by the mouse (placed and freehand), its handles, the
// clear spot, the guide and the blink.
#include "overlay/FrmFull.h"
#include "overlay/couleurs.h"
#include "runtime/errors.h"
#include "runtime/integer.h"
#include "runtime/strings.h"

#include <cmath>

namespace mv {

// ---- rectangle tracking ----------------------------------------------------------------

void FrmFull::PlacDesCoins(ui::Shape& Rect) {
    if (app.params.PreAffZone != 0) PlacerPoignees(Rect);
    LabPrecis.SetLeft(Rect.Left() + 30);
    LabPrecis.SetTop(Rect.Top() - 600);
    SelClaire(rectsel);
    PlaceGuide();
}

void FrmFull::PlacerPoignees(const ui::Shape& Rect) {
    if (coinrect.Count() == 8) {
        const float l = Rect.Left(), t = Rect.Top(), w = Rect.Width(), h = Rect.Height();
        const float cw = coinrect[0].Width(), ch = coinrect[0].Height();
        auto& c = coinrect;
        c[0].SetLeft(l - cw);
        c[0].SetTop(t + h / 2 - ch / 2);
        c[1].SetLeft(c[0].Left());
        c[1].SetTop(t - ch);
        c[2].SetLeft(l + w / 2 - cw / 2);
        c[2].SetTop(c[1].Top());
        c[3].SetLeft(l + w);
        c[3].SetTop(c[1].Top());
        c[4].SetLeft(c[3].Left());
        c[4].SetTop(c[0].Top());
        c[5].SetLeft(c[3].Left());
        c[5].SetTop(t + h);
        c[6].SetLeft(c[2].Left());
        c[6].SetTop(c[5].Top());
        c[7].SetLeft(c[0].Left());
        c[7].SetTop(c[5].Top());
        for (int i = 0; i <= 7; ++i) {
            CoinG[size_t(i)] = c[i].Left() - 500;
            CoinD[size_t(i)] = c[i].Left() + 500;
            CoinH[size_t(i)] = c[i].Top() - 500;
            CoinB[size_t(i)] = c[i].Top() + 500;
        }
    }
}

void FrmFull::SelClaire(ui::Shape& Rect) {
    if (Rect.Height() > 30 && Rect.Width() > 30) {
        PictClaire.SetHeight(Rect.Height() - 30);
        PictClaire.SetWidth(Rect.Width() - 30);
    }
    PictClaire.SetTop(Rect.Top() + 10);
    PictClaire.SetLeft(Rect.Left() + 10);
    const auto ecran = app.Screen();
    gdi::BitBlt(PictClaire.Image(), 0, 0, ecran.PxX(PictClaire.Width()),
                ecran.PxY(PictClaire.Height()), PictPourSel.Image(), ecran.PxX(PictClaire.Left()),
                ecran.PxY(PictClaire.Top()));
    PictClaire.Refresh();
}

void FrmFull::PlaceGuide() {
    LabGuide.SetLeft(rectsel.Left());
    LabGuide.SetTop(rectsel.Top() + rectsel.Height() + 50);
    PictValid.SetLeft(LabGuide.Left() + LabGuide.Width());
    PictValid.SetTop(LabGuide.Top() - 100);
}

void FrmFull::Picture1_MouseDown(int Button, int Shift, float X, float Y) {
    // A click queued before the session ended (a double right click) is no new start.
    if (!enSession_ || enValidation_) return;
    const bool place = app.params.PreAffZone != 0;
    if (Button == ui::kRightButton && Shift == ui::kShiftMask) {
        // Shift and a right click: a square.
        rectsel.SetHeight(rectsel.Width());
        PlacDesCoins(rectsel);
        TexteTaille(rectsel);
        TextePosition(LabPosition, rectsel.Left(), rectsel.Top());
        return;
    }
    if (Button == ui::kRightButton && !TraceLibre) {
        rectlibre.Move(rectsel.Left(), rectsel.Top(), rectsel.Width(), rectsel.Height());
        ValidSel(rectsel);
        return;
    }
    const float l = rectsel.Left(), t = rectsel.Top();
    const float r = l + rectsel.Width(), b = t + rectsel.Height();
    if (place) {
        if (X > l + 300 && X < r - 300 && Y > t + 300 && Y < b - 300 && Button == ui::kLeftButton) {
            DecalX = X - l;
            DecalY = Y - t;
            Picture1.SetMousePointer(ui::kPointerSizeAll);
            LabPos2.SetVisible(false);
        }
        return;
    }
    // Free mode: only the left button draws. The start is refused near the hidden
    // rectangle, unless that rectangle covers half the picture in view or more, so that
    // the refusal can never lock the mode.
    if (Button != ui::kLeftButton) return;
    const auto ecran = app.Screen();
    const float largeVue = ecran.WidthTwips(), hautVue = ecran.HeightTwips();
    const bool grand = rectsel.Width() * rectsel.Height() >= 0.5f * largeVue * hautVue;
    const bool bloque = X > l - 200 && X < r + 200 && Y > t - 200 && Y < b + 200;
    if (bloque && !grand) return;
    TraceLibre = true;
    AncreX = X;
    AncreY = Y;
    rectlibre.Move(X, Y, 0, 0);
    PictClaire.SetWidth(0);
    PictClaire.SetHeight(0);
    PictClaire.SetVisible(true);
    Labtaille.SetVisible(true);
    TextePosition(LabPosition, rectlibre.Left(), rectlibre.Top());
    LabPosition.SetVisible(false);
}

void FrmFull::Picture1_MouseMove(int Button, int Shift, float X, float Y) {
    (void)Shift;
    if (enValidation_) return;
    SourisX = X;
    SourisY = Y;
    const auto ecran = app.Screen();
    const float tppx = ecran.tppX, tppy = ecran.tppY;
    const bool place = app.params.PreAffZone != 0;

    if (TraceLibre) {
        PlacerTaille(rectlibre);
        if (Button & ui::kLeftButton) {
            float h = std::fabs(Y - AncreY), w = std::fabs(X - AncreX);
            if (app.params.GrilleDix == 1) {
                h = Grille(h, tppy);
                w = Grille(w, tppx);
            }
            rectlibre.Move(std::min(X, AncreX), std::min(Y, AncreY), w, h);
        }
        rectsel.SetVisible(false);
        LabGuide.SetVisible(false);
        PictValid.SetVisible(false);
        LabPrecis.SetVisible(false);
        MontrerPoignees(false);
        rectlibre.SetVisible(true);
        TexteTaille(rectlibre);
        // The clear spot follows the drawing.
        if (rectlibre.Height() > 30 && rectlibre.Width() > 30) {
            PictClaire.SetHeight(rectlibre.Height() - 30);
            PictClaire.SetWidth(rectlibre.Width() - 30);
        }
        PictClaire.SetTop(rectlibre.Top() + 10);
        PictClaire.SetLeft(rectlibre.Left() + 10);
        gdi::BitBlt(PictClaire.Image(), 0, 0, ecran.PxX(PictClaire.Width()),
                    ecran.PxY(PictClaire.Height()), PictPourSel.Image(),
                    ecran.PxX(PictClaire.Left()), ecran.PxY(PictClaire.Top()));
        PictClaire.Refresh();
        return;
    }

    if (!place) {
        LabPos2.SetLeft(X - 500);
        LabPos2.SetTop(Y - 300);
        LabPos2.SetCaption(L"< " + rt::Str(X / tppx) + L" ^ " + rt::Str(Y / tppy));
        LabPos2.SetVisible(true);
        return;
    }

    const float l = rectsel.Left(), t = rectsel.Top();
    const float r = l + rectsel.Width(), b = t + rectsel.Height();
    if (X > l + 500 && X < r - 500 && Y > t + 500 && Y < b - 500) {
        Picture1.SetMousePointer(ui::kPointerSizeAll);
        LabPos2.SetVisible(false);
        LabCarre.Move(X + 200, Y, LabCarre.Width(), LabCarre.Height());
        LabCarre.SetVisible(true);
        FinClignEtRouge();
        if (Button & ui::kLeftButton) {
            rectsel.SetTop(Y - DecalY);
            rectsel.SetLeft(X - DecalX);
            PlacDesCoins(rectsel);
            Labtaille.SetLeft(rectsel.Left() + rectsel.Width() + 50);
            Labtaille.SetTop(rectsel.Top());
            TextePosition(LabPosition, rectsel.Left(), rectsel.Top());
            const float gauche = rectsel.Left() - LabPosition.Width();
            LabPosition.SetLeft(gauche < 0 ? 0 : gauche);
            LabPosition.SetTop(rectsel.Top());
        }
    } else {
        bool touche = false;
        for (int i = 0; i <= 7; ++i) {
            const auto k = size_t(i);
            if (X > CoinG[k] && X < CoinD[k] && Y > CoinH[k] && Y < CoinB[k]) {
                touche = true;
                BougCoin(i, Button);
            }
        }
        if (!touche) {
            FinClignEtRouge();
            PictValid.SetVisible(true);
            PictClaire.SetVisible(true);
            Picture1.SetMousePointer(ui::kPointerCustom);
            LabPos2.SetVisible(true);
            for (int i = 0; i <= 7; ++i)
                if (Timboug.Exists(i)) Timboug[i].SetEnabled(false);
        }
        LabCarre.SetVisible(false);
    }

    // The mouse's position, kept clear of the strips right of and below the rectangle.
    TextePosition(LabPos2, X, Y);
    LabPos2.SetTop(Y > 22 * tppy ? Y - LabPos2.Height() - 80 : 500);
    const auto& c = coinrect;
    if (X > c[4].Left() && X < c[4].Left() + LabPos2.Width() && Y > c[3].Top() && Y < c[5].Top())
        LabPos2.SetLeft(X);
    else if (X > c[7].Left() && X < c[5].Left() && Y > c[5].Top() &&
             Y < c[5].Top() + LabPos2.Height() + 100)
        LabPos2.SetTop(Y);
    else
        LabPos2.SetLeft(X > 65 * tppx ? X - LabPos2.Width() - 80 : 500);
}

void FrmFull::PictClaire_MouseMove(float X, float Y) {
    if (X > 10 && Y > 10 && X < PictClaire.Width() - 10 && Y < PictClaire.Height() - 10)
        PictClaire.SetVisible(false);
}

float FrmFull::Grille(float twips, float tpp) {
    const int32_t v = rt::CLng(twips);
    const int32_t pas = rt::CLng(10 * tpp);
    return pas > 0 ? twips - float(v % pas) : twips;
}

void FrmFull::BougCoin(int Index, int Button) {
    static constexpr int kPointeurs[8] = {
        ui::kPointerSizeWE, ui::kPointerSizeNWSE, ui::kPointerSizeNS, ui::kPointerSizeNESW,
        ui::kPointerSizeWE, ui::kPointerSizeNWSE, ui::kPointerSizeNS, ui::kPointerSizeNESW};
    Picture1.SetMousePointer(Index >= 0 && Index <= 7 ? kPointeurs[Index] : ui::kPointerSizeAll);
    LabPos2.SetVisible(false);
    if (!(Button & ui::kLeftButton)) return;
    Timsel.SetEnabled(true);
    HautDeb = rectsel.Height();
    LargDeb = rectsel.Width();
    DragGauche = rectsel.Left();
    DragHaut = rectsel.Top();
    Timboug[Index].SetEnabled(true);
}

void FrmFull::Timboug_Timer(int Index) {
    const auto ecran = app.Screen();
    float x = SourisX, y = SourisY;
    if (app.params.GrilleDix == 1) {
        x = Grille(x, ecran.tppX);
        y = Grille(y, ecran.tppY);
    }
    coinrect[Index].SetLeft(x);
    coinrect[Index].SetTop(y);
    RedimRect(Index);
    PlacDesCoins(rectsel);
}

void FrmFull::RedimRect(int Index) {
    auto& c = coinrect;
    ui::Shape& r = rectsel;
    try {
        switch (Index) {
        case 0:
            r.SetWidth(DragGauche - c[0].Left() + LargDeb);
            r.SetLeft(c[0].Left());
            break;
        case 1:
            r.SetLeft(c[1].Left());
            r.SetTop(c[1].Top());
            r.SetWidth(DragGauche - c[1].Left() + LargDeb);
            r.SetHeight(DragHaut - c[1].Top() + HautDeb);
            break;
        case 2:
            r.SetTop(c[2].Top());
            r.SetHeight(DragHaut - c[2].Top() + HautDeb);
            break;
        case 3:
            r.SetTop(c[3].Top());
            r.SetWidth(c[3].Left() - c[1].Left());
            r.SetHeight(DragHaut - c[3].Top() + HautDeb);
            break;
        case 4:
            r.SetWidth(c[4].Left() - c[0].Left());
            break;
        case 5:
            r.SetWidth(c[5].Left() - c[0].Left());
            r.SetHeight(c[5].Top() - c[2].Top());
            break;
        case 6:
            r.SetHeight(c[6].Top() - c[2].Top());
            break;
        case 7:
            r.SetLeft(c[7].Left());
            r.SetHeight(c[7].Top() - c[2].Top());
            r.SetWidth(DragGauche - c[7].Left() + LargDeb);
            break;
        default:
            break;
        }
        rectlibre.Move(r.Left(), r.Top(), r.Width(), r.Height());
        Timtaille.SetEnabled(true);
        PlaceGuide();
        PlacerEtiquettes();
        SelClaire(rectsel);
    } catch (...) {
        const rt::RuntimeError e = rt::CaughtError();
        if (e.number != rt::kInvalidPropertyValue) return;
        // Crossing the opposite edge: the rectangle springs back to the default size
        // where the drag failed. One drag at a time: the drag stops here.
        r.SetVisible(false);
        MontrerPoignees(false);
        for (int i = 0; i <= 7; ++i)
            if (Timboug.Exists(i)) Timboug[i].SetEnabled(false);
        if (!Timreinit.Enabled()) Timreinit.SetEnabled(true);
    }
}

void FrmFull::Timreinit_Timer() {
    Timreinit.SetEnabled(false);
    const auto ecran = app.Screen();
    rectsel.SetWidth(float(rt::Val(app.params.LargSel)) * ecran.tppX);
    rectsel.SetHeight(float(rt::Val(app.params.HautSel)) * ecran.tppY);
    PlacDesCoins(rectsel);
    if (app.params.PreAffZone != 0) {
        rectsel.SetVisible(true);
        MontrerPoignees(true);
    }
    PlacerEtiquettes();
}

void FrmFull::Timtaille_Timer() {
    Timtaille.SetEnabled(false);
    if (app.params.GrilleDix != 1) return;
    const auto ecran = app.Screen();
    rectsel.SetWidth(Grille(rectsel.Width(), ecran.tppX));
    rectsel.SetHeight(Grille(rectsel.Height(), ecran.tppY));
    TexteTaille(rectsel);
    TextePosition(LabPosition, rectsel.Left(), rectsel.Top());
    PlacDesCoins(rectsel);
}

void FrmFull::Picture1_MouseUp(int Button, int Shift, float X, float Y) {
    (void)Button;
    (void)Shift;
    if (enValidation_) return;
    FinClignEtRouge();
    const auto ecran = app.Screen();
    if (!TraceLibre) {
        for (int i = 0; i <= 7; ++i)
            if (Timboug.Exists(i)) Timboug[i].SetEnabled(false);
        Picture1.SetMousePointer(ui::kPointerArrow);
        LabPos2.SetVisible(false);
        // After every release the cursor jumps up by the rectangle's height.
        app.be.GetCursor().SetCursorPos(rt::CLng(X / ecran.tppX),
                                        rt::CLng(Y / ecran.tppY - rectsel.Height() / ecran.tppY));
    } else {
        TraceLibre = false;
        if (rectlibre.Width() <= 0 || rectlibre.Height() <= 0) {
            // A release with nothing drawn validates nothing: the session stays open.
            rectlibre.SetVisible(false);
            PictClaire.SetVisible(false);
            Labtaille.SetVisible(false);
            return;
        }
        ValidSel(rectlibre);
        if (app.params.PreAffZone != 0) {
            rectsel.SetVisible(true);
            LabGuide.SetVisible(true);
            PictValid.SetVisible(true);
            LabPrecis.SetVisible(true);
            MontrerPoignees(true);
            PlacerEtiquettes();
            Labtaille.SetVisible(true);
            LabPosition.SetVisible(true);
            app.be.GetCursor().SetCursorPos(rt::CLng(X / ecran.tppX + 50),
                                            rt::CLng(Y / ecran.tppY + 50));
        } else {
            Labtaille.SetVisible(false);
            LabPosition.SetVisible(false);
        }
        rectlibre.SetVisible(false);
    }
    PictClaire.SetVisible(false);
}

// ---- blink -----------------------------------------------------------------------------

void FrmFull::Timsel_Timer() {
    const uint32_t couleur = ClignEtat != 0 ? kRouge : kBlanc;
    ClignEtat = ClignEtat != 0 ? 0 : -1;
    rectsel.SetBorderColor(couleur);
    for (int i = 0; i <= 7; ++i)
        if (coinrect.Exists(i)) coinrect[i].SetFillColor(couleur);
    LabGuide.SetForeColor(couleur);
    PictValid.SetVisible(ClignEtat == 0);
}

void FrmFull::FinClignEtRouge() {
    Timsel.SetEnabled(false);
    rectsel.SetBorderColor(kRouge);
    LabGuide.SetForeColor(kRouge);
    if (app.params.PreAffZone != 0)
        for (int i = 0; i <= 7; ++i)
            if (coinrect.Exists(i)) coinrect[i].SetFillColor(kRouge);
}

} // namespace mv
