// frmMain: captures left on the disk by a run that ended without quitting.
//
// Each run keeps its captures in a folder of its own, the settings' temporary folder name
// plus the digits that made it free; quitprog empties and removes it. A folder of that
// family that still holds capture files at the next start belongs to a run that crashed,
// was killed or lost its power: the user is asked once whether to file them again.
#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "platform/gdi/bmp.h"
#include "runtime/errors.h"
#include "runtime/files.h"

#include <algorithm>
#include <cstdint>
#include <cwctype>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace mv {

namespace {

constexpr int kLignesMax = 100; // the list's limit, which GestVignettes enforces with a box
constexpr std::wstring_view kPrefixe = L"Captprov_";
constexpr size_t kTagHeure = 7; // CalcTagHeure's fixed width
// No to the question leaves this mark in each folder asked about. It lives and goes with
// the folder, so a later crash's folder (another name) is asked about on its own.
constexpr wchar_t kRefus[] = L"declined.txt";
constexpr char kTexteRefus[] =
    "Mirovanta: captures of a run that did not quit, left here at the user's choice.\r\n";

struct DossierOrphelin {
    std::wstring chemin;
    std::vector<std::wstring> fichiers; // capture files, in the order they were taken
    int64_t date = 0;                   // earliest write among them: the order of the runs
};

bool MemeTexte(std::wstring_view a, std::wstring_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(),
                      [](wchar_t x, wchar_t y) { return std::towlower(x) == std::towlower(y); });
}

bool Chiffres(std::wstring_view s) {
    return std::all_of(s.begin(), s.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

bool FichierCapture(std::wstring_view nom) {
    return nom.size() > kPrefixe.size() + 4 &&
           MemeTexte(nom.substr(0, kPrefixe.size()), kPrefixe) &&
           MemeTexte(nom.substr(nom.size() - 4), L".bmp");
}

// The capture number after the run's time tag. Name order would put "...100" before
// "...99", and write times can tie within a second; the number cannot.
int64_t NumeroCapture(std::wstring_view nom) {
    const size_t debut = kPrefixe.size() + kTagHeure;
    const size_t fin = nom.size() - 4;
    if (fin <= debut || fin - debut > 9 || !Chiffres(nom.substr(debut, fin - debut)))
        return std::numeric_limits<int64_t>::max(); // not ours by name: after the others
    return std::stoll(std::wstring(nom.substr(debut, fin - debut)));
}

bool Lisible(const std::wstring& chemin) {
    try {
        return !gdi::LoadBmp(chemin).Empty();
    } catch (...) {
        rt::CaughtError();
        return false;
    }
}

// The folders of the family of `famille` other than `courant` that hold a readable
// capture and no refusal mark, oldest run first.
std::vector<DossierOrphelin> ChercherOrphelins(const std::wstring& famille,
                                               const std::wstring& courant) {
    std::vector<DossierOrphelin> trouves;
    const size_t sep = famille.find_last_of(L'\\');
    if (sep == std::wstring::npos || sep + 1 == famille.size()) return trouves;
    const std::wstring parent = famille.substr(0, sep);
    const std::wstring base = famille.substr(sep + 1);
    const std::wstring dansParent = famille.substr(0, sep + 1);
    for (const std::wstring& nom : rt::FolderNames(parent, true)) {
        if (nom.size() < base.size() || !MemeTexte(nom.substr(0, base.size()), base) ||
            !Chiffres(std::wstring_view(nom).substr(base.size())))
            continue;
        DossierOrphelin d{dansParent + nom, {}, 0};
        if (MemeTexte(d.chemin, courant) || rt::FileExists(d.chemin + L"\\" + kRefus)) continue;
        // A run still going holds its mark open, and it cannot be deleted: that folder is
        // another copy's, not a lost run's.
        const std::wstring verrou = d.chemin + frmMain::kVerrouSession;
        if (rt::FileExists(verrou)) {
            try {
                rt::Kill(verrou);
            } catch (...) {
                rt::CaughtError();
                continue;
            }
        }
        for (const std::wstring& f : rt::FolderNames(d.chemin, false))
            if (FichierCapture(f)) d.fichiers.push_back(f);
        std::sort(d.fichiers.begin(), d.fichiers.end(), [](const auto& a, const auto& b) {
            const int64_t na = NumeroCapture(a), nb = NumeroCapture(b);
            return na != nb ? na < nb : a < b;
        });
        // Damaged files alone would bring the question back at every start with nothing
        // to file: one capture that reads is enough to ask.
        if (std::none_of(d.fichiers.begin(), d.fichiers.end(),
                         [&](const std::wstring& f) { return Lisible(d.chemin + L"\\" + f); }))
            continue;
        d.date = std::numeric_limits<int64_t>::max();
        for (const std::wstring& f : d.fichiers)
            d.date = std::min(d.date, rt::FileWriteTicks(d.chemin + L"\\" + f));
        trouves.push_back(std::move(d));
    }
    std::sort(trouves.begin(), trouves.end(), [](const auto& a, const auto& b) {
        return a.date != b.date ? a.date < b.date : a.chemin < b.chemin;
    });
    return trouves;
}

} // namespace

void frmMain::ReprendreCaptures() {
    const std::vector<DossierOrphelin> orphelins =
        ChercherOrphelins(app.params.DossierTemp, app.DossierTemp);
    if (orphelins.empty()) return;
    if (app.MsgBox(app.Lang(274), ui::kYesNo | ui::kQuestion) != ui::kYes) {
        for (const DossierOrphelin& d : orphelins) {
            try {
                rt::WriteFileBytes(d.chemin + L"\\" + kRefus, kTexteRefus, sizeof kTexteRefus - 1);
            } catch (...) {
                rt::CaughtError(); // a folder that takes no mark is asked about again
            }
        }
        return;
    }
    const std::wstring typeAvant = app.TypeCapt;
    for (const DossierOrphelin& d : orphelins) {
        for (const std::wstring& nom : d.fichiers) {
            if (app.NbVignettes >= kLignesMax) break;
            const std::wstring ancien = d.chemin + L"\\" + nom;
            if (!ReprendreFichier(ancien)) continue;
            try {
                rt::Kill(ancien);
            } catch (...) {
                rt::CaughtError();
            }
        }
        // Only an empty folder goes: one still holding a file (damaged, past the limit,
        // or the user's own) stays as it is.
        try {
            rt::RmDir(d.chemin);
        } catch (...) {
            rt::CaughtError();
        }
    }
    app.TypeCapt = typeAvant;
}

bool frmMain::ReprendreFichier(const std::wstring& chemin) {
    gdi::Surface image;
    try {
        image = gdi::LoadBmp(chemin);
    } catch (...) {
        rt::CaughtError(); // damaged: it stays on the disk, the next one is filed
        return false;
    }
    if (image.Empty()) return false;
    // A capture of the screen's size is filed as a whole-screen one, any other as a zone.
    const ui::ScreenMetrics ecran = app.Screen();
    const bool ecranEntier = image.Width() == ecran.widthPx && image.Height() == ecran.heightPx;
    ui::PictureBox& source = ecranEntier ? Picture1 : Picture2;
    app.TypeCapt = ecranEntier ? L"e" : L"z";
    source.Move(source.Left(), source.Top(), ecran.TwipsX(image.Width()),
                ecran.TwipsY(image.Height()));
    gdi::BitBlt(source.Image(), 0, 0, image.Width(), image.Height(), image, 0, 0);
    const int16_t avant = app.NbVignettes;
    GestVignettes(source);
    // The old file may go only once its copy stands in this run's folder.
    return app.NbVignettes > avant &&
           rt::FileExists(app.DossierTemp + L"\\" + app.tab.FichierV[app.NbVignettes]);
}

} // namespace mv
