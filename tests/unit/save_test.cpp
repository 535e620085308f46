#include "app_fixture.h"

#include "output/conversion.h"
#include "output/tags.h"
#include "platform/gdi/bmp.h"
#include "runtime/strings.h"

#include <algorithm>
#include <filesystem>
#include <new>

namespace {

class SaveTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        MarkLanguage();
        SetScreen(64, 48, gdi::Rgb(10, 120, 200));
        Start();
    }
    std::vector<std::string> Saved() const {
        std::vector<std::string> names;
        for (const auto& e : std::filesystem::directory_iterator(root / "Personal"))
            names.push_back(e.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    // Save-all as JPEG from the first capture: true when it failed with the one box of
    // entry 117 and told the caller through Ok.
    ::testing::AssertionResult SaveAllFailsWith117() {
        int16_t ok = -1;
        mv::EnregistrerTout(*app, ok, 1, L"jpg");
        if (ok != 0) return ::testing::AssertionFailure() << "Ok is " << ok;
        if (be.boxes.size() != 1 || be.boxes[0].prompt != Entry(117))
            return ::testing::AssertionFailure() << be.boxes.size() << " boxes";
        return ::testing::AssertionSuccess();
    }
    // Answers the save dialog with a name and a filter index.
    void Answer(const std::string& name, int filterIndex) {
        be.dialogResponder = [this, name, filterIndex](ui::CommonDialog& d, ui::FileDialogKind) {
            d.fileName = rt::FromUtf8((root / "Personal").string()) + L"\\" + rt::FromUtf8(name);
            d.filterIndex = filterIndex;
            return true;
        };
    }
};

TEST_F(SaveTest, SaveAllNamesFilesByDateOrByStampAndWidensTheCounter) {
    Captures(3);
    int16_t ok = 0;
    mv::EnregistrerTout(*app, ok, 1, L"jpg");
    EXPECT_EQ(app->NbSavAppel, 3);
    EXPECT_EQ(Saved(), (std::vector<std::string>{"Capt_20261115_H140509_001.jpg",
                                                 "Capt_20261115_H140509_002.jpg",
                                                 "Capt_20261115_H140509_003.jpg"}));
    EXPECT_TRUE(list->PictSave[3].Visible());
    EXPECT_EQ(list->Chksav[3].Value(), 1);
    // JPEG at the settings' quality, no .bmp left behind.
    ASSERT_EQ(be.codec.saves.size(), 3u);
    EXPECT_EQ(be.codec.saves[0].quality, 70);

    // The other style takes each capture's stamp; the counter goes on.
    Captures(1);
    app->params.NomParCapture = 1;
    mv::EnregistrerTout(*app, ok, 1, L"png");
    EXPECT_EQ(Saved().back(), "Capt_" + rt::ToUtf8(app->tab.Horodatage[4]) + "_004.png");
    EXPECT_EQ(app->tab.Horodatage[4].substr(0, 9), L"261115_14"); // YYMMDD_hhmmss

    // Past 999 the counter widens; the BMP road is a copy, not a conversion.
    Captures(1);
    app->params.NomParCapture = 0;
    app->CompteurSav = 999;
    const size_t conversions = be.codec.saves.size();
    mv::EnregistrerTout(*app, ok, 1, L"bmp");
    const auto noms = Saved();
    EXPECT_EQ(std::count(noms.begin(), noms.end(), "Capt_20261115_H140509_1000.bmp"), 1);
    EXPECT_EQ(be.codec.saves.size(), conversions);
}

// A conversion that fails in save-all keeps its bitmap, says so once and stops the save.
TEST_F(SaveTest, SaveAllConversionFailureKeepsTheBitmapAndStops) {
    Captures(2);
    const std::filesystem::path dossier = root / "Personal" / "conv";
    std::filesystem::create_directories(dossier);
    app->params.DossierEnreg = rt::FromUtf8(dossier.string()) + std::wstring(250, L' ');
    be.codec.nextSaveStatus = 7;
    int16_t ok = -1;
    mv::EnregistrerTout(*app, ok, 1, L"png");
    EXPECT_EQ(ok, 0);
    EXPECT_EQ(be.boxes.size(), 1u);
    std::vector<std::string> restes;
    for (const auto& e : std::filesystem::directory_iterator(dossier))
        restes.push_back(e.path().extension().string());
    EXPECT_TRUE(restes == std::vector<std::string>{".bmp"});
}

// Folders the program cannot write to, a full disk and names Windows refuses: save-all
// shows entry 117 and marks nothing; the dialog road ends silently and proposes the
// default name next time. The capture's temporary file stays in every case.
TEST_F(SaveTest, UnwritableTargetsLoseNoCaptureAndMarkNothing) {
    Captures(1);
    const std::wstring personal = rt::FromUtf8((root / "Personal").string());
    // Writing to a file that leads to /dev/full fails as a full disk does.
    std::filesystem::create_symlink("/dev/full",
                                    root / "Personal" / "Capt_20261115_H140509_001.bmp");
    std::filesystem::create_symlink("/dev/full", root / "Personal" / "full_temp.bmp");
    struct Case {
        const char* what;
        std::wstring folder; // save-all's folder
        std::string name;    // the name typed in the dialog
    };
    const std::vector<Case> cases = {
        {"read-only folder", L"/sys", "/sys/shot.png"},
        {"full disk", personal, (root / "Personal" / "full.png").string()},
        {"forbidden characters", personal + L"\\a|b", (root / "Personal" / "a?b.png").string()},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        be.boxes.clear();
        app->CompteurSav = 0; // the full disk waits at file 001
        app->params.DossierEnreg = c.folder + std::wstring(200, L' ');
        ASSERT_TRUE(SaveAllFailsWith117());
        EXPECT_FALSE(list->PictSave[1].Visible());
        EXPECT_EQ(list->Chksav[1].Value(), 0);

        app->PremierSav = false;
        const std::string name = c.name;
        be.dialogResponder = [name](ui::CommonDialog& d, ui::FileDialogKind) {
            d.fileName = rt::FromUtf8(name);
            d.filterIndex = mv::kFormatPng;
            return true;
        };
        mv::Enregistrer2(*app);
        EXPECT_EQ(be.boxes.size(), 1u);
        EXPECT_TRUE(app->PremierSav);
        EXPECT_FALSE(main->PictSave.Visible());
        EXPECT_TRUE(rt::FileExists(TempFile(1)));
    }
}

TEST_F(SaveTest, TemporaryFileThatCannotBeWrittenIsReportedAndTheRunGoesOn) {
    Captures(1);
    app->DossierTemp = L"/sys"; // a folder nobody may write in
    Captures(1);
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, L"Save/Sauver 70 Permission denied");
    EXPECT_FALSE(be.ended);
    EXPECT_EQ(app->NbVignettes, 2);
    // The next capture, in a writable folder again, is saved as usual.
    app->DossierTemp = rt::FromUtf8((root / "temp2").string());
    Captures(1);
    EXPECT_EQ(be.boxes.size(), 1u);
    EXPECT_TRUE(rt::FileExists(TempFile(3)));
}

TEST_F(SaveTest, ConversionFixesTheQualityAndReportsTheSourceOnFailure) {
    Captures(1);
    const std::wstring source = TempFile(1);
    const std::wstring cible = rt::FromUtf8((root / "Personal" / "x.jpg").string());
    for (auto [given, passed] : {std::pair{0, 0}, {100, 100}, {-1, 75}, {101, 75}}) {
        app->conversion->ConvertirImage(source, cible, mv::kFormatJpeg, given);
        EXPECT_EQ(be.codec.saves.back().quality, passed) << given;
    }
    // A GIF is the program's own writing, not the image library's.
    const size_t enregistrees = be.codec.saves.size();
    const std::wstring gif = rt::FromUtf8((root / "Personal" / "x.gif").string());
    app->conversion->ConvertirImage(source, gif, mv::kFormatGif, 50);
    EXPECT_EQ(be.codec.saves.size(), enregistrees);
    EXPECT_EQ(rt::ReadFileBytes(gif).at(5), 'a');
    EXPECT_TRUE(be.boxes.empty());

    be.codec.nextSaveStatus = 7;
    app->conversion->ConvertirImage(source, cible, mv::kFormatPng, 50);
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt, Entry(190) + L"\r" + source + L" !\rStatus Code= 7");

    // A GIF whose source has gone: reported like any other failure, and the run goes on.
    rt::Kill(source);
    EXPECT_NO_THROW(app->conversion->ConvertirImage(source, gif, mv::kFormatGif, 50));
    ASSERT_EQ(be.boxes.size(), 2u);
    EXPECT_EQ(be.boxes[1].prompt, Entry(190) + L"\r" + source + L" !\rStatus Code= 53");
}

TEST_F(SaveTest, SaveDialogProposesNamesAndTheFilterDecidesTheFormat) {
    Captures(3);
    // Cancel: silent, and the next save proposes the default name again.
    mv::Enregistrer2(*app);
    ASSERT_EQ(be.dialogs.size(), 1u);
    EXPECT_EQ(be.dialogs[0].fileName, Entry(130) + L"03");
    EXPECT_TRUE(app->PremierSav);

    // An upper-case extension stays and gains the real one.
    Answer("a.JPG", mv::kFormatJpeg);
    mv::Enregistrer2(*app);
    EXPECT_EQ(Saved(), (std::vector<std::string>{"a.JPG.jpg"}));
    EXPECT_TRUE(list->PictSave[3].Visible()); // the current capture is marked

    // A name ending in two digits goes on by the capture's number, a year included.
    Answer("report2012.bmp", mv::kFormatBmp);
    mv::Enregistrer2(*app);
    be.dialogResponder = nullptr;
    app->VignetteCourante = 3;
    mv::Enregistrer2(*app);
    EXPECT_EQ(be.dialogs.back().fileName,
              rt::FromUtf8((root / "Personal").string()) + L"\\report2003");
    EXPECT_TRUE(app->PremierSav); // cancelled again

    // Memory that runs out under the routine is its own error 7, taken by its trap.
    app->PremierSav = false;
    be.dialogResponder = [](ui::CommonDialog&, ui::FileDialogKind) -> bool {
        throw std::bad_alloc();
    };
    EXPECT_NO_THROW(mv::Enregistrer2(*app));
    EXPECT_TRUE(app->PremierSav);
}

TEST_F(SaveTest, TemporaryFileGoneBehindTheProgramsBackIsNeverMarkedSaved) {
    Captures(3);
    rt::Kill(TempFile(2));
    // Save-all: the first capture is written and marked, the second fails with entry 117
    // and stays unmarked, the third is not reached; Ok tells the caller.
    ASSERT_TRUE(SaveAllFailsWith117());
    EXPECT_TRUE(list->PictSave[1].Visible());
    EXPECT_FALSE(list->PictSave[2].Visible());
    EXPECT_FALSE(list->PictSave[3].Visible());
    EXPECT_EQ(Saved().size(), 1u);
    // The dialog road ends silently: nothing written, nothing marked, default name next.
    app->VignetteCourante = 2;
    main->PictSave.SetVisible(false);
    Answer("lost.png", mv::kFormatPng);
    mv::Enregistrer2(*app);
    EXPECT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(Saved().size(), 1u);
    EXPECT_FALSE(main->PictSave.Visible());
}

// The Copy command takes the capture's file (a Wine check shows it); with the file gone
// behind the program's back it ends without a word.
TEST_F(SaveTest, CopyOfAVanishedFileIsSilent) {
    Captures(1);
    rt::Kill(TempFile(1));
    be.clipboard.Clear();
    ClickButton(mv::kCmdCopier);
    EXPECT_FALSE(be.clipboard.hasImage);
    EXPECT_TRUE(be.boxes.empty());
}

TEST(Tags, DateAndTimeTagsFollowTheSystemTextsByTheRules) {
    // Day-first dates padded where a day or month has one digit; month-first ones simply
    // change places.
    const std::pair<const wchar_t*, const wchar_t*> dates[] = {{L"15/11/2026", L"20261115"},
                                                               {L"5/3/2026", L"20260305"},
                                                               {L"5/11/2026", L"20261105"},
                                                               {L"11/21/2026", L"20262111"},
                                                               {L"3/5/2026", L"20260503"}};
    for (auto [texte, tag] : dates) EXPECT_EQ(mv::CalcTagDate(texte), tag) << rt::ToUtf8(texte);
    // Short hours are filled with blanks, then zeros; with seconds the AM/PM of a
    // twelve-hour text falls off the field.
    const std::pair<const wchar_t*, const wchar_t*> heures[] = {{L"14:05:09", L"H140509"},
                                                                {L"9:05:09", L"H905090"},
                                                                {L"2:05:09 PM", L"H205090"},
                                                                {L"10:05 AM", L"A1005 A"},
                                                                {L"2:05 PM", L"H2050PM"}};
    for (auto [texte, tag] : heures) EXPECT_EQ(mv::CalcTagHeure(texte), tag) << rt::ToUtf8(texte);

    EXPECT_EQ(mv::CalcHorodatage(L"11/21/2026", L"14:06:22"), L"262111_140622");
    EXPECT_EQ(mv::CalcHorodatage(L"15/11/2026", L"2:06:22 PM"), L"261115_20622 PM");
}

} // namespace
