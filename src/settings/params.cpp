#include "settings/params.h"

#include "settings/settings_file.h"

namespace mv {

Params FirstRunParams(const std::wstring& dossierParams, const std::wstring& personal) {
    Params p;
    p.DossierPerso = personal;
    RemplirParams(p, LignePremierLancement(), personal, dossierParams);
    return p;
}

} // namespace mv
