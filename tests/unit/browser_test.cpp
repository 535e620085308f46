// The collection window: its column and slider, hiding, the enlarged picture, choosing the
// current capture, moving a capture by its position box, and the marquee.
#include "app_fixture.h"
#include "platform/gdi/bmp.h"
#include "test_util.h"

namespace {

class BrowserTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        StartMarked();
    }
    mv::Flistimages& L() { return *app->list; }
    // Types text then Enter in position box i.
    void Position(int i, const std::wstring& texte) {
        L().Txtordre[i].SetText(texte);
        ui::Dispatch(be, [&] {
            int16_t k = 13;
            L().Txtordre[i].OnKeyDown(k, 0);
        });
    }
    std::vector<std::wstring> Fichiers() const {
        std::vector<std::wstring> f;
        for (int i = 1; i <= app->NbVignettes; ++i) f.push_back(app->tab.FichierV[i]);
        return f;
    }
};

TEST_F(BrowserTest, SliderRestacksTheColumnAndTheCountLagsOneShowing) {
    be.screen.heightPx = 800; // the window's ceiling far away
    for (int k = 0; k < 4; ++k) Zone(40, 30, gdi::Rgb(k * 50, 0, 0));
    auto& l = L();
    ASSERT_TRUE(l.Vscroll1.Enabled());
    EXPECT_EQ(l.Vscroll1.Max(), 4);

    l.Vscroll1.SetValue(2);
    EXPECT_EQ(l.Image1[2].Top(), 800);
    EXPECT_EQ(l.Image1[3].Top(), 2400);
    EXPECT_EQ(l.Image1[1].Top(), -1500);
    EXPECT_EQ(l.Chkmail[1].Top(), -1500);

    // At the maximum the last one stands alone and the window shrinks to it.
    l.Vscroll1.SetValue(4);
    for (int i = 1; i <= 3; ++i) EXPECT_EQ(l.Image1[i].Top(), -1500) << i;
    EXPECT_EQ(l.Image1[4].Top(), 800);
    EXPECT_EQ(l.Height(), l.Gimage1[4].Height() + 800 + 800);
    // Back at the top the column asks for more than the screen: the ceiling holds.
    be.screen.heightPx = 300;
    l.Vscroll1.SetValue(1);
    EXPECT_EQ(l.Height(), Tw(300) - 500);

    // The count stands where the slider was before the showing moved it.
    const float avant = l.Vscroll1.Left();
    ui::Dispatch(be, [&] { l.Form_Activate(); });
    EXPECT_EQ(l.Labscroll.Left(), avant + 200);
    EXPECT_EQ(l.Labscroll.Caption(), L"4");
    ui::Dispatch(be, [&] { l.Form_Activate(); });
    EXPECT_EQ(l.Labscroll.Left(), l.Vscroll1.Left() + 200);
}

TEST_F(BrowserTest, WindowSlidesAwayAndTheStripBringsItBack) {
    Zone(40, 30, gdi::Rgb(1, 2, 3));
    auto& l = L();
    ASSERT_TRUE(l.TimerCache.Enabled());
    be.RunFor(40000);
    EXPECT_EQ(l.Left(), 50 - l.Width());
    be.MouseMove(l, 10, 900);
    EXPECT_EQ(l.Left(), 0);
    // The mouse anywhere on the strip, its frame included, brings it back too.
    be.RunFor(40000);
    be.cursor.pos = {1, 30};
    be.RunFor(100);
    EXPECT_EQ(l.Left(), 0);
    // The arrow sends it away at once; a thumbnail under the mouse keeps it.
    be.MouseMove(l.Labflech, 5, 5);
    EXPECT_EQ(l.Left(), 50 - l.Width());
    be.MouseMove(l, 10, 900);
    be.MouseMove(l.Image1[1], 5, 5);
    EXPECT_FALSE(l.TimerCache.Enabled());
    // No close while the program runs.
    ui::Dispatch(be, [&] { l.CloseRequested(ui::kFormControlMenu); });
    EXPECT_TRUE(l.IsLoaded());
}

TEST_F(BrowserTest, HoverEnlargesOneThumbnailWithItsOwnMarksOnly) {
    Zone(40, 30, gdi::Rgb(200, 0, 0));
    Zone(30, 60, gdi::Rgb(0, 200, 0));
    auto& l = L();
    l.Chksav[1].SetValue(1);
    l.PictSave[1].SetVisible(true);
    l.Chkmail[2].SetValue(2);

    be.MouseMove(l.Image1[2], 5, 5);
    EXPECT_TRUE(l.Gimage1[2].Visible());
    EXPECT_FALSE(l.Image1[2].Visible());
    EXPECT_TRUE(l.pictmail[2].Visible());
    EXPECT_FALSE(l.PictSave[1].Visible()); // the other marks are off under the mouse
    EXPECT_EQ(l.LblcheckHlp.Caption(), Entry(195));
    // The enlarged picture is the capture, halftone-shrunk to 1.7 times the thumbnail.
    const auto& g = l.Gimage1[2].Image();
    EXPECT_EQ(g.At(3, 3), gdi::Rgb(0, 200, 0));

    // Over the hidden thumbnail's place the strip leaves it; its top edge there too.
    const auto& img = l.Image1[2];
    be.MouseMove(l.Frame1, img.Left() + 20, img.Top() - l.Frame1.Top() + 20);
    EXPECT_TRUE(l.Gimage1[2].Visible());
    be.MouseMove(l.Gimage1[2], l.Gimage1[2].Width() - 30, 20);
    EXPECT_FALSE(l.Gimage1[2].Visible());
    // The strip elsewhere brings all thumbnails and marks back, and the hint leaves the
    // marquee it covers.
    be.MouseMove(l.Frame1, 10, 10);
    EXPECT_FALSE(l.LblcheckHlp.Visible());
    EXPECT_TRUE(l.Image1[2].Visible());
    EXPECT_TRUE(l.PictSave[1].Visible());
}

TEST_F(BrowserTest, ClickMakesACaptureCurrentForBothKinds) {
    ClickButton(mv::kCmdEcran);
    Zone(40, 30, gdi::Rgb(0, 0, 200));
    main->SetLeft(100);
    auto& l = L();

    be.MouseDown(l.Image1[1], 5, 5, ui::kLeftButton);
    EXPECT_EQ(app->VignetteCourante, 1);
    EXPECT_TRUE(main->ImgTTscreen.Visible());
    EXPECT_FALSE(main->Picture2.Visible());
    EXPECT_EQ(main->ImgTTscreen.Width(), float(int(Tw(160) / 1.7)));
    EXPECT_EQ(main->Caption(), Entry(130) + L"1 / 2");
    EXPECT_EQ(main->Left(), app->Screen().WidthTwips() - main->Width());
    EXPECT_EQ(l.Image1[1].BorderStyle(), 1);
    EXPECT_EQ(l.Image1[2].BorderStyle(), 0);
    EXPECT_EQ(app->TypeCapt, L"e");

    be.DblClick(l.Image1[2]);
    EXPECT_EQ(app->VignetteCourante, 2);
    EXPECT_TRUE(main->Picture2.Visible());
    EXPECT_EQ(main->Picture2.Image().At(1, 1), gdi::Rgb(0, 0, 200));
    EXPECT_EQ(main->Height(), float(app->tab.HautFenV[2]));

    // A click while a capture is under way waits for nothing and changes nothing.
    app->CaptureEnCours = true;
    be.MouseDown(l.Image1[1], 5, 5, ui::kLeftButton);
    EXPECT_EQ(app->VignetteCourante, 2);
    app->CaptureEnCours = false;

    // The kind is the capture's own, whatever the caption: a long entry 109 changes nothing.
    app->lang.TabConst[109] = L"Whole screen!";
    l.Lbldim[1].SetCaption(L"01 " + app->lang.TabConst[109]);
    be.MouseDown(l.Image1[1], 5, 5, ui::kLeftButton);
    EXPECT_TRUE(main->ImgTTscreen.Visible());
    EXPECT_EQ(app->TypeCapt, L"e");
    EXPECT_TRUE(main->Picture2S.Picture() == gdi::LoadBmp(TempFile(1)));

    // A file gone behind the program's back: the error box, and the run goes on.
    rt::Kill(TempFile(2));
    be.MouseDown(l.Image1[2], 5, 5, ui::kLeftButton);
    EXPECT_EQ(be.lastError, 53);
    EXPECT_FALSE(be.ended);
    EXPECT_EQ(app->NbVignettes, 2);
}

TEST_F(BrowserTest, TypedPositionMovesTheCaptureWithItsSavedMark) {
    for (int k = 1; k <= 5; ++k) Zone(20 + k, 30, gdi::Rgb(k * 40, 0, 0));
    auto& l = L();
    const auto avant = Fichiers();
    l.Chksav[5].SetValue(1);
    l.PictSave[5].SetVisible(true);
    l.Chkmail[2].SetValue(1);

    Position(5, L"2");
    EXPECT_EQ(Fichiers(),
              (std::vector<std::wstring>{avant[0], avant[4], avant[1], avant[2], avant[3]}));
    EXPECT_EQ(app->tab.LargV[2], int32_t(Tw(25)));
    EXPECT_EQ(l.Image1[2].Image().At(0, 0), gdi::Rgb(200, 0, 0));
    // The saved state went along; the tick, the numbers and the boxes stayed.
    EXPECT_EQ(l.Chksav[2].Value(), 1);
    EXPECT_TRUE(l.PictSave[2].Visible());
    EXPECT_EQ(l.Chksav[5].Value(), 0);
    EXPECT_FALSE(l.PictSave[5].Visible());
    EXPECT_EQ(l.Chkmail[2].Value(), 1);
    EXPECT_EQ(l.Txtordre[5].Text(), L"05");
    for (int i = 1; i <= 5; ++i) EXPECT_TRUE(l.Txtordre[i].Enabled()) << i;

    // The same number moves nothing and leaves the others disabled.
    Position(3, L"3");
    EXPECT_EQ(Fichiers()[2], avant[1]);
    EXPECT_FALSE(l.Txtordre[1].Enabled());
    // Beyond the count: entry 251 and the count, the text back.
    Position(3, L"9");
    EXPECT_EQ(BoxesWith(Entry(251) + L"5"), 1);
    EXPECT_EQ(l.Txtordre[3].Text(), L"03");
    // Not a number: the error box, nothing moved, the run goes on.
    const auto milieu = Fichiers();
    Position(4, L"x");
    EXPECT_EQ(be.lastError, 13);
    EXPECT_EQ(Fichiers(), milieu);
    EXPECT_FALSE(be.ended);
    // Zero or below takes it to the first row, and no capture is lost.
    Position(4, L"-3");
    EXPECT_EQ(Fichiers()[0], milieu[3]);
    auto trie = Fichiers();
    std::sort(trie.begin(), trie.end());
    auto attendu = avant;
    std::sort(attendu.begin(), attendu.end());
    EXPECT_EQ(trie, attendu);
}

TEST_F(BrowserTest, MarqueeTurnsEveryTwoSecondsAndTheBuilderNeedsTwoCaptures) {
    auto& l = L();
    app->lang.TabConst[216] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    l.BuffGif = L"ABCDEFGHIJKLMNOPQRST";
    be.RunFor(100);
    EXPECT_EQ(l.LabGif.Caption(), L"BCDEFGHIJKLMNOPQRSTA");
    be.RunFor(1900);
    EXPECT_EQ(l.LabGif.Caption(), L"ABCDEFGHIJKLMNOPQRST");

    Zone(40, 30, gdi::Rgb(1, 2, 3));
    be.Click(l.LabGif);
    EXPECT_EQ(BoxesWith(Entry(248)), 1);
}

} // namespace
