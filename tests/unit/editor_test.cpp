// The external editor: which program starts on which file and what a failed start does, the
// watch that takes the edits back and when it stops, and the edit ending when its capture is
// left or deleted.
#include "app_fixture.h"
#include "platform/gdi/bmp.h"
#include "test_util.h"

namespace {

class EditorTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        StartMarked();
        for (int k = 0; k < 3; ++k) Zone(40, 30, gdi::Rgb(k * 60, 10, 10));
    }
    void Editer() {
        ui::Dispatch(be, [&] { mv::MnuEditPaint_Click(*app); });
    }
    void Choisir(int i) {
        ui::Dispatch(be, [&] { list->clickimage1(int16_t(i), false); });
    }
    // The editor saves the file in place, a moment later than before.
    void EditeurEcrit(int row, const gdi::Surface& s) {
        const std::wstring f = TempFile(row);
        gdi::SaveBmp(s, f);
        std::filesystem::last_write_time(rt::ToFsPath(f),
                                         std::filesystem::file_time_type::clock::now() +
                                             std::chrono::seconds(2));
    }
    headless::Processes& P() { return be.processes; }
};

TEST_F(EditorTest, StartsTheChosenEditorOrPaintOnTheCapturesFile) {
    const std::wstring paint = L"C:\\Windows\\System32\\mspaint.exe";
    // No capture chosen: the stop box and nothing starts.
    app->VignetteCourante = 0;
    Editer();
    EXPECT_EQ(BoxesWith(Entry(160)), 1);
    EXPECT_TRUE(P().started.empty());

    Choisir(2);
    app->params.Editeur = std::wstring(L"C:\\Outils\\Mon Editeur.exe") + std::wstring(20, L' ');
    Editer();
    ASSERT_EQ(P().started.size(), 1u);
    EXPECT_EQ(P().started[0].commandLine,
              L"\"C:\\Outils\\Mon Editeur.exe\" \"" + TempFile(2) + L"\"");
    EXPECT_EQ(main->Caption(), Entry(173) + L"Mon Editeur");

    // A setting that begins with a blank is the system's paint program, without focus.
    P().Exit(app->PidEditeur);
    be.RunFor(5000);
    app->params.Editeur = std::wstring(150, L' ');
    Editer();
    EXPECT_EQ(P().started.back().commandLine, L"\"" + paint + L"\" \"" + TempFile(2) + L"\"");
    EXPECT_EQ(P().started.back().showStyle, 4);
    P().Exit(app->PidEditeur);
    be.RunFor(5000);

    // An editor that cannot start: one box, then paint in its place.
    app->params.Editeur = L"C:\\nulle\\part.exe     ";
    P().unstartable = {L"C:\\nulle\\part.exe"};
    Editer();
    EXPECT_EQ(BoxesWith(Entry(118)), 1);
    EXPECT_EQ(P().started.back().commandLine.substr(0, paint.size() + 2), L"\"" + paint + L"\"");
    EXPECT_EQ(be.lastError, 0);
}

TEST_F(EditorTest, WatchTakesTheEditsBackUntilTheEditorEnds) {
    Choisir(3);
    // Saved before the edit: the edit makes it unsaved again.
    list->Chksav[3].SetValue(1);
    list->PictSave[3].SetVisible(true);
    Editer();
    const std::wstring titre = Entry(173) + L"Mspaint";
    ASSERT_EQ(main->Caption(), titre);
    // An unchanged file is not read again: the view and the saved mark stay.
    main->Picture2S.SetPicture(gdi::Surface(7, 7, gdi::Rgb(1, 1, 1)));
    be.RunFor(5000);
    EXPECT_EQ(main->Picture2S.Picture().Width(), 7);
    EXPECT_EQ(list->Chksav[3].Value(), 1);

    // A file half written is left alone and read at the next tick.
    rt::WriteFileBytes(TempFile(3), "BM", 2);
    be.RunFor(5000);
    EXPECT_EQ(main->Picture2S.Picture().Width(), 7);
    const gdi::Surface rouge(50, 20, gdi::Rgb(255, 0, 0));
    EditeurEcrit(3, rouge);
    be.RunFor(5000);
    EXPECT_EQ(main->Picture2S.Picture().Width(), 50);
    EXPECT_EQ(list->Chksav[3].Value(), 0);
    EXPECT_FALSE(list->PictSave[3].Visible());
    EXPECT_EQ(app->tab.LargV[3], Tw(50));

    // Another program of the same name keeps the watch after ours has gone.
    P().running.emplace_back(L"MSPaint.EXE");
    P().Exit(app->PidEditeur);
    be.RunFor(10000);
    EXPECT_TRUE(main->TimPaint.Enabled());
    EXPECT_EQ(main->Caption(), titre);
    P().running.clear();
    be.RunFor(5000);
    EXPECT_FALSE(main->TimPaint.Enabled());
    // F5 still takes in what was saved after the editor ended.
    EditeurEcrit(3, gdi::Surface(50, 20, gdi::Rgb(0, 0, 255)));
    ui::Dispatch(be, [&] { main->Form_KeyDown(ui::kKeyF5, 0); });
    EXPECT_EQ(main->Picture2.Image().At(10, 10), gdi::Rgb(0, 0, 255));
}

TEST_F(EditorTest, LeavingOrDeletingTheEditedCaptureEndsOnlyOurEditor) {
    Choisir(3);
    Editer();
    const uint32_t notre = app->PidEditeur;
    // Another capture chosen ends our editor (the Wine check's road); F5 then leaves the
    // capture on view alone.
    Choisir(1);
    EXPECT_EQ(P().ended, std::vector<uint32_t>{notre});
    EditeurEcrit(3, gdi::Surface(40, 30, gdi::Rgb(0, 255, 0)));
    ui::Dispatch(be, [&] { main->Form_KeyDown(ui::kKeyF5, 0); });
    EXPECT_EQ(list->Image1[1].Image().At(2, 2), gdi::Rgb(0, 10, 10));

    // A new capture made while editing gets no edits; deleting the edited one ends the watch.
    Choisir(2);
    Editer();
    Zone(30, 30, gdi::Rgb(9, 9, 9));
    EditeurEcrit(2, gdi::Surface(40, 30, gdi::Rgb(0, 255, 0)));
    be.RunFor(5000);
    EXPECT_EQ(list->Image1[2].Image().At(2, 2), gdi::Rgb(0, 255, 0));
    EXPECT_EQ(list->Image1[4].Image().At(2, 2), gdi::Rgb(9, 9, 9));
    Choisir(2);
    ui::Dispatch(be, [&] { main->Form_KeyDown(ui::kKeyDelete, 0); });
    EXPECT_FALSE(main->TimPaint.Enabled());
    EXPECT_TRUE(app->FichierEdite.empty());
    EXPECT_EQ(be.lastError, 0);
}

} // namespace
