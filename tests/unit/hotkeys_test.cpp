// The capture hotkeys polled by the keyboard timer past what the Wine checks press: a digit
// with Control or alone on the keypad, the side effects of a hotkey and the order between
// shared keys.
#include "app_fixture.h"

namespace {

constexpr int kControl = 17;
constexpr int kPave0 = 96;
constexpr int kPave5 = 101;

class HotkeyTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        MarkLanguage();
        SetScreen(160, 120, gdi::Rgb(40, 90, 160));
    }
};

TEST_F(HotkeyTest, DigitFiresWithControlOnTheMainRowAndAloneOnTheKeypadButZeroNever) {
    Start();
    app->params.ToucheEcran = L'5';

    Chord({'5'}); // main row without Control
    EXPECT_EQ(app->NbVignettes, 0);
    Chord({kControl, '5'});
    EXPECT_EQ(app->NbVignettes, 1);
    Chord({kPave5});
    EXPECT_EQ(app->NbVignettes, 2);
    // A keypad press already released when the tick comes still counts.
    be.keyboard.Tap(kPave5);
    be.RunFor(700);
    EXPECT_EQ(app->NbVignettes, 3);

    app->params.ToucheEcran = L'0';
    Chord({kControl, '0'});
    Chord({kPave0});
    be.keyboard.Tap(kPave0);
    be.RunFor(700);
    EXPECT_EQ(app->NbVignettes, 3);
    EXPECT_TRUE(be.boxes.empty());
}

TEST_F(HotkeyTest, OnlyAFiredHotkeyRaisesThePriorityTakesTheCursorAndUnloadsTheOptions) {
    Start();
    EXPECT_FALSE(be.shell.highPriority);
    // The sampling timer follows the mouse too; without it only the hotkey stores it.
    main->TimCurs.SetEnabled(false);
    const int16_t x0 = app->CurseurX;
    be.cursor.pos = {70, 50};
    be.cursor.handle = 0x20005;

    Chord({kControl, 'K'}); // no field holds K
    EXPECT_FALSE(be.shell.highPriority);
    EXPECT_EQ(app->CurseurCapt, ui::CursorHandle(0));
    EXPECT_EQ(app->CurseurX, x0);

    // The options dialog open with an edit not yet confirmed.
    app->options->Show();
    app->options->Check1[4].SetValue(1);
    Chord({kControl, 'E'});
    ASSERT_EQ(app->NbVignettes, 1);
    EXPECT_TRUE(be.shell.highPriority);
    EXPECT_EQ(app->CurseurCapt, ui::CursorHandle(0x20005));
    EXPECT_EQ(app->CurseurX, 70);
    // The end of the grab reads the dialog's check box again, which loads it hidden, fresh;
    // the grab puts the windows back.
    EXPECT_FALSE(app->options->Visible());
    EXPECT_EQ(app->options->Check1[4].Value(), 0);
    EXPECT_EQ(app->params.Silence, 0);
}

TEST_F(HotkeyTest, SharedKeyGoesToTheFirstFieldInOrderAndNeverToTheZone) {
    Start();
    SetForeground({10, 10, 90, 70});
    mv::Params& p = app->params;
    p.ToucheZone = p.ToucheMemeZone = p.ToucheEcran = p.ToucheFenetre = p.ToucheDoubleH = L'K';

    // Same zone again, with no zone taken yet: its notice.
    Chord({kControl, 'K'});
    EXPECT_EQ(BoxesWith(Entry(58)), 1);
    EXPECT_EQ(app->NbVignettes, 0);

    p.ToucheMemeZone = L'M';
    Chord({kControl, 'K'});
    EXPECT_EQ(app->NbVignettes, 1);
    EXPECT_EQ(app->TypeCapt, L"e");

    p.ToucheEcran = L'E';
    Chord({kControl, 'K'});
    EXPECT_EQ(app->NbVignettes, 2);
    EXPECT_EQ(app->TypeCapt, L"f");

    // Double height before the zone: it refuses without a zone command first.
    p.ToucheFenetre = L'F';
    Chord({kControl, 'K'});
    EXPECT_EQ(BoxesWith(Entry(265)), 1);
    EXPECT_FALSE(app->full->IsLoaded());
}

} // namespace
