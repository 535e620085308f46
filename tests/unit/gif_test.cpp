// The program's GIF writer, read back by a decoder written here from the file format.
#include "platform/gdi/gif_encode.h"
#include "test_util.h"

#include <gtest/gtest.h>

#include <random>

namespace {

struct Lu {
    int width = 0, height = 0;
    std::vector<gdi::Pixel> table;
    std::vector<uint8_t> indices;
};

// Header, global table, the one image and its LZW data; fails the test on any misstep.
Lu Decoder(const std::vector<uint8_t>& g) {
    Lu r;
    EXPECT_EQ(std::string(g.begin(), g.begin() + 6), "GIF89a");
    r.width = g[6] | g[7] << 8;
    r.height = g[8] | g[9] << 8;
    EXPECT_TRUE(g[10] & 0x80);
    const int n = 2 << (g[10] & 7);
    size_t i = 13;
    for (int k = 0; k < n; ++k, i += 3) r.table.push_back(gdi::Rgb(g[i], g[i + 1], g[i + 2]));
    EXPECT_EQ(g[i], 0x2C);
    EXPECT_EQ(g[i + 9], 0); // no local table, not interlaced
    i += 10;
    const int minimum = g[i++];
    std::vector<uint8_t> data;
    while (g.at(i) != 0) {
        data.insert(data.end(), g.begin() + long(i) + 1, g.begin() + long(i) + 1 + g[i]);
        i += size_t(g[i]) + 1;
    }
    EXPECT_EQ(g.at(i + 1), 0x3B);
    EXPECT_EQ(i + 2, g.size());

    const int effacer = 1 << minimum, fin = effacer + 1;
    std::vector<std::vector<uint8_t>> dico;
    auto reset = [&] {
        dico.assign(size_t(fin) + 1, {});
        for (int c = 0; c < effacer; ++c) dico[size_t(c)] = {uint8_t(c)};
    };
    int taille = minimum + 1;
    size_t bit = 0;
    auto lire = [&] {
        int v = 0;
        for (int b = 0; b < taille; ++b, ++bit) v |= ((data.at(bit / 8) >> (bit % 8)) & 1) << b;
        return v;
    };
    reset();
    std::vector<uint8_t> precedent;
    for (;;) {
        const int code = lire();
        if (code == fin) break;
        if (code == effacer) {
            reset();
            taille = minimum + 1;
            precedent.clear();
            continue;
        }
        std::vector<uint8_t> mot;
        if (size_t(code) < dico.size()) {
            mot = dico[size_t(code)];
        } else {
            EXPECT_EQ(size_t(code), dico.size());
            mot = precedent;
            mot.push_back(precedent.at(0));
        }
        r.indices.insert(r.indices.end(), mot.begin(), mot.end());
        if (!precedent.empty() && dico.size() < 4096) {
            precedent.push_back(mot[0]);
            dico.push_back(precedent);
            if (dico.size() == size_t(1) << taille && taille < 12) ++taille;
        }
        precedent = mot;
    }
    return r;
}

gdi::IndexedImage Image(int w, int h, int couleurs, uint32_t graine, bool bruit) {
    gdi::IndexedImage im;
    im.width = w, im.height = h;
    for (int c = 0; c < couleurs; ++c) im.palette.push_back(gdi::Rgb(c, 255 - c, c * 7));
    std::mt19937 alea(graine);
    for (int k = 0; k < w * h; ++k)
        im.indices.push_back(uint8_t(bruit ? alea() % uint32_t(couleurs) : (k / 97) % couleurs));
    return im;
}

TEST(GifWriter, EveryPictureReadsBackIndexForIndex) {
    // Noise fills the 4096 codes again and again; runs make long strings; one and two
    // colours take the smallest code size.
    const struct {
        int w, h, couleurs;
        bool bruit;
    } cas[] = {{300, 200, 256, true}, {640, 120, 256, false}, {17, 5, 1, false},
               {33, 9, 2, true},      {1, 1, 3, false},       {255, 3, 129, true}};
    for (const auto& c : cas) {
        const gdi::IndexedImage im = Image(c.w, c.h, c.couleurs, uint32_t(c.w), c.bruit);
        const Lu lu = Decoder(gdi::EncodeGif(im));
        EXPECT_EQ(lu.width, c.w);
        EXPECT_EQ(lu.height, c.h);
        ASSERT_GE(lu.table.size(), im.palette.size());
        EXPECT_TRUE(std::equal(im.palette.begin(), im.palette.end(), lu.table.begin()));
        EXPECT_EQ(lu.indices, im.indices) << c.w << "x" << c.h;
    }
    gdi::IndexedImage vide;
    EXPECT_EQ(ErrorOf([&] { gdi::EncodeGif(vide); }), 5);
}

TEST(GifWriter, BuilderFramesLeaveColourZeroUnused) {
    gdi::Surface s(64, 64);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) s.At(x, y) = gdi::Rgb(x * 4, y * 4, (x ^ y) * 4);
    const gdi::IndexedImage im = gdi::QuantizeForGif(s);
    ASSERT_LE(im.palette.size(), 256u);
    EXPECT_EQ(im.palette[0], 0u);
    for (uint8_t i : im.indices) ASSERT_NE(i, 0);
    // Few colours, black among them, stay exact.
    gdi::Surface peu(8, 8, 0);
    peu.At(3, 3) = gdi::Rgb(255, 0, 0);
    const gdi::IndexedImage p = gdi::QuantizeForGif(peu);
    EXPECT_TRUE(gdi::Expand(p) == peu);
    for (uint8_t i : p.indices) ASSERT_NE(i, 0);
}

} // namespace
