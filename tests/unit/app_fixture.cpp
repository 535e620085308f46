#include "app_fixture.h"
#include "test_util.h"

#include <atomic>
#include <unistd.h>

void Chord(headless::Backend& be, mv::App& app, const std::vector<int>& keys) {
    for (int vk : keys) be.keyboard.Press(vk);
    app.ParClavier = false;
    auto lache = std::make_shared<bool>(false);
    for (int t = 1; t <= 150; ++t)
        be.Schedule(t, [&be, &app, keys, lache] {
            if (*lache || !app.ParClavier) return;
            for (int vk : keys) be.keyboard.Release(vk);
            *lache = true;
        });
    be.RunFor(700);
    EXPECT_TRUE(*lache) << "no tick read the keys";
}

void AppTest::SetUp() {
    static std::atomic<int> counter{0};
    root = std::filesystem::temp_directory_path() /
           ("mirovanta-test-" + std::to_string(getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root / "AppData");
    std::filesystem::create_directories(root / "Personal");
    be.shell.folders[L"AppData"] = rt::FromUtf8((root / "AppData").string());
    be.shell.folders[L"Personal"] = rt::FromUtf8((root / "Personal").string());
    be.shell.programFolder = rt::FromUtf8(MIROVANTA_ASSET_DIR);
    app = std::make_unique<mv::App>(be);
    main = app->main.get();
    list = app->list.get();
}

void AppTest::TearDown() {
    app.reset();
    std::filesystem::remove_all(root);
}

void AppTest::Start(const char* langue) {
    if (langue) {
        const auto dossier = root / "AppData" / "Mirovanta";
        std::filesystem::create_directories(dossier);
        const std::string ligne = std::string(langue) + "\r\n";
        rt::WriteFileBytes(rt::FromUtf8((dossier / "spoken.txt").string()), ligne.data(),
                           ligne.size());
    }
    app->Start();
    // The language file is in; marker texts, when asked for, replace it before the main
    // window loads (the splash stands for 250 ms).
    if (marquer_) MarkLanguage();
    be.RunFor(1000);
}

void AppTest::ClickButton(int i) {
    be.Click(main->bouton[i]);
    be.RunFor(50);
}

void AppTest::Captures(int n) {
    const int avant = app->NbVignettes;
    for (int i = 0; i < n; ++i) ClickButton(mv::kCmdEcran);
    EXPECT_EQ(app->NbVignettes, avant + n);
}

void AppTest::Zone(int w, int h, gdi::Pixel c) {
    main->Picture2.Move(50, 500, Tw(w), Tw(h));
    main->Picture2.SetPicture(gdi::Surface(w, h, c));
    app->TypeCapt = L"z";
    ui::Dispatch(be, [&] { main->GestVignettes(main->Picture2); });
    be.RunFor(50);
}

void AppTest::ValidatedZone(int l, int t, int w, int h) {
    main->Picture2.SetWidth(Tw(w));
    main->Picture2.SetHeight(Tw(h));
    app->LargCapt = Tw(w);
    app->HautCapt = Tw(h);
    app->TypeCapt = L"z";
    main->Labtaille.SetCaption(std::to_wstring(w) + L" x " + std::to_wstring(h));
    ui::Dispatch(be, [&] { main->GestVignettes(main->Picture2); });
    app->ZoneGauche = Tw(l);
    app->ZoneHaut = Tw(t);
    app->ZoneLargeur = Tw(w);
    app->ZoneHauteur = Tw(h);
    app->HautPic1 = int32_t(be.screen.HeightTwips());
    app->LargPic1 = int32_t(be.screen.WidthTwips());
}

std::unique_ptr<AppTest::Run> AppTest::StartAnother(std::initializer_list<int> answers) {
    auto r = std::make_unique<Run>();
    r->be.shell.folders = be.shell.folders;
    r->be.shell.programFolder = be.shell.programFolder;
    r->be.answers.assign(answers.begin(), answers.end());
    r->app = std::make_unique<mv::App>(r->be);
    // The language load replaces the marker texts: they go in again before the main window
    // loads, as in Start.
    auto marquer = [&] {
        if (!marquer_) return;
        for (size_t n = 0; n < r->app->lang.TabConst.size(); ++n)
            r->app->lang.TabConst[n] = Entry(int(n));
    };
    try {
        marquer();
        r->app->Start();
        marquer();
        r->be.RunFor(1000);
    } catch (const headless::ProgramEnded&) {
        r->ended = true;
    }
    return r;
}

std::wstring AppTest::TempFile(int row) const {
    return app->DossierTemp + L"\\" + app->tab.FichierV[row];
}

void AppTest::MarkLanguage() {
    marquer_ = true;
    for (size_t n = 0; n < app->lang.TabConst.size(); ++n) app->lang.TabConst[n] = Entry(int(n));
}

void AppTest::SetScreen(int w, int h, gdi::Pixel fill) {
    be.screen.widthPx = w;
    be.screen.heightPx = h;
    be.desktop.screen = gdi::Surface(w, h, fill);
}

void AppTest::SetForeground(ui::Rect r, ui::WindowHandle h) {
    be.desktop.windows[h] = r;
    be.desktop.foreground = h;
}

std::vector<std::wstring> AppTest::TempFolderFiles() const {
    std::vector<std::wstring> names;
    const auto dir = rt::ToFsPath(app->DossierTemp);
    if (!std::filesystem::is_directory(dir)) return names;
    for (const auto& e : std::filesystem::directory_iterator(dir))
        names.push_back(rt::FromUtf8(e.path().filename().string()));
    return names;
}

int AppTest::BoxesWith(const std::wstring& prompt) const {
    int n = 0;
    for (const auto& b : be.boxes)
        if (b.prompt == prompt) ++n;
    return n;
}
