// The external editor: the current capture's temporary file opened in an image editor,
// watched while the editor runs and taken back into its capture by F5.
#include "app/app.h"
#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "output/output.h"
#include "platform/gdi/bmp.h"
#include "runtime/errors.h"
#include "runtime/files.h"
#include "runtime/strings.h"

namespace mv {

namespace {

constexpr int kNormalSansFocus = 4; // SW_SHOWNOACTIVATE, the paint program's style
constexpr int kNormal = 1;          // SW_SHOWNORMAL
const wchar_t* const kPeinture = L"mspaint.exe";

// An executable name as compared: up to its first ".exe", trimmed, lower case.
std::wstring NomNu(std::wstring_view nom) {
    std::wstring n = rt::LCase(nom);
    const int p = rt::InStr(n, L".exe");
    if (p > 0) n = rt::Left(n, p + 3);
    return rt::Trim(n);
}

std::wstring Guillemets(const std::wstring& texte) {
    return L"\"" + texte + L"\"";
}

// The row of the capture out for editing; 0 when none is.
int16_t LigneEditee(App& app) {
    if (app.FichierEdite.empty()) return 0;
    for (int16_t n = 1; n <= app.NbVignettes; ++n)
        if (app.DossierTemp + L"\\" + app.tab.FichierV[n] == app.FichierEdite) return n;
    return 0;
}

// The edit is over: the watch stops and the caption comes back.
void FinEdition(App& app) {
    frmMain& M = *app.main;
    if (!M.TimPaint.Enabled()) return;
    M.TimPaint.SetEnabled(false);
    M.SetCaption(app.TitreAvantEdition);
}

bool FichierChange(App& app) {
    return rt::FileWriteTicks(app.FichierEdite) != app.EditeDate ||
           rt::FileSize(app.FichierEdite) != app.EditeTaille;
}

void NoterEmpreinte(App& app) {
    app.EditeDate = rt::FileWriteTicks(app.FichierEdite);
    app.EditeTaille = rt::FileSize(app.FichierEdite);
}

} // namespace

bool ProcessusActif(App& app, const std::wstring& Nom) {
    const std::wstring cherche = NomNu(Nom);
    if (cherche.empty()) return false;
    for (const auto& n : app.be.GetProcesses().RunningNames())
        if (NomNu(n) == cherche) return true;
    return false;
}

bool PaintActif(App& app) {
    return ProcessusActif(app, app.NomEditeurLance.empty() ? app.params.EditeurNom
                                                           : app.NomEditeurLance);
}

void MnuEditPaint_Click(App& app) {
    frmMain& M = *app.main;
    if (app.VignetteCourante == 0) {
        app.MsgBox(app.Lang(160), ui::kCritical);
        return;
    }
    app.CheminTemp = app.DossierTemp + L"\\" + app.tab.FichierV[app.VignetteCourante];
    auto& processus = app.be.GetProcesses();
    const std::wstring peinture = processus.SystemFolder() + L"\\" + kPeinture;
    const std::wstring& reglage = app.params.Editeur;
    const bool parPeinture = reglage.empty() || reglage[0] == L' ';
    const std::wstring editeur = parPeinture ? peinture : rt::Trim(reglage);

    // The caption before the first of several edits is the one to come back to.
    const bool dejaEnCours = M.TimPaint.Enabled();
    if (!dejaEnCours) app.TitreAvantEdition = M.Caption();
    auto titrer = [&](const std::wstring& chemin) {
        std::wstring nom = rt::Mid(chemin, rt::InStrRev(chemin, L"\\") + 1);
        const int point = rt::InStrRev(nom, L".");
        if (point > 0) nom = rt::Left(nom, point - 1);
        M.SetCaption(app.Lang(173) + rt::UCase(rt::Left(nom, 1)) + rt::Mid(nom, 2));
    };
    auto lancer = [&](const std::wstring& programme, int style) {
        const uint32_t id =
            processus.Start(Guillemets(programme) + L" " + Guillemets(app.CheminTemp), style);
        if (id == 0) return false;
        app.PidEditeur = id;
        // A short path from the settings file: the process runs under its long name.
        const std::wstring long_ = app.be.GetShell().LongPath(programme);
        app.NomEditeurLance = rt::Mid(long_, rt::InStrRev(long_, L"\\") + 1);
        return true;
    };
    auto echec = [&] {
        if (!dejaEnCours) M.SetCaption(app.TitreAvantEdition);
    };

    titrer(editeur);
    if (!lancer(editeur, parPeinture ? kNormalSansFocus : kNormal)) {
        // One box, and the paint program is tried once: only in place of another editor.
        app.MsgBox(app.Lang(118), ui::kExclamation);
        if (parPeinture) return echec();
        titrer(peinture);
        if (!lancer(peinture, kNormalSansFocus)) return echec();
    }
    app.FichierEdite = app.CheminTemp;
    NoterEmpreinte(app);
    M.TimPaint.SetEnabled(true);
}

void RafraichirEditeur(App& app) {
    const int16_t ligne = LigneEditee(app);
    if (ligne == 0 || app.RechargeEnCours) return;
    gdi::Surface image;
    try {
        image = gdi::LoadBmp(app.FichierEdite);
    } catch (const rt::RuntimeError&) {
        // A file the editor is still writing, or holds locked: the next tick tries again.
        return;
    }
    app.RechargeEnCours = true;
    struct Fin {
        App& a;
        ~Fin() { a.RechargeEnCours = false; }
    } fin{app};

    frmMain& M = *app.main;
    Flistimages& L = *app.list;
    // An edit made after a save is not saved: save-all and the exit question take it.
    if (FichierChange(app)) {
        L.Chksav[ligne].SetValue(0);
        L.PictSave[ligne].SetVisible(false);
        if (ligne == app.VignetteCourante) M.PictSave.SetVisible(false);
    }
    NoterEmpreinte(app);
    const auto ecran = app.Screen();
    app.tab.LargV[ligne] = int32_t(float(image.Width()) * ecran.tppX);
    app.tab.HautV[ligne] = int32_t(float(image.Height()) * ecran.tppY);
    M.DessinerVignettes(image, L.Image1[ligne], L.Gimage1[ligne]);
    if (ligne != app.VignetteCourante) return;

    if (app.tab.TypeV[ligne] == L"e") {
        M.Picture1.SetPicture(image);
        M.Picture2S.SetPicture(image);
        gdi::StretchBlt(M.ImgTTscreen.Image(), 0, 0, ecran.PxX(M.ImgTTscreen.Width()),
                        ecran.PxY(M.ImgTTscreen.Height()), image, 0, 0, image.Width(),
                        image.Height(), gdi::kHalftone);
        M.ImgTTscreen.Refresh();
    } else {
        M.Picture2.SetWidth(float(app.tab.LargV[ligne]));
        M.Picture2.SetHeight(float(app.tab.HautV[ligne]));
        M.Picture2.SetPicture(image);
        M.Picture2S.SetPicture(image);
        if (M.EtatNormal()) {
            M.SetHeight(M.Picture2.Height() + 1430);
            M.PosDimRedMain();
        }
    }
    app.tab.HautFenV[ligne] = int32_t(M.Height());
    app.tab.LargFenV[ligne] = int32_t(M.Width());
    M.MnuRaff.SetVisible(false);
    for (int16_t i = 0; i <= 4; ++i)
        if (M.mnuzoomX[i].Checked()) M.mnuzoomX_Click(i);
}

void TimPaint_Timer(App& app) {
    if (!PaintActif(app)) return FinEdition(app);
    if (FichierChange(app)) app.main->Form_KeyDown(ui::kKeyF5, 0);
}

void ChoixPendantEdition(App& app, int16_t Index) {
    if (app.FichierEdite.empty() || Index == LigneEditee(app) || !PaintActif(app)) return;
    FinEdition(app);
    // Only the process the program started: never another of the same name.
    if (app.PidEditeur != 0) app.be.GetProcesses().End(app.PidEditeur);
    app.PidEditeur = 0;
    app.FichierEdite.clear();
}

void EditionQuitteListe(App& app, const std::wstring& Fichier) {
    if (app.FichierEdite.empty() || Fichier != app.FichierEdite) return;
    FinEdition(app);
    app.FichierEdite.clear();
}

} // namespace mv
