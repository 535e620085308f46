// The command dispatcher of the main window: latches, the press flash, keys, hover,
// menus and what a run-time error does.
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
    EXPECT_EQ(be.boxes.back().style, ui::kInformation);
    EXPECT_FALSE(app->full->Visible());
    EXPECT_FALSE(app->RetourPossible);
    EXPECT_TRUE(main->Visible());
    EXPECT_EQ(main->bouton[mv::kCmdZoneDouble].BorderStyle(), 0); // no press look for 19

    // Command 0 hides the windows, waits 0.4 s, then opens the overlay.
    int64_t t0 = be.nowMs;
    be.Click(main->bouton[mv::kCmdZone]);
    EXPECT_GE(be.nowMs - t0, 400);
    EXPECT_LT(be.nowMs - t0, 420);
    EXPECT_EQ(app->ZoneAmorcee, 1);
    EXPECT_TRUE(app->full->Visible());
    EXPECT_FALSE(main->Visible());
    EXPECT_EQ(app->TypeCapt, L"z");
    EXPECT_TRUE(app->RetourPossible);
    LeaveOverlay();

    ClickButton(mv::kCmdZoneDouble);
    EXPECT_EQ(BoxesWith(Entry(265)), 1);
    EXPECT_EQ(app->ZoneAmorcee, 0);
    EXPECT_TRUE(app->full->Visible());
    LeaveOverlay();

    ClickButton(mv::kCmdZoneDouble);
    EXPECT_EQ(BoxesWith(Entry(265)), 2);
    EXPECT_FALSE(app->full->Visible());

    // Keeping the windows: no hide and no wait before the overlay.
    app->params.GardeFenetres = 1;
    t0 = be.nowMs;
    be.Click(main->bouton[mv::kCmdZone]);
    EXPECT_LT(be.nowMs - t0, 20);
    EXPECT_TRUE(main->Visible());
    EXPECT_TRUE(app->full->Visible());
}

TEST_F(CommandsTest, BackToTheLastZoneOnlyAfterTheOverlayWasOpened) {
    Start();
    ClickButton(mv::kCmdAnnuler);
    EXPECT_FALSE(app->full->Visible());
    EXPECT_FALSE(app->RetourZone);
    EXPECT_EQ(app->TypeCapt, L"");

    ClickButton(mv::kCmdEcran); // a whole-screen capture does not open the overlay
    ASSERT_EQ(app->NbVignettes, 1);
    ClickButton(mv::kCmdAnnuler);
    EXPECT_FALSE(app->full->Visible());
    EXPECT_FALSE(app->RetourZone);
    EXPECT_EQ(app->TypeCapt, L"e");

    ClickButton(mv::kCmdZone);
    LeaveOverlay();
    EXPECT_FALSE(app->RetourZone);
    const int64_t t0 = be.nowMs;
    be.Click(main->bouton[mv::kCmdAnnuler]);
    EXPECT_LT(be.nowMs - t0, 20); // the frozen screen is reused: no hide, no wait
    EXPECT_TRUE(app->full->Visible());
    EXPECT_TRUE(main->Visible());
    EXPECT_TRUE(app->RetourZone);
    EXPECT_EQ(app->TypeCapt, L"z");
    EXPECT_EQ(app->NbVignettes, 1);
}

TEST_F(CommandsTest, ThumbnailWindowButtonActsOnlyOnAList) {
    Start();
    ClickButton(mv::kCmdListe);
    EXPECT_EQ(main->bouton[mv::kCmdListe].BorderStyle(), 0);
    EXPECT_EQ(list->WindowState(), ui::kNormal);
    EXPECT_FALSE(list->Visible());

    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(main->bouton[mv::kCmdListe].BorderStyle(), 1);
    ClickButton(mv::kCmdListe);
    EXPECT_EQ(list->WindowState(), ui::kMinimized);
    EXPECT_EQ(main->bouton[mv::kCmdListe].BorderStyle(), 0);
    ClickButton(mv::kCmdListe);
    EXPECT_EQ(list->WindowState(), ui::kNormal);
    EXPECT_EQ(main->bouton[mv::kCmdListe].BorderStyle(), 1);

    // Emptied by the periodic engine, the list keeps the framed button; 17 leaves it be.
    main->Supprimertout(false);
    ASSERT_EQ(app->NbVignettes, 0);
    ClickButton(mv::kCmdListe);
    EXPECT_EQ(main->bouton[mv::kCmdListe].BorderStyle(), 1);
    EXPECT_EQ(list->WindowState(), ui::kNormal);
}

TEST_F(CommandsTest, PressFlashLasts200msAndSparesTheModeButtons) {
    Start();
    ClickButton(mv::kCmdMulti); // multi-selection on: its button stays framed
    ASSERT_TRUE(main->Mnumulti.Checked());
    ASSERT_EQ(main->bouton[mv::kCmdMulti].BorderStyle(), 1);
    main->bouton[mv::kCmdRafraichirTim].SetBorderStyle(1); // as the periodic mode leaves it
    ClickButton(mv::kCmdEcran);                            // the first capture frames 17
    be.RunFor(300);

    be.Click(main->bouton[mv::kCmdCopier]);
    for (int i = 0; i <= 19; ++i) {
        const int expected = (i == 3 || i == 8 || i == 13 || i == 17) ? 1 : 0;
        EXPECT_EQ(main->bouton[i].BorderStyle(), expected) << "button " << i;
    }
    be.RunFor(150);
    be.Click(main->bouton[mv::kCmdImprimer]); // the next command moves the flash
    EXPECT_EQ(main->bouton[mv::kCmdCopier].BorderStyle(), 0);
    EXPECT_EQ(main->bouton[mv::kCmdImprimer].BorderStyle(), 1);
    be.RunFor(45);
    EXPECT_EQ(main->bouton[mv::kCmdImprimer].BorderStyle(), 1);
    be.RunFor(10);
    EXPECT_EQ(main->bouton[mv::kCmdImprimer].BorderStyle(), 0);
    EXPECT_FALSE(main->Timbouton.Enabled());
    EXPECT_EQ(main->bouton[mv::kCmdMulti].BorderStyle(), 1);
    EXPECT_EQ(main->bouton[mv::kCmdRafraichirTim].BorderStyle(), 1);
    EXPECT_EQ(main->bouton[mv::kCmdListe].BorderStyle(), 1);
}

TEST_F(CommandsTest, DeleteKeyDeletesTheCurrentCaptureAndOnlyControlQQuits) {
    Start();
    ClickButton(mv::kCmdEcran);
    be.RunFor(1000);
    ClickButton(mv::kCmdEcran);
    ASSERT_EQ(app->NbVignettes, 2);
    const std::wstring second = TempFile(2);
    ASSERT_TRUE(rt::FileExists(second));

    be.KeyDown(*main, ui::kKeyDelete, 0);
    EXPECT_EQ(app->NbVignettes, 1);
    EXPECT_FALSE(rt::FileExists(second));
    EXPECT_TRUE(rt::FileExists(TempFile(1)));
    EXPECT_EQ(app->VignetteCourante, 0);

    // Q alone, Shift+Q, Alt+Q, and F5 with no file out for editing: nothing.
    const size_t boxes = be.boxes.size();
    be.KeyDown(*main, ui::kKeyQ, 0);
    be.KeyDown(*main, ui::kKeyQ, ui::kShiftMask);
    be.KeyDown(*main, ui::kKeyQ, ui::kAltMask);
    be.KeyDown(*main, ui::kKeyF5, 0);
    EXPECT_FALSE(be.ended);
    EXPECT_EQ(be.boxes.size(), boxes);
    EXPECT_EQ(app->NbVignettes, 1);

    // With an unsaved capture Control+Q asks first; Cancel keeps the program.
    be.answers.push_back(ui::kCancel);
    be.KeyDown(*main, ui::kKeyQ, ui::kCtrlMask);
    EXPECT_FALSE(be.ended);
    ASSERT_EQ(be.boxes.size(), boxes + 1);
    EXPECT_EQ(be.boxes.back().prompt, Entry(115));
    EXPECT_TRUE(rt::FileExists(TempFile(1)));

    // With no capture left it ends without a question, and takes the temporary store along.
    app->VignetteCourante = 1;
    be.KeyDown(*main, ui::kKeyDelete, 0);
    ASSERT_EQ(app->NbVignettes, 0);
    EXPECT_THROW(be.KeyDown(*main, ui::kKeyQ, ui::kCtrlMask), headless::ProgramEnded);
    EXPECT_EQ(be.boxes.size(), boxes + 1);
    EXPECT_EQ(be.lastError, 0);
    EXPECT_FALSE(rt::DirExists(app->DossierTemp));
}

TEST_F(CommandsTest, HoverHighlightsOneButtonAndPointsAtTheDoubleClick) {
    Start();
    const ui::ImageList& images = main->ImageList1;
    ASSERT_FALSE(images.Item(4) == images.Item(24));
    auto highlighted = [&](int only) {
        for (int i = 0; i <= 19; ++i) {
            const bool on = main->bouton[i].Picture() == images.Item(i + 21);
            const bool off = main->bouton[i].Picture() == images.Item(i + 1);
            if (i == only ? !on : !off) return false;
        }
        return true;
    };

    // Button 5's tooltip names the save folder.
    EXPECT_EQ(main->bouton[mv::kCmdEnregistrerTout].ToolTipText(),
              Entry(44) + L" --->    " + rt::RTrim(app->params.DossierEnreg));

    be.MouseMove(main->bouton[mv::kCmdCopier], 100, 100);
    EXPECT_TRUE(highlighted(3));
    EXPECT_FALSE(main->LabDoubleClick.Visible());

    be.MouseMove(main->bouton[mv::kCmdEnregistrerTout], 100, 100);
    EXPECT_TRUE(highlighted(5));
    auto& lab = main->LabDoubleClick;
    EXPECT_TRUE(lab.Visible());
    // Staying on the button keeps it lit.
    be.MouseMove(main->bouton[mv::kCmdEnregistrerTout], 140, 100);
    EXPECT_TRUE(highlighted(5));

    // The decoration strip only hides the hint; the last highlight stays.
    be.MouseMove(main->bouton[40], 100, 100);
    EXPECT_FALSE(lab.Visible());
    EXPECT_TRUE(highlighted(5));

    be.MouseMove(main->bouton[mv::kCmdImprimer], 100, 100);
    EXPECT_TRUE(highlighted(6));
    EXPECT_FALSE(lab.Visible());

    // A double click on button 5 shows the save folder; on another, nothing.
    be.Click(main->bouton[mv::kCmdEnregistrerTout]);
    be.DblClick(main->bouton[mv::kCmdEnregistrerTout]);
    ASSERT_EQ(be.dialogs.size(), 1u);
    EXPECT_EQ(be.dialogs[0].kind, ui::FileDialogKind::Open);
    EXPECT_EQ(be.dialogs[0].initDir, rt::RTrim(app->params.DossierEnreg));
    EXPECT_EQ(be.dialogs[0].title, Entry(240));
    be.DblClick(main->bouton[mv::kCmdEnregistrer]);
    EXPECT_EQ(be.dialogs.size(), 1u);
}

TEST_F(CommandsTest, MenusEnableTheirEntriesWhenTheyOpenAndForwardWithoutHotkey) {
    Start();
    std::vector<ui::Menu*> fichier = {&main->Mnuenregistrer, &main->Mnuenregistrertout,
                                      &main->Mnuimprimer};
    std::vector<ui::Menu*> edition = {&main->mnuretour, &main->mnucopier,  &main->mnurafraichir,
                                      &main->Mnudelcap, &main->Mnudeltout, &main->MnuEditPaint};
    auto all = [](const std::vector<ui::Menu*>& ms, bool enabled) {
        for (ui::Menu* m : ms)
            if (m->Enabled() != enabled) return false;
        return true;
    };

    be.Click(main->mnufichier);
    be.Click(main->mnuedition);
    EXPECT_TRUE(all(fichier, false));
    EXPECT_TRUE(all(edition, false));
    EXPECT_TRUE(main->mnuttscreen.Enabled());

    ClickButton(mv::kCmdEcran);
    EXPECT_TRUE(all(fichier, false)); // nothing but the opening changes them
    EXPECT_TRUE(all(edition, false));
    be.Click(main->mnufichier);
    be.Click(main->mnuedition);
    EXPECT_TRUE(all(fichier, true));
    EXPECT_TRUE(all(edition, true));

    // A menu command never counts as a hotkey.
    app->ParClavier = true;
    be.Click(main->Mnudelcap);
    EXPECT_FALSE(app->ParClavier);
    EXPECT_EQ(app->NbVignettes, 0);
    EXPECT_TRUE(all(edition, true));
    be.Click(main->mnuedition);
    EXPECT_TRUE(all(edition, false));
    EXPECT_TRUE(main->mnuttscreen.Enabled());
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
