#include "language/language_menu.h"

#include "app/app.h"
#include "core/frmMain.h"
#include "runtime/files.h"

namespace mv {

void MnuChgLang_Click(App& app) {
    // The chooser comes back at the next start.
    app.DossierParams = app.be.GetShell().ShellFolder(L"AppData") + L"\\Mirovanta";
    rt::Kill(app.DossierParams + L"\\spoken.txt");
    app.main->MnuChgLang.SetChecked(true);
    app.main->MnuChgLang.SetEnabled(false);
}

void mnuReacTip_Click(App&) {}

} // namespace mv
