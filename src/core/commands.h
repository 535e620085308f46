// The command table: every action of the main window has an index here, the index of
// its toolbar button, with the image-list keys and bitmaps of that button.
#pragma once

#include <array>

namespace mv {

struct Commande {
    int index;
    const wchar_t* cle;          // key of the normal image; the highlight adds "2"
    const wchar_t* bitmap;       // file in the program's folder
    const wchar_t* bitmapSurvol; // highlight bitmap
};

enum IndexCommande {
    kCmdZone = 0,
    kCmdEcran = 1,
    kCmdFenetre = 2,
    kCmdCopier = 3,
    kCmdEnregistrer = 4,
    kCmdEnregistrerTout = 5,
    kCmdImprimer = 6,
    kCmdEditer = 7,
    kCmdMulti = 8,
    kCmdSupprimer = 9,
    kCmdSupprimerTout = 10,
    kCmdAnnuler = 11,
    kCmdRafraichir = 12,
    kCmdRafraichirTim = 13,
    kCmdQuitter = 14,
    kCmdOptions = 15,
    kCmdAgrandir = 16,
    kCmdListe = 17,
    kCmdAPropos = 18,
    kCmdZoneDouble = 19,
};

constexpr int kNbCommandes = 20;

// The 20 commands in index order.
const std::array<Commande, kNbCommandes>& TableCommandes();
// Toolbar order, left to right, by command index, and the gap in twips before each.
const std::array<int, kNbCommandes>& OrdreBarre();
const std::array<int, kNbCommandes>& EcartsBarre();

} // namespace mv
