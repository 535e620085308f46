// frmMain: the temporary BMP of each capture, and the output commands.
#include "app/forms.h"
#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "output/conversion.h"
#include "platform/gdi/bmp.h"
#include "runtime/files.h"
#include "runtime/integer.h"
#include "runtime/strings.h"

#include <cwctype>

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

void frmMain::Enregistrer2() {
    // Cancel in the dialog, and any file error, end the save silently; the next save then
    // proposes the default name again.
    try {
        if (app.NbVignettes == 0) return;
        CDlg1.initDir =
            app.DossierDernierSav.empty() ? app.params.DossierEnregCourt : app.DossierDernierSav;
        if (app.PremierSav) {
            CDlg1.filterIndex = kFormatJpeg;
            CDlg1.fileName = app.Lang(130) + rt::Format(app.VignetteCourante, L"00");
            app.PremierSav = false;
        } else {
            CDlg1.fileName = app.NomDernierSav;
            // A series goes on by the number of the capture: chart07 becomes chart08.
            const std::wstring nom = rt::Trim(app.NomDernierSav);
            const std::wstring fin = rt::Right(nom, 2);
            if (fin.size() == 2 && iswdigit(fin[0]) && iswdigit(fin[1]))
                CDlg1.fileName =
                    rt::Left(nom, rt::Len(nom) - 2) + rt::Format(app.VignetteCourante, L"00");
        }
        CDlg1.dialogTitle = app.Lang(175);
        CDlg1.filter = app.Lang(163);
        CDlg1.cancelError = true;
        CDlg1.ShowSave();

        // Only a lower-case extension is recognised: a.JPG keeps it and gains the real one.
        const std::wstring choisi = rt::Trim(CDlg1.fileName);
        const std::wstring ext = rt::Right(choisi, 4);
        if (ext == L".jpg" || ext == L".gif" || ext == L".png" || ext == L".bmp")
            app.NomDernierSav = rt::Left(choisi, rt::Len(choisi) - 4);
        else
            app.NomDernierSav = CDlg1.fileName;

        // The scratch copy stands beside the target, in the target folder.
        const std::wstring source =
            app.DossierTemp + L"\\" + app.tab.FichierV[app.VignetteCourante];
        app.CheminTemp = app.NomDernierSav + L"_temp.bmp";
        rt::FileCopy(source, app.CheminTemp);

        // The filter decides the format, never the extension typed.
        const int format = CDlg1.filterIndex;
        const std::wstring cible = app.NomDernierSav + L"." + ExtensionFormat(format);
        if (rt::FileExists(cible) && app.MsgBox(app.Lang(119) + cible + app.Lang(120),
                                                ui::kYesNo | ui::kQuestion) == ui::kNo)
            return;
        if (format == kFormatBmp)
            rt::FileCopy(source, cible);
        else
            app.conversion->ConvertirImage(app.CheminTemp, cible, format, app.params.QualiteJpeg);
        rt::Kill(app.CheminTemp);
        PictSave.SetVisible(true);
        app.DossierDernierSav =
            rt::Left(app.NomDernierSav, rt::InStrRev(app.NomDernierSav, L"\\") - 1);
        for (int i = 1; i <= app.NbVignettes; ++i) {
            if (app.list->Image1[i].BorderStyle() == 1) {
                app.list->PictSave[i].SetVisible(true);
                app.list->Chksav[i].SetValue(1);
            }
        }
    } catch (const rt::RuntimeError&) {
        app.PremierSav = true;
    }
}

void frmMain::EnregistrerTout(int16_t& Ok, int16_t Premier, const std::wstring& Extension) {
    try {
        app.NbSavAppel = 0;
        for (int i = Premier; i <= app.NbVignettes; ++i) {
            // A visible mark means the capture is saved already.
            if (app.list->PictSave[i].Visible()) continue;
            app.CompteurSav = rt::I16(app.CompteurSav + 1);
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
                if (Ok != 3) rt::Kill(chemin);
            }
            app.NbSavAppel = rt::I16(app.NbSavAppel + 1);
        }
        PictSave.SetVisible(true);
    } catch (const rt::RuntimeError&) {
        app.MsgBox(app.Lang(117), ui::kExclamation);
        app.options->ShowNonModal();
        Ok = 0;
    }
}

void frmMain::Buttcopier() {
    // From the file, never from the view: a zoomed view does not change what is copied.
    auto& presse = app.be.GetClipboard();
    PictReserv.ClearPicture();
    presse.Clear();
    PictReserv.SetPicture(
        gdi::LoadBmp(app.DossierTemp + L"\\" + app.tab.FichierV[app.VignetteCourante]));
    presse.SetImage(PictReserv.Picture());
}

void frmMain::Imprimer() {
    // Cancel in either box, a missing printer and any other error end it without a word.
    try {
        auto& shell = app.be.GetShell();
        const rt::SystemTime now = app.be.Now();
        std::wstring titre = app.Lang(121) + rt::DateText(now, shell.ShortDatePattern()) +
                             app.Lang(122) + rt::TimeText(now, shell.TimePattern()) +
                             L"  -  M i r o v a n t a";
        if (!app.InputBox(app.Lang(209), L"Mirovanta", titre)) return;
        CDlg1.cancelError = true;
        CDlg1.copies = 1;
        CDlg1.ShowPrinter();

        auto& imprimante = app.Printer;
        imprimante.SetCopies(CDlg1.copies);
        imprimante.CurrentY = 1000;
        imprimante.CurrentX = 3000;
        imprimante.Print(titre);
        // The printable width is fixed at 10000 twips; a small capture is never enlarged.
        const ui::ScreenMetrics ecran = app.Screen();
        const std::wstring dim = app.list->Lbldim[app.VignetteCourante].Caption();
        if (rt::Mid(dim, 4, 11) == app.Lang(109)) {
            imprimante.PaintPicture(Picture1.Image(), 800, 2000, 10000,
                                    10000 * ecran.HeightTwips() / ecran.WidthTwips());
        } else if (Picture2.Width() > 10000) {
            imprimante.PaintPicture(Picture2.Image(), 800, 2000, 10000,
                                    10000 * Picture2.Height() / Picture2.Width());
        } else {
            const gdi::Surface& image = Picture2.Image();
            imprimante.PaintPicture(image, 800, 2000, float(image.Width()) * ecran.tppX,
                                    float(image.Height()) * ecran.tppY);
        }
        imprimante.EndDoc();
    } catch (const rt::RuntimeError&) {
        app.Printer.KillDoc();
    }
}

void frmMain::MnuEditPaint_Click() {}

bool frmMain::PaintActif() {
    return false;
}

void frmMain::RafraichirEditeur() {}

void frmMain::RideauPhoto() {}

void frmMain::MnuCaptper_Click() {}

} // namespace mv
