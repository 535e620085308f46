// frmMain: the capture list and its temporary files.
#include "browser/Flistimages.h"
#include "capture/capture.h"
#include "core/commands.h"
#include "core/frmMain.h"
#include "output/output.h"
#include "output/tags.h"
#include "runtime/files.h"
#include "runtime/integer.h"
#include "runtime/strings.h"

#include <algorithm>

namespace mv {

namespace {
constexpr int kPasColonne = 1600; // pitch of the thumbnail column, twips

// Deletes a temporary capture file; one already gone (removed from outside) counts as
// deleted, so that its row can still leave the list.
void SupprimerFichierProv(const std::wstring& fichier) {
    try {
        rt::Kill(fichier);
    } catch (...) {
        const rt::RuntimeError e = rt::CaughtError();
        if (e.number != rt::kFileNotFound) throw;
    }
}
} // namespace

std::wstring frmMain::NomFichierProv(int32_t n) const {
    return L"Captprov_" + app.TagHeure + rt::Format(n, L"00") + L".bmp";
}

void frmMain::GestVignettes(ui::PictureBox& Image) {
    Flistimages& L = *app.list;
    try {
        // A picture with no size is no capture.
        if (Image.Width() <= 0 || Image.Height() <= 0) return;
        app.HautCapt = Image.Height();
        app.LargCapt = Image.Width();
        // The row being filed, held here: a capture filed while this one waits in a box or
        // in the event pump takes the next row, never this one.
        const int n = app.NbVignettes + 1;
        if (n > 100) {
            // The list is full: the capture is dropped, no file, no row; the count never
            // runs ahead of the rows.
            app.MsgBox(app.Lang(110));
            app.VignetteCourante = app.NbVignettes;
        } else {
            app.NbVignettes = rt::I16(n);
            if (n == 1) bouton[kCmdListe].SetBorderStyle(ui::kBorderFixedSingle);
            L.Image1.Load(n);
            L.Gimage1.Load(n);
            L.Lbldim.Load(n);
            L.Txtordre.Load(n);
            L.PictSave.Load(n);
            L.Chkmail.Load(n);
            L.Chksav.Load(n);
            L.pictmail.Load(n);
            L.Txtordre[n].ZOrder(0);
            L.PictSave[n].ZOrder(0);
            L.pictmail[n].ZOrder(0);

            auto& img = L.Image1[n];
            auto& gimg = L.Gimage1[n];
            L.PictSave[n].SetLeft(img.Left());
            L.pictmail[n].SetLeft(img.Left() + L.PictSave[n].Width());
            L.Chkmail[n].SetVisible(true);

            // One side changes, the other keeps the template's size.
            if (app.HautCapt > app.LargCapt) {
                img.SetWidth(app.LargCapt / app.HautCapt * L.Image1[0].Height());
                gimg.SetWidth(img.Width() * 1.7f);
            } else {
                img.SetHeight(app.HautCapt / app.LargCapt * L.Image1[0].Width());
                gimg.SetHeight(img.Height() * 1.7f);
            }
            if (n > 1) img.SetTop(L.Image1[n - 1].Top() + kPasColonne);
            gimg.SetTop(img.Top());
            if (gimg.Height() > 600) gimg.SetTop(img.Top() - 400);
            L.Lbldim[n].SetTop(img.Top());
            L.Txtordre[n].SetTop(L.Lbldim[n].Top() + 450);
            L.Txtordre[n].SetText(rt::Format(n, L"00"));
            L.PictSave[n].SetTop(img.Top());
            L.pictmail[n].SetTop(img.Top());
            L.Chkmail[n].SetTop(img.Top() + L.Lbldim[n].Height() + 100);

            DessinerVignettes(Image.Image(), img, gimg);

            ++app.NumCapt;
            EnregVign(app, app.NumCapt, Image);
            app.tab.FichierV[n] = NomFichierProv(app.NumCapt);

            const auto ecran = app.Screen();
            if (Image.Name() == L"PictInvis" || Image.Name() == L"Picture2") {
                L.Lbldim[n].SetCaption(rt::Format(n, L"00") + L"/ " +
                                       rt::Str(ecran.PxX(app.LargCapt)) + L" x" +
                                       rt::Str(ecran.PxY(app.HautCapt)));
            } else {
                L.Lbldim[n].SetCaption(rt::Format(n, L"00") + L" " + app.Lang(109));
            }

            img.SetVisible(true);
            for (int i = 1; i < n; ++i) L.Image1[i].SetBorderStyle(ui::kBorderNone);
            img.SetBorderStyle(ui::kBorderFixedSingle);
            L.Lbldim[n].SetVisible(true);
            L.Txtordre[n].SetVisible(true);
            L.PictSave[n].SetVisible(false);
            L.Image1[0].SetVisible(false);
            L.Lbldim[0].SetVisible(false);
            L.Txtordre[0].SetVisible(false);
            L.PictSave[0].SetVisible(false);

            if (L.WindowState() == ui::kNormal) {
                // The window grows while it is below the ceiling, so it may pass the
                // ceiling once; from there it is held at it.
                const float voulu = img.Top() + gimg.Height() + 800;
                const float plafond = ecran.HeightTwips() - 500;
                L.SetHeight(plafond > L.Height() ? voulu : plafond);
            }
            app.DoEvents();
            if (mnuveille.Caption() == app.Lang(105)) L.Show();

            auto& shell = app.be.GetShell();
            const rt::SystemTime now = app.be.Now();
            app.tab.HautV[n] = rt::CLng(app.HautCapt);
            app.tab.LargV[n] = rt::CLng(app.LargCapt);
            app.tab.Horodatage[n] = CalcHorodatage(rt::DateText(now, shell.ShortDatePattern()),
                                                   rt::TimeText(now, shell.TimePattern()));
            app.tab.HautFenV[n] = app.tab.HautV[n] + 1800;
            const float largeurMin = LargeurMin();
            app.tab.LargFenV[n] =
                rt::CLng(largeurMin < app.LargCapt ? app.LargCapt + 210 : largeurMin);
            app.tab.DimV[n] = Labtaille.Caption();
            app.tab.TypeV[n] = app.TypeCapt;
            app.VignetteCourante = app.NbVignettes;
            MajDefilement();
        }
        MajTitreListe();
        if (MnuEnAuto.Checked()) {
            int16_t ok = -1;
            EnregistrerTout(app, ok, app.NbVignettes, ExtensionAuto(app.params));
        }
        if (L.WindowState() == ui::kNormal && !MnuCaptper.Checked()) {
            L.SetLeft(0);
            L.TimerCache.SetEnabled(true);
        }
        if (L.WindowState() == ui::kNormal && app.NbVignettes > 0) {
            auto& dernier = L.Gimage1[app.NbVignettes];
            L.Frame1.SetHeight(std::max(0.0f, dernier.Height() + dernier.Top() + 400));
        }
    } catch (...) {
        const rt::RuntimeError e = rt::CaughtError();
        app.MsgErreur(e);
    }
}

void frmMain::DessinerVignettes(const gdi::Surface& src, ui::PictureBox& img,
                                ui::PictureBox& gimg) {
    const auto ecran = app.Screen();
    const int largPx = ecran.PxX(img.Width());
    const int hautPx = ecran.PxY(img.Height());
    gdi::StretchBlt(img.Image(), 0, 0, largPx, hautPx, src, 0, 0, src.Width(), src.Height(),
                    gdi::kHalftone);
    gdi::StretchBlt(gimg.Image(), 0, 0, int(largPx * 1.7), int(hautPx * 1.7), src, 0, 0,
                    src.Width(), src.Height(), gdi::kHalftone);
    img.Refresh();
    gimg.Refresh();
}

void frmMain::MajDefilement() {
    Flistimages& L = *app.list;
    if (app.NbVignettes > 1) {
        L.Vscroll1.SetEnabled(true);
        L.Vscroll1.SetMax(app.NbVignettes);
        L.Labscroll.SetCaption(std::to_wstring(app.NbVignettes));
    } else {
        // A single capture leaves the count empty until the window is shown again.
        L.Vscroll1.SetEnabled(false);
        L.Labscroll.SetCaption(L"");
    }
}

void frmMain::MajTitreListe() {
    SetCaption(app.Lang(111) + std::to_wstring(app.NbVignettes) +
               (app.NbVignettes > 1 ? app.Lang(112) : app.Lang(113)));
}

void frmMain::SuppVignette(int16_t Numero) {
    Flistimages& L = *app.list;
    try {
        if (Numero != 0) {
            Picture2.ClearPicture();
            ImgTTscreen.ClearPicture();
            Picture2.SetVisible(false);
            ImgTTscreen.SetVisible(false);
            if (WindowState() == ui::kNormal && !app.ModeReduit) {
                SetHeight(1430);
                SetWidth(LargeurMin());
                CollerADroite();
                SetTop(0);
            }
            EditionQuitteListe(app, app.DossierTemp + L"\\" + app.tab.FichierV[Numero]);
            SupprimerFichierProv(app.DossierTemp + L"\\" + app.tab.FichierV[Numero]);

            // Rows above the gap move down by one. Horodatage stays at its row number.
            for (int i = Numero; i <= app.NbVignettes - 1; ++i) {
                auto& img = L.Image1[i];
                auto& suivante = L.Image1[i + 1];
                // Size first: the picture then lands whole in the box of its own size.
                img.SetWidth(suivante.Width());
                img.SetHeight(suivante.Height());
                img.SetPicture(suivante.Image());
                L.Gimage1[i].SetPicture(L.Gimage1[i + 1].Image());
                L.Lbldim[i].SetCaption(L.Lbldim[i + 1].Caption());
                L.Chkmail[i].SetValue(L.Chkmail[i + 1].Value());
                L.PictSave[i].SetVisible(L.PictSave[i + 1].Visible());
                L.pictmail[i].SetVisible(L.pictmail[i + 1].Visible());
                app.tab.HautV[i] = app.tab.HautV[i + 1];
                app.tab.LargV[i] = app.tab.LargV[i + 1];
                app.tab.HautFenV[i] = app.tab.HautFenV[i + 1];
                app.tab.LargFenV[i] = app.tab.LargFenV[i + 1];
                app.tab.DimV[i] = app.tab.DimV[i + 1];
                app.tab.TypeV[i] = app.tab.TypeV[i + 1];
                app.tab.FichierV[i] = app.tab.FichierV[i + 1];

                img.SetTop(i == 1 ? L.Image1[0].Top() : L.Image1[i - 1].Top() + kPasColonne);
                L.Gimage1[i].SetTop(img.Top() - 250);
                L.Lbldim[i].SetTop(img.Top());
                L.Txtordre[i].SetTop(L.Lbldim[i].Top() + 450);
                L.PictSave[i].SetTop(img.Top());
                L.pictmail[i].SetTop(img.Top());
                L.Chkmail[i].SetTop(L.Lbldim[i].Top() + L.Lbldim[i].Height() + 100);
            }

            const int dernier = app.NbVignettes;
            if (L.WindowState() == ui::kNormal) {
                const float voulu = L.Image1[dernier].Top() + L.Gimage1[dernier].Height() + 800;
                const float plafond = app.Screen().HeightTwips() - 500;
                L.SetHeight(plafond > L.Height() ? voulu : plafond);
            }
            app.DoEvents();
            if (app.NbVignettes != 0) {
                L.Image1.Unload(dernier);
                L.Gimage1.Unload(dernier);
                L.Lbldim.Unload(dernier);
                L.Txtordre.Unload(dernier);
                L.PictSave.Unload(dernier);
                L.pictmail.Unload(dernier);
                L.Chkmail.Unload(dernier);
                L.Chksav.Unload(dernier);
                // The count follows the rows at once.
                app.tab.FichierV[dernier] = L"";
                app.NbVignettes = rt::I16(dernier - 1);
                if (L.WindowState() == ui::kNormal)
                    L.Frame1.SetHeight(std::max(0.0f, L.Height() - 1000));
            }
            if (app.NbVignettes < 1) L.Hide();
        }
        // No other row becomes current: the caller or the user picks one.
        app.VignetteCourante = 0;
        for (int i = 1; i <= app.NbVignettes; ++i) {
            L.Image1[i].SetBorderStyle(ui::kBorderNone);
            L.Lbldim[i].SetCaption(rt::Format(i, L"00") + rt::Mid(L.Lbldim[i].Caption(), 3));
        }
        if (L.WindowState() == ui::kNormal)
            L.SetHeight(L.Image1[app.NbVignettes].Top() + kPasColonne);
        MajDefilement();
        MajTitreListe();
    } catch (...) {
        const rt::RuntimeError e = rt::CaughtError();
        app.MsgErreur(e, L"Suppression/Delete ");
    }
}

void frmMain::Supprimertout(bool Demande) {
    Flistimages& L = *app.list;
    if (app.NbVignettes == 0) return;
    if (Demande && app.MsgBox(app.Lang(91), ui::kOkCancel | ui::kQuestion) == ui::kCancel) return;
    ImgTTscreen.ClearPicture();
    Picture2.ClearPicture();
    ImgTTscreen.SetVisible(false);
    Picture2.SetVisible(false);
    if (WindowState() == ui::kNormal) SetHeight(1430);
    for (int i = app.NbVignettes; i >= 1; --i) {
        L.Image1.Unload(i);
        L.Gimage1.Unload(i);
        L.Lbldim.Unload(i);
        L.Txtordre.Unload(i);
        L.PictSave.Unload(i);
        L.Chkmail.Unload(i);
        L.pictmail.Unload(i);
        L.Chksav.Unload(i);
        SupprimerFichierProv(app.DossierTemp + L"\\" + app.tab.FichierV[i]);
    }
    for (int i = 1; i <= 100; ++i) app.tab.FichierV[i] = L"";
    app.NbVignettes = 0;
    L.Hide();
    if (L.WindowState() == ui::kNormal) {
        L.SetWidth(3500);
        L.SetHeight(2000);
    }
    if (Demande) {
        app.ModeReduit = false;
        SetCaption(app.Lang(123));
        bouton[kCmdListe].SetBorderStyle(ui::kBorderNone);
    }
}

void frmMain::Rafraichir() {
    // The same whole screen or window again is that command itself, run from here.
    if (app.TypeCapt == L"e" || app.TypeCapt == L"f") {
        app.CaptureEnCours = false;
        bouton_Click(app.TypeCapt == L"e" ? kCmdEcran : kCmdFenetre);
        return;
    }
    if (app.HautPic1 == 0 || (app.NbVignettes > 0 && app.tab.TypeV[app.NbVignettes] != L"z")) {
        app.MsgBox(app.Lang(58));
        TimPeriod.SetEnabled(false);
        return;
    }
    Mnumulti.SetChecked(false);
    bouton[kCmdMulti].SetBorderStyle(ui::kBorderNone);
    ImgTTscreen.SetVisible(false);
    if (!app.ModeReduit) Picture2.SetVisible(true);
    Picture2.ClearPicture();
    Picture1.SetHeight(app.HautPic1);
    Picture1.SetWidth(app.LargPic1);

    CapturTTbis(app, 0);
    const ui::Point pos = app.be.GetCursor().GetCursorPos();
    app.CurseurX = pos.x;
    app.CurseurY = pos.y;

    const int ref = app.NbVignettes == 0 ? 1 : app.NbVignettes;
    Picture2.SetHeight(app.tab.HautV[ref]);
    Picture2.SetWidth(app.tab.LargV[ref]);
    if (WindowState() == ui::kNormal && !app.ModeReduit) {
        SetHeight(app.tab.HautFenV[ref]);
        SetWidth(app.tab.LargFenV[ref]);
    }
    Labtaille.SetCaption(app.tab.DimV[ref]);

    const auto ecran = app.Screen();
    app.LargCapt += ecran.TwipsX(4);
    app.HautCapt += ecran.TwipsY(4);
    // One pixel in from the zone skips the drawn frame of the selection; Picture2's own
    // size cuts the result to the size of the old capture.
    const int sx = ecran.PxX(app.ZoneGauche) + 1;
    const int sy = ecran.PxY(app.ZoneHaut) + 1;
    gdi::BitBlt(Picture2.Image(), 0, 0, ecran.PxX(app.LargCapt), ecran.PxY(app.HautCapt),
                Picture1.Image(), sx, sy);
    Picture2.SetPicture(gdi::Surface(Picture2.Image()));
    Picture2S.SetPicture(Picture2.Image());
    PictSave.SetVisible(false);
    Picture1.SetVisible(false);
    if (!app.ModeReduit) Picture2.SetVisible(true);
    GestVignettes(Picture2);
}

void frmMain::mnufDelCaptCoch_Click() {
    int compte = 0;
    for (int i = app.NbVignettes; i >= 1; --i) {
        if (app.list->Chkmail[i].Value() == 1) {
            SuppVignette(int16_t(i));
            ++compte;
        }
    }
    app.list->clickimage1(app.NbVignettes, true);
}

void frmMain::Voirtabprov() {
    std::wstring texte;
    for (int i = 1; i <= app.NbVignettes; ++i) texte += L"\r\n" + app.tab.FichierV[i];
    app.MsgBox(texte);
}

} // namespace mv
