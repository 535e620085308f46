// frmMain: the notification-area icon and standby, and the small mouse behaviours of the
// views (the size label that follows the mouse, the rubber band on the grab).
#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "language/frmTip.h"
#include "runtime/integer.h"
#include "settings/Options.h"

#include <algorithm>
#include <cmath>

namespace mv {

namespace {
// Mouse messages of the tray icon, carried in the x of a mouse move.
constexpr int32_t kTrayDoubleClic = 515;  // WM_LBUTTONDBLCLK
constexpr int32_t kTrayBoutonDroit = 516; // WM_RBUTTONDOWN
} // namespace

void frmMain::Form_MouseMove(const ui::MouseEvent& e) {
    LabDoubleClick.SetVisible(false);
    // An ordinary move at 515 or 516 pixels is taken for a tray event too.
    const int32_t message = rt::CLng(e.x / app.Screen().tppX);
    Flistimages& L = *app.list;
    if (message == kTrayDoubleClic) {
        if (!Visible()) {
            if (app.NbVignettes > 0) L.SetVisible(true);
            SetVisible(true);
            FinVeille();
        }
        // Either way round: a double click restores or minimises, never both.
        if (WindowState() != ui::kNormal) {
            SetWindowState(ui::kNormal);
            L.SetWindowState(ui::kNormal);
            if (app.NbVignettes > 0) L.SetVisible(true);
            SetVisible(true);
            FinVeille();
        } else {
            SetWindowState(ui::kMinimized);
            L.SetWindowState(ui::kMinimized);
        }
    } else if (message == kTrayBoutonDroit) {
        PopupMenu(mnucaptu);
    }
}

void frmMain::FinVeille() {
    mnuveille.SetCaption(app.Lang(105));
}

void frmMain::mnuveille_Click() {
    // Each window on its own: the two can go out of step.
    SetVisible(!Visible());
    Flistimages& L = *app.list;
    L.SetVisible(!L.Visible());
    if (Visible()) FinVeille();
}

void frmMain::Mnured2_Click() {
    SetWindowState(ui::kMinimized);
    app.list->SetWindowState(ui::kMinimized);
    app.tip->Unload();
    mnuveille.SetCaption(app.Lang(106));
}

// ---- the views ---------------------------------------------------------------------------

void frmMain::Picture2_MouseMove(float X, float Y) {
    Labtaill2.SetCaption(Labtaille.Caption());
    Labtaill2.SetWidth(Labtaille.Width());
    Labtaill2.SetLeft(Picture2.Left() + X + 200);
    Labtaill2.SetTop(Picture2.Top() + Y);
    Labtaill2.SetVisible(true);
    Labtaill2.ZOrder(0);
}

void frmMain::Picture1_MouseDown(int Button, float X, float Y) {
    selDebutX_ = X;
    selDebutY_ = Y;
    if (Button == ui::kRightButton) {
        selDroitX_ = X;
        selDroitY_ = Y;
    }
    EnSelection = true;
    rectsel.Move(X, Y, 0, 0);
    rectsel.SetVisible(true);
}

void frmMain::Picture1_MouseMove(float X, float Y) {
    if (!EnSelection) return;
    const auto ecran = app.Screen();
    auto grille = [&](float v, float tpp) {
        // The grid of the options: 10 pixels.
        auto& cases = app.options->Check1;
        if (!cases.Exists(0) || cases[0].Value() != 1) return v;
        return float(std::round(v / (10 * tpp)) * 10 * tpp);
    };
    const float x0 = grille(std::min(selDebutX_, X), ecran.tppX);
    const float y0 = grille(std::min(selDebutY_, Y), ecran.tppY);
    const float x1 = grille(std::max(selDebutX_, X), ecran.tppX);
    const float y1 = grille(std::max(selDebutY_, Y), ecran.tppY);
    rectsel.Move(x0, y0, x1 - x0, y1 - y0);
    const int32_t larg = ecran.PxX(rectsel.Width());
    const int32_t haut = ecran.PxY(rectsel.Height());
    Labtaille.SetCaption(std::to_wstring(larg) + L" X" + std::to_wstring(haut) + L" = ~" +
                         std::to_wstring(int64_t(double(larg) * double(haut) * 13.3 / 1000000)) +
                         L" K (bmp)");
    Labtaille.SetVisible(true);
}

void frmMain::Picture1_MouseUp() {
    if (!EnSelection) return;
    EnSelection = false;
    const auto ecran = app.Screen();
    app.HautCapt = rectsel.Height();
    app.LargCapt = rectsel.Width();
    const int w = ecran.PxX(rectsel.Width()), h = ecran.PxY(rectsel.Height());
    rectsel.SetVisible(false);
    if (w <= 0 || h <= 0) return;
    gdi::Surface part(w, h);
    gdi::BitBlt(part, 0, 0, w, h, Picture1.Image(), ecran.PxX(rectsel.Left()),
                ecran.PxY(rectsel.Top()));
    Picture2.Move(20, 500, app.LargCapt, app.HautCapt);
    Picture2.SetPicture(part);
    Picture2S.SetPicture(part);
    Picture1.SetVisible(false);
    Picture2.SetVisible(true);
    SetCaption(app.Lang(107));
    for (ui::Menu* m : {&mnufichier, &mnuedition, &mnuoutils, &mnuHelp}) m->SetVisible(true);
    app.TypeCapt = L"z";
}

} // namespace mv
