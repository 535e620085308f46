// The command dispatcher of the main window: latches, keys, the save-all double click, menus
// and what a run-time error does.
#include "app_fixture.h"
#include "runtime/strings.h"

#include <new>

namespace {

class CommandsTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        MarkLanguage();
        SetScreen(160, 120, gdi::Rgb(40, 90, 160));
    }
    // Closes the overlay as a user pressing Escape would.
    void LeaveOverlay() { be.KeyDown(*app->full, 27, 0); }
};

TEST_F(CommandsTest, DoubleHeightZoneNeedsOneZoneCommandEachTime) {
    Start();
    ClickButton(mv::kCmdZoneDouble);
    EXPECT_EQ(BoxesWith(Entry(265)), 1);
    EXPECT_FALSE(app->full->Visible());

    // Command 0 hides the windows, waits 0.4 s, then opens the overlay.
    int64_t t0 = be.nowMs;
    be.Click(main->bouton[mv::kCmdZone]);
    EXPECT_GE(be.nowMs - t0, 400);
    EXPECT_TRUE(app->full->Visible());
    EXPECT_FALSE(main->Visible());
    LeaveOverlay();

    // The zone command allows one double-height zone, not two.
    ClickButton(mv::kCmdZoneDouble);
    EXPECT_EQ(BoxesWith(Entry(265)), 1);
    EXPECT_TRUE(app->full->Visible());
    LeaveOverlay();
    ClickButton(mv::kCmdZoneDouble);
    EXPECT_EQ(BoxesWith(Entry(265)), 2);

    // Keeping the windows: no hide and no wait before the overlay.
    app->params.GardeFenetres = 1;
    t0 = be.nowMs;
    be.Click(main->bouton[mv::kCmdZone]);
    EXPECT_LT(be.nowMs - t0, 20);
    EXPECT_TRUE(main->Visible());
    EXPECT_TRUE(app->full->Visible());
}

// Command 11 reopens the frozen screen (a Wine check shows it); before any overlay, and
// after a whole-screen capture that opens none, it does nothing.
TEST_F(CommandsTest, BackToTheLastZoneOnlyAfterTheOverlayWasOpened) {
    Start();
    ClickButton(mv::kCmdAnnuler);
    EXPECT_FALSE(app->full->Visible());
    ClickButton(mv::kCmdEcran);
    ClickButton(mv::kCmdAnnuler);
    EXPECT_FALSE(app->full->Visible());
    EXPECT_FALSE(app->RetourZone);
}

// Only Control+Q quits (Delete's removal is the Wine check's).
TEST_F(CommandsTest, OnlyControlQQuitsAndWithNoCaptureAsksNothing) {
    Start();
    ClickButton(mv::kCmdEcran);
    // Q alone, Shift+Q, Alt+Q, and F5 with no file out for editing: nothing.
    be.KeyDown(*main, ui::kKeyQ, 0);
    be.KeyDown(*main, ui::kKeyQ, ui::kShiftMask);
    be.KeyDown(*main, ui::kKeyQ, ui::kAltMask);
    be.KeyDown(*main, ui::kKeyF5, 0);
    EXPECT_FALSE(be.ended);
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_EQ(app->NbVignettes, 1);

    // With no capture left Control+Q ends without a question, and takes the temporary
    // store along.
    app->VignetteCourante = 1;
    be.KeyDown(*main, ui::kKeyDelete, 0);
    ASSERT_EQ(app->NbVignettes, 0);
    EXPECT_THROW(be.KeyDown(*main, ui::kKeyQ, ui::kCtrlMask), headless::ProgramEnded);
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_EQ(be.lastError, 0);
    EXPECT_FALSE(rt::DirExists(app->DossierTemp));
}

// A double click on the save-all button shows the save folder; on another, nothing.
TEST_F(CommandsTest, DoubleClickOnSaveAllShowsTheSaveFolder) {
    Start();
    be.Click(main->bouton[mv::kCmdEnregistrerTout]);
    be.DblClick(main->bouton[mv::kCmdEnregistrerTout]);
    ASSERT_EQ(be.dialogs.size(), 1u);
    EXPECT_EQ(be.dialogs[0].initDir, rt::RTrim(app->params.DossierEnreg));
    be.DblClick(main->bouton[mv::kCmdEnregistrer]);
    EXPECT_EQ(be.dialogs.size(), 1u);
}

// The File and Edit entries are enabled when their menu opens, not when a capture comes.
TEST_F(CommandsTest, MenusEnableTheirEntriesWhenTheyOpenAndForwardWithoutHotkey) {
    Start();
    be.Click(main->mnuedition);
    EXPECT_FALSE(main->Mnudelcap.Enabled());
    ClickButton(mv::kCmdEcran);
    EXPECT_FALSE(main->Mnudelcap.Enabled());
    be.Click(main->mnufichier);
    be.Click(main->mnuedition);
    EXPECT_TRUE(main->Mnuenregistrer.Enabled());
    EXPECT_TRUE(main->Mnudelcap.Enabled());

    // A menu command never counts as a hotkey.
    app->ParClavier = true;
    be.Click(main->Mnudelcap);
    EXPECT_FALSE(app->ParClavier);
    EXPECT_EQ(app->NbVignettes, 0);
}

// An error that nothing trapped shows its box and abandons its event; the program and its
// captures go on. Memory that runs out under an event is run-time error 7 like any other.
// Inside a command the error is silent; big screens do not overflow.
TEST_F(CommandsTest, UntrappedErrorShowsItsBoxAndTheRunGoesOnAndCommandsFailSilently) {
    Start();
    ClickButton(mv::kCmdEcran);
    bool suite = false;
    ui::Dispatch(be, [&] {
        rt::Raise(rt::kTypeMismatch);
        suite = true;
    });
    EXPECT_FALSE(suite);
    EXPECT_EQ(be.lastError, 13);
    ui::Dispatch(be, [] { throw std::bad_alloc(); });
    EXPECT_EQ(be.lastError, 7);
    ASSERT_EQ(be.boxes.size(), 2u);
    EXPECT_EQ(be.boxes.back().prompt.rfind(L"Run-time error '7':", 0), 0u);
    EXPECT_FALSE(be.ended);
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, 2);
    // A rectangle the grab cannot size abandons the command where it stood, silently.
    SetForeground({50, 10, 40, 30});
    ClickButton(mv::kCmdFenetre);
    EXPECT_FALSE(be.ended);
    EXPECT_EQ(be.boxes.size(), 2u);
    EXPECT_EQ(app->NbVignettes, 2);
    EXPECT_FALSE(main->Visible());

    // A cursor far out on a big screen is sampled without an overflow.
    be.cursor.pos = {40000, 10};
    be.RunFor(100);
    EXPECT_FALSE(be.ended);
    EXPECT_EQ(app->CurseurX, 40000);
}

} // namespace
