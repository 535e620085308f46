// The animated-GIF assembler, byte for byte against GIF files built here by hand, and the
// builder dialog.
#include "app_fixture.h"
#include "gifanim/FrmGifAnim.h"
#include "gifanim/assembleur.h"
#include "platform/gdi/bmp.h"
#include "platform/gdi/gif_encode.h"
#include "test_util.h"

#include <fstream>

namespace {

using Octets = std::vector<uint8_t>;

// A hand-made GIF: header, screen descriptor (its packed byte and a global table of
// `globale` bytes), extensions, then one image with its packed byte, an optional local table
// and the data sub-blocks given (a terminator added unless `coupe`).
struct Gif {
    std::string version = "89a";
    int largeur = 4, hauteur = 3;
    uint8_t ecran = 0x80; // global table of 2 colours
    Octets extensions;
    int gauche = 0, haut = 0, l = 4, h = 3;
    uint8_t image = 0;
    size_t locale = 0;
    Octets donnees = {2, 3, 0x11, 0x22, 0x33};
    bool coupe = false;

    Octets Fichier() const {
        Octets f = {'G', 'I', 'F'};
        f.insert(f.end(), version.begin(), version.end());
        auto mot = [&](int v) {
            f.push_back(uint8_t(v & 255));
            f.push_back(uint8_t(v >> 8));
        };
        mot(largeur);
        mot(hauteur);
        f.insert(f.end(), {ecran, 0, 0});
        if (ecran & 0x80)
            for (size_t i = 0; i < mv::AssembleurGif::kTailleTables[ecran & 7]; ++i)
                f.push_back(uint8_t(0xA0 + i));
        f.insert(f.end(), extensions.begin(), extensions.end());
        f.push_back(0x2C);
        mot(gauche), mot(haut), mot(l), mot(h);
        f.push_back(image);
        for (size_t i = 0; i < locale; ++i) f.push_back(uint8_t(0x50 + i));
        f.insert(f.end(), donnees.begin(), donnees.end());
        if (!coupe) f.insert(f.end(), {0, 0x3B});
        return f;
    }
};

Octets Gce(uint8_t transparent, uint8_t fin = 0) {
    return {0x21, 0xF9, 4, 5, 0x10, 0x00, transparent, fin};
}

// The group a frame should give: control extension, descriptor, table, data.
Octets Groupe(uint16_t delai, uint8_t transparent, uint8_t fin, const Gif& g, uint8_t packed,
              const Octets& table) {
    Octets o = {0x21,        0xF9, 4,   9, uint8_t(delai & 255), uint8_t(delai >> 8),
                transparent, fin,  0x2C};
    for (int v : {g.gauche, g.haut, g.l, g.h})
        o.insert(o.end(), {uint8_t(v & 255), uint8_t(v >> 8)});
    o.push_back(packed);
    o.insert(o.end(), table.begin(), table.end());
    o.insert(o.end(), g.donnees.begin(), g.donnees.end());
    o.push_back(0);
    return o;
}

Octets Table(size_t n, uint8_t premier) {
    Octets t;
    for (size_t i = 0; i < n; ++i) t.push_back(uint8_t(premier + i));
    return t;
}

Octets Construire(const std::vector<Octets>& fichiers, bool boucle, uint16_t delai,
                  mv::AssembleurGif& a) {
    a.Commencer(boucle);
    for (const auto& f : fichiers) EXPECT_EQ(a.AjouterTrame(&f, delai), mv::FinTrame::kAjoutee);
    a.Terminer();
    return a.Sortie();
}

TEST(GifAssembler, StreamLayoutLoopCanvasAndCarriedIndex) {
    Gif a;
    a.version = "87a";
    a.extensions = Gce(7, 0);
    Gif b;
    b.largeur = 2, b.hauteur = 9, b.l = 2, b.h = 9;
    b.ecran = 0x81; // 4 colours
    mv::AssembleurGif as;
    const Octets sortie = Construire({a.Fichier(), b.Fichier()}, true, 50, as);

    Octets attendu = {'G', 'I', 'F', '8', '9', 'a', 4, 0, 9, 0, 0, 0, 0};
    attendu.insert(attendu.end(), {0x21, 0xFF, 0x0B, 'N', 'E', 'T', 'S', 'C', 'A', 'P', 'E', '2',
                                   '.', '0', 3, 1, 0xFF, 0xFF, 0});
    // The global tables become local ones of the same size; b has no control extension and
    // takes a's transparent index.
    const Octets ga = Groupe(50, 7, 0, a, 0x80, Table(6, 0xA0));
    const Octets gb = Groupe(50, 7, 0, b, 0x81, Table(12, 0xA0));
    attendu.insert(attendu.end(), ga.begin(), ga.end());
    attendu.insert(attendu.end(), gb.begin(), gb.end());
    attendu.push_back(0x3B);
    EXPECT_EQ(sortie, attendu);

    // No loop: the first group at offset 13; a second build keeps the canvas.
    const Octets sans = Construire({a.Fichier()}, false, 0, as);
    EXPECT_EQ(Octets(sans.begin() + 13, sans.begin() + 15), (Octets{0x21, 0xF9}));
    EXPECT_EQ(sans[8], 9); // height from the earlier build
}

TEST(GifAssembler, TablesInterlaceAndOtherExtensions) {
    // Local tables: "111" is read right; "011" is read as 384 bytes, the size field's
    // leading zero lost in its decimal text.
    for (auto [packed, octets] : {std::pair{0x87, 768}, {0x83, 384}, {0x82, 24}, {0x81, 48}}) {
        Gif g;
        g.image = uint8_t(packed);
        g.locale = size_t(octets);
        mv::AssembleurGif as;
        const Octets s = Construire({g.Fichier()}, false, 10, as);
        const Octets grp = Groupe(10, 0, 0, g, uint8_t(packed), Table(size_t(octets), 0x50));
        EXPECT_TRUE(std::equal(grp.begin(), grp.end(), s.begin() + 13)) << packed;
    }
    // An interlaced frame without a local table keeps its interlace bit; a comment and an
    // application block before the image are passed over; the canvas takes in the image's
    // own place.
    Gif g;
    g.ecran = 0x82;
    g.image = 0x40;
    g.gauche = 3, g.haut = 1;
    g.extensions = {0x21, 0xFE, 2, 'h', 'i', 0, 0x21, 0xFF, 3, 1, 2, 3, 1, 9, 0};
    mv::AssembleurGif as;
    const Octets s = Construire({g.Fichier()}, false, 10, as);
    const Octets grp = Groupe(10, 0, 0, g, 0xC2, Table(24, 0xA0));
    EXPECT_TRUE(std::equal(grp.begin(), grp.end(), s.begin() + 13));
    EXPECT_EQ(as.LargeurCanevas(), 7);
    EXPECT_EQ(as.HauteurCanevas(), 4);
}

TEST(GifAssembler, BadInputsEndAsTold) {
    mv::AssembleurGif as;
    as.Commencer(false);
    Gif g;
    Octets pasGif = g.Fichier();
    pasGif[4] = '8'; // "GIF88a"
    EXPECT_EQ(as.AjouterTrame(&pasGif, 1), mv::FinTrame::kPasUnGif);
    bool court = false;
    const Octets trois = {'G', 'I', 'F'};
    EXPECT_EQ(as.AjouterTrame(&trois, 1, [&] { court = true; }), mv::FinTrame::kPasUnGif);
    EXPECT_TRUE(court);
    Octets sansImage = g.Fichier();
    sansImage.resize(13 + 6); // header, screen and table: no image
    EXPECT_EQ(as.AjouterTrame(&sansImage, 1), mv::FinTrame::kTronquee);
    // Data cut short: the frame is closed with a terminator.
    g.coupe = true;
    g.donnees = {2, 5, 1, 2};
    const Octets coupe = g.Fichier();
    const size_t avant = as.Sortie().size();
    EXPECT_EQ(as.AjouterTrame(&coupe, 1), mv::FinTrame::kAjoutee);
    const Octets& s = as.Sortie();
    EXPECT_EQ(Octets(s.end() - 5, s.end()), (Octets{2, 5, 1, 2, 0}));
    EXPECT_GT(s.size(), avant);

    // An input that cannot be opened closes the output: nothing more, not even the repair.
    EXPECT_EQ(as.AjouterTrame(nullptr, 1), mv::FinTrame::kIllisible);
    const Octets ferme = as.Sortie();
    const Octets bon = Gif().Fichier();
    as.AjouterTrame(&bon, 1);
    as.Terminer();
    EXPECT_EQ(as.Sortie(), ferme);
    EXPECT_EQ(ferme[6], 0);
}

// ---- the builder dialog ----------------------------------------------------------------------

class GifDialogTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        StartMarked();
        sortie = root / "Personal" / "out";
        std::filesystem::create_directories(sortie);
        app->params.DossierEnregCourt = rt::FromUtf8(sortie.string());
        dossier = root / "gifs";
        std::filesystem::create_directories(dossier);
    }
    void Frame(const std::string& nom, gdi::Pixel c) {
        const auto g = gdi::EncodeGif(gdi::QuantizeForGif(gdi::Surface(6, 4, c)));
        rt::WriteFileBytes(rt::FromUtf8((dossier / nom).string()), g.data(), g.size());
    }
    mv::FrmGifAnim& Ouvrir(bool captures) {
        ui::Dispatch(be,
                     [&] { mv::OuvrirGifAnim(*app, captures, rt::FromUtf8(dossier.string())); });
        return *app->gif;
    }
    void Construire() {
        ui::Dispatch(be, [&] { app->gif->CdeCreGif_Click(); });
    }
    std::vector<std::string> Sorties() const {
        std::vector<std::string> n;
        for (const auto& e : std::filesystem::directory_iterator(sortie))
            n.push_back(e.path().filename().string());
        return n;
    }
    std::filesystem::path sortie, dossier;
};

TEST_F(GifDialogTest, FolderModeListsSortsLimitsAndDeletes) {
    // Earlier animations are no frames; past 50 files the rest are left out, with a box.
    Frame("animgif120000.gif", 0x00FF00);
    for (int i = 0; i < 60; ++i)
        Frame("f" + std::string(i < 10 ? "0" : "") + std::to_string(i) + ".gif",
              gdi::Rgb(i * 4, 0, 0));
    std::ofstream(dossier / "notes.txt") << "x";
    mv::FrmGifAnim& f = Ouvrir(false);
    EXPECT_EQ(BoxesWith(Entry(275)), 1);
    ASSERT_EQ(f.ListUtiles.ListCount(), 50);
    EXPECT_EQ(f.ListUtiles.List(0), L"f00.gif");

    // Moving down; Delete keeps a selection at the same place, or the new last.
    ui::Dispatch(be, [&] { f.CdeB_Click(); });
    EXPECT_EQ(f.ListUtiles.List(1), L"f00.gif");
    f.ListUtiles.SetListIndex(49);
    ui::Dispatch(be, [&] { f.ListUtiles_KeyDown(46); });
    EXPECT_EQ(f.ListUtiles.ListIndex(), 48);
    while (f.ListUtiles.ListCount() > 0) ui::Dispatch(be, [&] { f.ListUtiles_KeyDown(46); });
    EXPECT_EQ(f.NbFichiers, 0);

    // No frame left: header, loop extension and trailer only, named by the 24-hour clock
    // of the test (14:05:xx).
    f.Chkloop.SetValue(1);
    Construire();
    ASSERT_EQ(Sorties().size(), 1u);
    const std::string nom = Sorties()[0];
    EXPECT_EQ(rt::ReadFileBytes(rt::FromUtf8((sortie / nom).string())).size(), 13u + 19u + 1u);
    EXPECT_EQ(nom.substr(0, 11), "animgif1405");
    EXPECT_EQ(BoxesWith(Entry(245) + app->params.DossierEnregCourt + L"\r\n" + Entry(246) +
                        rt::FromUtf8(nom)),
              1);
}

TEST_F(GifDialogTest, CaptureModeBuildsFromTheListAndCleansItsFrames) {
    for (int k = 0; k < 3; ++k) Zone(8, 6, gdi::Rgb(k * 80, 20, 200));
    ui::Dispatch(be, [&] { list->LabGif_Click(); });
    mv::FrmGifAnim& g = *app->gif;
    ASSERT_TRUE(g.IsLoaded());
    EXPECT_EQ(g.NbFichiers, 3);
    // A second build in the same second replaces the first; closing takes the frame GIFs
    // and leaves the captures' bitmaps.
    Construire();
    Construire();
    EXPECT_EQ(Sorties().size(), 1u);
    ui::Dispatch(be, [&] { g.Unload(); });
    for (const auto& f : TempFolderFiles()) EXPECT_EQ(f.substr(f.size() - 3), L"bmp");
    EXPECT_EQ(TempFolderFiles().size(), 3u);
}

} // namespace
