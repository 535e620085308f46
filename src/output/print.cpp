// The clipboard copy and the print of the current capture.
#include "output/output.h"

#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "platform/gdi/bmp.h"
#include "runtime/strings.h"

namespace mv {

void Buttcopier(App& app) {
    frmMain& M = *app.main;
    // From the file, never from the view: a zoomed view does not change what is copied.
    auto& presse = app.be.GetClipboard();
    M.PictReserv.ClearPicture();
    presse.Clear();
    M.PictReserv.SetPicture(
        gdi::LoadBmp(app.DossierTemp + L"\\" + app.tab.FichierV[app.VignetteCourante]));
    presse.SetImage(M.PictReserv.Picture());
}

void Imprimer(App& app) {
    frmMain& M = *app.main;
    // Cancel in either box, a missing printer and any other error end it without a word.
    try {
        auto& shell = app.be.GetShell();
        const rt::SystemTime now = app.be.Now();
        std::wstring titre = app.Lang(121) + rt::DateText(now, shell.ShortDatePattern()) +
                             app.Lang(122) + rt::TimeText(now, shell.TimePattern()) +
                             L"  -  M i r o v a n t a";
        if (!app.InputBox(app.Lang(209), L"Mirovanta", titre)) return;
        M.CDlg1.cancelError = true;
        M.CDlg1.copies = 1;
        M.CDlg1.ShowPrinter();

        auto& imprimante = app.Printer;
        imprimante.SetCopies(M.CDlg1.copies);
        imprimante.CurrentY = 1000;
        imprimante.CurrentX = 3000;
        imprimante.Print(titre);
        // The printable width is fixed at 10000 twips; a small capture is never enlarged.
        const ui::ScreenMetrics ecran = app.Screen();
        const std::wstring dim = app.list->Lbldim[app.VignetteCourante].Caption();
        if (rt::Mid(dim, 4, 11) == app.Lang(109)) {
            imprimante.PaintPicture(M.Picture1.Image(), 800, 2000, 10000,
                                    10000 * ecran.HeightTwips() / ecran.WidthTwips());
        } else if (M.Picture2.Width() > 10000) {
            imprimante.PaintPicture(M.Picture2.Image(), 800, 2000, 10000,
                                    10000 * M.Picture2.Height() / M.Picture2.Width());
        } else {
            const gdi::Surface& image = M.Picture2.Image();
            imprimante.PaintPicture(image, 800, 2000, ecran.TwipsX(image.Width()),
                                    ecran.TwipsY(image.Height()));
        }
        imprimante.EndDoc();
    } catch (...) {
        rt::CaughtError();
        app.Printer.KillDoc();
    }
}

} // namespace mv
