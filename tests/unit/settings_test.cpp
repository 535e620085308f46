// params.txt: the first run, reading by the fixed columns, the repair question, the size
// remembered at exit, the save folder line, wide folder names and damaged files.
#include "app_fixture.h"
#include "runtime/strings.h"
#include "settings/settings_app.h"
#include "settings/settings_file.h"

#include <cstdint>
#include <memory>
#include <string>
#include <tuple>

namespace {

using namespace std::string_literals;

// The two default lines, spelt out here independently of the program.
std::string LigneParDefaut(const std::string& colonnes101a126) {
    return std::string(92, 'X') + "04200260" + colonnes101a126 + std::string(4, ' ') +
           "mspaint.exe" + std::string(139, ' ') + "c:\\tempocapt<=======";
}
const std::string kPremiere = LigneParDefaut("ZMEFY00007Capt111001010000");
const std::string kReparation = LigneParDefaut("ZMEF200007Capt111000010000");

// kPremiere with the columns from col on replaced by text.
std::string Avec(int col, const std::string& text) {
    std::string l = kPremiere;
    l.replace(size_t(col - 1), text.size(), text);
    return l;
}

std::wstring Large(const std::string& ascii) {
    return std::wstring(ascii.begin(), ascii.end());
}

class SettingsTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        MarkLanguage();
    }
    std::wstring Fichier() const { return UserFolder() + L"\\params.txt"; }
    std::string Personal() const { return (root / "Personal").string(); }

    void Ecrire(const std::string& octets) {
        if (!rt::DirExists(UserFolder())) rt::MkDir(UserFolder());
        rt::WriteFileBytes(Fichier(), octets.data(), octets.size());
    }
    std::string Lire() const { return ReadText(Fichier()); }

    // A run of the program up to the end of its start-up, the language already chosen.
    std::unique_ptr<Run> Lancer(std::initializer_list<int> reponses = {}) {
        if (!rt::DirExists(UserFolder())) rt::MkDir(UserFolder());
        rt::WriteFileBytes(UserFolder() + L"\\spoken.txt", "ConstPRJA\r\n", 11);
        return StartAnother(reponses);
    }

    // Starts on the given content: the run asks the repair question and ends; No leaves the
    // file as it was, Yes writes the repair file and says so.
    void AttendreReparation(const std::string& contenu, int reponse) {
        Ecrire(contenu);
        auto l = Lancer({reponse});
        EXPECT_TRUE(l->ended);
        EXPECT_EQ(l->be.lastError, 0);
        ASSERT_GE(l->be.boxes.size(), 1u);
        EXPECT_EQ(l->be.boxes[0].prompt, Entry(125));
        if (reponse == ui::kNo) {
            EXPECT_EQ(Lire(), contenu);
        } else {
            ASSERT_EQ(l->be.boxes.size(), 2u);
            EXPECT_EQ(l->be.boxes[1].prompt, Entry(126));
            EXPECT_EQ(Lire(), kReparation + "\r\n" + Personal() + "\r\n");
        }
    }

    // Starts on the given content, which must read without the repair question.
    std::unique_ptr<Run> LireSansMessage(const std::string& contenu) {
        Ecrire(contenu);
        auto l = Lancer();
        EXPECT_FALSE(l->ended);
        for (const auto& b : l->be.boxes) EXPECT_NE(b.prompt, Entry(125));
        return l;
    }

    // Quits the run: the exit question is not asked, there are no captures.
    static void Quitter(Run& l) {
        EXPECT_THROW(l.app->main->quitprog(), headless::ProgramEnded);
        EXPECT_EQ(l.be.lastError, 0);
    }
};

// A short line 1 reads blanks and zeros past its end. A blank hotkey is no hotkey: ten
// seconds of key timer fire nothing, and the keys that remain still work.
TEST_F(SettingsTest, ShortFirstLineReadsBlanksAndItsBlankHotkeysFireNothing) {
    const std::string contenu = kPremiere.substr(0, 104) + "\r\nD:\\Captures\r\n";
    auto l = LireSansMessage(contenu);
    const mv::Params& p = l->app->params;
    EXPECT_EQ(p.LigneParams, Large(kPremiere.substr(0, 104)) + rt::Space(196));
    EXPECT_EQ(p.ToucheDoubleH, L' ');
    EXPECT_EQ(p.QualiteJpeg, 0);
    EXPECT_EQ(p.MemoZone, 0);
    EXPECT_EQ(l->app->main->TimPeriod.Interval(), 0);
    l->be.RunFor(10000);
    EXPECT_TRUE(l->be.boxes.empty());
    EXPECT_EQ(l->app->NbVignettes, 0);
    ::Chord(l->be, *l->app, {ui::kKeyControl, 'E'});
    EXPECT_EQ(l->app->NbVignettes, 1);
    // With the zone not remembered, the exit leaves the file as it was.
    l->app->main->SuppVignette(1); // quit without the question of unsaved captures
    Quitter(*l);
    EXPECT_EQ(Lire(), contenu);
}

TEST_F(SettingsTest, OneLineOrEmptyFileAsksForRepairAndNoLeavesItUntouched) {
    for (const std::string& contenu :
         {kPremiere + "\r\n", kPremiere, std::string(), std::string("\r\n")}) {
        SCOPED_TRACE(contenu.size());
        AttendreReparation(contenu, ui::kNo);
        AttendreReparation(contenu, ui::kYes);
    }
    // The repaired file reads without a question.
    auto l = Lancer();
    EXPECT_TRUE(l->be.boxes.empty());
    EXPECT_EQ(l->app->params.ToucheDoubleH, L'2');
}

TEST_F(SettingsTest, FieldsThatCannotBeReadAskForRepair) {
    const std::string ligne2 = "\r\nD:\\Captures\r\n";
    // No run of five blanks in the editor field.
    AttendreReparation(Avec(131, std::string(150, 'a')) + ligne2, ui::kYes);
    // A prefix of digits carries the quality number on: 72013111001010000 * 10.
    AttendreReparation(Avec(111, "2013") + ligne2, ui::kYes);
    // The interval outside what the timer takes, or beyond any number.
    for (const char* intervalle : {"65536", "-1000", "9E999"}) {
        SCOPED_TRACE(intervalle);
        AttendreReparation(Avec(122, intervalle) + ligne2, ui::kYes);
    }

    auto l = LireSansMessage(Avec(122, "65535") + ligne2);
    EXPECT_EQ(l->app->main->TimPeriod.Interval(), 65535);
    // A path keeps the blanks up to the length of the text before the five blanks.
    l = LireSansMessage(Avec(131, R"(C:\Program Files\Ed\ed.exe)") + ligne2);
    EXPECT_EQ(l->app->params.EditeurNom, L"ed.exe" + rt::Space(20));
}

// The exit takes the overlay's rectangle size in four characters into the first run's line
// (which a Wine check reads).
TEST_F(SettingsTest, RectangleSizeIsRememberedAtExitInFourCharacters) {
    auto l = Lancer();
    EXPECT_TRUE(l->be.boxes.empty());
    // Never opened, the overlay's rectangle has its design size.
    Quitter(*l);
    EXPECT_EQ(Lire(), Avec(93, " 420 260") + "\r\n" + Personal() +
                          std::string(300 - Personal().size(), ' ') + "\r\n");

    // Four characters: 1280 is cut to " 128"; then " 50" replaces only its own three, and a
    // fraction is cut with the rest.
    for (auto [largeur, haut, attendue, attendu] :
         {std::tuple{1280 * 15, 260 * 15, L" 128", L" 260"}, {50 * 15, 5000, L" 508", L" 333"}}) {
        l = Lancer();
        l->app->full->Load();
        l->app->full->rectsel.Move(0, 0, float(largeur), float(haut));
        Quitter(*l);
        l = Lancer();
        EXPECT_EQ(l->app->params.LargSel, attendue);
        EXPECT_EQ(l->app->params.HautSel, attendu);
    }
}

TEST_F(SettingsTest, SaveFolderLineIsReadPaddedOrNotAndSavOptionsWritesDossierPerso) {
    auto l = LireSansMessage(kPremiere + "\r\nD:\\My  Pictures\\Shots\r\n");
    EXPECT_EQ(l->app->params.DossierEnregCourt, L"D:\\My");
    EXPECT_EQ(l->app->params.DossierEnreg, L"D:\\My  Pictures\\Shots" + rt::Space(279));
    l = LireSansMessage(kPremiere + "\r\n\r\n");
    EXPECT_EQ(l->app->params.DossierEnregCourt, L"");

    // Past 298 characters the field does not end in two blanks and stays whole.
    const std::string long299 = "D:\\" + std::string(296, 'd');
    l = LireSansMessage(kPremiere + "\r\n" + long299 + "\r\n");
    EXPECT_EQ(l->app->params.DossierEnregCourt, Large(long299) + L" ");
    l = LireSansMessage(kPremiere + "\r\n" + long299 + "ef\r\n");
    EXPECT_EQ(l->app->params.DossierEnregCourt, Large(long299 + "e"));

    // Line 2 comes from DossierPerso: the folder read from the file is forgotten.
    l = LireSansMessage(Avec(101, "QRSTU") + "\r\nD:\\Captures\r\n");
    mv::SavOptions(*l->app);
    EXPECT_EQ(Lire(), Avec(101, "QRSTU") + "\r\n" + Personal() +
                          std::string(300 - Personal().size(), ' ') + "\r\n");
    EXPECT_EQ(l->app->params.DossierEnregCourt, L"D:\\Captures");
}

// A Wine check starts on a Polish and an English system; here the per-user folder has a
// name outside any single-byte code page, and any folder with a lost character falls back.
TEST_F(SettingsTest, FolderNamesTravelInTheSystemCodePage) {
    const std::filesystem::path appData = root / "Zo\xC3\xAB \xE6\xBC\xA2\xE5\xAD\x97" / "AppData";
    std::filesystem::create_directories(appData);
    be.shell.folders[L"AppData"] = rt::FromUtf8(appData.string());
    // In Windows-1252: é has a byte, 漢字 has not, € is byte 0x80.
    const std::wstring perso = L"C:\\Users\\Zo\u00EB\\\u6F22\u5B57 \u20AC";
    be.shell.folders[L"Personal"] = perso;
    const std::wstring message = Entry(272) + L"\r\n\r\n" + perso;
    auto l = Lancer();
    // The file gets '?' for them; the run itself keeps the whole name and says so.
    EXPECT_EQ(Lire(), kPremiere + "\r\nC:\\Users\\Zo\xEB\\?? \x80\r\n");
    ASSERT_EQ(l->be.boxes.size(), 1u);
    EXPECT_EQ(l->be.boxes[0].prompt, message);
    EXPECT_EQ(l->app->params.DossierEnregCourt, perso);
    // Any folder with a lost character gives way to the Personal folder, with the same box.
    l = LireSansMessage(kPremiere + "\r\nD:\\Caf?\r\n");
    EXPECT_EQ(l->app->params.DossierEnregCourt, perso);
    ASSERT_EQ(l->be.boxes.size(), 1u);
    EXPECT_EQ(l->be.boxes[0].prompt, message);
}

TEST_F(SettingsTest, DamagedFilesAskForRepairOrReadByTheLineRules) {
    // A lone line feed does not end a line: line 2 is missing.
    AttendreReparation(kPremiere + "\nD:\\Captures\n", ui::kNo);

    // A long line is cut at 300 characters.
    auto l = LireSansMessage(kPremiere + std::string(9700, 'Q') + "\r\nD:\\Captures\r\n");
    EXPECT_EQ(l->app->params.LigneParams, Large(kPremiere));
    EXPECT_EQ(l->app->params.DossierEnregCourt, L"D:\\Captures");
    // Text after line 2 and NUL bytes are read like any other.
    l = LireSansMessage(kPremiere + "\r\nD:\\Cap\0tures\r\n\r\nmore\r\n"s);
    EXPECT_EQ(l->app->params.DossierEnregCourt, std::wstring(L"D:\\Cap\0tures", 12));
}

TEST_F(SettingsTest, SavOptionsThatCannotWriteAsksForRepair) {
    auto l1 = Lancer();
    auto l2 = Lancer();
    ASSERT_FALSE(l1->ended || l2->ended);
    // A folder in place of the file: it can be neither written nor deleted.
    rt::Kill(Fichier());
    rt::MkDir(Fichier());
    l1->be.answers.push_back(ui::kNo);
    EXPECT_THROW(mv::SavOptions(*l1->app), headless::ProgramEnded);
    ASSERT_EQ(l1->be.boxes.size(), 1u);
    EXPECT_EQ(l1->be.boxes[0].prompt, Entry(125));

    // At exit, Yes fails to delete it; the exit ignores that error and ends.
    l2->be.answers.push_back(ui::kYes);
    Quitter(*l2);
    ASSERT_EQ(l2->be.boxes.size(), 1u);
    EXPECT_TRUE(rt::DirExists(Fichier()));
}

} // namespace
