// The keyboard of the overlay: sizing and moving the rectangle, the modifiers' order,
// scrolling, the second screen and the seam of a double-height picture.
#include "app_fixture.h"
#include "platform/gdi/bmp.h"
#include "test_util.h"

namespace {

class OverlayKeysTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        MarkLanguage();
        SetScreen(200, 150, 0);
        for (int y = 0; y < 150; ++y)
            for (int x = 0; x < 200; ++x) be.desktop.screen.At(x, y) = gdi::Rgb(x, y, x ^ y);
    }
    mv::FrmFull& F() { return *app->full; }
    void Ouvrir(int16_t preAff, int commande = mv::kCmdZone) {
        app->params.PreAffZone = preAff;
        ClickButton(commande);
        be.RunFor(300);
        ASSERT_TRUE(F().Visible());
    }
    void Touche(int16_t code, int16_t shift = 0) { be.KeyDown(F(), code, shift); }
    void Rect(int l, int t, int w, int h) {
        F().rectsel.Move(Tw(l), Tw(t), Tw(w), Tw(h));
        F().PlacDesCoins(F().rectsel);
    }
    void ExpectRect(int l, int t, int w, int h) {
        EXPECT_EQ(F().rectsel.Left(), Tw(l));
        EXPECT_EQ(F().rectsel.Top(), Tw(t));
        EXPECT_EQ(F().rectsel.Width(), Tw(w));
        EXPECT_EQ(F().rectsel.Height(), Tw(h));
    }
};

TEST_F(OverlayKeysTest, ArrowsSizeAndMoveInTheTablesOrder) {
    Start();
    Ouvrir(1);
    Rect(20, 10, 40, 30);
    Touche(39);
    Touche(40);
    ExpectRect(20, 10, 41, 31);
    Touche(37, 4); // Alt: 20 pixels
    Touche(38, 4);
    ExpectRect(20, 10, 21, 11);
    Touche(39, 1); // Shift: move by one
    Touche(40, 2); // Control: move by 20
    ExpectRect(21, 30, 21, 11);
    // Alt wins over Shift, Shift over Control.
    Touche(39, 1 | 4);
    ExpectRect(21, 30, 41, 11);
    Touche(37, 1 | 2);
    ExpectRect(20, 30, 41, 11);
    // A step that would turn the rectangle inside out does nothing.
    Touche(38, 4);
    ExpectRect(20, 30, 41, 11);
    EXPECT_FALSE(be.ended);
    // The labels follow; Enter takes the rectangle one pixel in.
    EXPECT_EQ(F().Labtaille.Left(), Tw(61) + 50);
    Touche(13);
    ASSERT_EQ(app->NbVignettes, 1);
    EXPECT_EQ(gdi::LoadBmp(TempFile(1)), ScreenPart({21, 31, 62, 42}));
}

TEST_F(OverlayKeysTest, FreeModeArrowsStartFromTheHiddenRectangle) {
    Start();
    Ouvrir(0);
    Rect(20, 10, 40, 30);
    Touche(39);
    ExpectRect(20, 10, 41, 30);
    Touche(13);
    ASSERT_EQ(app->NbVignettes, 1);
    EXPECT_EQ(gdi::LoadBmp(TempFile(1)).Width(), 41);
}

// In multi-selection: keys that arrive while a rectangle is being taken wait for nothing
// and do nothing, a held Enter takes one capture, and a close request (Alt+F4) is Escape.
TEST_F(OverlayKeysTest, EnterTakesOnceAndACloseIsEscape) {
    Start();
    be.Click(main->Mnumulti);
    Ouvrir(1);
    Rect(20, 10, 40, 30);
    be.Schedule(0, [&] { Touche(27); });
    Touche(13);
    ASSERT_EQ(app->NbVignettes, 1);
    EXPECT_TRUE(F().EnSession());
    be.KeyDown(F(), 13, 0, true);
    EXPECT_EQ(app->NbVignettes, 1);
    be.RunFor(500); // the list comes and goes, the overlay has the keys again
    EXPECT_TRUE(F().Visible());
    EXPECT_EQ(be.desktop.forced.back(), F().Handle());

    ui::Dispatch(be, [&] { F().CloseRequested(ui::kFormControlMenu); });
    EXPECT_TRUE(F().IsLoaded());
    EXPECT_FALSE(F().EnSession());
    EXPECT_TRUE(main->Visible());
    EXPECT_EQ(app->NbVignettes, 1);
}

TEST_F(OverlayKeysTest, ScrollingAndTheSecondScreen) {
    Start();
    Ouvrir(1);
    // A plain session: F8 once, then refused until F9.
    Touche(119);
    EXPECT_EQ(F().Picture1.Top(), -100);
    Touche(119);
    EXPECT_EQ(F().Picture1.Top(), -100);
    Touche(120);
    EXPECT_EQ(F().Picture1.Top(), 0);
    // One monitor: numeric plus shows the notice and nothing scrolls; nor does Tab.
    const size_t forced = be.desktop.forced.size();
    Touche(107);
    EXPECT_EQ(BoxesWith(Entry(155)), 1);
    EXPECT_EQ(F().Picture1.Left(), 0);
    EXPECT_EQ(be.desktop.forced.size(), forced + 1); // the keys back from the box
    Touche(9);
    EXPECT_EQ(F().Picture1.Left(), 0);
    Touche(27);

    // Two monitors: plus in steps of 300 down to minus one screen, minus back to 0.
    be.screen.monitors = 2;
    be.desktop.screen = gdi::Surface(400, 150, gdi::Rgb(1, 2, 3));
    Ouvrir(1);
    for (int i = 0; i < 12; ++i) Touche(107);
    EXPECT_EQ(F().Picture1.Left(), -Tw(200));
    EXPECT_EQ(BoxesWith(Entry(155)), 1);
    Touche(9);
    EXPECT_EQ(F().Picture1.Left(), Tw(200));
    Touche(109); // minus only while the picture is left of 0
    EXPECT_EQ(F().Picture1.Left(), Tw(200));
}

TEST_F(OverlayKeysTest, TheSeamIsTrimmedOnBothSurfacesAndGivenBack) {
    Start();
    Ouvrir(1);
    // F6 and F7 do nothing in a plain session.
    const gdi::Surface avant = F().PictPourSel.Image();
    Touche(117);
    Touche(118);
    EXPECT_EQ(F().PictPourSel.Image(), avant);
    EXPECT_EQ(F().RognBas, 0);
    Touche(27);

    ClickButton(mv::kCmdZoneDouble);
    be.RunFor(300);
    ASSERT_TRUE(F().Visible());
    const gdi::Surface bas = F().PictBasSel.Image();
    Touche(117);
    Touche(117);
    // Two rows trimmed, and the seam two rows up: the lower grab starts at row 148.
    EXPECT_EQ(F().RognBas, 2);
    EXPECT_EQ(F().DemiHautPx, 148);
    EXPECT_EQ(F().PictPourSel.Image().At(5, 148), bas.At(5, 2));
    EXPECT_EQ(F().Picture1.Image().At(5, 148), F().PictBas.Image().At(5, 2));
    Touche(117, 1);
    EXPECT_EQ(F().RognBas, 1);
    EXPECT_EQ(F().PictPourSel.Image().At(5, 148), bas.At(5, 1));
    // F7 shifts the upper grab down.
    Touche(118);
    EXPECT_EQ(F().RognHaut, 1);
    EXPECT_EQ(F().PictPourSel.Image().At(5, 1), F().PictHautSel.Image().At(5, 0));
    // A validation by mouse keeps the counts; the next session starts untrimmed.
    F().rectsel.Move(Tw(20), Tw(130), Tw(40), Tw(30));
    be.MouseDown(F().Picture1, Tw(150), Tw(100), ui::kRightButton);
    EXPECT_EQ(F().RognBas, 1);
    Ouvrir(1);
    EXPECT_EQ(F().RognBas, 0);
    EXPECT_EQ(F().RognHaut, 0);
}

} // namespace
