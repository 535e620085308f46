// The temporary BMP of each capture, and the two roads of saving: the save dialog and
// the save of every capture under generated names.
#include "output/output.h"

#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "output/conversion.h"
#include "platform/gdi/bmp.h"
#include "runtime/files.h"
#include "runtime/integer.h"
#include "runtime/strings.h"
#include "settings/Options.h"

#include <cwctype>

namespace mv {

std::wstring ExtensionAuto(const Params& p) {
    return p.EnregBmp == 0 ? L"jpg" : L"bmp";
}

void EnregVign(App& app, int32_t Numero, ui::PictureBox& Image) {
    // This test stands outside the error handler: a failure here is the caller's.
    if (!rt::DirExists(app.DossierTemp)) rt::MkDir(app.DossierTemp);
    try {
        app.CheminTemp = app.DossierTemp + L"\\" + app.main->NomFichierProv(Numero);
        gdi::SaveBmp(Image.Image(), app.CheminTemp);
    } catch (...) {
        const rt::RuntimeError e = rt::CaughtError();
        app.MsgErreur(e, L"Save/Sauver ", ui::kCritical);
    }
}

void Enregistrer2(App& app) {
    frmMain& M = *app.main;
    // Cancel in the dialog, and any file error, end the save silently; the next save then
    // proposes the default name again.
    try {
        if (app.NbVignettes == 0) return;
        M.CDlg1.initDir =
            app.DossierDernierSav.empty() ? app.params.DossierEnregCourt : app.DossierDernierSav;
        if (app.PremierSav) {
            M.CDlg1.filterIndex = kFormatJpeg;
            M.CDlg1.fileName = app.Lang(130) + rt::Format(app.VignetteCourante, L"00");
            app.PremierSav = false;
        } else {
            M.CDlg1.fileName = app.NomDernierSav;
            // A series goes on by the number of the capture: chart07 becomes chart08.
            const std::wstring nom = rt::Trim(app.NomDernierSav);
            const std::wstring fin = rt::Right(nom, 2);
            if (fin.size() == 2 && iswdigit(fin[0]) && iswdigit(fin[1]))
                M.CDlg1.fileName =
                    rt::Left(nom, rt::Len(nom) - 2) + rt::Format(app.VignetteCourante, L"00");
        }
        M.CDlg1.dialogTitle = app.Lang(175);
        M.CDlg1.filter = app.Lang(163);
        M.CDlg1.cancelError = true;
        M.CDlg1.ShowSave();

        // Only a lower-case extension is recognised: a.JPG keeps it and gains the real one.
        const std::wstring choisi = rt::Trim(M.CDlg1.fileName);
        const std::wstring ext = rt::Right(choisi, 4);
        if (ext == L".jpg" || ext == L".gif" || ext == L".png" || ext == L".bmp")
            app.NomDernierSav = rt::Left(choisi, rt::Len(choisi) - 4);
        else
            app.NomDernierSav = M.CDlg1.fileName;

        // The scratch copy stands beside the target, in the target folder.
        const std::wstring source =
            app.DossierTemp + L"\\" + app.tab.FichierV[app.VignetteCourante];
        app.CheminTemp = app.NomDernierSav + L"_temp.bmp";
        rt::FileCopy(source, app.CheminTemp);

        // The filter decides the format, never the extension typed.
        const int format = M.CDlg1.filterIndex;
        const std::wstring cible = app.NomDernierSav + L"." + ExtensionFormat(format);
        if (rt::FileExists(cible) && app.MsgBox(app.Lang(119) + cible + app.Lang(120),
                                                ui::kYesNo | ui::kQuestion) == ui::kNo)
            return;
        if (format == kFormatBmp)
            rt::FileCopy(source, cible);
        else
            app.conversion->ConvertirImage(app.CheminTemp, cible, format, app.params.QualiteJpeg);
        rt::Kill(app.CheminTemp);
        M.PictSave.SetVisible(true);
        app.DossierDernierSav =
            rt::Left(app.NomDernierSav, rt::InStrRev(app.NomDernierSav, L"\\") - 1);
        for (int i = 1; i <= app.NbVignettes; ++i) {
            if (app.list->Image1[i].BorderStyle() == ui::kBorderFixedSingle) {
                app.list->PictSave[i].SetVisible(true);
                app.list->Chksav[i].SetValue(1);
            }
        }
    } catch (...) {
        rt::CaughtError();
        app.PremierSav = true;
    }
}

void EnregistrerTout(App& app, int16_t& Ok, int16_t Premier, const std::wstring& Extension) {
    try {
        app.NbSavAppel = 0;
        for (int i = Premier; i <= app.NbVignettes; ++i) {
            // A visible mark means the capture is saved already.
            if (app.list->PictSave[i].Visible()) continue;
            ++app.CompteurSav;
            // The folder is the part of the blank-filled field before its first pair of
            // blanks; a field with no pair fails here like a missing folder.
            const std::wstring& champ = app.params.DossierEnreg;
            const std::wstring dossier = rt::Left(champ, rt::InStr(champ, L"  ") - 1);
            std::wstring chemin = dossier + L"\\" + app.params.PrefixeNom + L"_";
            if (app.params.NomParCapture == 0)
                chemin += app.TagDate + L"_" + app.TagHeure;
            else
                chemin += app.tab.Horodatage[i];
            chemin += L"_" + rt::Format(app.CompteurSav, L"000") + L".bmp";

            rt::FileCopy(app.DossierTemp + L"\\" + app.tab.FichierV[i], chemin);
            app.list->PictSave[i].SetVisible(true);
            app.list->Chksav[i].SetValue(1);

            const int format = FormatExtension(Extension);
            if (format == kFormatJpeg || format == kFormatGif || format == kFormatPng) {
                const std::wstring cible = rt::Left(chemin, rt::Len(chemin) - 3) + Extension;
                app.conversion->ConvertirImage(chemin, cible, format, app.params.QualiteJpeg);
                // A failed conversion keeps the bitmap, and its box is the one message.
                if (app.conversion->status != 0 || !rt::FileExists(cible)) {
                    Ok = 0;
                    return;
                }
                if (Ok != 3) rt::Kill(chemin);
            }
            ++app.NbSavAppel;
        }
        app.main->PictSave.SetVisible(true);
    } catch (...) {
        rt::CaughtError();
        app.MsgBox(app.Lang(117), ui::kExclamation);
        app.options->ShowNonModal();
        Ok = 0;
    }
}

} // namespace mv
