// libFuzzer target: any bytes given as the content of params.txt are either read into the
// record or raise one of the errors that lead to the repair question (5, 6, 62, 380). What
// was read, written back as SavOptions writes it, reads back the same.
#include "runtime/errors.h"
#include "settings/settings_file.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

bool ErreurDuFormat(int n) {
    return n == rt::kInvalidCall || n == rt::kOverflow || n == rt::kInputPastEnd ||
           n == rt::kInvalidPropertyValue;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view octets(reinterpret_cast<const char*>(data), size);
    mv::Params p;
    int32_t intervalle = 0;
    try {
        mv::LignesParams l = mv::LireLignes(octets);
        intervalle = mv::RemplirParams(p, l.ligne1, l.ligne2, L"C:\\AppData\\Mirovanta");
    } catch (const rt::RuntimeError& e) {
        if (!ErreurDuFormat(e.number)) std::abort();
        return 0;
    }
    if (p.LigneParams.size() != 300 || p.DossierEnreg.size() != 300 || p.Editeur.size() != 150 ||
        p.PrefixeNom.size() != 4 || p.LargSel.size() != 4 || p.HautSel.size() != 4 ||
        p.EditeurNom.size() > 150 || p.DossierEnregCourt.size() > 300 || intervalle < 0 ||
        intervalle > 65535)
        std::abort();

    // The line survives a save and a new start unchanged.
    mv::Params relu;
    const mv::LignesParams l2 = mv::LireLignes(mv::ContenuFichier(p.LigneParams, p.DossierEnreg));
    if (mv::RemplirParams(relu, l2.ligne1, l2.ligne2, L"C:\\AppData\\Mirovanta") != intervalle ||
        relu.LigneParams != p.LigneParams || relu.DossierEnreg != p.DossierEnreg ||
        relu.EditeurNom != p.EditeurNom || relu.QualiteJpeg != p.QualiteJpeg)
        std::abort();

    // The size written at exit keeps the line whole.
    mv::MemoriserTaille(p.LigneParams, double(size % 5000), 1280);
    if (p.LigneParams.size() != 300 || p.LigneParams.substr(96, 4) != L" 128") std::abort();
    return 0;
}
