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

void AppTest::Start() {
    app->Start();
    be.RunFor(1000);
}

void AppTest::ClickButton(int i) {
    be.Click(main->bouton[i]);
    be.RunFor(50);
}

std::wstring AppTest::TempFile(int row) const {
    return app->DossierTemp + L"\\" + app->tab.FichierV[row];
}
