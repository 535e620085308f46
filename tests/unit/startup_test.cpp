// Start-up and shutdown past the roads the Wine checks take (the chooser, the first run, the
// exit question): the failures that stop the start, the temporary folder's name, a damaged
// language choice, the way out's edge cases, the end of the desktop session, and the
// captures of a lost run.
#include "app_fixture.h"
#include "language/FrmChoixLng.h"
#include "language/decode.h"
#include "platform/gdi/bmp.h"
#include "runtime/strings.h"

#include <algorithm>
#include <chrono>
#include <fstream>

namespace {

namespace fs = std::filesystem;

class StartupTest : public AppTest {
protected:
    // The program's folder copied for this test alone, and made the program's.
    fs::path CopieProgramme() {
        fs::path dst = root / "Programme";
        fs::copy(MIROVANTA_ASSET_DIR, dst);
        be.shell.programFolder = rt::FromUtf8(dst.string());
        return dst;
    }
};

TEST_F(StartupTest, EntryNumberOutOfSequenceStopsWithPermanentErrorAndNothingOpens) {
    CopieProgramme();
    // The English file without its line 005.
    std::ifstream in(fs::path(MIROVANTA_SOURCE_DIR) / "assets" / "lang" / "ConstPRJA.txt",
                     std::ios::binary);
    ASSERT_TRUE(in);
    std::string source, ligne;
    while (std::getline(in, ligne))
        if (ligne.rfind("005 ", 0) != 0) source += ligne + "\n";
    const std::string stocke = mv::ScrambleSource(source);
    rt::WriteFileBytes(be.shell.programFolder + L"\\ConstPRJA_codN.txt", stocke.data(),
                       stocke.size());

    Start("ConstPRJA");
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, L"Permanent Error ....");
    EXPECT_EQ(be.boxes[0].style, ui::kCritical);
    EXPECT_EQ(be.livePeers, 0); // no window at all
}

TEST_F(StartupTest, ImageLibraryFailureShowsEntry157AndUnloadsTheMainWindow) {
    MarkLanguage();
    be.codec.startupOk = false;
    Start();
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, Entry(157));
    EXPECT_FALSE(be.tray.present);
    EXPECT_TRUE(app->DossierTemp.empty()); // the load stopped before the folder
    EXPECT_EQ(be.livePeers, 0);
}

// A file in the temporary folder's place is passed by, not fatal: the name grows by three
// digits, and by three more once every three-digit name is taken; what others left stays.
TEST_F(StartupTest, TheTemporaryFolderNameGrowsPastWhatIsInItsPlace) {
    const std::wstring base = UserFolder() + L"\\tempocapt";
    rt::MkDir(UserFolder());
    rt::WriteFileBytes(base, "mine", 4);
    Start();
    EXPECT_EQ(be.lastError, 0);
    EXPECT_TRUE(main->Visible());
    EXPECT_EQ(app->DossierTemp.size(), base.size() + 3);
    EXPECT_TRUE(rt::DirExists(app->DossierTemp));
    EXPECT_EQ(ReadText(base), "mine");

    for (int n = 0; n <= 998; ++n) {
        std::wstring suffixe = std::to_wstring(n);
        suffixe.insert(0, 3 - suffixe.size(), L'0');
        if (!rt::DirExists(base + suffixe)) rt::MkDir(base + suffixe);
    }
    rt::WriteFileBytes(base + L"123\\Captprov_old.bmp", "old", 3);
    auto run = StartAnother();
    const std::wstring second = run->app->DossierTemp;
    ASSERT_EQ(second.size(), base.size() + 6);
    EXPECT_EQ(second.substr(0, base.size()), base);
    EXPECT_TRUE(fs::is_empty(rt::ToFsPath(second)));
    EXPECT_EQ(ReadText(base + L"123\\Captprov_old.bmp"), "old");
}

// An empty or garbled spoken.txt brings the chooser back instead of a fatal error; with a
// flag bitmap gone the chooser still comes, its box blank, and a choice goes on.
TEST_F(StartupTest, DamagedLanguageChoiceAsksAgainAndMissingFlagsDoNotStopIt) {
    const fs::path programme = CopieProgramme();
    fs::remove(programme / "flagfr.bmp");
    rt::MkDir(UserFolder());
    rt::WriteFileBytes(UserFolder() + L"\\spoken.txt", "\xff\x01garbage\r\n", 11);
    Start(nullptr);
    EXPECT_EQ(be.lastError, 0);
    auto& choix = *app->choix;
    ASSERT_TRUE(choix.Visible());
    EXPECT_TRUE(choix.Image1.Picture().Empty());
    be.Click(choix.Image2);
    be.RunFor(1000);
    EXPECT_EQ(ReadText(UserFolder() + L"\\spoken.txt"), "ConstPRJA\r\n");
    EXPECT_TRUE(main->Visible());

    // Empty: the same. With the language chosen, no flag is read at all.
    rt::WriteFileBytes(UserFolder() + L"\\spoken.txt", "", 0);
    EXPECT_TRUE(StartAnother()->app->choix->Visible());
    rt::WriteFileBytes(UserFolder() + L"\\spoken.txt", "ConstPRJA\r\n", 11);
    fs::remove(programme / "flagen.bmp");
    auto troisieme = StartAnother();
    EXPECT_EQ(troisieme->be.lastError, 0);
    EXPECT_FALSE(troisieme->app->choix->IsLoaded());
}

// Cancel to the exit question restarts the periodic timer only if it ran.
TEST_F(StartupTest, QuitCancelRestartsOnlyARunningTimer) {
    MarkLanguage();
    Start();
    Captures(1);
    main->TimPeriod.SetEnabled(true);
    be.answers = {ui::kCancel, ui::kCancel};
    main->quitprog();
    EXPECT_TRUE(main->TimPeriod.Enabled());
    // A slow run's tick alone does not start a timer that was off.
    main->TimPeriod.SetEnabled(false);
    main->MnuCaptper.SetChecked(true);
    main->quitprog();
    EXPECT_EQ(BoxesWith(Entry(115)), 2);
    EXPECT_FALSE(main->TimPeriod.Enabled());
    EXPECT_FALSE(be.ended);
}

// A list out of step with its count (a mark missing) does not stop the way out: the mark
// that cannot be read counts as unsaved, and every later step still runs.
TEST_F(StartupTest, QuitGoesOnPastAnErrorInAnyStep) {
    MarkLanguage();
    Start();
    Captures(2);
    list->PictSave[1].SetVisible(true);
    list->PictSave.Unload(2);
    be.answers.push_back(ui::kNo);
    EXPECT_THROW(main->quitprog(), headless::ProgramEnded);
    EXPECT_EQ(BoxesWith(Entry(115)), 1);
    EXPECT_EQ(be.lastError, 0);
    EXPECT_FALSE(rt::DirExists(app->DossierTemp));
    EXPECT_FALSE(be.tray.present);
}

// Tools > Language forgets the choice; with spoken.txt already gone it does the same,
// without a word.
TEST_F(StartupTest, ChangingTheLanguageForgetsTheChoiceEvenWhenItIsGoneAlready) {
    MarkLanguage();
    Start();
    const std::wstring spoken = UserFolder() + L"\\spoken.txt";
    be.Click(main->MnuChgLang);
    EXPECT_FALSE(rt::FileExists(spoken));
    main->MnuChgLang.SetEnabled(true);
    be.Click(main->MnuChgLang);
    EXPECT_FALSE(be.ended);
    EXPECT_TRUE(be.boxes.empty());
}

// A save folder that is gone: the save writes nothing and says so, and the session takes
// the program down at once with the temporary files kept.
TEST_F(StartupTest, SessionEndWithNothingWrittenLetsTheSessionEndItAndKeepsTheFiles) {
    MarkLanguage();
    Start();
    Captures(2);
    app->params.DossierEnreg = rt::FromUtf8((root / "gone").string()) + std::wstring(280, L' ');
    const int64_t t0 = be.nowMs;
    main->CloseRequested(ui::kAppWindows);
    EXPECT_FALSE(be.ended);
    EXPECT_LT(be.nowMs - t0, 100);
    EXPECT_EQ(BoxesWith(Entry(117)), 1);
    EXPECT_FALSE(main->IsLoaded()); // not held back: the session takes it down
    EXPECT_TRUE(rt::FileExists(TempFile(1)));
    EXPECT_TRUE(rt::FileExists(TempFile(2)));
}

// Saved without a question, as JPEG in the Personal folder, behind a notice of three
// seconds; the temporary store stays.
TEST_F(StartupTest, SessionEndAfterSavingShowsTheNoticeThreeSecondsAndKeepsTheTemporaryStore) {
    MarkLanguage();
    Start();
    Captures(3);
    bool notice = false;
    be.Schedule(2950, [&] {
        notice = app->sortie->Visible() && app->sortie->Label1.Caption() == Entry(134);
    });
    const int64_t t0 = be.nowMs;
    EXPECT_THROW(main->CloseRequested(ui::kAppWindows), headless::ProgramEnded);
    EXPECT_GE(be.nowMs - t0, 3000);
    EXPECT_LT(be.nowMs - t0, 3010);
    EXPECT_TRUE(notice);
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_EQ(TempFolderFiles().size(), 3u);
    int jpeg = 0;
    for (const auto& e : fs::directory_iterator(root / "Personal"))
        jpeg += e.path().extension() == ".jpg";
    EXPECT_EQ(jpeg, 3);
}

// What a run that never quit leaves: its folder and capture files, written an hour
// apart per folder so that the older run is the one named last.
class StaleCapturesTest : public StartupTest {
protected:
    std::wstring Famille() const { return UserFolder() + L"\\tempocapt"; }
    void Depose(const std::wstring& dossier, const std::wstring& nom, const gdi::Surface& s,
                int heuresAvant) {
        if (!rt::DirExists(UserFolder())) rt::MkDir(UserFolder());
        if (!rt::DirExists(dossier)) rt::MkDir(dossier);
        const std::wstring chemin = dossier + L"\\" + nom;
        if (s.Empty())
            rt::WriteFileBytes(chemin, "BM\x10\0\0\0damaged", 13);
        else
            gdi::SaveBmp(s, chemin);
        fs::last_write_time(rt::ToFsPath(chemin),
                            fs::file_time_type::clock::now() - std::chrono::hours(heuresAvant));
    }
    static std::vector<std::wstring> Noms(const std::wstring& dossier) {
        std::vector<std::wstring> v = rt::FolderNames(dossier, false);
        std::sort(v.begin(), v.end());
        return v;
    }
};

// Yes files them in the order taken (98, 99, 100, where name order would put 100 first),
// older run first, whatever lock the dead run left; damaged files, the user's files and a
// folder outside the family stay.
TEST_F(StaleCapturesTest, YesFilesThemInTheOrderTakenSkipsDamagedOnesAndKeepsOthersFiles) {
    MarkLanguage();
    const std::wstring ancien = Famille() + L"713";
    const gdi::Surface a = Motif(30, 20, 3), b = Motif(102, 76, 5), c = Motif(15, 40, 7),
                       recente = Motif(64, 48, 11);
    Depose(ancien, L"Captprov_H09301298.bmp", a, 3);
    Depose(ancien, L"Captprov_H09301299.bmp", b, 3);
    Depose(ancien, L"Captprov_H093012100.bmp", c, 3);
    rt::WriteFileBytes(ancien + L".lock", "", 0);
    Depose(Famille(), L"Captprov_H10150001.bmp", recente, 1);
    Depose(Famille(), L"Captprov_H10150002.bmp", {}, 1);
    rt::WriteFileBytes(Famille() + L"\\notes.txt", "mine", 4);
    Depose(Famille() + L"_copie", L"Captprov_H10150001.bmp", recente, 1);

    Start();
    EXPECT_EQ(BoxesWith(Entry(274)), 1);
    EXPECT_EQ(be.lastError, 0);
    ASSERT_EQ(app->NbVignettes, 4);
    const gdi::Surface* attendues[] = {&a, &b, &c, &recente};
    for (int i = 1; i <= 4; ++i) EXPECT_TRUE(gdi::LoadBmp(TempFile(i)) == *attendues[i - 1]) << i;
    EXPECT_FALSE(rt::DirExists(ancien));
    EXPECT_FALSE(rt::FileExists(ancien + L".lock"));
    EXPECT_EQ(Noms(Famille()),
              (std::vector<std::wstring>{L"Captprov_H10150002.bmp", L"notes.txt"}));
    EXPECT_EQ(Noms(Famille() + L"_copie").size(), 1u);
}

// No marks the folder, and the next start asks nothing.
TEST_F(StaleCapturesTest, NoLeavesThemAndTheNextStartDoesNotAskAgain) {
    MarkLanguage();
    const std::wstring ancien = Famille() + L"042";
    Depose(ancien, L"Captprov_H09301201.bmp", Motif(40, 30, 2), 2);
    be.answers.push_back(ui::kNo);
    Start();
    EXPECT_EQ(BoxesWith(Entry(274)), 1);
    EXPECT_EQ(app->NbVignettes, 0);
    EXPECT_EQ(Noms(ancien),
              (std::vector<std::wstring>{L"Captprov_H09301201.bmp", L"declined.txt"}));
    EXPECT_TRUE(StartAnother()->be.boxes.empty());
}

// The list holds 100: the 101st stays on the disk, with its folder, and no box says so.
TEST_F(StaleCapturesTest, MoreThanTheListHoldsStopsAtItsLimitWithoutABox) {
    const std::wstring ancien = Famille() + L"900";
    for (int n = 1; n <= 101; ++n)
        Depose(ancien, L"Captprov_H093012" + rt::Format(n, L"00") + L".bmp", Motif(4, 3, n), 1);
    Start();
    EXPECT_EQ(be.boxes.size(), 1u);
    ASSERT_EQ(app->NbVignettes, 100);
    EXPECT_TRUE(gdi::LoadBmp(TempFile(100)) == Motif(4, 3, 100));
    EXPECT_EQ(Noms(ancien), std::vector<std::wstring>{L"Captprov_H093012101.bmp"});
}

} // namespace
