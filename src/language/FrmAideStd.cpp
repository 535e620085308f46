#include "language/FrmAideStd.h"

#include "core/frmMain.h"
#include "runtime/integer.h"

#include <algorithm>

namespace mv {

namespace {

// The label under or beside the picture, and the room around it, in twips.
constexpr float kGaucheImage = 1800;
constexpr float kHautImage = 600;
constexpr float kLargeurMin = 9000;
constexpr float kLargeurTexteCote = 4800;

// The texts of each view's zones start at these help entries.
constexpr std::array<int, 3> kPremierTexte = {0, 23, 51};
// The rest of view 0's picture: the view of the capture, below the toolbar.
constexpr int kTexteVue = 80;
constexpr int kBasBarre = 78;
constexpr int kDroiteVue = 560;
constexpr int kTexteOuverture = 74;

std::vector<FrmAideStd::Zone> Colonnes(const std::vector<int16_t>& g, const std::vector<int16_t>& d,
                                       const std::vector<int16_t>& h,
                                       const std::vector<int16_t>& b) {
    std::vector<FrmAideStd::Zone> z;
    for (size_t i = 0; i < g.size(); ++i) z.push_back({g[i], d[i], h[i], b[i]});
    return z;
}

} // namespace

const std::array<std::vector<FrmAideStd::Zone>, 3>& FrmAideStd::Zones() {
    static const std::array<std::vector<Zone>, 3> zones = [] {
        std::array<std::vector<Zone>, 3> z;
        // View 0: the toolbar's buttons, the last one on the row above.
        std::vector<int16_t> haut(19, 50), bas(19, 78);
        haut.push_back(30);
        bas.push_back(50);
        z[0] = Colonnes({0,   40,  70,  100, 131, 161, 195, 225, 260, 290,
                         320, 350, 381, 415, 445, 475, 510, 540, 570, 600},
                        {35,  68,  96,  128, 160, 190, 220, 255, 286, 316,
                         348, 375, 410, 440, 470, 505, 535, 565, 595, 630},
                        haut, bas);
        // View 1: the thumbnails, the slider, the tick boxes, captions and position boxes,
        // the saved and the mailed marks.
        std::vector<int16_t> g1 = {40, 160};
        std::vector<int16_t> d1 = {100, 180};
        g1.insert(g1.end(), 7, 130);
        d1.insert(d1.end(), 7, 140);
        g1.insert(g1.end(), 8, 100);
        d1.insert(d1.end(), 8, 160);
        g1.insert(g1.end(), {10, 10, 10, 20, 20});
        d1.insert(d1.end(), {20, 20, 20, 38, 38});
        z[1] = Colonnes(g1, d1, {50,  28,  65,  165, 215, 275, 335, 395, 495, 45,  145,
                                 195, 250, 315, 375, 475, 535, 145, 250, 315, 145, 250},
                        {550, 100, 75,  175, 225, 285, 345, 405, 505, 60,  155,
                         205, 265, 330, 390, 490, 550, 155, 260, 325, 155, 260});
        // View 2: the options dialog.
        std::vector<int16_t> g2(10, 30);
        g2.insert(g2.end(), {360, 565, 565, 565});
        z[2] = Colonnes(g2, {680, 360, 300, 300, 300, 300, 300, 300, 450, 680, 560, 680, 680, 680},
                        {65, 95, 125, 145, 166, 186, 206, 226, 240, 275, 160, 100, 185, 222},
                        {85, 115, 140, 165, 185, 205, 225, 239, 270, 320, 230, 180, 220, 265});
        return z;
    }();
    return zones;
}

const std::array<FrmAideStd::TitreMenu, 5>& FrmAideStd::TitresMenus() {
    static const std::array<TitreMenu, 5> titres = {{
        {{0, 50, 20, 50}, 46, 75, 10},
        {{65, 100, 20, 50}, 47, 76, 65},
        {{110, 135, 20, 50}, 48, 77, 115},
        {{141, 260, 20, 50}, 49, 78, 160},
        {{270, 300, 20, 50}, 50, 79, 280},
    }};
    return titres;
}

int FrmAideStd::TexteZone(int vue, int i) {
    return kPremierTexte.at(size_t(vue)) + i;
}

FrmAideStd::FrmAideStd(App& a) : ui::Form(a.be, L"FrmAideStd"), app(a) {
    OnLoad = [this] { Form_Load(); };
    CdeFen.OnClick = [this](int i) { CdeFen_Click(int16_t(i)); };
    PictForm.OnMouseMove = [this](const ui::MouseEvent& e) {
        PictForm_MouseMove(e.button, e.shift, e.x, e.y);
    };
    Pictmenu.OnMouseMove = [this](const ui::MouseEvent& e) {
        Pictmenu_MouseMove(e.button, e.shift, e.x, e.y);
    };
}

void FrmAideStd::Design() {
    borderStyle = ui::kBorderFixedSingle;
    maxButton = false;
    Move(600, 600, kLargeurMin, 6000);
    if (!CdeFen.Exists(0)) CdeFen.Design(0);
    LabChoix.Move(120, 120, 1560, 640);
    LabChoix.SetTransparent(true);
    CdeFen[0].Move(120, kHautImage + 200, 1560, 420);
    LabVue.Move(kGaucheImage, 200, 6000, 300);
    LabVue.SetFont({L"Arial", 10, true, false});
    LabVue.SetTransparent(true);
    PictForm.autoSize = true;
    PictForm.Move(kGaucheImage, kHautImage, 3000, 3000);
    LabExplic.Move(200, 4000, 8000, 2250);
    LabExplic.SetFont({L"Arial", 10, false, false});
    LabExplic.SetTransparent(true);
    Pictmenu.autoSize = true;
    Pictmenu.SetVisible(false);
    rectmenu.SetContainer(&Pictmenu);
    rectmenu.SetBorderColor(0xD77800);
    rectmenu.Move(0, 0, 1500, 255);
}

void FrmAideStd::Form_Load() {
    SetBackColor(app.main->BackColor());
    SetCaption(app.lang.TabAide[20]);
    LabChoix.SetCaption(app.lang.TabAide[66]);
    for (int16_t i = 1; i <= 3; ++i)
        if (!CdeFen.Exists(i)) CdeFen.Load(i);
    for (int16_t i = 1; i <= 3; ++i) {
        CdeFen[i].SetTop(CdeFen[0].Top() + float(i) * 500 + (i == 3 ? 300 : 0));
        CdeFen[i].SetVisible(true);
    }
    const std::array<int, 4> textes = {21, 22, 45, 65};
    for (int16_t i = 0; i <= 3; ++i) CdeFen[i].SetCaption(app.lang.TabAide[size_t(textes[i])]);
}

bool FrmAideStd::ChargerImage(ui::PictureBox& cible, int n) {
    const std::wstring chemin =
        app.be.GetShell().ProgramFolder() + L"\\" + app.lang.TabAide.at(size_t(n)) + L".jpg";
    std::vector<gdi::Surface> images;
    std::vector<int> delais;
    int boucles = 0;
    if (app.be.GetCodec().LoadFrames(chemin, images, delais, boucles) != 0 || images.empty()) {
        app.MsgBox(app.Lang(280) + L"\r\n" + chemin, ui::kExclamation);
        return false;
    }
    cible.SetPicture(images.front());
    return true;
}

void FrmAideStd::CdeFen_Click(int16_t Index) {
    VueAide = Index;
    Pictmenu.SetVisible(false);
    LabExplic.SetCaption(app.lang.TabAide[kTexteOuverture]);
    if (Index == 3) {
        Unload();
        return;
    }
    if (Index < 0 || Index > 3) return;
    LabVue.SetCaption(app.lang.TabAide[size_t(71 + Index)]);
    if (!ChargerImage(PictForm, 67 + Index)) PictForm.SetPicture(gdi::Surface());
    PictForm.SetLeft(kGaucheImage);
    PictForm.SetTop(kHautImage);
    const float droiteImage = PictForm.Left() + PictForm.Width();
    const float basImage = PictForm.Top() + PictForm.Height();
    if (Index == 1) {
        SetWidth(std::max(kLargeurMin, droiteImage + 100 + kLargeurTexteCote + 300));
        LabExplic.Move(droiteImage + 100, PictForm.Top(), Width() - (droiteImage + 300), 2250);
        SetHeight(std::max(basImage, CdeFen[3].Top() + CdeFen[3].Height()) + 500);
    } else {
        SetWidth(std::max(kLargeurMin, droiteImage + 300));
        const float largeur = Width() - 400;
        LabExplic.Move((Width() - largeur) / 2, basImage + 100, largeur, 2250);
        SetHeight(LabExplic.Top() + LabExplic.Height() + 750);
    }
}

void FrmAideStd::PictForm_MouseMove(int, int, float X, float Y) {
    const ui::ScreenMetrics ecran = app.Screen();
    // The position in pixels of the picture, as the zones are.
    const int x = int(rt::Int(X / ecran.tppX));
    const int y = int(rt::Int(Y / ecran.tppY));
    const auto& zones = Zones().at(size_t(std::clamp<int>(VueAide, 0, 2)));
    if (VueAide != 0) Pictmenu.SetVisible(false);
    // No early exit: of overlapping zones the last one wins.
    for (size_t i = 0; i < zones.size(); ++i)
        if (zones[i].Contient(x, y))
            LabExplic.SetCaption(app.lang.TabAide[size_t(TexteZone(VueAide, int(i)))]);
    if (VueAide != 0) return;
    if (y > kBasBarre && x < kDroiteVue) LabExplic.SetCaption(app.lang.TabAide[kTexteVue]);
    for (int16_t m = 0; m < int16_t(TitresMenus().size()); ++m) {
        const TitreMenu& t = TitresMenus()[size_t(m)];
        if (!t.zone.Contient(x, y)) continue;
        if (MenuAide != m || !Pictmenu.Visible()) {
            if (!ChargerImage(Pictmenu, t.image)) continue;
        }
        Pictmenu.SetLeft(PictForm.Left() + float(t.decalage) * ecran.tppX);
        Pictmenu.SetTop(PictForm.Top() + 50 * ecran.tppY);
        Pictmenu.ZOrder(0);
        Pictmenu.SetVisible(true);
        MenuAide = m;
        rectmenu.SetWidth(Pictmenu.Width());
        rectmenu.SetHeight(kHauteurLigne * ecran.tppY);
        LabExplic.SetCaption(app.lang.TabAide[size_t(t.texte)]);
    }
}

void FrmAideStd::Pictmenu_MouseMove(int, int, float, float Y) {
    const ui::ScreenMetrics ecran = app.Screen();
    const auto ligne = int(rt::Int(Y / (kHauteurLigne * ecran.tppY)));
    if (ligne < 0 || ligne >= kLignes) return;
    rectmenu.SetTop(float(ligne * kHauteurLigne) * ecran.tppY);
    LabExplic.SetCaption(
        app.lang.TabAideMenu.at(size_t(std::clamp<int>(MenuAide, 0, 4))).at(size_t(ligne)));
}

void MnuAide_Click(App& app) {
    app.aide->Show();
    app.aide->CdeFen_Click(0);
}

} // namespace mv
