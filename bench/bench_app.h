// The program on the headless backend for the benches: its own AppData and Personal folders
// in a temporary folder (removed at the end), English chosen, the drawn assets beside it.
#pragma once

#include "app/app.h"
#include "platform/headless/headless.h"
#include "runtime/files.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <unistd.h>

class BenchApp {
public:
    BenchApp(int widthPx, int heightPx)
        : root_(std::filesystem::temp_directory_path() /
                ("mirovanta-bench-" + std::to_string(getpid()))) {
        namespace fs = std::filesystem;
        fs::create_directories(root_ / "AppData" / "Mirovanta");
        fs::create_directories(root_ / "Personal");
        std::ofstream(root_ / "AppData" / "Mirovanta" / "spoken.txt") << "ConstPRJA\r\n";
        be.screen.widthPx = widthPx;
        be.screen.heightPx = heightPx;
        be.desktop.screen = gdi::Surface(widthPx, heightPx);
        be.shell.folders[L"AppData"] = rt::FromUtf8((root_ / "AppData").string());
        be.shell.folders[L"Personal"] = rt::FromUtf8((root_ / "Personal").string());
        be.shell.programFolder = rt::FromUtf8(MIROVANTA_ASSET_DIR);
        app = std::make_unique<mv::App>(be);
        app->Start();
        be.RunFor(1000);
    }
    ~BenchApp() {
        app.reset();
        std::error_code ec;
        std::filesystem::remove_all(root_, ec);
    }
    BenchApp(const BenchApp&) = delete;
    BenchApp& operator=(const BenchApp&) = delete;

    headless::Backend be;
    std::unique_ptr<mv::App> app;

private:
    std::filesystem::path root_;
};
