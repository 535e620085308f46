// The schedule dialog and the slow and burst engines on the virtual clock.
#include "app_fixture.h"
#include "runtime/strings.h"
#include "timed/FrmChrono.h"
#include "timed/timed.h"

#include <algorithm>

namespace {

class TimedTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        MarkLanguage();
        be.startTime = debut;
        SetScreen(160, 120, gdi::Rgb(40, 90, 160));
        Start();
        dossier = root / "Personal" / "serie";
        std::filesystem::create_directories(dossier);
        Dossier(rt::FromUtf8(dossier.string()));
        ValidatedZone(20, 10, 40, 30);
    }
    void Dossier(const std::wstring& d) {
        app->params.DossierEnregCourt = d;
        app->params.DossierEnreg = d + std::wstring(300 - d.size(), L' ');
    }
    mv::FrmChrono& Ouvrir() {
        ui::Dispatch(be, [&] { mv::MnuCaptper_Click(*app); });
        return *app->chrono;
    }
    // A period of h:m:s.ms and a number of images (which clears the end time), in format f
    // (0 bmp .. 3 png).
    void Plan(mv::FrmChrono& c, int h, int m, int s, int ms, const std::wstring& images, int f) {
        c.Txtchrono[10].SetText(rt::Format(ms, L"0000"));
        c.Txtchrono[7].SetText(rt::Format(h, L"00"));
        c.Txtchrono[8].SetText(rt::Format(m, L"00"));
        c.Txtchrono[9].SetText(rt::Format(s, L"00"));
        c.TxtNbImg.SetText(images);
        c.OptSav[f].SetValue(true);
    }
    std::vector<std::string> Fichiers(const std::string& ext) const {
        std::vector<std::string> n;
        for (const auto& e : std::filesystem::directory_iterator(dossier))
            if (e.path().extension() == ext) n.push_back(e.path().filename().string());
        std::sort(n.begin(), n.end());
        return n;
    }
    std::filesystem::path dossier;
    rt::SystemTime debut{2026, 11, 15, 14, 5, 9, 0};
};

class MidnightTest : public TimedTest {
protected:
    MidnightTest() { debut = {2026, 11, 15, 23, 59, 0, 0}; }
};

TEST_F(TimedTest, DialogCarriesAndRefuses) {
    // A schedule repeats a zone: none yet after a whole-screen capture.
    app->TypeCapt = L"e";
    Ouvrir();
    EXPECT_EQ(BoxesWith(Entry(33)), 1);
    EXPECT_FALSE(app->chrono->IsLoaded());
    app->TypeCapt = L"z";
    mv::FrmChrono& c = Ouvrir();

    // 60 carries into the field before it, out of field 1 into element 0; the milliseconds
    // above 1000 read 0000.
    c.Txtchrono[4].SetText(L"60");
    EXPECT_EQ(c.Txtchrono[4].Text(), L"00");
    EXPECT_EQ(c.Txtchrono[3].Text(), L"11");
    c.Txtchrono[1].SetText(L"60");
    EXPECT_EQ(c.Txtchrono[0].Text(), L"01");
    c.Txtchrono[10].SetText(L"1200");
    EXPECT_EQ(c.Txtchrono[10].Text(), L"0000");

    // A number of images clears the end time.
    c.TxtNbImg.SetText(L"5");
    for (int i = 4; i <= 6; ++i) EXPECT_EQ(c.Txtchrono[i].Text(), L"00");

    // A start later than the end with no count is refused, as text: across midnight too.
    c.Txtchrono[1].SetText(L"14");
    c.TxtNbImg.SetText(L"");
    c.Txtchrono[4].SetText(L"13");
    be.Click(c.CdeOk);
    EXPECT_EQ(BoxesWith(Entry(194)), 1);
    EXPECT_FALSE(main->TimerLngPerio.Enabled());
    // A period of zero is a burst whose timer never ticks.
    Plan(c, 0, 0, 0, 0, L"3", 0);
    be.Click(c.CdeOk);
    EXPECT_FALSE(c.Timrapid.Enabled());
    be.RunFor(2000);
    EXPECT_TRUE(Fichiers(".bmp").empty());
}

// A long run (a Wine check runs a short one in PNG): past ten kept captures the list
// empties, the temporary folder stays small, every image is on disk and the count stops it.
TEST_F(TimedTest, FiveHundredSlowCapturesKeepTheFolderSmallAndSaveEveryImage) {
    mv::FrmChrono& c = Ouvrir();
    Plan(c, 0, 0, 1, 0, L"500", 0);
    be.Click(c.CdeOk);
    size_t plusGrand = 0;
    for (int n = 1; n <= 500; ++n) {
        ASSERT_TRUE(be.RunUntil([&] { return app->NbImgFaites >= n; }, 3000)) << n;
        plusGrand = std::max(plusGrand, TempFolderFiles().size());
    }
    be.RunFor(1200);
    EXPECT_FALSE(main->TimerLngPerio.Enabled());
    EXPECT_LE(plusGrand, 12u);
    EXPECT_LE(app->NbVignettes, 10);
    EXPECT_EQ(Fichiers(".bmp").size(), 501u);
}

TEST_F(TimedTest, SlowRunEndsOnceOnAFailingSaveOrAPastEnd) {
    // The save folder is gone: one box, the run ends, the capture stays in the list.
    mv::FrmChrono& c = Ouvrir();
    Plan(c, 0, 0, 1, 0, L"", 1);
    c.Txtchrono[4].SetText(L"23");
    Dossier(rt::FromUtf8((root / "missing").string()));
    be.Click(c.CdeOk);
    be.RunFor(5000);
    EXPECT_EQ(BoxesWith(Entry(117)), 1);
    EXPECT_FALSE(main->TimerLngPerio.Enabled());
    EXPECT_EQ(app->NbVignettes, 2);
    app->options->Unload();

    // An end already past: the first tick stops, with the final save.
    Dossier(rt::FromUtf8(dossier.string()));
    c.Txtchrono[1].SetText(L"00");
    c.Txtchrono[4].SetText(L"01");
    be.Click(c.CdeOk);
    be.RunFor(300);
    EXPECT_FALSE(main->TimerLngPerio.Enabled());
    EXPECT_EQ(Fichiers(".jpg").size(), 2u);
    EXPECT_EQ(app->NbImgFaites, 0);
}

TEST_F(MidnightTest, ACountedRunGoesOnPastMidnight) {
    mv::FrmChrono& c = Ouvrir();
    Plan(c, 0, 0, 30, 0, L"4", 0);
    be.Click(c.CdeOk);
    be.RunFor(125000);
    EXPECT_EQ(app->NbImgFaites, 4);
    EXPECT_FALSE(main->TimerLngPerio.Enabled());
    EXPECT_EQ(Fichiers(".bmp").size(), 5u); // with the first zone
}

TEST_F(TimedTest, BurstWritesConvertsAndRemovesOnlyItsOwnBitmaps) {
    std::ofstream(dossier / "mine.bmp") << "x";
    mv::FrmChrono& c = Ouvrir();
    Plan(c, 0, 0, 0, 100, L"5", 1);
    be.Click(c.CdeOk);
    ASSERT_TRUE(c.Timrapid.Enabled());
    // The format is fixed at the start.
    c.OptSav[3].SetValue(true);
    be.RunFor(650);
    EXPECT_FALSE(c.Timrapid.Enabled());
    EXPECT_EQ(BoxesWith(L"5" + Entry(254) + app->params.DossierEnregCourt), 1);
    const auto jpg = Fichiers(".jpg");
    ASSERT_EQ(jpg.size(), 5u);
    // The prefix, the time and a three-digit count.
    EXPECT_EQ(jpg[0], rt::ToUtf8(app->params.PrefixeNom) + "_140510_001.jpg");

    // Into a folder that went away: one message, the run ends.
    Dossier(rt::FromUtf8((root / "gone").string()));
    be.Click(c.CdeOk);
    be.RunFor(1000);
    EXPECT_FALSE(c.Timrapid.Enabled());
    EXPECT_EQ(be.boxes.back().prompt.find(Entry(277)), 0u);

    // Stop ends a burst through its own end: the message and the clean-up.
    Dossier(rt::FromUtf8(dossier.string()));
    Plan(c, 0, 0, 0, 100, L"", 2);
    c.Txtchrono[4].SetText(L"23");
    be.Click(c.CdeOk);
    be.RunFor(250);
    be.Click(c.CdeStopper);
    EXPECT_FALSE(c.Timrapid.Enabled());
    EXPECT_EQ(Fichiers(".gif").size(), 2u);
    EXPECT_TRUE(Fichiers(".bmp") == std::vector<std::string>{"mine.bmp"});
}

TEST_F(TimedTest, PlainPeriodicTimerAndAutomaticSave) {
    // The about box stops the plain timer; its OK starts it again only during a slow run.
    main->TimPeriod.SetInterval(1000);
    ClickButton(mv::kCmdAPropos);
    be.Click(app->about->cmdOK);
    EXPECT_FALSE(main->TimPeriod.Enabled());
    main->MnuCaptper.SetChecked(true);
    ClickButton(mv::kCmdAPropos);
    be.Click(app->about->cmdOK);
    ASSERT_TRUE(main->TimPeriod.Enabled());
    main->MnuCaptper.SetChecked(false);

    // Each tick repeats the zone; past nine captures all are saved and the list empties.
    ASSERT_TRUE(be.RunUntil([&] { return Fichiers(".jpg").size() >= 10; }, 15000));
    EXPECT_EQ(app->NbVignettes, 0);
    main->TimPeriod.SetEnabled(false);

    // Automatic save: each new capture, and only the newest, is saved as it comes.
    be.Click(main->MnuEnAuto);
    Zone(30, 20, gdi::Rgb(200, 0, 0));
    Zone(30, 20, gdi::Rgb(0, 200, 0));
    EXPECT_EQ(Fichiers(".jpg").size(), 12u);
    EXPECT_TRUE(list->PictSave[2].Visible());
}

} // namespace
