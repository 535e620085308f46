// FrmFull: the keyboard of the overlay. Escape and Enter end the session; the arrows size
// and move the rectangle; F8 and F9 scroll, F6 and F7 trim the seam of a double-height
// picture; the keypad's minus and plus and Tab bring a second screen into view.
#include "overlay/FrmFull.h"

#include "core/frmMain.h"
#include "runtime/integer.h"

namespace mv {

namespace {

constexpr int16_t kEchap = 27, kEntree = 13, kTab = 9;
constexpr int16_t kF6 = 117, kF7 = 118, kF8 = 119, kF9 = 120;
constexpr int16_t kMoinsPave = 109, kPlusPave = 107;
constexpr int16_t kGauche = 37, kDroite = 39, kBas = 40; // Up (38) lies between them
constexpr int16_t kMaj = 1, kCtrl = 2, kAlt = 4;

} // namespace

void FrmFull::Picture1_KeyDown(int16_t KeyCode, int16_t Shift) {
    if (!enSession_ || enValidation_) return;
    frmMain& M = *app.main;
    M.ImgTTscreen.SetVisible(false);
    app.VueCourante = L"picture";
    // Free mode never placed the handles: the keys start from the hidden rectangle.
    if (app.params.PreAffZone == 0) PlacerPoignees(rectsel);
    const auto ecran = app.Screen();
    const float largEcran = ecran.WidthTwips();

    switch (KeyCode) {
    case kEchap:
        Annuler();
        return;
    case kEntree:
        // One capture per press: a held Enter repeats its key-down.
        if (keyRepeat) return;
        rectlibre.Move(rectsel.Left(), rectsel.Top(), rectsel.Width(), rectsel.Height());
        // In multi-selection the trimmed picture stays for the next rectangle.
        if (!M.Mnumulti.Checked()) {
            RognBas = 0;
            RognHaut = 0;
        }
        ValidSel(rectsel);
        return;
    case kF8:
    case kF9:
        if (!ToucheDefilement(KeyCode)) return;
        break;
    case kF6:
    case kF7:
        ToucheRognage(KeyCode, Shift != 0);
        return;
    case kMoinsPave:
        if (Picture1.Left() < 0) {
            Picture1.SetLeft(Picture1.Left() + 300);
            PictClaire.SetLeft(0);
        }
        break;
    case kPlusPave:
        if (Picture1.Left() > -largEcran) {
            PictClaire.SetLeft(0);
            // One screen: nothing stands to the right, the notice says so.
            if (ecran.monitors == 1) {
                app.MsgBox(app.Lang(155), ui::kExclamation, app.Lang(156));
                PrendreClavier();
            } else
                Picture1.SetLeft(Picture1.Left() - 300);
        }
        break;
    case kTab:
        if (ecran.monitors != 1) Picture1.SetLeft(largEcran);
        break;
    default:
        ToucheFleche(KeyCode, Shift);
        break;
    }
    QueueClavier();
}

void FrmFull::ToucheFleche(int16_t KeyCode, int16_t Shift) {
    if (KeyCode < kGauche || KeyCode > kBas) return;
    const auto ecran = app.Screen();
    const bool horizontal = KeyCode == kGauche || KeyCode == kDroite;
    const float sens = KeyCode == kDroite || KeyCode == kBas ? 1.f : -1.f;
    const float tpp = horizontal ? ecran.tppX : ecran.tppY;
    auto& c = coinrect;
    if (Shift == 0 || (Shift & kAlt)) {
        // Size: the right or the bottom handle moves, 1 pixel, 20 with Alt. A step that
        // would turn the rectangle inside out is refused.
        const float pas = sens * ((Shift & kAlt) ? 20.f : 1.f) * tpp;
        if (horizontal) {
            const float droite = c[4].Left() + pas;
            const float largeur = droite - c[0].Left() - c[0].Width();
            if (largeur < 0) return;
            c[4].SetLeft(droite);
            rectsel.SetWidth(largeur);
        } else {
            const float bas = c[6].Top() + pas;
            const float hauteur = bas - c[2].Top() - c[6].Height();
            if (hauteur < 0) return;
            c[6].SetTop(bas);
            rectsel.SetHeight(hauteur);
        }
        return;
    }
    if (!(Shift & (kMaj | kCtrl))) return;
    // Move: every handle, 1 pixel with Shift (which wins over Control), 20 with Control.
    const float pas = sens * ((Shift & kMaj) ? 1.f : 20.f) * tpp;
    for (int i = 0; i <= 7; ++i) {
        if (horizontal)
            c[i].SetLeft(c[i].Left() + pas);
        else
            c[i].SetTop(c[i].Top() + pas);
    }
    if (horizontal)
        rectsel.SetLeft(c[0].Width() + c[0].Left());
    else
        rectsel.SetTop(c[2].Height() + c[2].Top());
}

bool FrmFull::ToucheDefilement(int16_t KeyCode) {
    const float moitie = -Picture1.Height() / 2;
    if (KeyCode == kF8) {
        if (LimBas < PosBas) return false;
        if (Picture1.Top() > moitie) {
            Picture1.SetTop(Picture1.Top() - 100);
            PosBas += 100;
            PosHaut -= 100;
            PictClaire.SetLeft(0);
        } else {
            Picture1.SetTop(moitie);
        }
    } else if (LimHaut > PosHaut) {
        Picture1.SetTop(Picture1.Top() + 100);
        PosBas -= 100;
        PosHaut += 100;
        PictClaire.SetLeft(0);
    }
    return true;
}

void FrmFull::ToucheRognage(int16_t KeyCode, bool modifiee) {
    // Only a double-height picture has a seam; elsewhere the grabs kept are stale.
    if (!sessionDouble_) return;
    const auto ecran = app.Screen();
    const int h = ecran.heightPx;
    if (KeyCode == kF6) {
        // The top rows of the lower grab, trimmed one by one or given back.
        if (!modifiee) {
            if (LimBas < PosBas) return;
            ++RognBas;
            LimBas -= ecran.tppY;
            // The first trim moves the seam two rows up.
            if (RognBas == 1) DemiHautPx = rt::CLng(ecran.PxY(Picture1.Height()) * 0.5 - 2);
        } else {
            if (RognBas <= 0) return;
            --RognBas;
            LimBas += ecran.tppY;
        }
        LargPx = ecran.PxX(Picture1.Width());
        gdi::BitBlt(Picture1.Image(), 0, DemiHautPx, LargPx, h, PictBas.Image(), 0, RognBas);
        gdi::BitBlt(PictPourSel.Image(), 0, DemiHautPx, LargPx, h, PictBasSel.Image(), 0, RognBas);
    } else {
        // The upper grab, shifted down one row more or one row less.
        if (!modifiee) {
            if (!(LimHaut > PosHaut)) return;
            ++RognHaut;
            LimHaut -= ecran.tppY;
        } else {
            if (RognHaut <= 0) return;
            --RognHaut;
            LimHaut += ecran.tppY;
        }
        LargPx = ecran.PxX(Picture1.Width());
        gdi::BitBlt(Picture1.Image(), 0, RognHaut, LargPx, h - RognHaut, PictHaut.Image(), 0, 0);
        gdi::BitBlt(PictPourSel.Image(), 0, RognHaut, LargPx, h - RognHaut, PictHautSel.Image(), 0,
                    0);
    }
    Picture1.Refresh();
    PictPourSel.Refresh();
    SelClaire(rectsel);
}

void FrmFull::QueueClavier() {
    PlacDesCoins(rectsel);
    rectlibre.Move(rectsel.Left(), rectsel.Top(), rectsel.Width(), rectsel.Height());
    PlacerEtiquettes();
}

} // namespace mv
