#include "output/gif_blocks.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// A GIF of one 2x1 image with a 2-colour table, local or global, and an optional graphic
// control extension before the image.
std::vector<uint8_t> Gif(bool global, bool extension) {
    std::vector<uint8_t> g = {
        'G', 'I', 'F', '8', '9', 'a', 2, 0, 1, 0, uint8_t(global ? 0xF0 : 0x70), 0, 0};
    const std::vector<uint8_t> table = {255, 0, 0, 0, 0, 255};
    if (global) g.insert(g.end(), table.begin(), table.end());
    if (extension) g.insert(g.end(), {0x21, 0xF9, 4, 0, 0, 0, 0, 0});
    g.insert(g.end(), {0x2C, 0, 0, 0, 0, 2, 0, 1, 0, uint8_t(global ? 0x00 : 0xC0)});
    if (!global) g.insert(g.end(), table.begin(), table.end());
    g.insert(g.end(), {2, 2, 0x44, 0x01, 0, 0x3B});
    return g;
}

} // namespace

TEST(GifBlocks, LocalTableOfASingleImageBecomesTheGlobalTable) {
    for (bool extension : {false, true}) {
        std::vector<uint8_t> g = Gif(false, extension);
        ASSERT_TRUE(mv::TableLocaleEnGlobale(g));
        // The same file with a global table; the image keeps its interlace bit (0x40).
        std::vector<uint8_t> want = Gif(true, extension);
        want[13 + 6 + (extension ? 8 : 0) + 9] = 0x40;
        EXPECT_EQ(g, want) << "extension " << extension;
    }
}

TEST(GifBlocks, FilesOfOtherShapesStayAsTheyWere) {
    std::vector<uint8_t> global = Gif(true, true);
    const std::vector<uint8_t> before = global;
    EXPECT_FALSE(mv::TableLocaleEnGlobale(global));
    EXPECT_EQ(global, before);

    // Two images, truncated files, and something that is no GIF are not touched.
    std::vector<uint8_t> deux = Gif(false, false);
    deux.pop_back();
    const std::vector<uint8_t> image(deux.begin() + 13, deux.end());
    deux.insert(deux.end(), image.begin(), image.end());
    deux.push_back(0x3B);
    const std::vector<uint8_t> deuxAvant = deux;
    EXPECT_FALSE(mv::TableLocaleEnGlobale(deux));
    EXPECT_EQ(deux, deuxAvant);
    std::vector<uint8_t> g = Gif(false, true);
    for (size_t n = 0; n < g.size() - 4; ++n) {
        std::vector<uint8_t> court(g.begin(), g.begin() + std::ptrdiff_t(n));
        mv::TableLocaleEnGlobale(court); // never reads past the end (sanitizers)
    }
    std::vector<uint8_t> bmp = {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_FALSE(mv::TableLocaleEnGlobale(bmp));
}
