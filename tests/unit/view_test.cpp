// The main window past what the Wine checks see: zoom from the whole capture, the fit of a
// big window capture, the mode reduced to the toolbar kept, the tray icon with standby, and
// the toolbar on a scaled screen.
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
        ui::Dispatch(be, [&] { main->OnMouseMove({0, 0, Tw(message), 0}); });
    }
    const gdi::Surface& Source() { return main->Picture2S.Picture(); }
    int Ticked() {
        int n = 0, k = -1;
        for (int i = 0; i <= 4; ++i)
            if (main->mnuzoomX[i].Checked()) ++n, k = i;
        return n == 1 ? k : -1;
    }
};

// Every zoom starts from the whole capture: enlarged pixels stay square and sharp, and 25 %
// twice then 100 % loses nothing.
TEST_F(ViewTest, ZoomAlwaysStartsFromTheWholeCapture) {
    ClickButton(mv::kCmdEcran);
    auto& vue = main->ImgTTscreen;
    ui::Dispatch(be, [&] { main->mnuzoomX_Click(4); });
    for (int y : {0, 37, 119})
        for (int x : {0, 81, 159}) {
            const gdi::Pixel p = be.desktop.screen.At(x, y);
            EXPECT_EQ(vue.Image().At(2 * x, 2 * y), p);
            EXPECT_EQ(vue.Image().At(2 * x + 1, 2 * y + 1), p);
        }
    ui::Dispatch(be, [&] { main->mnuzoomX_Click(0); });
    ui::Dispatch(be, [&] { main->mnuzoomX_Click(0); });
    EXPECT_EQ(Ticked(), 0);
    ui::Dispatch(be, [&] { main->mnuzoomX_Click(3); });
    EXPECT_TRUE(vue.Image() == be.desktop.screen);
}

// A window capture twice the screen's size is shown at half, the window at the screen's
// left edge so that the menus stay in reach.
TEST_F(ViewTest, WindowCaptureTwiceTheScreenEndsAtHalf) {
    SetForeground({0, 0, 320, 240});
    ClickButton(mv::kCmdFenetre);
    be.RunFor(2100);
    EXPECT_EQ(Ticked(), 1);
    EXPECT_EQ(main->Picture2.Width(), Tw(160));
    EXPECT_EQ(Source().Width(), 320);
    EXPECT_EQ(main->Left(), 0);
}

// The mode reduced to the toolbar needs a capture, and a new capture, a zoom or a choice
// keep the window small; back to normal the last choice shows.
TEST_F(ViewTest, ReducedModeSurvivesCapturesAndChoices) {
    ui::Dispatch(be, [&] { main->Agrandred(); });
    EXPECT_FALSE(app->ModeReduit);
    ClickButton(mv::kCmdEcran);
    ClickButton(mv::kCmdAgrandir);
    ASSERT_TRUE(app->ModeReduit);
    const float reduite = main->Height();
    SetForeground({0, 0, 100, 80});
    ClickButton(mv::kCmdFenetre);
    be.RunFor(2100);
    ui::Dispatch(be, [&] { main->mnuzoomX_Click(4); });
    ui::Dispatch(be, [&] { list->clickimage1(1, false); });
    EXPECT_EQ(main->Height(), reduite);
    EXPECT_FALSE(main->ImgTTscreen.Visible());
    EXPECT_FALSE(main->Picture2.Visible());

    ClickButton(mv::kCmdAgrandir);
    EXPECT_FALSE(app->ModeReduit);
    EXPECT_TRUE(main->ImgTTscreen.Visible());
    EXPECT_EQ(main->Height(), float(app->HautNormal));
}

// In standby a capture leaves the list down until a double click on the tray icon shows the
// windows again (the tray menu and its double clicks are the Wine checks').
TEST_F(ViewTest, TrayAndStandby) {
    ClickButton(mv::kCmdEcran);
    auto& l = *list;
    ui::Dispatch(be, [&] { main->Mnured2_Click(); });
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(main->WindowState(), ui::kNormal);
    EXPECT_EQ(l.WindowState(), ui::kMinimized);
    Tray(515);
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
