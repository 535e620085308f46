// The capture list: its limit, file numbers, deletion of one row or all, and the same
// capture taken again when there is none to repeat (the same zone is the Wine check's).
#include "app_fixture.h"
#include "runtime/strings.h"

namespace {

class CaptureListTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        MarkLanguage();
        SetScreen(160, 120, gdi::Rgb(40, 90, 160));
    }
};

TEST_F(CaptureListTest, HundredthCaptureIsKeptTheNextRefusedAndNumbersGrowToThreeDigits) {
    SetScreen(64, 120, gdi::Rgb(10, 20, 30));
    Start();
    for (int i = 1; i <= 100; ++i) be.Click(main->bouton[mv::kCmdEcran]);
    ASSERT_EQ(app->NbVignettes, 100);
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_EQ(app->tab.FichierV[100], L"Captprov_" + app->TagHeure + L"100.bmp");
    EXPECT_EQ(TempFolderFiles().size(), 100u);

    be.clipboard.Clear();
    be.Click(main->bouton[mv::kCmdEcran]);
    EXPECT_EQ(BoxesWith(Entry(110)), 1);
    EXPECT_EQ(app->NbVignettes, 100);
    EXPECT_EQ(TempFolderFiles().size(), 100u);
    EXPECT_TRUE(be.clipboard.hasImage); // the copy is still made

    // A deleted number is never given again.
    ClickButton(mv::kCmdSupprimer);
    ClickButton(mv::kCmdEcran);
    ASSERT_EQ(app->NbVignettes, 100);
    EXPECT_EQ(app->tab.FichierV[100], L"Captprov_" + app->TagHeure + L"101.bmp");
}

TEST_F(CaptureListTest, DeletingRowThreeOfFiveMovesEverythingButTheStamps) {
    Start();
    // Five rows that differ in every field: kind, size, dimension text, time, pictures.
    const ui::Rect fenetres[] = {{0, 0, 40, 30}, {}, {0, 0, 30, 60}, {0, 0, 80, 40}, {}};
    for (int n = 1; n <= 5; ++n) {
        be.desktop.screen.Fill(gdi::Rgb(50 * n, 255 - 40 * n, 20 * n));
        main->Labtaille.SetCaption(L"dim" + std::to_wstring(n));
        const ui::Rect& r = fenetres[n - 1];
        if (r.right != 0) SetForeground(r);
        ClickButton(r.right != 0 ? mv::kCmdFenetre : mv::kCmdEcran);
        be.RunFor(2000);
    }
    ASSERT_EQ(app->NbVignettes, 5);
    list->Chkmail[4].SetValue(1);

    // All a row carries but its number, its stamp and its ticks.
    auto ligne = [&](int n) {
        return std::make_tuple(app->tab.HautV[n], app->tab.LargV[n], app->tab.HautFenV[n],
                               app->tab.LargFenV[n], app->tab.DimV[n], app->tab.TypeV[n],
                               app->tab.FichierV[n], rt::Mid(list->Lbldim[n].Caption(), 3),
                               list->Image1[n].Image());
    };
    std::vector<decltype(ligne(1))> avant(1);
    std::wstring stamps[6];
    for (int n = 1; n <= 5; ++n) {
        avant.push_back(ligne(n));
        stamps[n] = app->tab.Horodatage[n];
    }
    for (int n = 2; n <= 5; ++n) ASSERT_NE(stamps[n], stamps[n - 1]);
    const std::wstring fichier3 = TempFile(3);

    app->VignetteCourante = 3; // the user picked row 3
    ClickButton(mv::kCmdSupprimer);
    ASSERT_EQ(app->NbVignettes, 4);
    EXPECT_FALSE(rt::FileExists(fichier3));
    EXPECT_EQ(TempFolderFiles().size(), 4u);
    for (int n = 1; n <= 4; ++n) {
        EXPECT_TRUE(ligne(n) == avant[n < 3 ? n : n + 1]) << n;
        EXPECT_EQ(list->Lbldim[n].Caption().substr(0, 2), rt::Format(n, L"00"));
    }
    // The stamps stay at their row numbers, the last one included; the ticks move.
    for (int n = 1; n <= 5; ++n) EXPECT_EQ(app->tab.Horodatage[n], stamps[n]) << n;
    EXPECT_EQ(list->Chkmail[3].Value(), 1);
    EXPECT_EQ(list->Chkmail[4].Value(), 0);
    EXPECT_FALSE(list->Image1.Exists(5));
}

TEST_F(CaptureListTest, DeletingTheOnlyRowHidesTheListAndDeletingNothingRedoesTheMarks) {
    Start();
    ClickButton(mv::kCmdSupprimer); // empty list, no current capture
    EXPECT_TRUE(be.boxes.empty());

    ClickButton(mv::kCmdEcran);
    ClickButton(mv::kCmdSupprimer);
    EXPECT_EQ(app->NbVignettes, 0);
    EXPECT_FALSE(list->Visible());
    EXPECT_TRUE(TempFolderFiles().empty());

    ClickButton(mv::kCmdEcran);
    be.RunFor(1000);
    ClickButton(mv::kCmdEcran);
    ASSERT_EQ(list->Image1[2].BorderStyle(), 1);
    list->Lbldim[2].SetCaption(L"07 zz");
    // No current capture: nothing deleted, the numbers and the border made again.
    app->VignetteCourante = 0;
    ClickButton(mv::kCmdSupprimer);
    EXPECT_EQ(app->NbVignettes, 2);
    EXPECT_EQ(TempFolderFiles().size(), 2u);
    EXPECT_EQ(list->Image1[2].BorderStyle(), 0);
    EXPECT_EQ(list->Lbldim[2].Caption(), L"02 zz");
}

TEST_F(CaptureListTest, DeletingTheTickedCapturesKeepsTheOthersInOrder) {
    Start();
    std::wstring fichiers[5];
    for (int n = 1; n <= 4; ++n) {
        ClickButton(mv::kCmdEcran);
        fichiers[n] = app->tab.FichierV[n];
    }
    be.Click(list->Chkmail[1]);
    be.Click(list->Chkmail[3]);
    be.Click(main->mnufDelCaptCoch);
    ASSERT_EQ(app->NbVignettes, 2);
    EXPECT_EQ(app->tab.FichierV[1], fichiers[2]);
    EXPECT_EQ(app->tab.FichierV[2], fichiers[4]);
    EXPECT_EQ(list->Chkmail[1].Value(), 0);
    EXPECT_EQ(TempFolderFiles().size(), 2u);
}

// A temporary file removed from outside is as good as deleted; the list stays whole.
TEST_F(CaptureListTest, CaptureWhoseFileVanishedIsDeletedLikeAnyOther) {
    Start();
    for (int i = 0; i < 4; ++i) ClickButton(mv::kCmdEcran);
    ASSERT_EQ(app->NbVignettes, 4);
    rt::Kill(TempFile(4));
    ClickButton(mv::kCmdSupprimer); // the current capture, the fourth
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_EQ(app->NbVignettes, 3);
    EXPECT_FALSE(list->Image1.Exists(4));

    rt::Kill(TempFile(2));
    main->Supprimertout(false);
    EXPECT_EQ(app->NbVignettes, 0);
    EXPECT_EQ(TempFolderFiles().size(), 0u);

    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, 1);
    EXPECT_TRUE(rt::FileExists(TempFile(1)));
    EXPECT_TRUE(be.boxes.empty());
}

TEST_F(CaptureListTest, ClearingAllAsksAndCancelKeepsEverything) {
    Start();
    ClickButton(mv::kCmdSupprimerTout); // empty: no question
    EXPECT_TRUE(be.boxes.empty());

    for (int i = 0; i < 3; ++i) ClickButton(mv::kCmdEcran);
    be.answers.push_back(ui::kCancel);
    ClickButton(mv::kCmdSupprimerTout);
    EXPECT_EQ(BoxesWith(Entry(91)), 1);
    EXPECT_EQ(app->NbVignettes, 3);
    EXPECT_EQ(TempFolderFiles().size(), 3u);

    // The periodic engine clears without asking and keeps the reduced mode.
    app->ModeReduit = true;
    main->Supprimertout(false);
    EXPECT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(app->NbVignettes, 0);
    EXPECT_TRUE(TempFolderFiles().empty());
    EXPECT_TRUE(app->ModeReduit);

    // OK clears everything and leaves the reduced mode.
    ClickButton(mv::kCmdEcran);
    ClickButton(mv::kCmdEcran);
    ClickButton(mv::kCmdSupprimerTout);
    EXPECT_EQ(be.boxes.size(), 2u);
    EXPECT_EQ(app->NbVignettes, 0);
    EXPECT_TRUE(TempFolderFiles().empty());
    EXPECT_FALSE(list->Visible());
    EXPECT_FALSE(app->ModeReduit);
}

TEST_F(CaptureListTest, SameCaptureAgainFollowsTheKindOfTheLastCapture) {
    Start();
    main->TimPeriod.SetEnabled(true);
    ClickButton(mv::kCmdRafraichir); // nothing to repeat yet
    EXPECT_EQ(BoxesWith(Entry(58)), 1);
    EXPECT_FALSE(main->TimPeriod.Enabled());

    ClickButton(mv::kCmdEcran);
    ClickButton(mv::kCmdRafraichir); // a new whole-screen row, no zone asked for
    ASSERT_EQ(app->NbVignettes, 2);
    EXPECT_EQ(app->tab.TypeV[2], L"e");
    EXPECT_FALSE(app->full->Visible());

    // A zone was validated once (Picture1's size is remembered), then a whole-screen
    // capture, then a zone started and left: the last row is no zone to repeat.
    app->HautPic1 = 1800;
    app->LargPic1 = 2400;
    ClickButton(mv::kCmdEcran);
    ClickButton(mv::kCmdZone);
    be.KeyDown(*app->full, 27, 0); // Escape
    ASSERT_EQ(app->TypeCapt, L"z");
    ClickButton(mv::kCmdRafraichir);
    EXPECT_EQ(BoxesWith(Entry(58)), 2);
    EXPECT_EQ(app->NbVignettes, 3);
}

} // namespace
