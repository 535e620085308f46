// A fresh application on the headless backend for each test: its own AppData and
// Personal folders under a temporary folder, the drawn toolbar bitmaps as program folder.
#pragma once

#include "app/app.h"
#include "app/forms.h"
#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "platform/headless/headless.h"
#include "runtime/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

class AppTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Starts the program and lets the opening animation run.
    void Start();
    // Clicks toolbar button i and lets the capture finish.
    void ClickButton(int i);
    // The program's path of a temporary file of the current run.
    std::wstring TempFile(int row) const;

    headless::Backend be;
    std::unique_ptr<mv::App> app;
    mv::frmMain* main = nullptr;
    mv::Flistimages* list = nullptr;
    std::filesystem::path root;
};
