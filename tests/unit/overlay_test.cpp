// The selection overlay past its plain roads, which the Wine checks take: the keys while it
// slides in, a validation's edge cases, the keyboard's modifiers and limits, the seam of a
// double height, and screens past 16-bit twips.
#include "app_fixture.h"
#include "platform/gdi/bmp.h"
#include "test_util.h"

#include <array>

namespace {

// The tint over a pixel: black at alpha 80 of 255.
gdi::Pixel Teinte(gdi::Pixel p) {
    auto c = [](int v) { return (v * 175 + 127) / 255; };
    return gdi::Rgb(c(gdi::RedOf(p)), c(gdi::GreenOf(p)), c(gdi::BlueOf(p)));
}

class OverlayTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        MarkLanguage();
        SetScreen(200, 150, 0);
        be.desktop.screen = Motif(200, 150, 0);
    }
    mv::FrmFull& F() { return *app->full; }
    // Command 0 from the toolbar, the overlay slid in.
    void Ouvrir(int16_t preAff) {
        app->params.PreAffZone = preAff;
        ClickButton(mv::kCmdZone);
        be.RunFor(300);
        ASSERT_TRUE(F().Visible());
    }
    gdi::Surface Capture(int row) const { return gdi::LoadBmp(TempFile(row)); }
    void Touche(int16_t code, int16_t shift = 0) { be.KeyDown(F(), code, shift); }
    // Places the rectangle and its handles.
    void Rect(int l, int t, int w, int h) {
        F().rectsel.Move(Tw(l), Tw(t), Tw(w), Tw(h));
        F().PlacDesCoins(F().rectsel);
    }
};

TEST_F(OverlayTest, TheOverlayHasTheKeysWhileItSlidesIn) {
    Start();
    app->params.PreAffZone = 1;
    be.Click(main->bouton[mv::kCmdZone]);
    ASSERT_TRUE(F().Visible());
    EXPECT_GT(F().Left(), 4000); // still sliding in
    // It takes the keys at once, whoever was in front, and again half a second later.
    ASSERT_EQ(be.desktop.forced.size(), 1u);
    EXPECT_EQ(be.desktop.forced[0], F().Handle());
    // A key while it slides in sizes the rectangle; the handles follow when it lands.
    be.RunFor(50);
    const float largeur = F().rectsel.Width();
    Touche(39);
    be.RunFor(250);
    EXPECT_EQ(F().Left(), 0);
    EXPECT_EQ(F().rectsel.Width(), largeur + Tw(1));
    EXPECT_EQ(F().coinrect[4].Left(), F().rectsel.Left() + F().rectsel.Width());
    be.RunFor(500);
    EXPECT_EQ(be.desktop.forced.size(), 2u);
}

TEST_F(OverlayTest, AValidationIsTakenOnceCutToThePictureAndNeedsAWidth) {
    Start();
    Ouvrir(1);
    Rect(20, 10, 40, 30);
    be.MouseDown(F().Picture1, Tw(150), Tw(140), ui::kRightButton);
    be.RunFor(50);
    ASSERT_EQ(app->NbVignettes, 1);
    gdi::Surface attendu(40, 30); // one pixel in
    gdi::BitBlt(attendu, 0, 0, 40, 30, be.desktop.screen, 21, 11);
    EXPECT_EQ(Capture(1), attendu);
    EXPECT_FALSE(F().EnSession());
    // A second click of a double right click, queued before the overlay went, is no
    // second capture.
    be.MouseDown(F().Picture1, Tw(150), Tw(140), ui::kRightButton);
    be.KeyDown(F(), 13, 0);
    EXPECT_EQ(app->NbVignettes, 1);

    // A rectangle running off the picture is cut to it.
    Ouvrir(1);
    F().rectsel.Move(Tw(180), Tw(10), Tw(40), Tw(20));
    be.MouseDown(F().Picture1, Tw(5), Tw(5), ui::kRightButton);
    ASSERT_EQ(app->NbVignettes, 2);
    EXPECT_EQ(Capture(2).Width(), 20);
    // A rectangle without width ends the session with no capture and no error.
    Ouvrir(1);
    F().rectsel.Move(Tw(20), Tw(10), 0, Tw(30));
    be.MouseDown(F().Picture1, Tw(5), Tw(5), ui::kRightButton);
    be.RunFor(2000);
    EXPECT_FALSE(F().EnSession());
    EXPECT_EQ(app->NbVignettes, 2);
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_FALSE(be.ended);
}

// In free mode a click on the spot draws nothing; on the grid of ten a drawing is cut to
// whole tens.
TEST_F(OverlayTest, FreehandDrawingEdgeCases) {
    Start();
    app->params.GrilleDix = 1;
    Ouvrir(0);
    be.MouseDown(F().Picture1, Tw(30), Tw(20), ui::kLeftButton);
    be.MouseUp(F().Picture1, Tw(30), Tw(20), ui::kLeftButton);
    EXPECT_TRUE(F().Visible());
    EXPECT_EQ(app->NbVignettes, 0);
    be.MouseDown(F().Picture1, Tw(10), Tw(10), ui::kLeftButton);
    be.MouseMove(F().Picture1, Tw(57), Tw(33), ui::kLeftButton);
    EXPECT_EQ(F().rectlibre.Width(), Tw(40));
    EXPECT_EQ(F().rectlibre.Height(), Tw(20));
}

// A handle taken across the opposite edge: the default size where the drag failed.
TEST_F(OverlayTest, AHandleCrossingTheOppositeEdgeSpringsBackToTheDefaultSize) {
    Start();
    app->params.LargSel = L"0050";
    app->params.HautSel = L"0030";
    Ouvrir(1);
    Rect(40, 40, 60, 40);
    F().coinrect[4].SetLeft(F().coinrect[0].Left() - Tw(3));
    ui::Dispatch(be, [&] { F().RedimRect(4); });
    EXPECT_FALSE(F().rectsel.Visible());
    be.RunFor(40);
    EXPECT_TRUE(F().rectsel.Visible());
    EXPECT_EQ(F().rectsel.Width(), Tw(50));
    EXPECT_EQ(F().rectsel.Height(), Tw(30));
}

// In multi-selection: a key that arrives while a rectangle is being taken does nothing, a
// held Enter takes one capture, the overlay comes back with the keys, a capture command is
// ignored while the session is open, and a close request (Alt+F4) is Escape.
TEST_F(OverlayTest, MultiSelectionTakesEachRectangleOnceAndACloseIsEscape) {
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
    be.RunFor(500); // the list comes and goes
    EXPECT_TRUE(F().Visible());
    EXPECT_EQ(be.desktop.forced.back(), F().Handle());
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, 1);

    ui::Dispatch(be, [&] { F().CloseRequested(ui::kFormControlMenu); });
    EXPECT_TRUE(F().IsLoaded());
    EXPECT_FALSE(F().EnSession());
    EXPECT_TRUE(main->Visible());
    EXPECT_EQ(app->NbVignettes, 1);
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, 2);
}

TEST_F(OverlayTest, ACommandInsideTheWaitOfAnotherDoesNotNest) {
    Start();
    app->params.PreAffZone = 1;
    be.Schedule(100, [&] { be.Click(main->bouton[mv::kCmdZone]); });
    ClickButton(mv::kCmdZone);
    be.RunFor(300);
    EXPECT_EQ(be.desktop.grabs, 1);
    EXPECT_TRUE(F().Visible());
}

// Arrows size the rectangle, Alt by 20; Shift moves it by one, Control by 20. Alt wins over
// Shift, Shift over Control; a step that would turn the rectangle inside out does nothing.
TEST_F(OverlayTest, ArrowModifiersInTheirOrder) {
    Start();
    Ouvrir(1);
    Rect(20, 10, 40, 30);
    const struct {
        int16_t code, shift;
        int l, t, w, h;
    } pas[] = {
        {39, 0, 20, 10, 41, 30}, {40, 0, 20, 10, 41, 31},     {37, 4, 20, 10, 21, 31},
        {38, 4, 20, 10, 21, 11}, {39, 1, 21, 10, 21, 11},     {40, 2, 21, 30, 21, 11},
        {39, 5, 21, 30, 41, 11}, {37, 1 | 2, 20, 30, 41, 11}, {38, 4, 20, 30, 41, 11},
    };
    for (const auto& p : pas) {
        SCOPED_TRACE(testing::Message() << p.code << " shift " << p.shift);
        Touche(p.code, p.shift);
        const auto& r = F().rectsel;
        EXPECT_EQ((std::array{r.Left(), r.Top(), r.Width(), r.Height()}),
                  (std::array{Tw(p.l), Tw(p.t), Tw(p.w), Tw(p.h)}));
    }
    EXPECT_FALSE(be.ended);
}

// F8 scrolls once, then is refused until F9; with one monitor numeric plus shows a notice,
// gives the keys back and scrolls nothing, nor does Tab.
TEST_F(OverlayTest, ScrollingStopsAtItsLimitsAndOneMonitorSaysSo) {
    Start();
    Ouvrir(1);
    Touche(119);
    Touche(119);
    EXPECT_EQ(F().Picture1.Top(), -100);
    Touche(120);
    EXPECT_EQ(F().Picture1.Top(), 0);
    const size_t forced = be.desktop.forced.size();
    Touche(107);
    EXPECT_EQ(BoxesWith(Entry(155)), 1);
    EXPECT_EQ(be.desktop.forced.size(), forced + 1);
    Touche(9);
    EXPECT_EQ(F().Picture1.Left(), 0);
}

// Command 19 grabs the screen again into the lower half, tinted there alone, and its clean
// copy beside it. F6 trims the seam only in such a session, and the next session starts
// untrimmed. A capture across the seam is the Wine check's.
TEST_F(OverlayTest, DoubleHeightGrabsTheSecondScreenIntoTheLowerHalfAndTrimsTheSeam) {
    Start();
    Ouvrir(1);
    const gdi::Surface simple = F().PictPourSel.Image();
    Touche(117);
    EXPECT_EQ(F().PictPourSel.Image(), simple);
    Touche(27);
    const gdi::Surface premier = be.desktop.screen;
    be.desktop.screen = Motif(200, 150, 90);
    ClickButton(mv::kCmdZoneDouble);
    be.RunFor(300);
    ASSERT_TRUE(F().Visible());
    const gdi::Surface& propre = F().PictPourSel.Image();
    ASSERT_EQ(propre.Height(), 300);
    EXPECT_EQ(F().Picture1.Image().At(57, 33), Teinte(premier.At(57, 33)));
    EXPECT_EQ(F().Picture1.Image().At(57, 183), Teinte(be.desktop.screen.At(57, 33)));
    EXPECT_EQ(propre.At(57, 33), premier.At(57, 33));
    EXPECT_EQ(propre.At(57, 183), be.desktop.screen.At(57, 33));

    Touche(117);
    Touche(117);
    Touche(117, 1); // Shift gives one row back
    EXPECT_EQ(F().RognBas, 1);
    Touche(13);
    Ouvrir(1);
    EXPECT_EQ(F().RognBas, 0);
}

// A 3840 x 2160 screen passes 16-bit twips: both kinds of capture keep their sizes.
TEST_F(OverlayTest, BigScreenCapturesKeepTheirSizes) {
    Start();
    SetScreen(3840, 2160, gdi::Rgb(10, 20, 30));
    be.desktop.screen.At(1711, 951) = gdi::Rgb(250, 0, 0);
    ClickButton(mv::kCmdEcran);
    be.RunFor(3000);
    Ouvrir(1);
    be.MouseDown(F().Picture1, Tw(100), Tw(2000), ui::kRightButton);
    be.RunFor(3000);
    EXPECT_TRUE(be.boxes.empty());
    ASSERT_EQ(app->NbVignettes, 2);
    EXPECT_EQ(app->tab.LargV[1], Tw(3840));
    EXPECT_EQ(app->tab.HautFenV[1], Tw(2160) + 1800);
    EXPECT_EQ(app->tab.LargV[2], Tw(420));
    // The default rectangle in the middle, one pixel in.
    EXPECT_EQ(Capture(2).At(0, 0), gdi::Rgb(250, 0, 0));
}
} // namespace
