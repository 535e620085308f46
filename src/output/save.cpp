// frmMain: the temporary BMP of each capture, and the output commands.
#include "core/frmMain.h"
#include "platform/gdi/bmp.h"
#include "runtime/files.h"
#include "runtime/strings.h"

namespace mv {

void frmMain::EnregVign(int16_t Numero, ui::PictureBox& Image) {
    // This test stands outside the error handler: a failure here is the caller's.
    if (!rt::DirExists(app.DossierTemp)) rt::MkDir(app.DossierTemp);
    try {
        app.CheminTemp = app.DossierTemp + L"\\" + NomFichierProv(Numero);
        gdi::SaveBmp(Image.Image(), app.CheminTemp);
    } catch (const rt::RuntimeError& e) {
        app.MsgBox(L"Save/Sauver " + std::to_wstring(e.number) + L" " + e.text, ui::kCritical);
    }
}

void frmMain::Enregistrer2() {}

void frmMain::EnregistrerTout(int16_t& Ok, int16_t Premier, const std::wstring& Extension) {}

void frmMain::Buttcopier() {}

void frmMain::Imprimer() {}

void frmMain::MnuEditPaint_Click() {}

bool frmMain::PaintActif() {
    return false;
}

void frmMain::RafraichirEditeur() {}

void frmMain::RideauPhoto() {}

void frmMain::MnuCaptper_Click() {}

} // namespace mv
