// The illustrated help: overlapping zones, menu rows, a missing picture, and the zones
// against the shipped pictures; the tip of the day and its setting in the per-user store.
#include "app_fixture.h"
#include "language/AideRapide.h"
#include "language/FrmAideStd.h"
#include "language/language_menu.h"
#include "test_util.h"

#include <map>

namespace {

const std::wstring kReglage = L"Mirovanta\\Options\\Show Tips at Startup";

class TipTest : public AppTest {
protected:
    mv::frmTip& Tip() { return *app->tip; }
};

// Off at start when the setting says 0, and anything but "0" is on, a missing value too (the
// menu and the tip's box are checked under Wine). A hotkey puts every side panel away.
TEST_F(TipTest, TheSettingAndTheSidePanels) {
    be.shell.settings[kReglage] = L"0";
    MarkLanguage();
    Start();
    EXPECT_FALSE(Tip().IsLoaded());
    for (const wchar_t* valeur : {L"yes", L"2", L""}) {
        be.shell.settings[kReglage] = valeur;
        EXPECT_TRUE(mv::AstucesAuDemarrage(*app)) << rt::ToUtf8(valeur);
    }
    be.shell.settings.erase(kReglage);
    EXPECT_TRUE(mv::AstucesAuDemarrage(*app));
    be.KeyDown(*main, ui::kKeyF1, 0);
    ASSERT_TRUE(app->aidfn->Visible());
    be.KeyDown(*list, ui::kKeyF1, 0);
    ASSERT_TRUE(app->aidfv->Visible());
    Chord({ui::kKeyControl, 'E'});
    EXPECT_FALSE(app->aidfn->IsLoaded() || app->aidfv->IsLoaded());
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

// Where zones overlap the one tested later wins; outside every zone the last text stays.
// A menu title opens its picture; a row past the seventh is no row; another view closes it.
TEST_F(HelpTest, OverlappingZonesAndMenuRows) {
    ASSERT_TRUE(F().Visible());
    Survol(300, 200); // the view of the capture, under the buttons
    EXPECT_EQ(Texte(), L"aide80");
    Survol(15, 60);
    EXPECT_EQ(Texte(), L"aide0");
    be.Click(F().CdeFen[1]);
    Survol(100, 55); // thumbnails and a caption share a column of pixels
    EXPECT_EQ(Texte(), L"aide32");
    Survol(3, 3);
    EXPECT_EQ(Texte(), L"aide32");

    be.Click(F().CdeFen[0]);
    Survol(150, 35);
    ASSERT_TRUE(F().Pictmenu.Visible());
    be.MouseMove(F().Pictmenu, 30, Tw(6 * 17));
    EXPECT_EQ(Texte(), L"menu36");
    be.MouseMove(F().Pictmenu, 30, Tw(7 * 17) + 1);
    EXPECT_EQ(Texte(), L"menu36");
    be.Click(F().CdeFen[2]);
    EXPECT_FALSE(F().Pictmenu.Visible());
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
