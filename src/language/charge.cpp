#include "language/charge.h"

#include "runtime/line_input.h"

#include "language/decode.h"
#include "runtime/errors.h"
#include "runtime/files.h"
#include "runtime/strings.h"

#include <string_view>

namespace mv {

namespace {

// Entry and tip lines go through a fixed-length buffer of this many characters. Its blank
// padding never changes a result (Val skips blanks, the quotes lie within), so only the cut
// is kept.
constexpr size_t kTampon = 500;

constexpr std::string_view kFinConstantes = "///--- TOOLTYP";
constexpr std::string_view kFinBulles = "///--- HELP --";
constexpr std::string_view kFinAide = "///--- HELP ME";

bool Commence(const std::string& ligne, std::string_view marque) {
    return std::string_view(ligne).substr(0, marque.size()) == marque;
}

// The text between the first two double quotes into valeur, when the second lies after the
// first; false (valeur untouched) otherwise.
bool Valeur(const std::string& ligne, std::wstring& valeur) {
    const size_t p1 = ligne.find('"');
    if (p1 == std::string::npos) return false;
    const size_t p2 = ligne.find('"', p1 + 1);
    if (p2 == std::string::npos) return false;
    valeur = rt::FromAnsi(std::string_view(ligne).substr(p1 + 1, p2 - p1 - 1));
    return true;
}

template <typename Table> std::wstring& Case(Table& t, int n) {
    if (n < 0 || n >= int(t.size())) rt::Raise(rt::kSubscriptOutOfRange);
    return t[size_t(n)];
}

} // namespace

LoadResult ChargerLangue(Language& lang, std::span<const uint8_t> bytes) {
    rt::LineInput fichier(
        std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    auto lireTampon = [&fichier] {
        std::string ligne = DecodeLigne(fichier.Next());
        if (ligne.size() > kTampon) ligne.resize(kTampon);
        return ligne;
    };
    LoadResult resultat;
    // The last value taken: a line without one leaves it as it was.
    std::wstring valeur;

    std::string ligne = lireTampon();
    int n = 0;
    while (!Commence(ligne, kFinConstantes)) {
        if (rt::Val(rt::FromAnsi(std::string_view(ligne).substr(0, 3))) != n) {
            resultat.permanentError = true;
            return resultat;
        }
        if (Valeur(ligne, valeur)) Case(lang.TabConst, n) = valeur;
        ligne = lireTampon();
        resultat.entries = ++n;
    }

    ligne = lireTampon();
    Valeur(ligne, valeur);
    while (!Commence(ligne, kFinBulles)) {
        if (lang.TabBulles.size() < size_t(kMaxBulles)) lang.TabBulles.push_back(valeur);
        ligne = lireTampon();
        Valeur(ligne, valeur);
    }

    // The help pages go through a line of any length; the marker line is read, and its value
    // taken, like a page.
    std::string aide;
    int index = 0;
    while (!Commence(aide, kFinAide)) {
        aide = DecodeLigne(fichier.Next());
        if (Valeur(aide, valeur)) Case(lang.TabAide, index) = valeur;
        ++index;
    }

    for (auto& groupe : lang.TabAideMenu) {
        for (std::wstring& texte : groupe) {
            aide = DecodeLigne(fichier.Next());
            if (Valeur(aide, valeur)) texte = valeur;
        }
    }
    return resultat;
}

std::wstring SpokenCode(std::span<const uint8_t> bytes) {
    rt::LineInput fichier(
        std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    return rt::FromAnsi(fichier.Next());
}

std::wstring LanguageFileName(const std::wstring& code) {
    return rt::Left(code, 9) + L"_codN.txt";
}

} // namespace mv
