#include "app_fixture.h"

#include <atomic>
#include <unistd.h>

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

gdi::Surface AppTest::ScreenPart(ui::Rect r) const {
    gdi::Surface part(r.right - r.left, r.bottom - r.top);
    gdi::BitBlt(part, 0, 0, part.Width(), part.Height(), be.desktop.screen, r.left, r.top);
    return part;
}
