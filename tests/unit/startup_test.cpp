// Start-up and shutdown: the language chooser, the splash and the main window in turn, the
// failures that stop the start, the temporary folder of a run, the tray icon, the exit
// question and the quick end when the desktop session closes.
#include "app_fixture.h"
#include "language/FrmChoixLng.h"
#include "language/charge.h"
#include "language/decode.h"
#include "platform/gdi/bmp.h"
#include "runtime/strings.h"

#include <algorithm>
#include <chrono>
#include <fstream>

namespace {

namespace fs = std::filesystem;

// A language file of this build, read on its own.
mv::Language Langue(const std::string& code) {
    mv::Language lang;
    const fs::path f = fs::path(MIROVANTA_ASSET_DIR) / (code + "_codN.txt");
    const bool ok = bool(mv::ChargerLangue(lang, rt::ReadFileBytes(rt::FromUtf8(f.string()))));
    EXPECT_TRUE(ok) << f;
    return lang;
}

bool Chiffres(const std::wstring& s) {
    for (wchar_t c : s)
        if (c < L'0' || c > L'9') return false;
    return true;
}

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

TEST_F(StartupTest, WithoutAStoredChoiceTheChooserWaitsAndTheStoredChoiceSkipsItNextTime) {
    Start(nullptr);
    auto& choix = *app->choix;
    EXPECT_TRUE(choix.IsLoaded());
    EXPECT_TRUE(choix.Visible());
    EXPECT_FALSE(app->splash->IsLoaded());
    EXPECT_FALSE(main->IsLoaded());
    EXPECT_FALSE(be.tray.present);
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_TRUE(rt::DirExists(UserFolder())); // made for the choice to come
    EXPECT_FALSE(rt::FileExists(UserFolder() + L"\\spoken.txt"));

    be.Click(choix.Image1);
    EXPECT_EQ(choix.Image1.BorderStyle(), 1);
    EXPECT_EQ(ReadText(UserFolder() + L"\\spoken.txt"), "ConstPRJF\r\n");

    // The frame stays in sight for 500 ms, then the splash for 250 ms.
    be.RunFor(499);
    EXPECT_TRUE(choix.Visible());
    EXPECT_FALSE(app->splash->IsLoaded());
    be.RunFor(1);
    EXPECT_FALSE(choix.IsLoaded());
    EXPECT_TRUE(app->splash->Visible());
    be.RunFor(249);
    EXPECT_FALSE(main->IsLoaded());
    be.RunFor(1);
    EXPECT_FALSE(app->splash->IsLoaded());
    EXPECT_TRUE(main->Visible());

    const mv::Language fr = Langue("ConstPRJF");
    ASSERT_NE(fr.Entry(210), Langue("ConstPRJA").Entry(210));
    EXPECT_EQ(main->Caption(), L"Mirovanta - " + fr.Entry(210));
    EXPECT_TRUE(be.tray.present);
    EXPECT_EQ(be.tray.tip, fr.Entry(104));
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_FALSE(be.shell.highPriority); // only a hotkey raises it
    EXPECT_EQ(app->DossierTemp, UserFolder() + L"\\tempocapt");
    EXPECT_TRUE(rt::DirExists(app->DossierTemp));

    // The stored choice: the next start never shows the chooser.
    auto autre = StartAnother();
    EXPECT_FALSE(autre->app->choix->IsLoaded());
    EXPECT_TRUE(autre->app->main->Visible());
    EXPECT_EQ(autre->app->main->Caption(), L"Mirovanta - " + fr.Entry(210));
    EXPECT_TRUE(autre->be.tray.present);
}

TEST_F(StartupTest, EntryNumberOutOfSequenceStopsWithPermanentErrorAndNothingOpens) {
    CopieProgramme();
    // The English file without its line 005.
    std::ifstream in(fs::path(MIROVANTA_SOURCE_DIR) / "assets" / "lang" / "ConstPRJA.txt",
                     std::ios::binary);
    ASSERT_TRUE(in);
    std::string source, ligne;
    int retirees = 0;
    while (std::getline(in, ligne)) {
        if (ligne.rfind("005 ", 0) == 0) {
            ++retirees;
            continue;
        }
        source += ligne + "\n";
    }
    ASSERT_EQ(retirees, 1);
    const std::string stocke = mv::ScrambleSource(source);
    rt::WriteFileBytes(be.shell.programFolder + L"\\ConstPRJA_codN.txt", stocke.data(),
                       stocke.size());

    Start("ConstPRJA");
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, L"Permanent Error ....");
    EXPECT_EQ(be.boxes[0].style, ui::kCritical);
    EXPECT_FALSE(be.tray.present);
    EXPECT_EQ(be.livePeers, 0); // no window at all
    EXPECT_TRUE(app->lang.TabBulles.empty());
}

TEST_F(StartupTest, ImageLibraryFailureShowsEntry157AndUnloadsTheMainWindow) {
    MarkLanguage();
    be.codec.startupOk = false;
    Start();
    EXPECT_EQ(be.codec.startups, 1);
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, Entry(157));
    EXPECT_EQ(be.boxes[0].style, ui::kCritical);
    EXPECT_FALSE(be.tray.present);
    EXPECT_TRUE(app->DossierTemp.empty()); // the load stopped before the folder
    EXPECT_EQ(be.livePeers, 0);
}

TEST_F(StartupTest, StaleTemporaryFolderMakesTheNameGrowByThreeDigitsAtATime) {
    const std::wstring base = UserFolder() + L"\\tempocapt";
    rt::MkDir(UserFolder());
    rt::MkDir(base);
    rt::WriteFileBytes(base + L"\\Captprov_old.bmp", "old", 3);

    Start();
    const std::wstring premier = app->DossierTemp;
    ASSERT_EQ(premier.size(), base.size() + 3);
    EXPECT_EQ(premier.substr(0, base.size()), base);
    EXPECT_TRUE(Chiffres(premier.substr(base.size())));
    EXPECT_TRUE(rt::DirExists(premier));
    EXPECT_EQ(ReadText(base + L"\\Captprov_old.bmp"), "old");

    // Every three-digit name taken: the next run adds three more digits.
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
    EXPECT_TRUE(Chiffres(second.substr(base.size())));
    EXPECT_TRUE(rt::DirExists(second));
    EXPECT_TRUE(fs::is_empty(rt::ToFsPath(second)));
    EXPECT_EQ(ReadText(base + L"\\Captprov_old.bmp"), "old");
    EXPECT_EQ(ReadText(base + L"123\\Captprov_old.bmp"), "old");
    EXPECT_TRUE(rt::DirExists(premier));
}

// A file in the temporary folder's place is left alone: the name grows past it.
TEST_F(StartupTest, FileInPlaceOfTheTemporaryFolderIsPassedBy) {
    const std::wstring base = UserFolder() + L"\\tempocapt";
    rt::MkDir(UserFolder());
    rt::WriteFileBytes(base, "mine", 4);
    Start();
    EXPECT_EQ(be.lastError, 0);
    EXPECT_TRUE(main->Visible());
    EXPECT_EQ(app->DossierTemp.size(), base.size() + 3);
    EXPECT_TRUE(rt::DirExists(app->DossierTemp));
    EXPECT_EQ(ReadText(base), "mine");
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
    EXPECT_FALSE(choix.Image2.Picture().Empty());
    be.Click(choix.Image2);
    be.RunFor(1000);
    EXPECT_EQ(ReadText(UserFolder() + L"\\spoken.txt"), "ConstPRJA\r\n");
    EXPECT_TRUE(main->Visible());

    // Empty: the same. With the language chosen, no flag is read at all.
    rt::WriteFileBytes(UserFolder() + L"\\spoken.txt", "", 0);
    auto autre = StartAnother();
    EXPECT_TRUE(autre->app->choix->Visible());
    rt::WriteFileBytes(UserFolder() + L"\\spoken.txt", "ConstPRJA\r\n", 11);
    std::filesystem::remove(programme / "flagen.bmp");
    auto troisieme = StartAnother();
    EXPECT_EQ(troisieme->be.lastError, 0);
    EXPECT_FALSE(troisieme->app->choix->IsLoaded());
}

// Quit asks only while a capture is unsaved. Cancel keeps everything and restarts the
// periodic timer only if it ran; once all are saved the way out asks nothing and removes
// the temporary store.
TEST_F(StartupTest, QuitAsksOnlyForUnsavedCapturesCancelKeepsAllThenTheStoreGoes) {
    MarkLanguage();
    Start();
    Captures(2);
    const std::wstring f1 = TempFile(1), f2 = TempFile(2);
    list->PictSave[1].SetVisible(true);
    app->options->Show();
    main->TimPeriod.SetEnabled(true);
    be.answers = {ui::kCancel, ui::kCancel};
    main->quitprog();
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, Entry(115));
    EXPECT_EQ(be.boxes[0].title, Entry(116));
    EXPECT_EQ(be.boxes[0].style, ui::kYesNoCancel | ui::kQuestion);
    EXPECT_TRUE(main->TimPeriod.Enabled());
    EXPECT_FALSE(app->options->IsLoaded());
    // A slow run's tick alone does not start a timer that was off.
    main->TimPeriod.SetEnabled(false);
    main->MnuCaptper.SetChecked(true);
    main->quitprog();
    EXPECT_EQ(be.boxes.size(), 2u);
    EXPECT_FALSE(main->TimPeriod.Enabled());
    EXPECT_FALSE(be.ended);
    EXPECT_TRUE(main->Visible());
    EXPECT_EQ(TempFolderFiles().size(), 2u);
    EXPECT_TRUE(be.tray.present);
    EXPECT_EQ(be.tray.deletes, 0);

    main->MnuCaptper.SetChecked(false);
    list->PictSave[2].SetVisible(true);
    EXPECT_THROW(main->quitprog(), headless::ProgramEnded);
    EXPECT_EQ(be.boxes.size(), 2u);
    EXPECT_EQ(be.lastError, 0);
    EXPECT_FALSE(rt::FileExists(f1));
    EXPECT_FALSE(rt::FileExists(f2));
    EXPECT_FALSE(rt::DirExists(app->DossierTemp));
    // Once by quitprog itself, once more by the main window's Terminate.
    EXPECT_FALSE(be.tray.present);
    EXPECT_EQ(be.tray.deletes, 2);
}

// Tools > Language forgets the choice, so that the chooser comes back at the next start;
// with spoken.txt already gone it does the same, without a word.
TEST_F(StartupTest, ChangingTheLanguageForgetsTheChoiceEvenWhenItIsGoneAlready) {
    MarkLanguage();
    Start();
    const std::wstring spoken = be.shell.folders.at(L"AppData") + L"\\Mirovanta\\spoken.txt";
    ASSERT_TRUE(rt::FileExists(spoken));
    be.Click(main->MnuChgLang);
    EXPECT_FALSE(rt::FileExists(spoken));
    EXPECT_TRUE(main->MnuChgLang.Checked());
    EXPECT_FALSE(main->MnuChgLang.Enabled());

    main->MnuChgLang.SetEnabled(true);
    be.Click(main->MnuChgLang);
    EXPECT_FALSE(be.ended);
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_FALSE(main->MnuChgLang.Enabled());
}

// A list out of step with its count (a mark missing) does not stop the way out: the mark
// that cannot be read counts as unsaved, and every later step still runs.
TEST_F(StartupTest, QuitGoesOnPastAnErrorInAnyStep) {
    MarkLanguage();
    Start();
    Captures(2);
    const std::wstring f1 = TempFile(1), f2 = TempFile(2);
    list->PictSave[1].SetVisible(true);
    list->PictSave.Unload(2);
    be.answers.push_back(ui::kNo);
    EXPECT_THROW(main->quitprog(), headless::ProgramEnded);
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, Entry(115));
    EXPECT_EQ(be.lastError, 0);
    EXPECT_FALSE(rt::FileExists(f1));
    EXPECT_FALSE(rt::FileExists(f2));
    EXPECT_FALSE(rt::DirExists(app->DossierTemp));
    EXPECT_FALSE(be.tray.present);
}

TEST_F(StartupTest, SessionEndWithoutCapturesEndsAtOnceAndLeavesTheFolder) {
    MarkLanguage();
    Start();
    EXPECT_THROW(main->CloseRequested(ui::kAppWindows), headless::ProgramEnded);
    EXPECT_TRUE(be.ended);
    EXPECT_EQ(be.lastError, 0);
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_FALSE(app->sortie->IsLoaded());
    EXPECT_TRUE(rt::DirExists(app->DossierTemp)); // no time for it
    EXPECT_FALSE(be.tray.present);
    EXPECT_EQ(be.tray.deletes, 1); // the Terminate at the end
}

TEST_F(StartupTest, SessionEndWithNothingWrittenLetsTheSessionEndItAndKeepsTheFiles) {
    MarkLanguage();
    Start();
    Captures(2);
    // A save folder that is gone: the save writes nothing and says so.
    app->params.DossierEnreg = rt::FromUtf8((root / "gone").string()) + std::wstring(280, L' ');
    const int64_t t0 = be.nowMs;
    main->CloseRequested(ui::kAppWindows);
    EXPECT_FALSE(be.ended);
    EXPECT_LT(be.nowMs - t0, 100);
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, Entry(117));
    EXPECT_EQ(app->NbSavAppel, 0);
    EXPECT_FALSE(app->sortie->IsLoaded());
    EXPECT_FALSE(main->IsLoaded()); // not held back: the session takes it down
    EXPECT_EQ(app->NbVignettes, 2);
    EXPECT_TRUE(rt::FileExists(TempFile(1)));
    EXPECT_TRUE(rt::FileExists(TempFile(2)));
}

TEST_F(StartupTest, SessionEndAfterSavingShowsTheNoticeThreeSecondsAndKeepsTheTemporaryStore) {
    MarkLanguage();
    Start();
    Captures(10);
    bool notice = false;
    be.Schedule(2950, [&] {
        notice = app->sortie->Visible() && app->sortie->Label1.Caption() == Entry(134);
    });
    const int64_t t0 = be.nowMs;
    EXPECT_THROW(main->CloseRequested(ui::kAppWindows), headless::ProgramEnded);
    EXPECT_GE(be.nowMs - t0, 3000);
    EXPECT_LT(be.nowMs - t0, 3010);
    EXPECT_TRUE(notice);
    EXPECT_FALSE(app->sortie->IsLoaded());
    EXPECT_EQ(be.lastError, 0);
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_EQ(TempFolderFiles().size(), 10u);
    EXPECT_EQ(be.tray.deletes, 1);
    // Saved without a question, as JPEG in the Personal folder.
    EXPECT_EQ(app->NbSavAppel, 10);
    int jpeg = 0;
    for (const auto& e : std::filesystem::directory_iterator(root / "Personal"))
        jpeg += e.path().extension() == ".jpg";
    EXPECT_EQ(jpeg, 10);
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

TEST_F(StaleCapturesTest, YesFilesThemInTheOrderTakenSkipsDamagedOnesAndKeepsOthersFiles) {
    MarkLanguage();
    // The older run: captures 98, 99 and 100 (name order would put 100 first), one of
    // them the whole screen.
    const std::wstring ancien = Famille() + L"713";
    const gdi::Surface zone = Motif(300, 200, 3), ecran = Motif(1024, 768, 5),
                       haute = Motif(150, 400, 7), recente = Motif(64, 48, 11);
    Depose(ancien, L"Captprov_H09301298.bmp", zone, 3);
    Depose(ancien, L"Captprov_H09301299.bmp", ecran, 3);
    Depose(ancien, L"Captprov_H093012100.bmp", haute, 3);
    // The mark of a live run, let go when that run died.
    rt::WriteFileBytes(ancien + L".lock", "", 0);
    // The later run: one capture, one damaged, and a file the user put there.
    Depose(Famille(), L"Captprov_H10150001.bmp", recente, 1);
    Depose(Famille(), L"Captprov_H10150002.bmp", {}, 1);
    rt::WriteFileBytes(Famille() + L"\\notes.txt", "mine", 4);
    // Not of the family: the name goes on with more than digits.
    Depose(Famille() + L"_copie", L"Captprov_H10150001.bmp", recente, 1);

    Start();
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, Entry(274));
    EXPECT_EQ(be.boxes[0].style, ui::kYesNo | ui::kQuestion);
    EXPECT_EQ(be.lastError, 0);
    EXPECT_TRUE(main->Visible());

    ASSERT_EQ(app->NbVignettes, 4);
    const gdi::Surface* attendues[] = {&zone, &ecran, &haute, &recente};
    for (int i = 1; i <= 4; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(app->tab.FichierV[i], main->NomFichierProv(int16_t(i)));
        EXPECT_TRUE(gdi::LoadBmp(TempFile(i)) == *attendues[i - 1]);
        EXPECT_TRUE(list->Image1[i].Visible());
        EXPECT_EQ(app->tab.TypeV[i], i == 2 ? L"e" : L"z");
    }
    EXPECT_EQ(list->Lbldim[2].Caption(), L"02 " + Entry(109));
    EXPECT_EQ(TempFolderFiles().size(), 4u);
    EXPECT_TRUE(app->TypeCapt.empty());

    // The older folder went whole; the later one keeps what was not filed.
    EXPECT_FALSE(rt::DirExists(ancien));
    EXPECT_FALSE(rt::FileExists(ancien + L".lock"));
    EXPECT_EQ(Noms(Famille()),
              (std::vector<std::wstring>{L"Captprov_H10150002.bmp", L"notes.txt"}));
    EXPECT_EQ(Noms(Famille() + L"_copie"), std::vector<std::wstring>{L"Captprov_H10150001.bmp"});

    // The next capture follows them. After a proper quit, the damaged file alone asks
    // nothing at the next start.
    ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, 5);
    EXPECT_EQ(app->tab.FichierV[5], main->NomFichierProv(5));
    be.answers.push_back(ui::kNo);
    EXPECT_THROW(main->quitprog(), headless::ProgramEnded);
    auto autre = StartAnother();
    EXPECT_TRUE(autre->be.boxes.empty());
    EXPECT_EQ(autre->app->NbVignettes, 0);
}

TEST_F(StaleCapturesTest, NoLeavesThemAndTheNextStartsDoNotAskAgainUntilAnotherRunIsLost) {
    MarkLanguage();
    const std::wstring ancien = Famille() + L"042";
    Depose(ancien, L"Captprov_H09301201.bmp", Motif(40, 30, 2), 2);
    Depose(ancien, L"Captprov_H09301202.bmp", Motif(30, 40, 4), 2);
    be.answers.push_back(ui::kNo);
    Start();
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, Entry(274));
    EXPECT_EQ(app->NbVignettes, 0);
    EXPECT_TRUE(TempFolderFiles().empty());
    EXPECT_EQ(Noms(ancien),
              (std::vector<std::wstring>{L"Captprov_H09301201.bmp", L"Captprov_H09301202.bmp",
                                         L"declined.txt"}));

    auto deuxieme = StartAnother();
    EXPECT_TRUE(deuxieme->be.boxes.empty());
    EXPECT_EQ(deuxieme->app->NbVignettes, 0);

    // The first run is lost with a capture: only that one is asked about and filed.
    ClickButton(mv::kCmdEcran);
    const gdi::Surface perdue = gdi::LoadBmp(TempFile(1));
    auto troisieme = StartAnother();
    ASSERT_EQ(troisieme->be.boxes.size(), 1u);
    ASSERT_EQ(troisieme->app->NbVignettes, 1);
    EXPECT_TRUE(gdi::LoadBmp(troisieme->app->DossierTemp + L"\\" +
                             troisieme->app->tab.FichierV[1]) == perdue);
    EXPECT_FALSE(rt::DirExists(app->DossierTemp));
    EXPECT_EQ(Noms(ancien).size(), 3u);
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
