// The animated-GIF assembler. Packed bytes are taken apart through text, as the builder
// always did: the edge behaviours (an empty size field, a local size field read as a
// decimal number) follow from that and are kept.
#include "gifanim/assembleur.h"

#include "runtime/strings.h"

#include <algorithm>
#include <cstdio>

namespace mv {

namespace {

const wchar_t kHex[] = L"0123456789ABCDEF";
const wchar_t* const kBits[16] = {L"0000", L"0001", L"0010", L"0011", L"0100", L"0101",
                                  L"0110", L"0111", L"1000", L"1001", L"1010", L"1011",
                                  L"1100", L"1101", L"1110", L"1111"};

// The bit string of a byte by its two hexadecimal digits; the low digit is looked up from
// entry debutBas, so that from 1 a low "0" adds nothing.
std::wstring Bits(uint8_t b, int debutBas) {
    const wchar_t hex[2] = {kHex[b >> 4], kHex[b & 15]};
    std::wstring r;
    for (int i = 0; i < 16; ++i)
        if (kHex[i] == hex[0]) {
            r = kBits[i];
            break;
        }
    for (int i = debutBas; i < 16; ++i)
        if (kHex[i] == hex[1]) {
            r += kBits[i];
            break;
        }
    return r;
}

// Sequential reads of one input: a read past the end gives fewer bytes, or none.
class Lecteur {
public:
    explicit Lecteur(const std::vector<uint8_t>& d) : d_(d) {}
    size_t Lire(uint8_t* dst, size_t n) {
        const size_t reste = pos_ < d_.size() ? d_.size() - pos_ : 0;
        const size_t k = std::min(n, reste);
        std::copy_n(d_.begin() + std::ptrdiff_t(pos_), k, dst);
        pos_ += k;
        return k;
    }
    bool Octet(uint8_t& b) { return Lire(&b, 1) == 1; }
    void Avancer(size_t n) { pos_ += n; }

private:
    const std::vector<uint8_t>& d_;
    size_t pos_ = 0;
};

} // namespace

AssembleurGif::ChampsEcran AssembleurGif::BuffGlsd(uint8_t packed) {
    const std::wstring b = Bits(packed, 1);
    ChampsEcran c;
    c.tailleGlobale = rt::Mid(b, 6, 3);
    c.tri = rt::Mid(b, 5, 1);
    c.resolution = int32_t(rt::Val(rt::Mid(b, 2, 3)));
    c.tableGlobale = rt::Mid(b, 1, 1);
    return c;
}

AssembleurGif::ChampsImage AssembleurGif::BuffGgid(uint8_t packed) {
    const std::wstring b = Bits(packed, 0);
    ChampsImage c;
    c.tailleLocale = int16_t(rt::Val(rt::Mid(b, 6, 3)));
    c.reserves = rt::Mid(b, 4, 2);
    c.triLocal = rt::Mid(b, 3, 1);
    c.entrelace = rt::Mid(b, 2, 1);
    c.tableLocale = rt::Mid(b, 1, 1);
    return c;
}

int AssembleurGif::TailleN(const std::wstring& champ) {
    auto chiffre = [&](int position) { return int(rt::Val(rt::Mid(champ, position, 1))) & 1; };
    return chiffre(1) * 4 + chiffre(2) * 2 + chiffre(3);
}

int16_t AssembleurGif::PackGid(const std::wstring& tailleGlobale, bool entrelace) {
    const std::wstring s = L"10000" + (tailleGlobale.empty() ? L"000" : tailleGlobale);
    int v = 0;
    for (wchar_t ch : s) v = v * 2 + (ch == L'1' ? 1 : 0);
    return int16_t(entrelace ? v | 0x40 : v);
}

std::vector<int> AssembleurGif::Ordre(int n, bool allerRetour) {
    std::vector<int> ordre;
    ordre.reserve(size_t(n > 0 ? 2 * n : 0));
    for (int i = 0; i < n; ++i) ordre.push_back(i);
    if (allerRetour)
        for (int i = n - 1; i >= 0; --i) ordre.push_back(i);
    return ordre;
}

void AssembleurGif::Ecrire(const uint8_t* p, size_t n) {
    if (!fermee_) sortie_.insert(sortie_.end(), p, p + n);
}

void AssembleurGif::Agrandir(uint32_t largeur, uint32_t hauteur) {
    largeur = std::min<uint32_t>(largeur, 65535);
    hauteur = std::min<uint32_t>(hauteur, 65535);
    if (largeur > LargeurCanevas()) {
        ecranSortie_[0] = uint8_t(largeur & 255);
        ecranSortie_[1] = uint8_t(largeur >> 8);
    }
    if (hauteur > HauteurCanevas()) {
        ecranSortie_[2] = uint8_t(hauteur & 255);
        ecranSortie_[3] = uint8_t(hauteur >> 8);
    }
}

void AssembleurGif::Commencer(bool boucle, size_t prevu) {
    sortie_.clear();
    sortie_.reserve(prevu);
    fermee_ = false;
    const uint8_t entete[] = {'G', 'I', 'F', '8', '9', 'a'};
    Ecrire(entete, sizeof entete);
    Ecrire(ecranSortie_.data(), ecranSortie_.size());
    if (boucle) {
        const uint8_t boucleExt[] = {0x21, 0xFF, 0x0B, 'N', 'E', 'T', 'S',  'C',  'A', 'P',
                                     'E',  '2',  '.',  '0', 3,   1,   0xFF, 0xFF, 0};
        Ecrire(boucleExt, sizeof boucleExt);
    }
}

FinTrame AssembleurGif::AjouterTrame(const std::vector<uint8_t>* fichier, uint16_t delai,
                                     const std::function<void()>& enteteCourt) {
    if (fichier == nullptr) {
        // Nothing more reaches the output, not even the trailer.
        fermee_ = true;
        return FinTrame::kIllisible;
    }
    Lecteur in(*fichier);
    if (in.Lire(entete_.data(), 6) < 6 && enteteCourt) enteteCourt();
    const std::string signature(entete_.begin(), entete_.begin() + 3);
    const std::string version(entete_.begin() + 3, entete_.end());
    if (signature != "GIF" || (version != "87a" && version != "89a")) return FinTrame::kPasUnGif;

    in.Lire(ecranTrame_.data(), 7);
    const ChampsEcran ecran = BuffGlsd(ecranTrame_[4]);
    int n = TailleN(ecran.tailleGlobale);
    if (ecran.tableGlobale == L"1") in.Lire(tableCouleurs_.data(), kTailleTables[size_t(n)]);
    Agrandir(Lire16(ecranTrame_, 0), Lire16(ecranTrame_, 2));

    // Up to the image, taking the frame's own graphic control extension on the way; any
    // other extension is passed over sub-block by sub-block.
    for (;;) {
        uint8_t b = 0;
        if (!in.Octet(b)) return FinTrame::kTronquee;
        if (b == 0x2C) break;
        if (b != 0x21) continue;
        uint8_t etiquette = 0;
        if (!in.Octet(etiquette)) return FinTrame::kTronquee;
        if (etiquette == 0xF9) {
            in.Lire(extControle_.data(), 6);
            continue;
        }
        for (uint8_t taille = 0; in.Octet(taille) && taille != 0;) in.Avancer(taille);
    }

    in.Lire(descImage_.data(), 9);
    const ChampsImage image = BuffGgid(descImage_[8]);
    const auto mot = [&](size_t i) { return uint32_t(descImage_[i] | descImage_[i + 1] << 8); };
    Agrandir(mot(0) + mot(4), mot(2) + mot(6));
    if (image.tableLocale == L"1") {
        n = TailleN(rt::CStr(image.tailleLocale));
        in.Lire(tableCouleurs_.data(), kTailleTables[size_t(n)]);
    } else {
        // The global table goes out as the frame's local one.
        descImage_[8] = uint8_t(PackGid(ecran.tailleGlobale, image.entrelace == L"1"));
    }

    extControle_[0] = 4;
    extControle_[1] = 9; // restore to background, transparent colour on
    extControle_[2] = uint8_t(delai & 255);
    extControle_[3] = uint8_t(delai >> 8);
    const uint8_t controle[] = {0x21, 0xF9};
    Ecrire(controle, 2);
    Ecrire(extControle_.data(), extControle_.size());
    Ecrire(0x2C);
    Ecrire(descImage_.data(), descImage_.size());
    Ecrire(tableCouleurs_.data(), kTailleTables[size_t(n)]);

    // The minimum code size and the data sub-blocks, as they stand. An input that ends
    // inside them gets its terminator here.
    uint8_t octet = 0;
    if (!in.Octet(octet)) {
        Ecrire(0);
        return FinTrame::kAjoutee;
    }
    Ecrire(octet);
    for (;;) {
        uint8_t taille = 0;
        if (!in.Octet(taille)) {
            Ecrire(0);
            return FinTrame::kAjoutee;
        }
        Ecrire(taille);
        if (taille == 0) return FinTrame::kAjoutee;
        const size_t lus = in.Lire(tableCouleurs_.data(), taille);
        Ecrire(tableCouleurs_.data(), lus);
        if (lus < taille) {
            Ecrire(0);
            return FinTrame::kAjoutee;
        }
    }
}

void AssembleurGif::Terminer() {
    Ecrire(0x3B);
    if (!fermee_ && sortie_.size() >= 13)
        std::copy(ecranSortie_.begin(), ecranSortie_.end(), sortie_.begin() + 6);
}

} // namespace mv
