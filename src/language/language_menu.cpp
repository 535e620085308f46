#include "language/language_menu.h"

#include "app/app.h"
#include "core/frmMain.h"
#include "language/frmTip.h"
#include "runtime/files.h"

namespace mv {

void MnuChgLang_Click(App& app) {
    // The chooser comes back at the next start.
    app.DossierParams = app.be.GetShell().ShellFolder(L"AppData") + L"\\Mirovanta";
    // Already gone (removed by hand): the choice is forgotten all the same.
    const std::wstring spoken = app.DossierParams + L"\\spoken.txt";
    if (rt::FileExists(spoken)) rt::Kill(spoken);
    app.main->MnuChgLang.SetChecked(true);
    app.main->MnuChgLang.SetEnabled(false);
}

void mnuReacTip_Click(App& app) {
    EcrireAstucesAuDemarrage(app, true);
    app.tip->Show();
}

} // namespace mv
