// The external editor: the current capture opened in an image editor and taken back.
#include "output/output.h"

namespace mv {

void MnuEditPaint_Click(App&) {}

bool PaintActif(App&) {
    return false;
}

void RafraichirEditeur(App&) {}

} // namespace mv
