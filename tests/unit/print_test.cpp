// Printing: the size a window capture prints at (the typed title and a full-screen capture
// are the Wine check's), the roads that print nothing, and the printer object.
#include "app_fixture.h"

namespace {

class PrintTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        MarkLanguage();
    }
    // The printer dialog answers OK with a copy count, or Cancel with 0.
    void Copies(int n) {
        be.dialogResponder = [n](ui::CommonDialog& d, ui::FileDialogKind kind) {
            if (kind != ui::FileDialogKind::Printer || n == 0) return false;
            d.copies = n;
            return true;
        };
    }
    void Print() { ClickButton(mv::kCmdImprimer); }
    const headless::Printer::Item& Picture(size_t doc = 0) {
        return be.printer.printed.at(doc).items.at(1);
    }
};

TEST_F(PrintTest, WindowCapturesPrintAtTheirOwnSizeUpToTheFixedWidth) {
    // 144 DPI: 10 twips a pixel, so a 1000-pixel window is exactly 10000 twips wide.
    SetScreen(1200, 900, gdi::Rgb(20, 160, 60));
    be.screen.tppX = be.screen.tppY = 10;
    Start();
    Copies(1);
    // Exactly the width; wider, scaled down keeping the proportions; small, never enlarged.
    const struct {
        ui::Rect fenetre;
        float w, h;
    } cas[] = {{{100, 100, 1100, 150}, 10000, 500},
               {{0, 0, 1001, 200}, 10000, 10000.f * 2000 / 10010},
               {{10, 20, 90, 60}, 800, 400}};
    for (size_t i = 0; i < 3; ++i) {
        SetForeground(cas[i].fenetre);
        ClickButton(mv::kCmdFenetre);
        Print();
        EXPECT_EQ(Picture(i).w, cas[i].w) << i;
        EXPECT_FLOAT_EQ(Picture(i).h, cas[i].h) << i;
    }
    EXPECT_EQ(Picture(0).picture.Width(), 1000);
    EXPECT_EQ(Picture(2).picture.At(5, 5), gdi::Rgb(20, 160, 60));
}

TEST_F(PrintTest, CancelAndPrinterFailuresEndSilently) {
    SetScreen(200, 100, gdi::Rgb(1, 2, 3));
    Start();
    ClickButton(mv::kCmdEcran);

    // Cancel in the title box: no printer dialog, nothing printed.
    Copies(1);
    be.inputAnswers.emplace_back(std::nullopt);
    Print();
    EXPECT_EQ(be.dialogs.size(), 0u);

    // A printer that fails the document at its end (Cancel in the printer dialog and no
    // printer are checked under Wine); the next document starts afresh.
    Copies(2);
    be.printer.refuseEnd = true;
    Print();
    EXPECT_FALSE(be.printer.open);

    EXPECT_TRUE(be.printer.printed.empty());
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_FALSE(be.ended);

    be.printer.refuseEnd = false;
    Print();
    ASSERT_EQ(be.printer.printed.size(), 1u);
    EXPECT_EQ(be.printer.printed[0].items.size(), 2u);
    EXPECT_EQ(be.printer.printed[0].copies, 2);
}

TEST_F(PrintTest, PrinterObjectStartsOnFirstOutputAndMovesDownALine) {
    headless::Printer device;
    {
        ui::Printer p(device);
        p.EndDoc(); // nothing printed: no document
        EXPECT_TRUE(device.printed.empty());
        EXPECT_THROW(p.SetCopies(0), rt::RuntimeError);
        p.SetCopies(2);
        p.CurrentX = 3000;
        p.CurrentY = 1000;
        p.Print(L"a");
        p.Print(L"b");
        EXPECT_EQ(p.CurrentX, 0);
        EXPECT_EQ(p.CurrentY, 1000 + 2 * device.lineHeight);
        EXPECT_THROW(p.PaintPicture(gdi::Surface(), 0, 0, 10, 10), rt::RuntimeError);
        p.EndDoc();
        ASSERT_EQ(device.printed.size(), 1u);
        EXPECT_EQ(device.printed[0].copies, 2);
        EXPECT_EQ(device.printed[0].items[1].x, 0);
        EXPECT_EQ(device.printed[0].items[1].y, 1000 + device.lineHeight);
        // A document left open is dropped, not sent.
        p.Print(L"c");
    }
    EXPECT_EQ(device.printed.size(), 1u);
    EXPECT_EQ(device.aborted, 1);
    device.present = false;
    ui::Printer none(device);
    EXPECT_THROW(none.Print(L"x"), rt::RuntimeError);
}

} // namespace
