// Colour-keyed see-through windows: the background colour of a form vanishes and lets the
// mouse through to what lies beneath.
#pragma once

#include "platform/ui/form.h"

#include <cstdint>

namespace mv {

// Makes Couleur see-through on the form. Alpha goes with the call as the platform's takes
// it; with a colour key alone it has no effect.
void FenCleCouleur(ui::Form& Form, int64_t Couleur, int Alpha);
// Actif: Couleur see-through; otherwise the form is a plain window again. The form is
// redrawn in both cases.
void FenTransp(ui::Form& Form, bool Actif, int64_t Couleur = 0);

} // namespace mv
