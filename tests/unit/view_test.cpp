// The main window as a whole: zoom of the view, the fit of a big window capture,
// the mode reduced to the toolbar, and the tray icon with standby.
#include "app_fixture.h"
#include "core/commands.h"
#include "platform/gdi/bmp.h"
#include "test_util.h"

namespace {

class ViewTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        MarkLanguage();
        SetScreen(160, 120, gdi::Rgb(40, 90, 160));
        be.desktop.screen = Motif(160, 120);
        Start();
    }
    void Tray(int message) {
        ui::Dispatch(be, [&] { main->OnMouseMove({0, 0, float(message) * kTpp, 0}); });
    }
    const gdi::Surface& Source() { return main->Picture2S.Picture(); }
    int Ticked() {
        int n = 0, k = -1;
        for (int i = 0; i <= 4; ++i)
            if (main->mnuzoomX[i].Checked()) ++n, k = i;
        return n == 1 ? k : -1;
    }
};

TEST_F(ViewTest, ZoomAlwaysStartsFromTheWholeCapture) {
    ClickButton(mv::kCmdEcran);
    // The whole screen at full size behind a view at 75 %.
    ASSERT_TRUE(Source() == be.desktop.screen);
    EXPECT_EQ(Ticked(), 2);
    auto& vue = main->ImgTTscreen;
    ui::Dispatch(be, [&] { main->mnuzoomX_Click(4); });
    EXPECT_EQ(Ticked(), 4);
    EXPECT_EQ(vue.Width(), Tw(320));
    // Enlarged pixels stay square and sharp.
    for (int y : {0, 37, 119})
        for (int x : {0, 81, 159}) {
            const gdi::Pixel p = be.desktop.screen.At(x, y);
            EXPECT_EQ(vue.Image().At(2 * x, 2 * y), p);
            EXPECT_EQ(vue.Image().At(2 * x + 1, 2 * y + 1), p);
        }
    // 25 % twice, then 100 %: nothing lost on the way.
    ui::Dispatch(be, [&] { main->mnuzoomX_Click(0); });
    ui::Dispatch(be, [&] { main->mnuzoomX_Click(0); });
    EXPECT_EQ(vue.Width(), Tw(40));
    EXPECT_EQ(Ticked(), 0);
    ui::Dispatch(be, [&] { main->mnuzoomX_Click(3); });
    EXPECT_EQ(vue.Width(), Tw(160));
    EXPECT_TRUE(vue.Image() == be.desktop.screen);
    EXPECT_EQ(main->Height(), vue.Height() + 1430);
}

TEST_F(ViewTest, WindowCaptureTwiceTheScreenEndsAtHalf) {
    SetForeground({0, 0, 100, 80});
    ClickButton(mv::kCmdFenetre);
    be.RunFor(2100);
    EXPECT_EQ(Ticked(), 3);
    EXPECT_EQ(main->Picture2.Width(), Tw(100));

    SetForeground({0, 0, 320, 240});
    ClickButton(mv::kCmdFenetre);
    be.RunFor(2100);
    EXPECT_EQ(Ticked(), 1);
    EXPECT_EQ(main->Picture2.Width(), Tw(160));
    EXPECT_EQ(Source().Width(), 320);
    // Wider than the test screen: the window stops at its left edge, menus in reach.
    ASSERT_GT(main->Width(), app->Screen().WidthTwips());
    EXPECT_EQ(main->Left(), 0);
    EXPECT_FALSE(main->TimZoom.Enabled());
}

TEST_F(ViewTest, ReducedModeSurvivesCapturesAndChoices) {
    ui::Dispatch(be, [&] { main->Agrandred(); }); // no capture: nothing
    EXPECT_FALSE(app->ModeReduit);
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(main->Left(), app->Screen().WidthTwips() - main->Width());
    ClickButton(mv::kCmdAgrandir);
    ASSERT_TRUE(app->ModeReduit);
    EXPECT_EQ(main->Height(), 1430);
    EXPECT_EQ(main->Width(), main->LargeurMin());
    EXPECT_EQ(main->Left(), 0);

    // A new capture, a zoom and a choice keep the window small and the sizes for later.
    SetForeground({0, 0, 100, 80});
    ClickButton(mv::kCmdFenetre);
    be.RunFor(2100);
    ui::Dispatch(be, [&] { main->mnuzoomX_Click(4); });
    EXPECT_EQ(main->Height(), 1430);
    EXPECT_FALSE(main->Picture2.Visible());
    EXPECT_EQ(app->HautNormal, Tw(160) + 1430);
    ui::Dispatch(be, [&] { list->clickimage1(1, false); });
    EXPECT_EQ(main->Height(), 1430);
    EXPECT_FALSE(main->ImgTTscreen.Visible());
    EXPECT_EQ(app->VueCourante, L"image");

    ClickButton(mv::kCmdAgrandir);
    EXPECT_FALSE(app->ModeReduit);
    EXPECT_TRUE(main->ImgTTscreen.Visible());
    EXPECT_FALSE(main->Picture2.Visible());
    EXPECT_EQ(main->Height(), float(app->HautNormal));
}

TEST_F(ViewTest, TrayToggleAndStandby) {
    ClickButton(mv::kCmdEcran);
    auto& l = *list;
    Tray(515);
    EXPECT_EQ(main->WindowState(), ui::kMinimized);
    EXPECT_EQ(l.WindowState(), ui::kMinimized);
    Tray(515);
    EXPECT_EQ(main->WindowState(), ui::kNormal);
    EXPECT_TRUE(l.Visible());
    // Hidden by the standby entry: shown, then minimised in the same event.
    ui::Dispatch(be, [&] { main->mnuveille_Click(); });
    EXPECT_FALSE(main->Visible());
    EXPECT_FALSE(l.Visible());
    Tray(515);
    EXPECT_TRUE(main->Visible());
    EXPECT_EQ(main->WindowState(), ui::kMinimized);
    Tray(515);

    Tray(516);
    ASSERT_FALSE(be.popups.empty());
    EXPECT_EQ(be.popups.back(), L"mnucaptu");
    Tray(514); // anything else: nothing
    EXPECT_EQ(main->WindowState(), ui::kNormal);

    // Standby: a capture then leaves the list down, until the windows are shown again.
    ui::Dispatch(be, [&] { main->Mnured2_Click(); });
    EXPECT_EQ(main->mnuveille.Caption(), Entry(106));
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(main->WindowState(), ui::kNormal);
    EXPECT_EQ(l.WindowState(), ui::kMinimized);
    Tray(515);
    EXPECT_EQ(main->mnuveille.Caption(), Entry(106));
    Tray(515);
    EXPECT_EQ(main->mnuveille.Caption(), Entry(105));
    EXPECT_EQ(l.WindowState(), ui::kNormal);
    EXPECT_TRUE(l.Visible());
}

// On a scaled screen the toolbar's bitmaps fill their grown buttons: by whole pixels at
// twice the scale, averaged at a quarter more; the buttons loaded at run time too.
class ScaledToolbarTest : public AppTest, public ::testing::WithParamInterface<float> {};

TEST_P(ScaledToolbarTest, BitmapsFillTheGrownButtons) {
    const float tpp = GetParam();
    MarkLanguage();
    SetScreen(1600, 1200, gdi::Rgb(40, 90, 160));
    be.screen.tppX = be.screen.tppY = tpp;
    Start();
    for (int i : {0, 7, 20}) {
        const ui::PictureBox& b = main->bouton[i];
        const gdi::Surface& bitmap = b.Picture();
        ASSERT_FALSE(bitmap.Empty());
        const int side = int(480 / tpp);
        ASSERT_EQ(b.Image().Width(), side);
        ASSERT_EQ(b.Image().Height(), side);
        if (tpp == 7.5f) {
            for (int y = 0; y < bitmap.Height(); y += 5)
                for (int x = 0; x < bitmap.Width(); x += 3)
                    ASSERT_EQ(b.Image().At(2 * x + 1, 2 * y + 1), bitmap.At(x, y)) << i;
        } else {
            // The far corner is the bitmap's, not the back colour around a small copy.
            EXPECT_EQ(b.Image().At(side - 1, side - 1),
                      bitmap.At(bitmap.Width() - 1, bitmap.Height() - 1));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(TwiceAndAQuarterMore, ScaledToolbarTest, ::testing::Values(7.5f, 12.f));

} // namespace
