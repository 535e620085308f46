// The illustrated help: its zones, menus, layout and pictures; the tip of the day and its
// setting in the per-user store.
#include "app_fixture.h"
#include "language/AideRapide.h"
#include "language/FrmAideStd.h"
#include "language/language_menu.h"
#include "test_util.h"

#include <algorithm>
#include <fstream>
#include <set>

namespace {

const std::wstring kReglage = L"Mirovanta\\Options\\Show Tips at Startup";

class TipTest : public AppTest {
protected:
    mv::frmTip& Tip() { return *app->tip; }
};

// The setting decides at start and the menu turns it back on. F1 shows each window's quick
// help beside it; a hotkey puts every panel away. The news window shows the version.
TEST_F(TipTest, TheSettingTheSidePanelsAndTheNews) {
    be.shell.settings[kReglage] = L"0";
    MarkLanguage();
    SetScreen(1280, 1024, gdi::Rgb(40, 90, 160));
    Start();
    EXPECT_FALSE(Tip().IsLoaded());

    ui::Dispatch(be, [&] { mv::mnuReacTip_Click(*app); });
    EXPECT_EQ(be.shell.settings[kReglage], L"1");
    ASSERT_TRUE(Tip().IsLoaded());
    EXPECT_TRUE(Tip().Visible());
    EXPECT_EQ(Tip().Caption(), Entry(170));
    EXPECT_EQ(Tip().chkLoadTipsAtStartup.Value(), 1);

    // Clearing the box writes 0 at once; only "0" and "1" are ever written.
    be.Click(Tip().chkLoadTipsAtStartup);
    EXPECT_EQ(be.shell.settings[kReglage], L"0");
    be.Click(Tip().cmdOK);
    EXPECT_FALSE(Tip().IsLoaded());

    // Anything but "0" is on, a missing value too.
    for (const wchar_t* valeur : {L"yes", L"2", L""}) {
        be.shell.settings[kReglage] = valeur;
        EXPECT_TRUE(mv::AstucesAuDemarrage(*app)) << rt::ToUtf8(valeur);
    }
    be.shell.settings.erase(kReglage);
    EXPECT_TRUE(mv::AstucesAuDemarrage(*app));

    be.KeyDown(*main, ui::kKeyF1, 0);
    ASSERT_TRUE(app->aidfn->Visible());
    EXPECT_EQ(app->aidfn->LabTexte.Caption(), Entry(92));
    EXPECT_EQ(app->aidfn->Caption(), Entry(95));
    // Beside the main window, on the screen.
    EXPECT_TRUE(app->aidfn->Left() >= main->Left() + main->Width() ||
                app->aidfn->Left() + app->aidfn->Width() <= main->Left());
    EXPECT_GE(app->aidfn->Left(), 0);
    be.KeyDown(*list, ui::kKeyF1, 0);
    EXPECT_EQ(app->aidfv->LabTexte.Caption(), Entry(93));
    app->options->Show();
    be.KeyDown(*app->options, ui::kKeyF1, 0);
    EXPECT_EQ(app->aidopt->LabTexte.Caption(), Entry(94));

    Chord({ui::kKeyControl, 'E'});
    EXPECT_FALSE(app->aidfn->IsLoaded() || app->aidfv->IsLoaded() || app->aidopt->IsLoaded());
    EXPECT_FALSE(app->options->Visible());

    be.Click(main->MnuNouversion);
    ASSERT_TRUE(app->actua->Visible());
    EXPECT_EQ(app->actua->LabTitre.Caption(), Entry(281) + mv::kVersion);
    EXPECT_NE(app->actua->LabNouveau.Caption().find(Entry(283)), std::wstring::npos);
    be.Click(app->actua->CdeFermer);
    EXPECT_FALSE(app->actua->IsLoaded());
}

TEST_F(TipTest, TipsAreDrawnFromTheLanguageFile) {
    StartMarked();
    ASSERT_TRUE(Tip().Visible());
    const auto& astuces = app->lang.TabBulles;
    ASSERT_GE(astuces.size(), 25u);
    std::set<int32_t> vues;
    for (int k = 0; k < 200; ++k) {
        const int32_t n = Tip().AstuceCourante;
        ASSERT_GE(n, 1);
        ASSERT_LE(n, int32_t(astuces.size()));
        EXPECT_EQ(Tip().lblTipText.Caption(), astuces[size_t(n - 1)]);
        vues.insert(n);
        be.Click(Tip().cmdNextTip);
    }
    EXPECT_GT(vues.size(), astuces.size() / 2);

    // With no tips at all the text stays as it is.
    const std::wstring avant = Tip().lblTipText.Caption();
    app->lang.TabBulles.clear();
    be.Click(Tip().cmdNextTip);
    EXPECT_EQ(Tip().lblTipText.Caption(), avant);

    // Standby takes the tip away.
    ui::Dispatch(be, [&] { main->Mnured2_Click(); });
    EXPECT_FALSE(Tip().IsLoaded());
}

// ---- the illustrated help

using Aide = mv::FrmAideStd;

class HelpTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        StartMarked();
        // Each help text says which entry it is.
        for (size_t i = 0; i < app->lang.TabAide.size(); ++i)
            app->lang.TabAide[i] = L"aide" + std::to_wstring(i);
        for (size_t m = 0; m < 5; ++m)
            for (size_t r = 0; r < 7; ++r)
                app->lang.TabAideMenu[m][r] = L"menu" + std::to_wstring(m * 10 + r);
        // Pictures of known sizes, named as the help entries name them.
        for (int n : {46, 47, 48, 49, 50, 67, 68, 69}) {
            const auto it = kTailles.find(n);
            const auto [w, h] = it == kTailles.end() ? std::pair{240, 130} : it->second;
            be.codec.animations[Chemin(n)] = {{gdi::Surface(w, h)}, {0}, -1};
        }
        ui::Dispatch(be, [&] { mv::MnuAide_Click(*app); });
    }
    std::wstring Chemin(int n) const {
        return be.shell.programFolder + L"\\aide" + std::to_wstring(n) + L".jpg";
    }
    Aide& F() { return *app->aide; }
    std::wstring Texte() { return F().LabExplic.Caption(); }
    // The mouse at pixel (x, y) of the picture.
    void Survol(int x, int y) { be.MouseMove(F().PictForm, float(x * 15), float(y * 15)); }
    const std::map<int, std::pair<int, int>> kTailles = {
        {67, {640, 330}}, {68, {190, 560}}, {69, {700, 330}}};
};

TEST_F(HelpTest, EveryZoneShowsItsTextAndTheLastOfOverlappingZonesWins) {
    ASSERT_TRUE(F().Visible());
    EXPECT_EQ(F().VueAide, 0);
    EXPECT_EQ(Texte(), L"aide74");
    EXPECT_EQ(F().Caption(), L"aide20");
    for (int16_t vue = 0; vue <= 2; ++vue) {
        be.Click(F().CdeFen[vue]);
        EXPECT_EQ(Texte(), L"aide74");
        const auto& zones = Aide::Zones()[size_t(vue)];
        for (size_t i = 0; i < zones.size(); ++i) {
            const auto& z = zones[i];
            // The zone's last pixel: of its neighbours only later ones may claim it.
            Survol(z.droite, z.bas);
            std::wstring attendu = L"aide" + std::to_wstring(Aide::TexteZone(vue, int(i)));
            for (size_t j = i + 1; j < zones.size(); ++j)
                if (zones[j].Contient(z.droite, z.bas))
                    attendu = L"aide" + std::to_wstring(Aide::TexteZone(vue, int(j)));
            if (vue == 0 && z.bas > 78 && z.droite < 560) attendu = L"aide80";
            EXPECT_EQ(Texte(), attendu) << "view " << vue << " zone " << i;
        }
    }
    // Thumbnails and a caption share a column of pixels: the caption, tested later, wins.
    be.Click(F().CdeFen[1]);
    Survol(100, 55);
    EXPECT_EQ(Texte(), L"aide32");
    // Outside every zone the last text stays.
    Survol(3, 3);
    EXPECT_EQ(Texte(), L"aide32");

    // View 0: the view of the capture below the toolbar, the buttons' own texts on it.
    be.Click(F().CdeFen[0]);
    Survol(300, 200);
    EXPECT_EQ(Texte(), L"aide80");
    Survol(15, 60);
    EXPECT_EQ(Texte(), L"aide0");
    Survol(615, 40);
    EXPECT_EQ(Texte(), L"aide19");
}

TEST_F(HelpTest, MenuTitlesOpenTheirPictureAndRowsExplainTheirEntry) {
    const float tpp = 15;
    Survol(150, 35);
    ASSERT_TRUE(F().Pictmenu.Visible());
    EXPECT_EQ(F().MenuAide, 3);
    EXPECT_EQ(Texte(), L"aide78");
    EXPECT_FLOAT_EQ(F().rectmenu.Width(), F().Pictmenu.Width());

    be.MouseMove(F().Pictmenu, 30, 2 * 17 * tpp + 20);
    EXPECT_EQ(Texte(), L"menu32");
    EXPECT_FLOAT_EQ(F().rectmenu.Top(), 34 * tpp);
    be.MouseMove(F().Pictmenu, 30, 6 * 17 * tpp);
    EXPECT_EQ(Texte(), L"menu36");
    // A row past the seventh is no row.
    be.MouseMove(F().Pictmenu, 30, 7 * 17 * tpp + 1);
    EXPECT_EQ(Texte(), L"menu36");
    EXPECT_FLOAT_EQ(F().rectmenu.Top(), 102 * tpp);

    // The tray icon's title, then another view: the menu goes.
    Survol(280, 30);
    EXPECT_EQ(F().MenuAide, 4);
    be.Click(F().CdeFen[2]);
    EXPECT_FALSE(F().Pictmenu.Visible());
}

TEST_F(HelpTest, TheWindowFitsEachViewAndCloseWorksFromAny) {
    // Views 0 and 2: the text under the picture, centred; view 1: beside it. The window
    // holds both.
    for (int16_t vue : {0, 2, 1}) {
        be.Click(F().CdeFen[vue]);
        const auto [w, h] = kTailles.at(67 + vue);
        const auto& p = F().PictForm;
        const auto& l = F().LabExplic;
        EXPECT_FLOAT_EQ(p.Width(), Tw(w));
        EXPECT_FLOAT_EQ(p.Height(), Tw(h));
        if (vue == 1) {
            EXPECT_GT(l.Left(), p.Left() + p.Width());
        } else {
            EXPECT_GT(l.Top(), p.Top() + p.Height());
            EXPECT_FLOAT_EQ(l.Left() * 2 + l.Width(), F().Width());
        }
        EXPECT_LT(std::max(p.Left() + p.Width(), l.Left() + l.Width()), F().Width()) << vue;
        EXPECT_LT(std::max(p.Top() + p.Height(), l.Top() + l.Height()), F().Height()) << vue;
    }
    for (int16_t vue = 0; vue <= 2; ++vue) {
        ui::Dispatch(be, [&] { mv::MnuAide_Click(*app); });
        be.Click(F().CdeFen[vue]);
        be.Click(F().CdeFen[3]);
        EXPECT_FALSE(F().IsLoaded()) << vue;
    }
    EXPECT_TRUE(be.boxes.empty());
}

TEST_F(HelpTest, AMissingPictureNamesTheFile) {
    be.codec.animations.erase(Chemin(68));
    be.Click(F().CdeFen[1]);
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, Entry(280) + L"\r\n" + Chemin(68));
    EXPECT_EQ(be.lastError, 0);
    EXPECT_TRUE(F().Visible());
}

// The width and height of a JPEG file, from its frame header.
std::pair<int, int> TailleJpeg(const std::wstring& chemin) {
    const std::vector<uint8_t> o = rt::ReadFileBytes(chemin);
    for (size_t i = 2; i + 9 < o.size();) {
        if (o[i] != 0xFF) return {0, 0};
        const uint8_t marque = o[i + 1];
        const size_t longueur = size_t(o[i + 2] << 8 | o[i + 3]);
        if (marque >= 0xC0 && marque <= 0xC2)
            return {o[i + 7] << 8 | o[i + 8], o[i + 5] << 8 | o[i + 6]};
        i += 2 + longueur;
    }
    return {0, 0};
}

// Every zone of every view lies inside the shipped picture of its view, in each language,
// and each menu picture holds its seven rows.
TEST(HelpPictures, EveryZoneLiesInsideItsPicture) {
    const std::wstring dossier = rt::FromUtf8(MIROVANTA_ASSET_DIR);
    const std::array<const wchar_t*, 3> vues = {L"main", L"thumbs", L"options"};
    for (const wchar_t* langue : {L"en", L"fr"}) {
        for (size_t v = 0; v < 3; ++v) {
            const std::wstring f = dossier + L"\\help_" + vues[v] + L"_" + langue + L".jpg";
            const auto [w, h] = TailleJpeg(f);
            ASSERT_GT(w, 0) << rt::ToUtf8(f);
            for (const auto& z : Aide::Zones()[v]) {
                EXPECT_LT(z.droite, w) << rt::ToUtf8(f);
                EXPECT_LT(z.bas, h) << rt::ToUtf8(f);
            }
            if (v == 0) {
                for (const auto& t : Aide::TitresMenus()) EXPECT_LT(t.zone.droite, w);
            }
        }
        for (const wchar_t* menu : {L"file", L"edit", L"tools", L"help", L"tray"}) {
            const std::wstring f = dossier + L"\\help_menu_" + menu + L"_" + langue + L".jpg";
            const auto [w, h] = TailleJpeg(f);
            EXPECT_GT(w, 100) << rt::ToUtf8(f);
            EXPECT_GE(h, Aide::kLignes * Aide::kHauteurLigne) << rt::ToUtf8(f);
        }
    }
}

} // namespace
