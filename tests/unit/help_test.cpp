// The tip of the day and its setting in the per-user store.
#include "app_fixture.h"
#include "language/language_menu.h"
#include "test_util.h"

#include <set>

namespace {

const std::wstring kReglage = L"Mirovanta\\Options\\Show Tips at Startup";

class TipTest : public AppTest {
protected:
    mv::frmTip& Tip() { return *app->tip; }
};

TEST_F(TipTest, TheSettingDecidesAtStartAndTheMenuTurnsItBackOn) {
    be.shell.settings[kReglage] = L"0";
    StartMarked();
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

} // namespace
