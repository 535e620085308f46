// The format of params.txt: the default lines, the line reading, the unpacking of line 1.
// Nothing here touches a file or a window.
#include "settings/settings_file.h"

#include "runtime/errors.h"
#include "runtime/files.h"
#include "runtime/integer.h"
#include "runtime/line_input.h"
#include "runtime/strings.h"

#include <algorithm>

namespace mv {

namespace {

// Line 1 with the given columns 101-126: the rest is the same for both default lines.
std::wstring LigneParDefaut(std::wstring_view colonnes101a126) {
    std::wstring ligne(100, L'X');
    ligne.replace(92, 8, L"04200260");
    ligne += colonnes101a126;
    ligne += rt::Space(4);
    ligne += L"mspaint.exe";
    ligne += rt::Space(139);
    ligne += L"c:\\tempocapt<=======";
    return ligne;
}

// A one-column field read as a number, as the 16-bit fields of the record are.
int16_t Chiffre(std::wstring_view ligne, int colonne) {
    return rt::CInt(rt::Val(rt::Mid(ligne, colonne, 1)));
}

// A one-character field: a blank when the line is too short to hold it.
wchar_t Caractere(std::wstring_view ligne, size_t colonne) {
    return colonne <= ligne.size() ? ligne[colonne - 1] : L' ';
}

// The Mid statement: replaces at most n characters of s from position start (1-based) by
// the first characters of texte; a shorter texte leaves the rest as it was.
void RemplacerMid(std::wstring& s, size_t start, size_t n, std::wstring_view texte) {
    const size_t debut = start - 1;
    if (debut >= s.size()) return;
    n = std::min({n, texte.size(), s.size() - debut});
    s.replace(debut, n, texte.substr(0, n));
}

} // namespace

std::wstring LignePremierLancement() {
    return LigneParDefaut(L"ZMEFY00007Capt111001010000");
}

std::wstring LigneReparation() {
    return LigneParDefaut(L"ZMEF200007Capt111000010000");
}

std::wstring Cadrer(std::wstring_view s, size_t n) {
    std::wstring out(s.substr(0, n));
    out.resize(n, L' ');
    return out;
}

LignesParams LireLignes(std::string_view octets) {
    rt::LineInput lecteur(octets);
    // Only the first 300 characters survive the fixed-length field.
    auto ligne = [&lecteur] { return rt::FromAnsi(lecteur.Next().substr(0, kLargeurLigne)); };
    LignesParams l;
    l.ligne1 = Cadrer(ligne());
    l.ligne2 = Cadrer(ligne());
    return l;
}

std::wstring DossierCourt(std::wstring_view dossierEnreg) {
    if (rt::Right(dossierEnreg, 2) == L"  ")
        return rt::Left(dossierEnreg, rt::InStr(dossierEnreg, L"  ") - 1);
    return std::wstring(dossierEnreg);
}

std::wstring NomEditeur(std::wstring_view editeur) {
    const int p = rt::InStr(editeur, L"     ");
    const int b = rt::InStrRev(editeur, L"\\");
    // No run of five blanks: the length is -1 and Mid raises 5.
    return rt::Mid(editeur, b + 1, p - 1);
}

int32_t DecoderLigne(Params& p) {
    const std::wstring& l = p.LigneParams;
    p.EnregBmp = Chiffre(l, 108);
    // The timer takes 0 to 65535 and refuses anything else with 380.
    const int32_t intervalle = rt::CLng(rt::Val(rt::Mid(l, 122, 5)));
    if (intervalle < 0 || intervalle > 65535) rt::Raise(rt::kInvalidPropertyValue);
    // The one field read to the end of the line: a prefix that begins with a digit carries
    // the number on through the digit columns that follow, and the product overflows.
    p.QualiteJpeg = rt::CInt(rt::Val(rt::Mid(l, 110)) * 10);
    p.GrilleDix = Chiffre(l, 107);
    p.GardeFenetres = Chiffre(l, 109);
    p.PrefixeNom = rt::Mid(l, 111, 4);
    p.ToucheZone = Caractere(l, 101);
    p.ToucheMemeZone = Caractere(l, 102);
    p.ToucheEcran = Caractere(l, 103);
    p.ToucheFenetre = Caractere(l, 104);
    p.ToucheDoubleH = Caractere(l, 105);
    p.MemoZone = Chiffre(l, 115);
    p.LargSel = rt::Mid(l, 93, 4);
    p.HautSel = rt::Mid(l, 97, 4);
    p.Tempo = rt::Val(rt::Mid(l, 117, 1)) / 10;
    p.SansCopieAuto = rt::CStr(rt::Val(rt::Mid(l, 118, 1)));
    p.NomParCapture = Chiffre(l, 119);
    p.PreAffZone = Chiffre(l, 120);
    p.Silence = Chiffre(l, 121);
    p.Editeur = rt::Mid(l, 131, 150);
    p.EditeurNom = NomEditeur(p.Editeur);
    return intervalle;
}

void RafraichirParams(Params& p, double tempo) {
    const std::wstring& l = p.LigneParams;
    p.QualiteJpeg = rt::CInt(rt::Val(rt::Mid(l, 110)) * 10);
    p.GardeFenetres = Chiffre(l, 109);
    p.PrefixeNom = rt::Mid(l, 111, 4);
    p.ToucheZone = Caractere(l, 101);
    p.ToucheMemeZone = Caractere(l, 102);
    p.ToucheEcran = Caractere(l, 103);
    p.ToucheFenetre = Caractere(l, 104);
    p.MemoZone = Chiffre(l, 115);
    p.Tempo = tempo;
    p.SansCopieAuto = rt::CStr(rt::Val(rt::Mid(l, 118, 1)));
    p.NomParCapture = Chiffre(l, 119);
    p.PreAffZone = Chiffre(l, 120);
    p.Silence = Chiffre(l, 121);
}

int32_t RemplirParams(Params& p, std::wstring_view ligne1, std::wstring_view ligne2,
                      const std::wstring& dossierParams) {
    p.LigneParams = Cadrer(ligne1);
    p.DossierEnreg = Cadrer(ligne2);
    p.DossierEnregCourt = DossierCourt(p.DossierEnreg);
    const int32_t intervalle = DecoderLigne(p);
    p.DossierTemp = dossierParams + L"\\tempocapt";
    return intervalle;
}

bool DossierNonTranscrit(Params& p) {
    if (rt::InStr(p.DossierEnregCourt, L"?") > 0) {
        p.DossierEnreg = Cadrer(p.DossierPerso);
        p.DossierEnregCourt = DossierCourt(p.DossierEnreg);
        return true;
    }
    return !rt::AnsiHolds(p.DossierEnregCourt);
}

void MemoriserTaille(std::wstring& ligne, double largeurPixels, double hauteurPixels) {
    RemplacerMid(ligne, 93, 4, rt::Str(largeurPixels));
    RemplacerMid(ligne, 97, 4, rt::Str(hauteurPixels));
}

std::string ContenuFichier(std::wstring_view ligne1, std::wstring_view ligne2) {
    std::string octets = rt::ToAnsi(ligne1);
    octets += "\r\n";
    octets += rt::ToAnsi(ligne2);
    octets += "\r\n";
    return octets;
}

std::wstring CheminParams(const std::wstring& dossierParams) {
    return dossierParams + L"\\params.txt";
}

} // namespace mv
