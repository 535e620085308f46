// The selection overlay: the frozen, dimmed screen, placing and drawing the rectangle with
// the mouse, the handles, validation into a capture, multi-selection and reopening; its
// keyboard: sizing and moving the rectangle, the modifiers' order, scrolling, the second
// screen and the seam of a double-height picture.
#include "app_fixture.h"
#include "platform/gdi/bmp.h"
#include "test_util.h"

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
    void ExpectRect(int l, int t, int w, int h) {
        EXPECT_EQ(F().rectsel.Left(), Tw(l));
        EXPECT_EQ(F().rectsel.Top(), Tw(t));
        EXPECT_EQ(F().rectsel.Width(), Tw(w));
        EXPECT_EQ(F().rectsel.Height(), Tw(h));
    }
};

TEST_F(OverlayTest, TheScreenFreezesDimmedWithACleanCopyAndSlidesIn) {
    Start();
    app->params.PreAffZone = 1;
    be.Click(main->bouton[mv::kCmdZone]);
    ASSERT_TRUE(F().Visible());
    EXPECT_FALSE(main->Visible());
    // From the lower right, 300 twips a tick.
    EXPECT_GT(F().Left(), 4000);
    EXPECT_TRUE(F().topMost);
    // It has the keys while it slides in, whoever was in front.
    ASSERT_EQ(be.desktop.forced.size(), 1u);
    EXPECT_EQ(be.desktop.forced[0], F().Handle());
    // A key while it slides in (after the one default-size pass of the first session).
    be.RunFor(50);
    ASSERT_GT(F().Left(), 0);
    const float largeur = F().rectsel.Width();
    be.KeyDown(F(), 39, 0);
    EXPECT_EQ(F().rectsel.Width(), largeur + Tw(1));
    be.RunFor(250);
    EXPECT_EQ(F().Left(), 0);
    EXPECT_EQ(F().Top(), 0);
    EXPECT_EQ(F().rectsel.Width(), largeur + Tw(1));
    EXPECT_EQ(F().coinrect[4].Left(), F().rectsel.Left() + F().rectsel.Width());

    // Two screens high: the grab dimmed once in the upper half; the clean copy beside it.
    const gdi::Surface& vue = F().Picture1.Image();
    ASSERT_EQ(vue.Width(), 200);
    ASSERT_EQ(vue.Height(), 300);
    for (auto [x, y] : {std::pair{0, 0}, {199, 149}, {57, 33}})
        EXPECT_EQ(vue.At(x, y), Teinte(be.desktop.screen.At(x, y))) << x << "," << y;
    EXPECT_EQ(F().PictPourSel.Image().At(57, 33), be.desktop.screen.At(57, 33));
    EXPECT_EQ(app->HautEcranTw, Tw(150));
    // And once more half a second after it opened.
    be.RunFor(500);
    EXPECT_EQ(be.desktop.forced.size(), 2u);
    // The clear spot shows the clean pixels inside the rectangle, 10 twips in.
    Rect(20, 10, 40, 30);
    EXPECT_TRUE(F().PictClaire.Visible());
    EXPECT_EQ(F().PictClaire.Image().At(0, 0), be.desktop.screen.At(21, 11));

    // The screen changing underneath does not touch the frozen picture.
    be.desktop.screen = Motif(200, 150, 90);
    be.RunFor(100);
    EXPECT_EQ(F().PictPourSel.Image().At(57, 33), Motif(200, 150, 0).At(57, 33));
}

TEST_F(OverlayTest, ARightClickTakesThePlacedRectangleOnePixelIn) {
    Start();
    Ouvrir(1);
    Rect(20, 10, 40, 30);
    be.MouseDown(F().Picture1, Tw(150), Tw(140), ui::kRightButton);
    be.RunFor(50);
    // The first zone of the run reaches the list.
    ASSERT_EQ(app->NbVignettes, 1);
    EXPECT_EQ(Capture(1), ScreenPart({21, 11, 61, 41}));
    EXPECT_FALSE(F().Visible());
    EXPECT_FALSE(F().EnSession());
    EXPECT_TRUE(main->Visible());
    EXPECT_EQ(app->ZoneGauche, Tw(20));
    EXPECT_EQ(app->ZoneHaut, Tw(10));
    EXPECT_EQ(app->ZoneLargeur, Tw(40));
    EXPECT_EQ(app->TypeCapt, L"z");
    // The cursor goes just beyond the bottom right corner.
    EXPECT_EQ(be.cursor.pos.x, 87);
    EXPECT_EQ(be.cursor.pos.y, 67);
    // A second click of a double right click, queued before the overlay went, is no
    // second capture.
    be.MouseDown(F().Picture1, Tw(150), Tw(140), ui::kRightButton);
    be.KeyDown(F(), 13, 0);
    EXPECT_EQ(app->NbVignettes, 1);

    // Shift and a right click make a square of the width.
    Ouvrir(1);
    be.MouseDown(F().Picture1, Tw(150), Tw(140), ui::kRightButton, ui::kShiftMask);
    EXPECT_EQ(F().rectsel.Height(), Tw(40));
    EXPECT_TRUE(F().Visible());
    // A rectangle running off the picture is cut to it.
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

TEST_F(OverlayTest, AFreehandDrawingIsCapturedOnRelease) {
    Start();
    // The hidden default rectangle covers the whole small screen: drawing starts anyway.
    Ouvrir(0);
    EXPECT_EQ(F().Picture1.MousePointer(), ui::kPointerCustom);
    EXPECT_FALSE(F().rectsel.Visible());
    // A press and a release on the spot draw nothing and leave the session open.
    be.MouseDown(F().Picture1, Tw(30), Tw(20), ui::kLeftButton);
    be.MouseUp(F().Picture1, Tw(30), Tw(20), ui::kLeftButton);
    EXPECT_TRUE(F().Visible());
    EXPECT_EQ(app->NbVignettes, 0);
    // The right button starts no drawing.
    be.MouseDown(F().Picture1, Tw(30), Tw(20), ui::kMiddleButton);
    EXPECT_FALSE(F().TraceLibre);

    // Drawn from the lower right up to the upper left: the rectangle is the same.
    be.MouseDown(F().Picture1, Tw(70), Tw(50), ui::kLeftButton);
    be.MouseMove(F().Picture1, Tw(50), Tw(35), ui::kLeftButton);
    be.MouseMove(F().Picture1, Tw(30), Tw(20), ui::kLeftButton);
    EXPECT_EQ(F().rectlibre.Left(), Tw(30));
    EXPECT_EQ(F().rectlibre.Width(), Tw(40));
    be.MouseUp(F().Picture1, Tw(30), Tw(20), ui::kLeftButton);
    be.RunFor(50);
    ASSERT_EQ(app->NbVignettes, 1);
    EXPECT_EQ(Capture(1), ScreenPart({31, 21, 71, 51}));
    EXPECT_FALSE(F().Visible());

    // On the grid of ten pixels a drawing is cut to whole tens.
    app->params.GrilleDix = 1;
    Ouvrir(0);
    F().rectsel.Move(Tw(150), Tw(120), Tw(10), Tw(10)); // small: the refusal applies
    be.MouseDown(F().Picture1, Tw(152), Tw(118), ui::kLeftButton);
    EXPECT_FALSE(F().TraceLibre);
    be.MouseDown(F().Picture1, Tw(10), Tw(10), ui::kLeftButton);
    be.MouseMove(F().Picture1, Tw(57), Tw(33), ui::kLeftButton);
    EXPECT_EQ(F().rectlibre.Width(), Tw(40));
    EXPECT_EQ(F().rectlibre.Height(), Tw(20));
}

TEST_F(OverlayTest, HandlesResizeAndCrossingTheOppositeEdgeSpringsBack) {
    Start();
    app->params.LargSel = L"0050";
    app->params.HautSel = L"0030";
    Ouvrir(1);
    Rect(40, 40, 60, 40);
    // Handle 5, bottom right: the edges land five pixels beyond the mouse.
    EXPECT_EQ(F().coinrect[5].Left(), Tw(100));
    be.MouseMove(F().Picture1, Tw(110), Tw(90), ui::kLeftButton);
    be.RunFor(5);
    EXPECT_EQ(F().Picture1.MousePointer(), ui::kPointerSizeNWSE);
    EXPECT_EQ(F().rectsel.Width(), Tw(75));
    EXPECT_EQ(F().rectsel.Height(), Tw(55));
    be.MouseUp(F().Picture1, Tw(110), Tw(90), ui::kLeftButton);
    be.RunFor(5);
    EXPECT_EQ(F().rectsel.Width(), Tw(75));
    // Handle 1, top left: the corner lands on the mouse, the far edges stay.
    F().PlacDesCoins(F().rectsel);
    be.MouseMove(F().Picture1, Tw(30), Tw(32), ui::kLeftButton);
    be.RunFor(5);
    be.MouseUp(F().Picture1, Tw(30), Tw(32), ui::kLeftButton);
    EXPECT_EQ(F().rectsel.Left(), Tw(30));
    EXPECT_EQ(F().rectsel.Top(), Tw(32));
    EXPECT_EQ(F().rectsel.Left() + F().rectsel.Width(), Tw(115));
    EXPECT_EQ(F().rectsel.Top() + F().rectsel.Height(), Tw(95));
    // Only a validation remembers a zone.
    EXPECT_EQ(app->ZoneLargeur, 0);

    // Handle 4 taken across the left edge: the default size where the drag failed.
    F().PlacDesCoins(F().rectsel);
    F().coinrect[4].SetLeft(F().coinrect[0].Left() - Tw(3));
    ui::Dispatch(be, [&] { F().RedimRect(4); });
    EXPECT_FALSE(F().rectsel.Visible());
    be.RunFor(40);
    EXPECT_TRUE(F().rectsel.Visible());
    EXPECT_EQ(F().rectsel.Width(), Tw(50));
    EXPECT_EQ(F().rectsel.Height(), Tw(30));
    EXPECT_FALSE(be.ended);
    EXPECT_TRUE(be.boxes.empty());
}

TEST_F(OverlayTest, MultiSelectionKeepsTheFrozenScreenForEachRectangle) {
    Start();
    be.Click(main->Mnumulti);
    ASSERT_TRUE(main->Mnumulti.Checked());
    Ouvrir(1);
    for (int i = 0; i < 3; ++i) {
        F().rectsel.Move(Tw(10 + 30 * i), Tw(10), Tw(20), Tw(20));
        be.MouseDown(F().Picture1, Tw(190), Tw(140), ui::kRightButton);
        // The list stands over the overlay for a moment, then the overlay is back.
        be.RunFor(450);
        EXPECT_TRUE(F().Visible());
        EXPECT_TRUE(F().EnSession());
    }
    ASSERT_EQ(app->NbVignettes, 3);
    EXPECT_EQ(Capture(3), ScreenPart({71, 11, 91, 31}));
    // A capture command while the session is open is ignored.
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, 3);
    be.KeyDown(F(), 27, 0); // Escape
    EXPECT_FALSE(F().Visible());
    EXPECT_TRUE(main->Visible());
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, 4);
}

TEST_F(OverlayTest, BackToTheLastFrozenScreenAfterItChanged) {
    Start();
    Ouvrir(1);
    F().rectsel.Move(Tw(20), Tw(10), Tw(40), Tw(30));
    be.KeyDown(F(), 13, 0); // Enter validates
    ASSERT_EQ(app->NbVignettes, 1);
    const gdi::Surface avant = ScreenPart({21, 11, 61, 41});
    const gdi::Surface fige = F().Picture1.Image();

    be.desktop.screen = Motif(200, 150, 90);
    ClickButton(mv::kCmdAnnuler);
    be.RunFor(300);
    ASSERT_TRUE(F().Visible());
    // Not dimmed again: the same picture as before.
    EXPECT_EQ(F().Picture1.Image().At(57, 33), fige.At(57, 33));
    be.MouseDown(F().Picture1, Tw(190), Tw(140), ui::kRightButton);
    ASSERT_EQ(app->NbVignettes, 2);
    EXPECT_EQ(Capture(2), avant);
}

// Command 19 grabs the screen again into the lower half, under the first grab, dimmed and
// clean alike, and shows the seam in the middle; a rectangle across it takes both grabs.
// F6 and F7 trim the seam on both surfaces and give it back.
TEST_F(OverlayTest, DoubleHeightGrabsTheSecondScreenIntoTheLowerHalfAndTrimsTheSeam) {
    Start();
    Ouvrir(1);
    // F6 and F7 do nothing in a plain session.
    const gdi::Surface simple = F().PictPourSel.Image();
    Touche(117);
    Touche(118);
    EXPECT_EQ(F().PictPourSel.Image(), simple);
    EXPECT_EQ(F().RognBas, 0);
    Touche(27);
    const gdi::Surface premier = be.desktop.screen;
    be.desktop.screen = Motif(200, 150, 90);
    ClickButton(mv::kCmdZoneDouble);
    be.RunFor(300);
    ASSERT_TRUE(F().Visible());
    const gdi::Surface& vue = F().Picture1.Image();
    const gdi::Surface& propre = F().PictPourSel.Image();
    ASSERT_EQ(vue.Height(), 300);
    ASSERT_EQ(propre.Height(), 300);
    for (auto [x, y] : {std::pair{0, 0}, {199, 149}, {57, 33}}) {
        EXPECT_EQ(vue.At(x, y), Teinte(premier.At(x, y))) << x << "," << y;
        EXPECT_EQ(vue.At(x, 150 + y), Teinte(be.desktop.screen.At(x, y))) << x << "," << y;
        EXPECT_EQ(propre.At(x, y), premier.At(x, y)) << x << "," << y;
        EXPECT_EQ(propre.At(x, 150 + y), be.desktop.screen.At(x, y)) << x << "," << y;
    }
    EXPECT_EQ(F().Picture1.Top(), -Tw(75));
    // The help on the seam, until the mouse passes over it.
    EXPECT_TRUE(F().PictHelpDbH.Visible());
    EXPECT_EQ(F().LabAideDbH.Caption(), Entry(273));
    be.MouseMove(F().LabAideDbH, 10, 10);
    EXPECT_FALSE(F().PictHelpDbH.Visible());

    F().rectsel.Move(Tw(20), Tw(130), Tw(40), Tw(30));
    be.MouseDown(F().Picture1, Tw(150), Tw(100), ui::kRightButton);
    ASSERT_EQ(app->NbVignettes, 1);
    const gdi::Surface zone = Capture(1);
    ASSERT_EQ(zone.Height(), 30);
    EXPECT_EQ(zone.At(0, 0), premier.At(21, 131));
    EXPECT_EQ(zone.At(0, 18), premier.At(21, 149));
    EXPECT_EQ(zone.At(0, 19), be.desktop.screen.At(21, 0));

    // Each double height needs a zone command first.
    Ouvrir(1);
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

TEST_F(OverlayTest, ACommandInsideTheWaitOfAnotherDoesNotNest) {
    Start();
    app->params.PreAffZone = 1;
    be.Schedule(100, [&] { be.Click(main->bouton[mv::kCmdZone]); });
    ClickButton(mv::kCmdZone);
    be.RunFor(300);
    EXPECT_EQ(be.desktop.grabs, 1);
    EXPECT_TRUE(F().Visible());
}

TEST_F(OverlayTest, TheCursorIsStampedOnlyForAHotkeySession) {
    Start();
    gdi::IconImage icone;
    icone.width = icone.height = 2;
    icone.color.assign(4, 0xFF0000);
    icone.mask.assign(4, 0);
    be.cursor.images[0x4321] = icone;
    app->CurseurCapt = 0x4321;
    app->CurseurXClavier = 50;
    app->CurseurYClavier = 60;
    Ouvrir(1);
    EXPECT_NE(F().PictPourSel.Image().At(50, 60), gdi::Rgb(255, 0, 0));
    be.KeyDown(F(), 27, 0);

    // The hotkey of a zone: Control+Z as the key poll sees it.
    be.cursor.pos = {50, 60};
    be.cursor.handle = 0x4321;
    Chord({ui::kKeyControl, 'Z'});
    be.RunFor(150);
    ASSERT_TRUE(F().Visible());
    EXPECT_EQ(F().PictPourSel.Image().At(50, 60), gdi::Rgb(255, 0, 0));
    EXPECT_EQ(F().Picture1.Image().At(51, 61), gdi::Rgb(255, 0, 0));
}

TEST_F(OverlayTest, ArrowsSizeAndMoveInTheTablesOrder) {
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
    EXPECT_EQ(Capture(1), ScreenPart({21, 31, 62, 42}));

    // In free mode the arrows start from the hidden rectangle.
    Ouvrir(0);
    Rect(20, 10, 40, 30);
    Touche(39);
    ExpectRect(20, 10, 41, 30);
    Touche(13);
    ASSERT_EQ(app->NbVignettes, 2);
    EXPECT_EQ(Capture(2).Width(), 41);
}

// In multi-selection: keys that arrive while a rectangle is being taken wait for nothing
// and do nothing, a held Enter takes one capture, and a close request (Alt+F4) is Escape.
TEST_F(OverlayTest, EnterTakesOnceAndACloseIsEscape) {
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

TEST_F(OverlayTest, ScrollingAndTheSecondScreen) {
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

    // Two monitors: the frozen picture is two primary screens wide, and a zone on the
    // second screen comes from its own pixels.
    be.screen.monitors = 2;
    be.desktop.screen = Motif(400, 150, 0);
    Ouvrir(1);
    EXPECT_EQ(F().Width(), Tw(400));
    ASSERT_EQ(F().Picture1.Image().Width(), 400);
    EXPECT_EQ(F().Picture1.Image().At(300, 40), Teinte(be.desktop.screen.At(300, 40)));
    F().rectsel.Move(Tw(250), Tw(10), Tw(40), Tw(30));
    be.MouseDown(F().Picture1, Tw(150), Tw(140), ui::kRightButton);
    ASSERT_EQ(app->NbVignettes, 1);
    EXPECT_EQ(Capture(1), ScreenPart({251, 11, 291, 41}));
    // Plus in steps of 300 down to minus one screen, minus back to 0.
    Ouvrir(1);
    for (int i = 0; i < 12; ++i) Touche(107);
    EXPECT_EQ(F().Picture1.Left(), -Tw(200));
    EXPECT_EQ(BoxesWith(Entry(155)), 1);
    Touche(9);
    EXPECT_EQ(F().Picture1.Left(), Tw(200));
    Touche(109); // minus only while the picture is left of 0
    EXPECT_EQ(F().Picture1.Left(), Tw(200));
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
