#include "app_fixture.h"
#include "platform/gdi/bmp.h"

TEST_F(AppTest, WholeScreenCaptureWritesTheScreenToItsTemporaryFile) {
    for (int y = 0; y < be.desktop.screen.Height(); ++y)
        for (int x = 0; x < be.desktop.screen.Width(); ++x)
            be.desktop.screen.At(x, y) = gdi::Rgb(x & 255, y & 255, (x ^ y) & 255);
    Start();
    EXPECT_TRUE(main->Visible());
    ClickButton(mv::kCmdEcran);
    ASSERT_EQ(app->NbVignettes, 1);
    EXPECT_EQ(app->tab.TypeV[1], L"e");
    gdi::Surface saved = gdi::LoadBmp(TempFile(1));
    EXPECT_TRUE(saved == be.desktop.screen);
    EXPECT_TRUE(be.clipboard.hasImage);
    EXPECT_TRUE(be.clipboard.image == be.desktop.screen);
}
