// The illustrated help: a missing picture, and the zones against the shipped pictures; the
// tip of the day's setting in the per-user store and the side panels.
#include "app_fixture.h"
#include "language/AideRapide.h"
#include "language/FrmAideStd.h"
#include "language/language_menu.h"

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

// A help picture the image library cannot read: a box names the file and the help stays
// (the zones and menu rows are the Wine checks').
using HelpTest = AppTest;

TEST_F(HelpTest, AMissingPictureNamesTheFile) {
    StartMarked();
    // Each help text names its picture after its entry.
    for (size_t i = 0; i < app->lang.TabAide.size(); ++i)
        app->lang.TabAide[i] = L"aide" + std::to_wstring(i);
    auto chemin = [&](int n) {
        return be.shell.programFolder + L"\\aide" + std::to_wstring(n) + L".jpg";
    };
    for (int n : {46, 47, 48, 49, 50, 67, 69})
        be.codec.animations[chemin(n)] = {{gdi::Surface(240, 130)}, {0}, -1};
    ui::Dispatch(be, [&] { mv::MnuAide_Click(*app); });
    be.Click(app->aide->CdeFen[1]);
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, Entry(280) + L"\r\n" + chemin(68));
    EXPECT_EQ(be.lastError, 0);
    EXPECT_TRUE(app->aide->Visible());
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
