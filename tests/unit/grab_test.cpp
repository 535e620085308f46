// Whole-screen and window grabs past what the Wine checks see: the cursor stamp, the wait,
// the clipboard copy, a failed window grab, the halftone thumbnails and the shutter.
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

    // A window, by hotkey too: minus the window's corner, minus 6.
    SetForeground({20, 10, 100, 90});
    Hotkey(2);
    ASSERT_EQ(app->NbVignettes, 4);
    EXPECT_TRUE(SquareAt(Saved(4), 24, 24, kRouge));

    // The hidden cursor's handle is never drawn, on any of these roads.
    be.cursor.images[65557] = Carre(4, kRouge);
    app->CurseurCapt = 65557;
    Hotkey(1);
    ClickButton(mv::kCmdFenetre);
    ASSERT_EQ(app->NbVignettes, 6);
    for (int row = 5; row <= 6; ++row) EXPECT_EQ(Count(Saved(row), kRouge), 0) << "row " << row;
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

// With the copy switched off the clipboard is emptied and no label shows, the capture made
// all the same (the copy itself is checked under Wine).
TEST_F(GrabTest, NoCopyWhenSwitchedOff) {
    Start();
    app->params.SansCopieAuto = L"1";
    be.clipboard.SetImage(gdi::Surface(4, 4, kRouge));
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, 1);
    EXPECT_FALSE(be.clipboard.hasImage);
    EXPECT_FALSE(main->Labdeja.Visible() || main->Labdeja2.Visible());
}

// A failed window grab shows its notice and files nothing. The options dialog's box of
// GardeFenetres is filled from the setting when the dialog is made: kept windows are never
// shown again by a grab, so with an empty list the collection window stays down.
TEST_F(GrabTest, AFailedWindowGrabShowsTheNoticeAndLeavesKeptWindowsAsTheyAre) {
    Start();
    app->params.GardeFenetres = 1;
    app->params.LigneParams[108] = L'1';
    be.desktop.foreground = 0; // no window in front: the rectangle stays empty
    ClickButton(mv::kCmdFenetre);
    EXPECT_EQ(BoxesWith(Entry(143)), 1);
    EXPECT_TRUE(app->EchecFen);
    EXPECT_EQ(app->NbVignettes, 0);
    EXPECT_TRUE(TempFolderFiles().empty());
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

// While a periodic capture runs the collection window neither comes back nor starts
// sliding away.
TEST_F(GrabTest, APeriodicCaptureLeavesTheCollectionWindowWhereItIs) {
    Start();
    ClickButton(mv::kCmdEcran);
    main->MnuCaptper.SetChecked(true);
    list->TimerCache.SetEnabled(false);
    list->SetLeft(-2000);
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, 2);
    EXPECT_FLOAT_EQ(list->Left(), -2000);
    EXPECT_FALSE(list->TimerCache.Enabled());
}

TEST_F(GrabTest, ThumbnailPicturesAreHalftoneShrinks) {
    SetScreen(320, 240, kFond);
    // A window of black and white checks.
    const ui::Rect r{0, 0, 194, 96};
    for (int y = 0; y < 96; ++y)
        for (int x = 0; x < 194; ++x)
            be.desktop.screen.At(x, y) = (x + y) % 2 ? gdi::Rgb(255, 255, 255) : gdi::Rgb(0, 0, 0);
    Start();
    SetForeground(r);
    ClickButton(mv::kCmdFenetre);
    ASSERT_EQ(app->NbVignettes, 1);
    // The large thumbnail shrinks by a fraction: no pixel may be a plain pick of the source
    // (the halftone itself is the pixel tests').
    const gdi::Surface& grand = list->Gimage1[1].Image();
    int purs = 0;
    for (int y = 0; y < 81; ++y)
        for (int x = 0; x < 163; ++x) {
            const int v = gdi::RedOf(grand.At(x, y));
            purs += v < 20 || v > 235;
        }
    EXPECT_EQ(purs, 0);
}

// The shutter after a grab: the camera window shows without taking the keyboard and goes
// 300 ms later with its sound; no sound device is no error. The picture, the whole sound and
// Silence are checked under Wine.
TEST_F(GrabTest, ShutterShowsWithoutTheKeyboardAndGoesAfter300ms) {
    Start();
    mv::Fcam& cam = *app->cam;
    auto shutter = [&] {
        be.Click(main->bouton[mv::kCmdEcran]);
        return be.RunUntil([&] { return cam.IsLoaded() && cam.Visible(); }, 1000);
    };

    ASSERT_TRUE(shutter());
    ASSERT_EQ(be.audio.played.size(), 1u);
    EXPECT_NE(be.ActiveForm(), &cam);
    be.RunFor(250);
    EXPECT_TRUE(cam.Visible());
    be.RunFor(100);
    EXPECT_FALSE(cam.IsLoaded());
    EXPECT_FALSE(be.audio.open);

    be.audio.deviceMissing = true;
    ASSERT_TRUE(shutter());
    EXPECT_EQ(be.audio.played.size(), 1u);
    EXPECT_TRUE(be.boxes.empty());
}

} // namespace
