#include "overlay/FrmFull.h"

#include "browser/Flistimages.h"
#include "capture/capture.h"
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
// Outline and label colours: light red and white of the 16-colour palette.
constexpr uint32_t kRouge = 0x0000FF;
constexpr uint32_t kBlanc = 0xFFFFFF;
// Pale yellow of the position labels; the list's see-through colour between sessions.
constexpr uint32_t kJaunePale = 0xC0FFFF;
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
    PictHelpDbH.Move(500, 0, 4200, 1400);
    PictHelpDbH.SetBackColor(0xE1FFFF);
    PictHelpDbH.SetVisible(false);
    pictcoccin.Move(0, 0, 240, 240);
    pictcoccin.SetBackColor(0x404040);
}

void FrmFull::WireEvents() {
    OnLoad = [this] { Form_Load(); };
    OnActivate = [this] { Form_Activate(); };
    OnQueryUnload = [this](int&, int) { Timreinit.SetEnabled(false); };
    OnKeyDown = [this](int16_t& key, int16_t) {
        // Escape and Enter; the rest of the keyboard is the next step of the overlay.
        if (!enSession_) return;
        if (key == 27) {
            Annuler();
        } else if (key == 13) {
            rectlibre.Move(rectsel.Left(), rectsel.Top(), rectsel.Width(), rectsel.Height());
            RognBas = 0;
            RognHaut = 0;
            ValidSel(rectsel);
        }
    };
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
    const auto ecran = app.Screen();
    const float tppx = ecran.tppX, tppy = ecran.tppY;
    const float hautEcran = ecran.HeightTwips();

    TimForgrnd.SetEnabled(true);
    SetLeft(5000);
    SetTop(5000);
    TimMvtDeb.SetEnabled(true);

    Picture1.SetHeight(hautEcran);
    Picture1.SetWidth(ecran.monitors == 1 ? ecran.WidthTwips() : 2 * ecran.WidthTwips());
    // The list is a normal window while a session is open.
    app.list->SetTransparentKey(-1);

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
            Picture1.ClearPicture();
            dc->CopyTo(Picture1.Image(), 0, 0, largPx, hautPx, 0, 0);
            PictHaut.Move(0, 0, Picture1.Width(), hautEcran);
            dc->CopyTo(PictHaut.Image(), 0, 0, largPx, hautPx, 0, 0);
            // The clean copy, taken before the tint.
            PictPourSel.Move(0, 0, Picture1.Width(), hautEcran);
            PictPourSel.SetPicture(Picture1.Image());
            app.HautEcranTw = Picture1.Height();
            Picture1.SetHeight(2 * Picture1.Height());
        }
        PictPourSel.SetHeight(Picture1.Height());
        app.DoEvents();

        // The tint is baked into the pictures once: moving the rectangle then costs only
        // the clear spot's blit.
        const gdi::Surface& masque = PictMask.Image();
        auto teinter = [&masque](gdi::Surface& s, int y) {
            gdi::AlphaBlend(s, 0, y, s.Width(), s.Height(), masque, 0, 0, masque.Width(),
                            masque.Height(), kAlphaTeinte);
        };
        if (Mode == kCmdZoneDouble) {
            teinter(Picture1.Image(), ecran.PxY(app.HautEcranTw));
            teinter(PictBas.Image(), 0);
            teinter(PictHaut.Image(), 0);
        } else {
            teinter(Picture1.Image(), 0);
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
    L.SetTransparentKey(kJaunePale);
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

// ---- rectangle tracking ----------------------------------------------------------------

void FrmFull::PlacDesCoins(ui::Shape& Rect) {
    if (app.params.PreAffZone != 0 && coinrect.Count() == 8) {
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
    LabPrecis.SetLeft(Rect.Left() + 30);
    LabPrecis.SetTop(Rect.Top() - 600);
    SelClaire(rectsel);
    PlaceGuide();
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
    if (!enSession_) return;
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
            M.SetLeft(ecran.WidthTwips() - M.Width());
            M.Show();
            M.bouton[kCmdListe].SetBorderStyle(ui::kBorderFixedSingle);
        }
        M.Picture2S.SetPicture(M.Picture2.Picture());
    }
    L.SetTransparentKey(kJaunePale);
    M.TimZoom.SetEnabled(true);
}

void FrmFull::Timtransp_Timer() {
    Timtransp.SetEnabled(false);
    app.list->Hide();
    if (enSession_) Show();
}

} // namespace mv
