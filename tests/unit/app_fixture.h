// A fresh application on the headless backend for each test: its own AppData and
// Personal folders under a temporary folder, the drawn toolbar bitmaps as program folder.
#pragma once

#include "app/app.h"
#include "browser/Flistimages.h"
#include "capture/capture.h"
#include "core/commands.h"
#include "core/frmMain.h"
#include "core/small_forms.h"
#include "language/frmTip.h"
#include "output/output.h"
#include "overlay/FrmFull.h"
#include "platform/headless/headless.h"
#include "runtime/files.h"
#include "settings/Options.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

// A picture where every pixel differs from its neighbours, so that a shift or a scaling
// shows; two seeds apart by less than 256 differ at every pixel.
inline gdi::Surface Motif(int w, int h, int graine = 0) {
    gdi::Surface s(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) s.At(x, y) = gdi::Rgb(x * 5 + graine, y * 7, x * 3 + y * 11);
    return s;
}

// The bytes of a file as a string.
inline std::string ReadText(const std::wstring& path) {
    const std::vector<uint8_t> v = rt::ReadFileBytes(path);
    return {v.begin(), v.end()};
}

// Holds the keys down until the keyboard timer's next tick has read them, lets go right
// after it (within the command it starts), and lets the command finish.
void Chord(headless::Backend& be, mv::App& app, const std::vector<int>& keys);

class AppTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Starts the program with the language already chosen (nullptr: the chooser comes up)
    // and lets the opening animation run.
    void Start(const char* langue = "ConstPRJA");
    // Marked language entries, a small blue screen of 160x120, then Start.
    void StartMarked() {
        MarkLanguage();
        SetScreen(160, 120, gdi::Rgb(40, 90, 160));
        Start();
    }
    // Clicks toolbar button i and lets the capture finish.
    void ClickButton(int i);
    void Chord(const std::vector<int>& keys) { ::Chord(be, *app, keys); }
    // Takes n whole-screen captures from the toolbar.
    void Captures(int n);
    // Files a zone capture of w by h pixels in one colour, as the overlay files one.
    void Zone(int w, int h, gdi::Pixel c);
    // Files a w by h zone at (l, t) of the screen and remembers it as the overlay's
    // validation does, for the commands that take the same zone again.
    void ValidatedZone(int l, int t, int w, int h);

    // One more run of the program over the same folders, up to the end of its start, with
    // these answers ready for its boxes; marker texts too when this test has them.
    struct Run {
        headless::Backend be;
        std::unique_ptr<mv::App> app;
        bool ended = false; // the program ended while starting
    };
    std::unique_ptr<Run> StartAnother(std::initializer_list<int> answers = {});
    // The program's folder of the user: the settings, the language choice, the captures.
    std::wstring UserFolder() const { return be.shell.folders.at(L"AppData") + L"\\Mirovanta"; }
    // The program's path of a temporary file of the current run.
    std::wstring TempFile(int row) const;

    // Gives every language entry n the text Entry(n), so that a box or a caption tells
    // which entry it shows.
    void MarkLanguage();
    static std::wstring Entry(int n) { return L"#" + std::to_wstring(n) + L"#"; }
    // A screen of w by h pixels in one colour: the desktop picture and the metrics.
    void SetScreen(int w, int h, gdi::Pixel fill);
    // Another application's window at r, standing in front.
    void SetForeground(ui::Rect r, ui::WindowHandle h = 0x2001);
    // Names of the files now in the temporary folder.
    std::vector<std::wstring> TempFolderFiles() const;
    // How many boxes have shown this prompt.
    int BoxesWith(const std::wstring& prompt) const;

    headless::Backend be;
    std::unique_ptr<mv::App> app;
    mv::frmMain* main = nullptr;
    mv::Flistimages* list = nullptr;
    std::filesystem::path root;

private:
    bool marquer_ = false;
};
