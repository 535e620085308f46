// The collection window past what the Wine checks see: sliding away, the enlarged picture's
// marks, choosing a capture, moving one by its position box (a bad number is checked under
// Wine), and the marquee's refusal.
#include "app_fixture.h"
#include "platform/gdi/bmp.h"

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

// The arrow sends the window away at once; a thumbnail under the mouse keeps it; it has no
// close while the program runs.
TEST_F(BrowserTest, WindowSlidesAwayAndTheStripBringsItBack) {
    Zone(40, 30, gdi::Rgb(1, 2, 3));
    auto& l = L();
    // Away; the mouse anywhere on the strip, its frame included, brings it back.
    be.RunFor(40000);
    EXPECT_EQ(l.Left(), 50 - l.Width());
    be.cursor.pos = {1, 30};
    be.RunFor(100);
    EXPECT_EQ(l.Left(), 0);
    be.MouseMove(l.Labflech, 5, 5);
    EXPECT_EQ(l.Left(), 50 - l.Width());
    be.MouseMove(l, 10, 900);
    be.MouseMove(l.Image1[1], 5, 5);
    EXPECT_FALSE(l.TimerCache.Enabled());
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
    EXPECT_TRUE(l.pictmail[2].Visible());
    EXPECT_FALSE(l.PictSave[1].Visible()); // the other marks are off under the mouse
    EXPECT_EQ(l.LblcheckHlp.Caption(), Entry(195));
    EXPECT_EQ(l.Gimage1[2].Image().At(3, 3), gdi::Rgb(0, 200, 0));

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
    EXPECT_TRUE(l.PictSave[1].Visible());
}

// The kind of the capture, never its caption, decides its view; a click during a capture
// changes nothing; a file gone behind the program's back gives the error box and the run
// goes on.
TEST_F(BrowserTest, ClickMakesACaptureCurrentForBothKinds) {
    ClickButton(mv::kCmdEcran);
    Zone(40, 30, gdi::Rgb(0, 0, 200));
    auto& l = L();
    be.DblClick(l.Image1[2]);
    ASSERT_EQ(app->VignetteCourante, 2);

    app->CaptureEnCours = true;
    be.MouseDown(l.Image1[1], 5, 5, ui::kLeftButton);
    EXPECT_EQ(app->VignetteCourante, 2);
    app->CaptureEnCours = false;

    app->lang.TabConst[109] = L"Whole screen!";
    l.Lbldim[1].SetCaption(L"01 " + app->lang.TabConst[109]);
    be.MouseDown(l.Image1[1], 5, 5, ui::kLeftButton);
    EXPECT_TRUE(main->ImgTTscreen.Visible());
    EXPECT_FALSE(main->Picture2.Visible());
    EXPECT_EQ(app->TypeCapt, L"e");
    EXPECT_TRUE(main->Picture2S.Picture() == gdi::LoadBmp(TempFile(1)));

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
    EXPECT_EQ(l.Image1[2].Image().At(0, 0), gdi::Rgb(200, 0, 0));
    // The saved state went along; the tick, the numbers and the boxes stayed.
    EXPECT_EQ(l.Chksav[2].Value(), 1);
    EXPECT_TRUE(l.PictSave[2].Visible());
    EXPECT_EQ(l.Chksav[5].Value(), 0);
    EXPECT_FALSE(l.PictSave[5].Visible());
    EXPECT_EQ(l.Chkmail[2].Value(), 1);
    EXPECT_EQ(l.Txtordre[5].Text(), L"05");

    // Beyond the count: entry 251 and the count, the text back.
    Position(3, L"9");
    EXPECT_EQ(BoxesWith(Entry(251) + L"5"), 1);
    EXPECT_EQ(l.Txtordre[3].Text(), L"03");
    // Zero or below takes it to the first row, and no capture is lost.
    const auto f = Fichiers();
    Position(4, L"-3");
    EXPECT_EQ(Fichiers(), (std::vector<std::wstring>{f[3], f[0], f[1], f[2], f[4]}));
}

// The marquee's builder needs two captures.
TEST_F(BrowserTest, TheBuilderNeedsTwoCaptures) {
    Zone(40, 30, gdi::Rgb(1, 2, 3));
    be.Click(L().LabGif);
    EXPECT_EQ(BoxesWith(Entry(248)), 1);
}

} // namespace
