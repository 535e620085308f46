#include "settings/settings_app.h"

#include "app/app.h"
#include "core/frmMain.h"
#include "runtime/errors.h"
#include "runtime/files.h"
#include "settings/settings_file.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace mv {

namespace {

// The whole file in one pass; line 2 as given, padded or not.
void EcrireFichier(const std::wstring& fichier, std::wstring_view ligne1,
                   std::wstring_view ligne2) {
    // Whole or not at all: a full disk or a crash during the write keeps the old settings.
    const std::string octets = ContenuFichier(ligne1, ligne2);
    rt::ReplaceFileBytes(fichier, octets.data(), octets.size());
}

// The error trap of both routines. The file is never held open, so there is nothing to
// close. Ends the program; an error raised here is not trapped again: it goes to the caller.
void Reparer(App& app, const std::wstring& fichier, bool supprimer) {
    if (app.MsgBox(app.Lang(125), ui::kYesNo | ui::kQuestion) == ui::kNo) app.be.End();
    if (supprimer) rt::Kill(fichier);
    // Line 2 is the Personal folder as read, without padding, as at a first run.
    EcrireFichier(fichier, LigneReparation(), app.params.DossierPerso);
    app.MsgBox(app.Lang(126), ui::kInformation);
    app.be.End();
}

} // namespace

void chargtparam(App& app) {
    Params& p = app.params;
    // Before the trap: a failure here is not handled.
    p.DossierPerso = app.be.GetShell().ShellFolder(L"Personal");
    const std::wstring fichier = CheminParams(app.DossierParams);
    try {
        std::wstring ligne1, ligne2;
        if (!rt::FileExists(fichier)) {
            // First run: line 2 is written without padding.
            ligne1 = LignePremierLancement();
            ligne2 = p.DossierPerso;
            EcrireFichier(fichier, ligne1, ligne2);
        } else {
            const std::vector<uint8_t> octets = rt::ReadFileBytes(fichier);
            LignesParams lues = LireLignes(
                std::string_view(reinterpret_cast<const char*>(octets.data()), octets.size()));
            ligne1 = std::move(lues.ligne1);
            ligne2 = std::move(lues.ligne2);
        }
        const int32_t intervalle = RemplirParams(p, ligne1, ligne2, app.DossierParams);
        app.main->TimPeriod.SetInterval(intervalle);
        // Said once a start, rather than by a failed save at every capture.
        if (DossierNonTranscrit(p))
            app.MsgBox(app.Lang(272) + L"\r\n\r\n" + p.DossierEnregCourt, ui::kExclamation);
    } catch (...) {
        const rt::RuntimeError e = rt::CaughtError();
        // A file that vanished before it could be opened has nothing to delete.
        Reparer(app, fichier, e.number != rt::kFileNotFound);
    }
}

void SavOptions(App& app) {
    const std::wstring fichier = CheminParams(app.DossierParams);
    try {
        // Line 2 is DossierPerso, not DossierEnreg: without a confirmed options dialog in
        // this run, the Personal folder goes back into the file.
        EcrireFichier(fichier, Cadrer(app.params.LigneParams), Cadrer(app.params.DossierPerso));
    } catch (...) {
        rt::CaughtError();
        Reparer(app, fichier, true);
    }
}

} // namespace mv
