#include "core/CursTransp.h"

namespace mv {

void FenCleCouleur(ui::Form& Form, int64_t Couleur, int Alpha) {
    (void)Alpha;
    Form.SetTransparentKey(Couleur);
}

void FenTransp(ui::Form& Form, bool Actif, int64_t Couleur) {
    Form.SetTransparentKey(Actif ? Couleur : -1);
}

} // namespace mv
