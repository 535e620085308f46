// Whole-screen and window grabs: pixels, the cursor stamp, the wait, the clipboard copy and
// the thumbnails made from a grab.
#include "app_fixture.h"
#include "capture/Fcam.h"
#include "platform/gdi/bmp.h"

namespace {

constexpr gdi::Pixel kFond = gdi::Rgb(40, 90, 160);
constexpr gdi::Pixel kRouge = gdi::Rgb(255, 0, 0);

// An opaque square cursor of one colour.
gdi::IconImage Carre(int n, gdi::Pixel c) {
    gdi::IconImage icon;
    icon.width = n;
    icon.height = n;
    icon.color.assign(size_t(n) * size_t(n), c);
    icon.mask.assign(size_t(n) * size_t(n), 0);
    return icon;
}

int Count(const gdi::Surface& s, gdi::Pixel p) {
    int n = 0;
    for (int y = 0; y < s.Height(); ++y)
        for (int x = 0; x < s.Width(); ++x) n += s.At(x, y) == p;
    return n;
}

// True when the 4 by 4 square at (x, y) is all p and those are all the p pixels.
bool SquareAt(const gdi::Surface& s, int x, int y, gdi::Pixel p) {
    for (int j = 0; j < 4; ++j)
        for (int i = 0; i < 4; ++i)
            if (s.At(x + i, y + j) != p) return false;
    return Count(s, p) == 16;
}

class GrabTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        MarkLanguage();
        SetScreen(160, 120, kFond);
    }
    gdi::Surface Saved(int row) { return gdi::LoadBmp(TempFile(row)); }
    // A grab as the hotkey timer starts it.
    void Hotkey(int index) {
        ui::Dispatch(be, [&] { main->GestCommande(index, true); });
        be.RunFor(50);
    }
};

TEST_F(GrabTest, CursorIsStampedByHotkeyAtItsPlaceAndOtherwiseSixPixelsBack) {
    Start();
    const ui::CursorHandle stored = 0x20001;
    be.cursor.images[stored] = Carre(4, kRouge);
    app->CurseurCapt = stored; // as a hotkey stores it
    be.cursor.pos = {50, 40};

    Hotkey(1); // desktop by hotkey: the position as it stands
    ASSERT_EQ(app->NbVignettes, 1);
    EXPECT_TRUE(SquareAt(Saved(1), 50, 40, kRouge));

    // Desktop by click: the hotkey timer's ticks set ParClavier again during the grab's
    // wait, so the click takes the hotkey road while the timer runs...
    ClickButton(mv::kCmdEcran);
    ASSERT_EQ(app->NbVignettes, 2);
    EXPECT_TRUE(SquareAt(Saved(2), 50, 40, kRouge));
    // ...and minus 6 when no tick comes between the click and the grab.
    main->Timerclav.SetEnabled(false);
    ClickButton(mv::kCmdEcran);
    main->Timerclav.SetEnabled(true);
    ASSERT_EQ(app->NbVignettes, 3);
    EXPECT_TRUE(SquareAt(Saved(3), 44, 34, kRouge));

    // Window, by click and by hotkey alike: minus the window's corner, minus 6.
    SetForeground({20, 10, 100, 90});
    ClickButton(mv::kCmdFenetre);
    ASSERT_EQ(app->NbVignettes, 4);
    EXPECT_TRUE(SquareAt(Saved(4), 24, 24, kRouge));
    Hotkey(2);
    ASSERT_EQ(app->NbVignettes, 5);
    EXPECT_TRUE(SquareAt(Saved(5), 24, 24, kRouge));
    EXPECT_TRUE(SquareAt(main->Picture1.Image(), 24, 24, kRouge));

    // The hidden cursor's handle is never drawn, on any of these roads.
    be.cursor.images[65557] = Carre(4, kRouge);
    app->CurseurCapt = 65557;
    Hotkey(1);
    ClickButton(mv::kCmdEcran);
    ClickButton(mv::kCmdFenetre);
    Hotkey(2);
    ASSERT_EQ(app->NbVignettes, 9);
    for (int row = 6; row <= 9; ++row) EXPECT_EQ(Count(Saved(row), kRouge), 0) << "row " << row;
}

TEST_F(GrabTest, WindowsHideDuringTheWaitUnlessKeptAndTheWaitIsAlways300ms) {
    Start();
    ClickButton(mv::kCmdEcran); // the thumbnail window is up from now on
    ASSERT_TRUE(list->Visible());
    const gdi::Pixel avant = gdi::Rgb(0, 200, 0);
    const gdi::Pixel apres = gdi::Rgb(200, 200, 0);

    for (int garde = 0; garde <= 1; ++garde) {
        app->params.GardeFenetres = int16_t(garde);
        bool mainVu = false, listeVue = false;
        be.Schedule(100, [&] {
            mainVu = main->Visible();
            listeVue = list->Visible();
        });
        // The screen settles at 250 ms and changes again at 330 ms.
        be.Schedule(250, [&] { be.desktop.screen.Fill(avant); });
        be.Schedule(330, [&] { be.desktop.screen.Fill(apres); });
        be.Click(main->bouton[mv::kCmdEcran]);
        be.RunFor(100);
        const int row = app->NbVignettes;
        EXPECT_EQ(mainVu, garde == 1) << "GardeFenetres " << garde;
        EXPECT_EQ(listeVue, garde == 1) << "GardeFenetres " << garde;
        EXPECT_TRUE(main->Visible());
        EXPECT_TRUE(list->Visible());
        const gdi::Surface s = Saved(row);
        EXPECT_EQ(Count(s, avant), s.Width() * s.Height()) << "GardeFenetres " << garde;
        be.desktop.screen.Fill(kFond);
    }
}

TEST_F(GrabTest, CopyGoesToTheClipboardWithItsLabelUnlessSwitchedOff) {
    Start();
    ClickButton(mv::kCmdEcran);
    EXPECT_TRUE(be.clipboard.hasImage);
    EXPECT_TRUE(be.clipboard.image == be.desktop.screen);
    EXPECT_TRUE(main->Labdeja2.Visible());
    EXPECT_FALSE(main->Labdeja.Visible());
    be.RunFor(1000);
    EXPECT_FALSE(main->Labdeja2.Visible());
    EXPECT_FALSE(main->Timdeja.Enabled());

    const ui::Rect r{30, 20, 100, 70};
    SetForeground(r);
    ClickButton(mv::kCmdFenetre);
    EXPECT_TRUE(main->Labdeja.Visible());
    EXPECT_TRUE(be.clipboard.image == ScreenPart(r));
    be.RunFor(1100);

    app->params.SansCopieAuto = L"1";
    be.clipboard.SetImage(gdi::Surface(4, 4, kRouge));
    const int clears = be.clipboard.clears;
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, 3); // the capture itself is made
    EXPECT_GT(be.clipboard.clears, clears);
    EXPECT_FALSE(be.clipboard.hasImage);
    EXPECT_FALSE(main->Labdeja.Visible());
    EXPECT_FALSE(main->Labdeja2.Visible());
    EXPECT_FALSE(main->Timdeja.Enabled());
}

// Every pixel of a varied screen reaches the temporary file, with no cursor drawn in at
// start; a window capture is the front window's area of it.
TEST_F(GrabTest, ScreenAndWindowCapturesTakeTheirPixelsAndNoCursorAtStart) {
    be.desktop.screen = Motif(160, 120);
    be.cursor.images[be.cursor.handle] = Carre(4, kRouge);
    be.cursor.pos = {50, 40};
    Start();
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->tab.TypeV[1], L"e");
    EXPECT_TRUE(Saved(1) == be.desktop.screen);

    const ui::Rect r{30, 20, 100, 70};
    const ui::Rect autre{5, 50, 45, 110};
    SetForeground(r);
    be.desktop.windows[0x2002] = autre;
    ClickButton(mv::kCmdFenetre);
    ASSERT_EQ(app->NbVignettes, 2);
    EXPECT_EQ(app->TypeCapt, L"f");
    EXPECT_EQ(app->tab.TypeV[2], L"f");
    EXPECT_TRUE(Saved(2) == ScreenPart(r));
    EXPECT_EQ(app->tab.LargV[2], 70 * 15);
    EXPECT_EQ(app->tab.HautV[2], 50 * 15);
    EXPECT_EQ(list->Lbldim[2].Caption(), L"02/  70 x 50");

    // The window taken is the one in front once the wait is over.
    be.Schedule(150, [&] { be.desktop.foreground = 0x2002; });
    ClickButton(mv::kCmdFenetre);
    ASSERT_EQ(app->NbVignettes, 3);
    EXPECT_TRUE(Saved(3) == ScreenPart(autre));
    EXPECT_EQ(list->Lbldim[3].Caption(), L"03/  40 x 60");
}

TEST_F(GrabTest, FailedWindowGrabShowsTheNoticeAndLeavesTheList) {
    Start();
    ClickButton(mv::kCmdEcran);
    ASSERT_EQ(app->NbVignettes, 1);
    be.desktop.foreground = 0; // no window in front: the rectangle stays empty
    ClickButton(mv::kCmdFenetre);
    EXPECT_EQ(BoxesWith(Entry(143)), 1);
    EXPECT_EQ(be.boxes.back().style, ui::kInformation);
    EXPECT_TRUE(app->EchecFen);
    EXPECT_EQ(app->NbVignettes, 1);
    EXPECT_EQ(app->NumCapt, 1);
    EXPECT_EQ(TempFolderFiles().size(), 1u);
    EXPECT_EQ(app->TypeCapt, L"e");
    EXPECT_FALSE(list->Image1.Exists(2));
    for (int i = 0; i <= 4; ++i) EXPECT_EQ(main->mnuzoomX[i].Checked(), i == 3) << i;
    EXPECT_TRUE(main->TimZoom.Enabled());
}

// The options dialog's box of GardeFenetres is filled from the setting when the dialog is
// made: kept windows are never shown again by a grab, and a failed window grab with an
// empty list leaves the collection window down.
TEST_F(GrabTest, KeptWindowsStayAsTheyAreAfterAFailedWindowGrab) {
    Start();
    // The dialog's box reads its column of the settings line.
    app->params.GardeFenetres = 1;
    app->params.LigneParams[108] = L'1';
    ASSERT_FALSE(list->Visible());
    be.desktop.foreground = 0;
    ClickButton(mv::kCmdFenetre);
    EXPECT_TRUE(app->EchecFen);
    EXPECT_EQ(app->options->Check1[2].Value(), 1);
    EXPECT_FALSE(list->Visible());
    EXPECT_TRUE(main->Visible());
}

// The grab's wait starts a tenth of a second before midnight and ends after it.
TEST_F(GrabTest, WaitAcrossMidnightEnds) {
    Start();
    const int64_t debut = 86399900 - be.nowMs; // 23:59:59.900 now
    be.startTime = {2026,
                    11,
                    15,
                    int(debut / 3600000),
                    int(debut / 60000 % 60),
                    int(debut / 1000 % 60),
                    int(debut % 1000)};
    ASSERT_GT(app->be.Timer(), 86399.8);
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, 1);
    EXPECT_LT(app->be.Timer(), 1.0);
    EXPECT_TRUE(main->Visible());
}

TEST_F(GrabTest, ThumbnailKeepsTheTemplatesLongerSide) {
    SetScreen(320, 240, kFond);
    Start();
    struct Cas {
        ui::Rect r;
        float largeur, hauteur, gLargeur, gHauteur, gDecalage;
    };
    // Template: Image1 1450 x 1485, Gimage1 2720 x 2720.
    const Cas cas[] = {
        {{0, 0, 40, 80}, 742.5f, 1485, 742.5f * 1.7f, 2720, 400}, // tall
        {{0, 0, 80, 40}, 1450, 725, 2720, 725 * 1.7f, 400},       // wide
        {{0, 0, 50, 50}, 1450, 1450, 2720, 1450 * 1.7f, 400},     // square
        {{0, 0, 100, 20}, 1450, 290, 2720, 290 * 1.7f, 0},        // low: no lift
    };
    int n = 0;
    for (const Cas& c : cas) {
        SetForeground(c.r);
        ClickButton(mv::kCmdFenetre);
        ++n;
        ASSERT_EQ(app->NbVignettes, n);
        const auto& img = list->Image1[n];
        const auto& gimg = list->Gimage1[n];
        EXPECT_FLOAT_EQ(img.Width(), c.largeur) << n;
        EXPECT_FLOAT_EQ(img.Height(), c.hauteur) << n;
        EXPECT_FLOAT_EQ(gimg.Width(), c.gLargeur) << n;
        EXPECT_FLOAT_EQ(gimg.Height(), c.gHauteur) << n;
        EXPECT_FLOAT_EQ(img.Top(), 840 + 1600 * (n - 1)) << n;
        EXPECT_FLOAT_EQ(gimg.Top(), img.Top() - c.gDecalage) << n;
    }
}

TEST_F(GrabTest, ThumbnailsArePlacedInTheColumn) {
    SetScreen(320, 240, kFond);
    Start();
    SetForeground({0, 0, 80, 40});
    ClickButton(mv::kCmdFenetre);
    ASSERT_EQ(app->NbVignettes, 1);
    EXPECT_FALSE(list->Vscroll1.Enabled());
    EXPECT_EQ(list->Labscroll.Caption(), L"");
    // 840 + 725 * 1.7 + 800, below the ceiling of 3600 - 500.
    EXPECT_FLOAT_EQ(list->Height(), 840 + 1232.5f + 800);
    ClickButton(mv::kCmdFenetre);
    ASSERT_EQ(app->NbVignettes, 2);

    for (int n = 1; n <= 2; ++n) {
        EXPECT_TRUE(list->Image1[n].Visible());
        EXPECT_EQ(list->Image1[n].BorderStyle(), n == 2 ? 1 : 0) << n;
        EXPECT_TRUE(list->Lbldim[n].Visible());
        EXPECT_EQ(list->Txtordre[n].Text(), n == 1 ? L"01" : L"02");
        EXPECT_TRUE(list->Chkmail[n].Visible());
        EXPECT_FALSE(list->PictSave[n].Visible());
    }
    EXPECT_FALSE(list->Image1[0].Visible());
    EXPECT_TRUE(list->Vscroll1.Enabled());
    EXPECT_EQ(list->Labscroll.Caption(), L"2");
    // Below the ceiling (3600 - 500) before this row: the window grows past it once.
    EXPECT_FLOAT_EQ(list->Height(), 2440 + 1232.5f + 800);
    EXPECT_TRUE(list->TimerCache.Enabled());
    EXPECT_EQ(main->Caption(), Entry(111) + L"2" + Entry(112));

    ClickButton(mv::kCmdFenetre); // now above the ceiling: held there
    EXPECT_FLOAT_EQ(list->Height(), 3600 - 500);

    // While a periodic capture runs the window neither comes back nor starts sliding away.
    main->MnuCaptper.SetChecked(true);
    list->TimerCache.SetEnabled(false);
    list->SetLeft(-2000);
    ClickButton(mv::kCmdFenetre);
    EXPECT_EQ(app->NbVignettes, 4);
    EXPECT_FLOAT_EQ(list->Left(), -2000);
    EXPECT_FALSE(list->TimerCache.Enabled());
}

TEST_F(GrabTest, ThumbnailPicturesAreHalftoneShrinks) {
    SetScreen(320, 240, kFond);
    // The thumbnail box is 1450 twips wide, 97 pixels to the nearest: the window is twice
    // as wide and its height follows.
    const ui::Rect r{0, 0, 194, 96};
    for (int y = 0; y < 96; ++y)
        for (int x = 0; x < 194; ++x)
            be.desktop.screen.At(x, y) = (x + y) % 2 ? gdi::Rgb(255, 255, 255) : gdi::Rgb(0, 0, 0);
    Start();
    SetForeground(r);
    ClickButton(mv::kCmdFenetre);
    ASSERT_EQ(app->NbVignettes, 1);

    // Exactly half size: every thumbnail pixel is the mean of two white and two black.
    const gdi::Surface& petit = list->Image1[1].Image();
    ASSERT_EQ(petit.Width(), 97);
    ASSERT_EQ(petit.Height(), 48);
    int hors = 0;
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 97; ++x) {
            const int v = gdi::RedOf(petit.At(x, y));
            hors += v < 126 || v > 129;
        }
    EXPECT_EQ(hors, 0);

    // The large one shrinks by a fraction: no pixel may be a plain pick of the source.
    const gdi::Surface& grand = list->Gimage1[1].Image();
    int purs = 0;
    for (int y = 0; y < 81; ++y)
        for (int x = 0; x < 163; ++x) {
            const int v = gdi::RedOf(grand.At(x, y));
            purs += v < 20 || v > 235;
        }
    EXPECT_EQ(purs, 0);
}

// The shutter after a grab: the camera window shows without taking the keyboard, the sound
// plays unless Silence is set, and both go 300 ms later; a shutter during the last one
// plays again and starts the 300 ms anew; no sound device is no error.
TEST_F(GrabTest, ShutterShowsWithoutTheKeyboardPlaysUnlessSilentAndGoesAfter300ms) {
    Start();
    mv::Fcam& cam = *app->cam;
    ASSERT_TRUE(cam.IsLoaded());
    EXPECT_FALSE(cam.Visible());
    auto shutter = [&] {
        be.Click(main->bouton[mv::kCmdEcran]);
        return be.RunUntil([&] { return cam.IsLoaded() && cam.Visible(); }, 1000);
    };

    ASSERT_TRUE(shutter());
    ASSERT_EQ(be.audio.played.size(), 1u);
    EXPECT_EQ(be.audio.played[0], be.shell.programFolder + L"\\camera.wav");
    EXPECT_NE(be.ActiveForm(), &cam);
    EXPECT_EQ(cam.Imagecam.Picture().Width(), app->Screen().PxX(cam.Width()));
    be.RunFor(250);
    EXPECT_TRUE(cam.Visible());
    be.RunFor(100);
    EXPECT_FALSE(cam.IsLoaded());
    EXPECT_FALSE(be.audio.open);

    app->params.Silence = 1;
    ASSERT_TRUE(shutter());
    EXPECT_EQ(be.audio.played.size(), 1u);
    be.RunFor(400);
    EXPECT_FALSE(cam.IsLoaded());

    app->params.Silence = 0;
    ui::Dispatch(be, [&] { mv::RideauPhoto(*app); });
    be.RunFor(200);
    ui::Dispatch(be, [&] { mv::RideauPhoto(*app); });
    EXPECT_EQ(be.audio.played.size(), 3u);
    be.RunFor(250);
    EXPECT_TRUE(cam.Visible());
    be.RunFor(100);
    EXPECT_FALSE(cam.IsLoaded());

    be.audio.deviceMissing = true;
    ASSERT_TRUE(shutter());
    EXPECT_EQ(be.audio.played.size(), 3u);
    EXPECT_TRUE(be.boxes.empty());
}

} // namespace
