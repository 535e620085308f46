#include "overlay/FrmFull.h"
#include "overlay/couleurs.h"

#include "browser/Flistimages.h"
#include "capture/capture.h"
#include "core/CursTransp.h"
#include "core/commands.h"
#include "core/frmMain.h"
#include "runtime/errors.h"
#include "runtime/integer.h"
#include "runtime/strings.h"

#include <cmath>

namespace mv {

namespace {

// The cursor value that is never stamped into a capture.
constexpr ui::CursorHandle kCurseurCache = 65557;
// The tint's constant alpha, of 255.
constexpr uint8_t kAlphaTeinte = 80;
const std::wstring kCrLf = L"\r\n";

// The overlay's pointer: a thin cross with a ring, its hot spot at (5, 12).
gdi::IconImage CurseurCroix() {
    gdi::IconImage c;
    c.width = 32;
    c.height = 32;
    c.color.assign(32 * 32, 0);
    c.mask.assign(32 * 32, 1);
    c.hotspotX = 5;
    c.hotspotY = 12;
    auto point = [&c](int x, int y, uint32_t couleur) {
        if (x < 0 || y < 0 || x >= 32 || y >= 32) return;
        c.mask[size_t(y) * 32 + size_t(x)] = 0;
        c.color[size_t(y) * 32 + size_t(x)] = couleur;
    };
    // A white halo first, the black cross over it, so it shows on any picture.
    for (int pass = 0; pass < 2; ++pass) {
        const uint32_t couleur = pass == 0 ? 0xFFFFFF : 0x000000;
        const int e = pass == 0 ? 1 : 0;
        for (int d = -e; d <= e; ++d) {
            for (int x = 0; x <= 16; ++x)
                if (std::abs(x - 5) > 1) point(x, 12 + d, couleur);
            for (int y = 2; y <= 22; ++y)
                if (std::abs(y - 12) > 1) point(5 + d, y, couleur);
        }
    }
    return c;
}

// Integer part of a pixel count, with the blank that a number that is not negative gets.
std::wstring Nombre(double pixels) {
    return rt::Str(std::trunc(pixels));
}

} // namespace

FrmFull::FrmFull(App& a) : ui::Form(a.be, L"FrmFull"), app(a) {
    coinrect.Design(0);
    // The handles' drag timers, one a handle (timers are made whole, not copied).
    for (int i = 0; i <= 7; ++i)
        Timboug.Design(i, 1, false).OnTimer = [this, i] { Timboug_Timer(i); };
    WireEvents();
}

void FrmFull::Design() {
    borderStyle = ui::kBorderNone;
    showInTaskbar = false;
    topMost = true;
    controlBox = false;
    keyPreview = true;
    SetBackColor(0x000000);

    for (ui::PictureBox* p : {&PictPourSel, &PictHaut, &PictBas, &PictHautSel, &PictBasSel,
                              &PictMask, &PictInvis, &PictSave})
        p->SetVisible(false);
    // The tint: one dark colour, stretched over the picture.
    PictMask.SetBackColor(0x000000);
    PictMask.Move(0, 0, 16 * 15, 16 * 15);
    PictMask.Cls();

    for (ui::Control* c : std::initializer_list<ui::Control*>{
             &PictClaire, &rectsel, &rectlibre, &coinrect[0], &Labtaille, &LabPosition, &LabPos2,
             &LabCarre, &LabPrecis, &LabDblScreen, &LabPreAff, &Labconsignes, &LabGuide, &PictValid,
             &PictHelpDbH, &pictcoccin})
        c->SetContainer(&Picture1);
    Picture1.SetMouseIcon(CurseurCroix());
    Picture1.SetBackColor(0x000000);

    rectsel.SetBorderColor(kRouge);
    rectsel.Move(0, 0, 420 * 15, 260 * 15);
    rectlibre.SetBorderColor(kRouge);
    rectlibre.SetVisible(false);
    coinrect[0].SetBorderColor(kRouge);
    coinrect[0].SetFillColor(kRouge);
    coinrect[0].SetFilled(true);
    coinrect[0].Move(0, 0, 75, 75);

    for (ui::Label* l : {&Labtaille, &LabPosition, &LabPos2}) {
        l->SetBackColor(kJaunePale);
        l->SetBorderStyle(ui::kBorderFixedSingle);
    }
    Labtaille.Move(0, 0, 1900, 260);
    LabPosition.Move(0, 0, 1500, 260);
    LabPos2.Move(0, 0, 1500, 260);
    LabPos2.SetVisible(false);
    for (ui::Label* l : {&LabCarre, &LabPrecis, &LabDblScreen, &LabPreAff, &Labconsignes}) {
        l->SetBackColor(0xE1FFFF);
        l->SetBorderStyle(ui::kBorderFixedSingle);
        l->SetVisible(false);
    }
    LabCarre.Move(0, 0, 3600, 260);
    LabPrecis.Move(0, 0, 4600, 480);
    LabDblScreen.Move(0, 0, 4200, 480);
    LabPreAff.Move(600, 600, 4800, 480);
    Labconsignes.Move(0, 0, 4200, 480);
    LabGuide.SetBackColor(0x000000);
    LabGuide.SetForeColor(kRouge);
    LabGuide.Move(0, 0, 4400, 260);
    PictValid.SetBackColor(0xFFFFFF);
    PictValid.Move(0, 0, 240, 240);
    PictHelpDbH.Move(500, 0, 6000, 1500);
    PictHelpDbH.SetBackColor(0xE1FFFF);
    PictHelpDbH.SetVisible(false);
    LabAideDbH.SetContainer(&PictHelpDbH);
    LabAideDbH.SetBackColor(0xE1FFFF);
    LabAideDbH.Move(1300, 120, 4550, 1260);
    pictcoccin.Move(0, 0, 240, 240);
    pictcoccin.SetBackColor(0x404040);
}

void FrmFull::WireEvents() {
    OnLoad = [this] { Form_Load(); };
    OnActivate = [this] { Form_Activate(); };
    OnQueryUnload = [this](int& cancel, int mode) {
        // The user's close (Alt+F4) is Escape: the overlay itself is never closed.
        if (mode == ui::kFormControlMenu) {
            cancel = 1;
            if (enSession_ && !enValidation_) Annuler();
            return;
        }
        Timreinit.SetEnabled(false);
    };
    OnKeyDown = [this](int16_t& key, int16_t shift) { Picture1_KeyDown(key, shift); };
    Picture1.OnMouseDown = [this](const ui::MouseEvent& e) {
        Picture1_MouseDown(e.button, e.shift, e.x, e.y);
    };
    Picture1.OnMouseMove = [this](const ui::MouseEvent& e) {
        Picture1_MouseMove(e.button, e.shift, e.x, e.y);
    };
    Picture1.OnMouseUp = [this](const ui::MouseEvent& e) {
        Picture1_MouseUp(e.button, e.shift, e.x, e.y);
    };
    // A press on the clear spot is judged by its own small coordinates.
    PictClaire.OnMouseDown = [this](const ui::MouseEvent& e) {
        Picture1_MouseDown(e.button, e.shift, e.x, e.y);
    };
    PictClaire.OnMouseMove = [this](const ui::MouseEvent& e) { PictClaire_MouseMove(e.x, e.y); };
    PictClaire.OnMouseUp = [this](const ui::MouseEvent& e) {
        Picture1_MouseUp(e.button, e.shift, e.x + PictClaire.Left(), e.y + PictClaire.Top());
    };
    PictHelpDbH.OnMouseMove = [this](const ui::MouseEvent&) { PictHelpDbH.SetVisible(false); };
    LabAideDbH.OnMouseMove = PictHelpDbH.OnMouseMove;

    TimMvtDeb.OnTimer = [this] { TimMvtDeb_Timer(); };
    TimForgrnd.OnTimer = [this] {
        ForceForeGroundWindow(Handle());
        TimForgrnd.SetEnabled(false);
    };
    Timreinit.OnTimer = [this] { Timreinit_Timer(); };
    Timtaille.OnTimer = [this] { Timtaille_Timer(); };
    Timsel.OnTimer = [this] { Timsel_Timer(); };
    Timtransp.OnTimer = [this] { Timtransp_Timer(); };
    TimLabPos.OnTimer = [this] { TimLabPos_Timer(); };
    TimLabPreAff.OnTimer = [this] {
        LabPreAff.SetVisible(false);
        TimLabPreAff.SetEnabled(false);
    };
    TimLabDbhV.OnTimer = [this] {
        PictHelpDbH.SetVisible(false);
        TimLabDbhV.SetEnabled(false);
    };
    TimConsignes.OnTimer = [this] { Labconsignes.SetVisible(false); };
    Timdefil.OnTimer = [this] { LabDblScreen.SetVisible(false); };
}

// ---- loading and sessions ---------------------------------------------------------------

void FrmFull::Form_Load() {
    const auto ecran = app.Screen();
    const float tppx = ecran.tppX, tppy = ecran.tppY;
    Labconsignes.SetCaption(app.Lang(141) + kCrLf + app.Lang(142));
    LabCarre.SetCaption(app.Lang(150));
    LabPrecis.SetCaption(app.Lang(147) + kCrLf + app.Lang(149));
    LabDblScreen.SetCaption(app.Lang(165));
    LabPreAff.SetCaption(app.Lang(268));

    Labconsignes.SetVisible(false);
    Labconsignes.SetTop(ecran.HeightTwips() / 2);
    Labconsignes.SetLeft(ecran.WidthTwips() - Labconsignes.Width() - 500);
    TimConsignes.SetEnabled(true);
    Timdefil.SetEnabled(true);
    LabDblScreen.SetLeft(ecran.WidthTwips() - LabDblScreen.Width() - 1000);
    LabDblScreen.SetTop(ecran.HeightTwips() / 2);

    coinrect[0].SetWidth(5 * tppx);
    coinrect[0].SetHeight(5 * tppy);
    for (int i = 1; i <= 7; ++i) {
        coinrect.Load(i);
    }

    rectsel.SetWidth(float(rt::Val(app.params.LargSel)) * tppx);
    rectsel.SetHeight(float(rt::Val(app.params.HautSel)) * tppy);
    rectsel.SetTop((ecran.HeightTwips() - rectsel.Height()) / 2);
    rectsel.SetLeft((ecran.WidthTwips() - rectsel.Width()) / 2);
    PlacerEtiquettes();

    if (app.params.PreAffZone != 0) {
        LabPreAff.SetVisible(true);
        TimLabPreAff.SetEnabled(true);
    }
    DessinerCoche(PictValid.Image());
    PictValid.Refresh();
    LabAideDbH.SetCaption(app.Lang(273));
    PictHelpDbH.Cls();
    DessinerAideDbH(PictHelpDbH.Image(), ecran.PxX(1200));
    PictHelpDbH.Refresh();
}

void FrmFull::DessinerAideDbH(gdi::Surface& s, int largeur) {
    // Two screens, one under the other, the seam in red across them, and a double arrow
    // for scrolling beside them; the text stands to the right.
    const int h = s.Height(), marge = std::max(2, h / 12);
    const int l = std::min(largeur, s.Width()) - 4 * marge;
    if (l < 8 || h < 8 * marge) return;
    const int hautEcran = (h - 2 * marge) / 2;
    const gdi::Pixel cadre = gdi::Rgb(64, 64, 64), fond = gdi::Rgb(200, 215, 235);
    for (int k = 0; k < 2; ++k) {
        const int y = marge + k * hautEcran;
        s.FillRect(marge, y, l, hautEcran, cadre);
        s.FillRect(marge + 2, y + 2, l - 4, hautEcran - 4, fond);
    }
    s.FillRect(marge, marge + hautEcran - 2, l, 4, gdi::FromColorRef(kRouge));
    const int x = marge + l + marge + marge / 2, haut = marge, bas = h - marge;
    s.FillRect(x, haut, 2, bas - haut, cadre);
    for (int d = 0; d < marge; ++d) {
        s.FillRect(x - d, haut + d, 2 + 2 * d, 1, cadre);
        s.FillRect(x - d, bas - 1 - d, 2 + 2 * d, 1, cadre);
    }
}

void FrmFull::DessinerCoche(gdi::Surface& s) {
    // A green tick, two pixels thick: down from the left third, then up to the top right.
    const int w = s.Width(), h = s.Height();
    const gdi::Pixel vert = gdi::Rgb(0, 150, 0);
    auto point = [&](int x, int y) {
        if (x >= 0 && y >= 0 && x + 1 < w && y + 1 < h) s.FillRect(x, y, 2, 2, vert);
    };
    for (int x = w / 6; x <= w * 2 / 5; ++x) point(x, h / 2 + (x - w / 6));
    const int x0 = w * 2 / 5, y0 = h / 2 + (x0 - w / 6);
    for (int x = x0; x < w - 2; ++x)
        point(x, y0 - (x - x0) * (y0 - h / 6) / std::max(1, w - 2 - x0));
}

void FrmFull::InitFull(int16_t Mode) {
    if (!IsLoaded()) Load();
    enSession_ = true;
    // Each session starts untrimmed, its scroll limits set below for a double height only.
    sessionDouble_ = false;
    RognBas = 0;
    RognHaut = 0;
    LimBas = PosBas = LimHaut = PosHaut = 0;
    const auto ecran = app.Screen();
    const float tppx = ecran.tppX, tppy = ecran.tppY;
    const float hautEcran = ecran.HeightTwips();

    TimForgrnd.SetEnabled(true);
    SetLeft(5000);
    SetTop(5000);
    TimMvtDeb.SetEnabled(true);

    // One screen high, except for a new grab of command 0 (see below).
    const bool nouvelle = !app.RetourZone && Mode != kCmdZoneDouble;
    Picture1.SetHeight(nouvelle ? 2 * hautEcran : hautEcran);
    Picture1.SetWidth(ecran.monitors == 1 ? ecran.WidthTwips() : 2 * ecran.WidthTwips());
    // The list is a normal window while a session is open.
    FenTransp(*app.list, false);

    if (app.RetourZone) {
        // The frozen screen of the last session, dimmed already; its clean copy is still in
        // PictPourSel.
        Picture1.SetPicture(app.main->PictReserv.Picture());
    } else {
        app.DoEvents();
        auto& bureau = app.be.GetDesktop();
        const auto dc = bureau.GetWindowDC(bureau.GetDesktopWindow());
        const int largPx = ecran.PxX(Picture1.Width());
        const int hautPx = ecran.heightPx;
        if (Mode == kCmdZoneDouble) {
            // The picture grows to two screens, keeping the first grab in its upper half.
            Picture1.SetHeight(2 * hautEcran);
            dc->CopyTo(Picture1.Image(), 0, ecran.PxY(app.HautEcranTw), largPx, hautPx, 0, 0);
            PictBas.Move(0, 0, Picture1.Width(), hautEcran);
            dc->CopyTo(PictBas.Image(), 0, 0, largPx, hautPx, 0, 0);
            sessionDouble_ = true;
            DemiHautPx = rt::CLng(hautPx * 0.5);
            LimBas = hautEcran;
            LimHaut = hautEcran;
            PosBas = hautEcran / 2;
            PosHaut = hautEcran / 2;
            LargPx = largPx;
            PictBasSel.Move(0, 0, Picture1.Width(), hautEcran);
            PictHautSel.Move(0, 0, Picture1.Width(), hautEcran);
            PictBasSel.SetPicture(PictBas.Image());
            PictHautSel.SetPicture(PictHaut.Image());
            PictPourSel.Move(0, 0, Picture1.Width(), 2 * hautEcran);
            gdi::BitBlt(PictPourSel.Image(), 0, 0, LargPx, 2 * DemiHautPx, PictHautSel.Image(), 0,
                        0);
            gdi::BitBlt(PictPourSel.Image(), 0, 2 * DemiHautPx, LargPx, 2 * DemiHautPx,
                        PictBasSel.Image(), 0, 0);
            PictHelpDbH.SetVisible(true);
            TimLabDbhV.SetEnabled(true);
            app.HautEcranTw = hautEcran;
        } else {
            // Two screens high at once, the grab in the upper half and black beneath: the
            // pictures keep their size from one session to the next, so nothing is
            // reallocated.
            Picture1.ClearPicture();
            dc->CopyTo(Picture1.Image(), 0, 0, largPx, hautPx, 0, 0);
            // The same grab, copied rather than taken again.
            PictHaut.Move(0, 0, Picture1.Width(), hautEcran);
            gdi::BitBlt(PictHaut.Image(), 0, 0, largPx, hautPx, Picture1.Image(), 0, 0);
            // The clean copy, taken before the tint.
            PictPourSel.Move(0, 0, Picture1.Width(), Picture1.Height());
            PictPourSel.SetPicture(PictHaut.Image());
            app.HautEcranTw = hautEcran;
        }
        PictPourSel.SetHeight(Picture1.Height());
        app.DoEvents();

        // The tint is baked into the pictures once: moving the rectangle then costs only
        // the clear spot's blit.
        const gdi::Surface& masque = PictMask.Image();
        auto teinter = [&masque](gdi::Surface& s, int y, int h) {
            gdi::AlphaBlend(s, 0, y, s.Width(), h, masque, 0, 0, masque.Width(), masque.Height(),
                            kAlphaTeinte);
        };
        // Only the rows of the grab: the rest of the picture is black, which the tint keeps.
        if (Mode == kCmdZoneDouble) {
            teinter(Picture1.Image(), ecran.PxY(app.HautEcranTw), hautPx);
            teinter(PictBas.Image(), 0, hautPx);
            teinter(PictHaut.Image(), 0, hautPx);
        } else {
            teinter(Picture1.Image(), 0, hautPx);
        }
        PictPourSel.SetTop(0);
        PictPourSel.SetHeight(Picture1.Height());
    }

    Picture1.SetTop(Mode == kCmdZoneDouble ? -Picture1.Height() / 4 : 0);
    Picture1.SetLeft(0);
    LabGuide.SetCaption(app.Lang(140));
    TamponCurseur();
    Picture1.Refresh();

    PlacerEtiquettes();
    PlacDesCoins(rectsel);
    SetWidth(Picture1.Width());
    SetHeight(std::min(Picture1.Height(), ecran.HeightTwips()));
    pictcoccin.Move(Picture1.Width() - pictcoccin.Width(), Picture1.Height() - pictcoccin.Height(),
                    pictcoccin.Width(), pictcoccin.Height());
    (void)tppx;
    (void)tppy;
}

void FrmFull::TamponCurseur() {
    if (app.CurseurCapt == kCurseurCache || !app.ParClavierSession) return;
    gdi::IconImage icone;
    if (!app.be.GetCursor().GetImage(app.CurseurCapt, icone)) return;
    gdi::DrawIcon(Picture1.Image(), app.CurseurXClavier, app.CurseurYClavier, icone);
    gdi::DrawIcon(PictPourSel.Image(), app.CurseurXClavier, app.CurseurYClavier, icone);
}

void FrmFull::Form_Activate() {
    LabDblScreen.SetVisible(true);
    const bool place = app.params.PreAffZone != 0;
    rectsel.SetVisible(place);
    MontrerPoignees(place);
    LabPrecis.SetVisible(place);
    Labtaille.SetVisible(place);
    PictValid.SetVisible(place);
    LabGuide.SetVisible(place);
    // The clear spot belongs to the placed rectangle; free mode starts on the custom cursor.
    PictClaire.SetVisible(place);
    if (!place) Picture1.SetMousePointer(ui::kPointerCustom);
}

void FrmFull::ForceForeGroundWindow(ui::WindowHandle Hwnd) {
    if (!Visible() || !enSession_) return;
    app.be.GetDesktop().ForceForeground(Hwnd);
}

void FrmFull::PrendreClavier() {
    ForceForeGroundWindow(Handle());
}

void FrmFull::TimMvtDeb_Timer() {
    if (Left() > 0) {
        SetLeft(Left() - 300);
        SetTop(Top() - 300);
        return;
    }
    TimMvtDeb.SetEnabled(false);
    SetLeft(0);
    SetTop(0);
    PictHelpDbH.SetTop(Picture1.Height() / 2 - PictHelpDbH.Height() / 2);
    PictHelpDbH.SetLeft(500);
    PlacDesCoins(rectsel);
    PlacerEtiquettes();
    app.DoEvents();
}

void FrmFull::FinSession() {
    enSession_ = false;
    for (ui::Timer* t : {&TimForgrnd, &TimMvtDeb, &Timtransp, &Timreinit}) t->SetEnabled(false);
    for (int i = Timboug.LBound(); i <= Timboug.UBound(); ++i)
        if (Timboug.Exists(i)) Timboug[i].SetEnabled(false);
    TraceLibre = false;
    Hide();
}

void FrmFull::Annuler() {
    frmMain& M = *app.main;
    PictSave.SetPicture(Picture1.Picture());
    M.PictReserv.SetPicture(Picture1.Image());
    FinSession();
    M.Show();
    Flistimages& L = *app.list;
    if (L.WindowState() == ui::kNormal) {
        L.SetLeft(0);
        L.SetTop(0);
    }
    L.Show();
    FenTransp(L, true, kJaunePale);
    const auto ecran = app.Screen();
    app.ZoneHauteur += 4 * ecran.tppY;
    app.ZoneLargeur += 4 * ecran.tppX;
    app.SortieZone = true;
    RognBas = 0;
    RognHaut = 0;
}

// ---- labels ----------------------------------------------------------------------------

void FrmFull::TexteTaille(const ui::Shape& Rect) {
    const auto ecran = app.Screen();
    Labtaille.SetCaption(Nombre(Rect.Width() / ecran.tppX) + L" x" +
                         Nombre(Rect.Height() / ecran.tppY) + L" pixels");
}

void FrmFull::TextePosition(ui::Label& Lab, float X, float Y) {
    const auto ecran = app.Screen();
    Lab.SetCaption(L"<- " + Nombre(X / ecran.tppX) + L"  ^ " + Nombre(Y / ecran.tppY));
}

void FrmFull::PlacerTaille(const ui::Shape& Rect) {
    const float largEcran = app.Screen().WidthTwips();
    Labtaille.SetLeft(Rect.Left() + Rect.Width() + 50);
    if (Labtaille.Left() + Labtaille.Width() > largEcran)
        Labtaille.SetLeft(largEcran - Labtaille.Width() - 50);
    Labtaille.SetTop(Rect.Top());
}

void FrmFull::PlacerEtiquettes() {
    PlacerTaille(rectsel);
    const float gauche = rectsel.Left() - LabPosition.Width();
    LabPosition.SetLeft(gauche < 0 ? 0 : gauche);
    LabPosition.SetTop(rectsel.Top());
    TexteTaille(rectsel);
    TextePosition(LabPosition, rectsel.Left(), rectsel.Top());
}

void FrmFull::TimLabPos_Timer() {
    TimLabPos.SetEnabled(false);
    const float gauche = rectsel.Left() - LabPosition.Width();
    LabPosition.SetLeft(gauche < 0 ? 0 : gauche);
    LabPosition.SetTop(rectsel.Top());
    Labtaille.SetLeft(rectsel.Left() + rectsel.Width() + 50);
    Labtaille.SetTop(LabPosition.Top());
}

void FrmFull::MontrerPoignees(bool v) {
    for (int i = coinrect.LBound(); i <= coinrect.UBound(); ++i)
        if (coinrect.Exists(i)) coinrect[i].SetVisible(v);
}

// ---- validation ------------------------------------------------------------------------

void FrmFull::ValidSel(ui::Shape& Rect) {
    // A double right click validates once.
    if (enValidation_) return;
    enValidation_ = true;
    struct Fin {
        bool& drapeau;
        ~Fin() { drapeau = false; }
    } fin{enValidation_};

    frmMain& M = *app.main;
    const auto ecran = app.Screen();
    app.TypeCapt = L"z";
    // Only the picture bounds the rectangle.
    if (Rect.Left() + Rect.Width() > Picture1.Width())
        Rect.SetWidth(std::max(0.0f, Picture1.Width() - Rect.Left()));
    if (Rect.Top() + Rect.Height() > Picture1.Height())
        Rect.SetHeight(std::max(0.0f, Picture1.Height() - Rect.Top()));
    app.ZoneGauche = Rect.Left();
    app.ZoneHaut = Rect.Top();
    app.ZoneHauteur = Rect.Height();
    app.ZoneLargeur = Rect.Width();
    LabPosition.SetVisible(true);

    PictInvis.Move(0, 0, app.ZoneLargeur, app.ZoneHauteur);
    PictInvis.ClearPicture();
    // One pixel right of and below the rectangle's corner, with its full size.
    gdi::BitBlt(PictInvis.Image(), 0, 0, ecran.PxX(app.ZoneLargeur), ecran.PxY(app.ZoneHauteur),
                PictPourSel.Image(), ecran.PxX(app.ZoneGauche) + 1, ecran.PxY(app.ZoneHaut) + 1);

    PictSave.SetPicture(Picture1.Picture());
    M.PictReserv.SetPicture(Picture1.Image());

    app.DoEvents();
    M.Picture2.Move(M.Picture2.Left(), M.Picture2.Top(), app.ZoneLargeur, app.ZoneHauteur);
    M.Picture2.SetPicture(PictInvis.Image());
    std::wstring type = L"z";
    CopiePP(app, type);
    M.Picture2.SetVisible(true);
    M.ImgTTscreen.SetVisible(false);
    if (M.WindowState() == ui::kNormal) M.SetHeight(M.Picture2.Height() + 1430);

    rectsel.Move(rectlibre.Left(), rectlibre.Top(), rectlibre.Width(), rectlibre.Height());
    PlacDesCoins(rectsel);
    app.be.GetCursor().SetCursorPos(
        rt::CLng((rectsel.Left() + rectsel.Width() + 400) / ecran.tppX),
        rt::CLng((rectsel.Top() + rectsel.Height() + 400) / ecran.tppY));

    if (&Rect == &rectlibre && app.params.PreAffZone != 0) return;
    M.GestVignettes(PictInvis);

    Flistimages& L = *app.list;
    if (M.Mnumulti.Checked()) {
        // The list comes up over the overlay for a moment; the same frozen picture waits
        // for the next rectangle.
        if (L.WindowState() == ui::kNormal) {
            L.SetLeft(1000);
            L.SetTop(1000);
            L.Show();
        }
        Timtransp.SetEnabled(true);
    } else {
        FinSession();
        app.DoEvents();
        app.SortieZone = true;
        app.ZoneValidee = true;
        if (M.WindowState() == ui::kNormal) {
            M.SetHeight(app.ZoneHauteur + 1400);
            M.SetWidth(M.Picture2.Width() > 10000 ? M.Picture2.Width() + 220 : 10000);
            M.CollerADroite();
            M.Show();
            M.bouton[kCmdListe].SetBorderStyle(ui::kBorderFixedSingle);
        }
        M.Picture2S.SetPicture(M.Picture2.Picture());
    }
    FenTransp(L, true, kJaunePale);
    M.TimZoom.SetEnabled(true);
}

void FrmFull::Timtransp_Timer() {
    Timtransp.SetEnabled(false);
    app.list->Hide();
    if (!enSession_) return;
    Show();
    PrendreClavier();
}

} // namespace mv
