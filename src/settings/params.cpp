#include "settings/params.h"

#include "runtime/strings.h"

namespace mv {

Params FirstRunParams(const std::wstring& dossierParams, const std::wstring& personal) {
    Params p;
    std::wstring line(100, L'X');
    line.replace(92, 8, L"04200260");
    line += L"ZMEFY00007Capt111001010000";
    line += rt::Space(4);
    line += L"mspaint.exe" + rt::Space(139);
    line += L"c:\\tempocapt<=======";
    p.LigneParams = line;
    p.Editeur = line.substr(130, 150);
    p.DossierPerso = personal;
    p.DossierEnreg = personal + rt::Space(300 - std::min<size_t>(300, personal.size()));
    p.DossierEnreg.resize(300, L' ');
    p.DossierEnregCourt = personal;
    p.DossierTemp = dossierParams + L"\\tempocapt";
    return p;
}

} // namespace mv
