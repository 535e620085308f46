// The animated-GIF assembler: stitches the first image of each single-image GIF file into
// one GIF89a stream without decoding a pixel. Only the headers around the image data are
// rewritten: each frame gets a graphic control group with the chosen delay and the
// transparent flag, and its global table becomes a local one.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace mv {

// How a frame ended.
enum class FinTrame {
    kAjoutee,   // appended (or its input ended inside the image data, closed with a 00)
    kIllisible, // the input could not be opened: the output is closed
    kPasUnGif,  // not a GIF 87a or 89a: the build stops
    kTronquee,  // the input ended before an image: the build stops
};

// The records of one builder dialog, kept from build to build: the canvas only grows, and
// the transparent index and terminator of a frame carry on to the next frame that has no
// graphic control extension of its own.
class AssembleurGif {
public:
    // Bytes of a colour table by its 3-bit size field.
    static constexpr std::array<uint32_t, 8> kTailleTables = {6, 12, 24, 48, 96, 192, 384, 768};

    // Starts an output: "GIF89a", a 7-byte placeholder for the screen descriptor and, when
    // boucle, the looping extension (NETSCAPE2.0, 65535 times). prevu: the bytes expected.
    void Commencer(bool boucle, size_t prevu = 0);
    // Appends the first image of a file (nullptr: it could not be opened), with a delay in
    // hundredths of a second. enteteCourt is called when the file's 6-byte header is short.
    FinTrame AjouterTrame(const std::vector<uint8_t>* fichier, uint16_t delai,
                          const std::function<void()>& enteteCourt = {});
    // The trailer, then the screen descriptor rewritten with the canvas size.
    void Terminer();

    // The output so far; nothing is added once it is closed.
    const std::vector<uint8_t>& Sortie() const { return sortie_; }
    bool Fermee() const { return fermee_; }
    uint16_t LargeurCanevas() const { return Lire16(ecranSortie_, 0); }
    uint16_t HauteurCanevas() const { return Lire16(ecranSortie_, 2); }

    // The files in the order they are appended: 0 to n-1, then, forward and back, n-1 down to
    // 0 again (the last file twice in a row).
    static std::vector<int> Ordre(int n, bool allerRetour);

    // Packed-byte fields as the builder reads them, through their text forms.
    struct ChampsEcran {
        std::wstring tailleGlobale; // 3 binary digits, or empty
        std::wstring tri;
        int32_t resolution = 0;
        std::wstring tableGlobale;
    };
    struct ChampsImage {
        int16_t tailleLocale = 0; // the 3 binary digits read as a decimal number
        std::wstring reserves;
        std::wstring triLocal;
        std::wstring entrelace;
        std::wstring tableLocale;
    };
    static ChampsEcran BuffGlsd(uint8_t packed);
    static ChampsImage BuffGgid(uint8_t packed);
    // The size index N of a table from the text of its size field.
    static int TailleN(const std::wstring& champ);
    // The packed byte of an image descriptor given a local table the size of the global
    // one; the interlace bit is the input's.
    static int16_t PackGid(const std::wstring& tailleGlobale, bool entrelace);

private:
    static uint16_t Lire16(const std::array<uint8_t, 7>& r, size_t i) {
        return uint16_t(r[i] | r[i + 1] << 8);
    }
    void Ecrire(const uint8_t* p, size_t n);
    void Ecrire(uint8_t b) { Ecrire(&b, 1); }
    void Agrandir(uint32_t largeur, uint32_t hauteur);

    std::vector<uint8_t> sortie_;
    bool fermee_ = false;
    std::array<uint8_t, 6> entete_{};
    std::array<uint8_t, 7> ecranSortie_{};
    std::array<uint8_t, 7> ecranTrame_{};
    std::array<uint8_t, 6> extControle_{};
    std::array<uint8_t, 9> descImage_{};
    // The current frame's colour table, also the buffer of one data sub-block.
    std::array<uint8_t, 769> tableCouleurs_{};
};

} // namespace mv
