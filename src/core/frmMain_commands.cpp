// frmMain: the command dispatcher, the toolbar, the keys and the menus.
#include "browser/Flistimages.h"
#include "capture/capture.h"
#include "core/commands.h"
#include "core/frmMain.h"
#include "core/small_forms.h"
#include "gifanim/FrmGifAnim.h"
#include "language/AideRapide.h"
#include "language/FrmAideStd.h"
#include "language/frmTip.h"
#include "language/language_menu.h"
#include "output/output.h"
#include "overlay/FrmFull.h"
#include "runtime/errors.h"
#include "settings/Options.h"
#include "timed/timed.h"

namespace mv {

void frmMain::WireEvents() {
    OnLoad = [this] { Form_Load(); };
    OnActivate = [this] { Form_Activate(); };
    OnQueryUnload = [this](int& cancel, int mode) { Form_QueryUnload(cancel, mode); };
    OnKeyDown = [this](int16_t& key, int16_t shift) { Form_KeyDown(key, shift); };
    OnMouseMove = [this](const ui::MouseEvent& e) { Form_MouseMove(e); };

    bouton.OnClick = [this](int i) { bouton_Click(i); };
    bouton.OnDblClick = [this](int i) { bouton_DblClick(i); };
    bouton.OnMouseMove = [this](int i, const ui::MouseEvent& e) { bouton_MouseMove(i, e); };

    Timbouton.OnTimer = [this] { Timbouton_Timer(); };
    TimCurs.OnTimer = [this] { TimCurs_Timer(app); };
    Timdeja.OnTimer = [this] { Timdeja_Timer(app); };
    TimPaint.OnTimer = [this] { TimPaint_Timer(app); };
    TimZoom.OnTimer = [this] { TimZoom_Timer(); };
    Timerclav.OnTimer = [this] { Timerclav_Timer(); };
    Timderoul.OnTimer = [this] { Timderoul_Timer(); };
    Timlabdeb.OnTimer = [this] { Timlabdeb_Timer(); };
    TimerUnload.OnTimer = [this] { TimerUnload_Timer(); };
    TimerLngPerio.OnTimer = [this] { TimerLngPerio_Timer(app); };
    TimPeriod.OnTimer = [this] { TimPeriod_Timer(app); };

    // Forwarding entries: a menu command never comes from a hotkey.
    auto forward = [this](ui::Menu& m, int index) {
        m.OnClick = [this, index] { bouton_Click(index); };
    };
    forward(mnuttscreen, kCmdZone);
    forward(Mnuphotorapid, kCmdZone);
    forward(mnuretour, kCmdAnnuler);
    forward(mnucopier, kCmdCopier);
    forward(mnurafraichir, kCmdRafraichir);
    forward(Mnudelcap, kCmdSupprimer);
    forward(Mnudeltout, kCmdSupprimerTout);
    forward(Mnuenregistrer, kCmdEnregistrer);
    forward(Mnuenregistrertout, kCmdEnregistrerTout);
    forward(Mnuimprimer, kCmdImprimer);
    forward(Mnuquitter, kCmdQuitter);
    forward(Mnuquitt, kCmdQuitter);
    forward(mnuapropos, kCmdAPropos);
    forward(mnuFenregistrer, kCmdEnregistrer);
    forward(MnuFenregistrertout, kCmdEnregistrerTout);
    forward(MnuFdelcap, kCmdSupprimer);
    forward(Mnufdeltout, kCmdSupprimerTout);

    mnufichier.OnClick = [this] { mnufichier_Click(); };
    mnuedition.OnClick = [this] { mnuedition_Click(); };
    MnuEditPaint.OnClick = [this] { MnuEditPaint_Click(app); };
    mnucourriel.OnClick = [this] { mnucourriel_Click(app); };
    mnujoindreune.OnClick = [this] { mnujoindreune_Click(app); };
    mnujoindrecoch.OnClick = [this] { mnujoindrecoch_Click(app); };
    mnujoindretout.OnClick = [this] { mnujoindretout_Click(app); };
    mnuimgforum.OnClick = [this] { mnuimgforum_Click(app); };
    mnumail.OnClick = [this] { envoimail(app); };
    mnuFeditpaint.OnClick = [this] { MnuEditPaint_Click(app); };
    MnuRaff.OnClick = [this] { MnuRaff_Click(); };
    Mnumulti.OnClick = [this] { Mnumulti_Click(); };
    MnuEnAuto.OnClick = [this] { MnuEnAuto_Click(); };
    mnufDelCaptCoch.OnClick = [this] { mnufDelCaptCoch_Click(); };
    mnuoptions.OnClick = [this] { mnuoptions_Click(); };
    mnuReacTip.OnClick = [this] { mnuReacTip_Click(app); };
    MnuAide.OnClick = [this] { MnuAide_Click(app); };
    MnuNouversion.OnClick = [this] { MnuNouversion_Click(app); };
    Tutosite.OnClick = [this] { Tutosite_Click(app); };
    MnuCaptper.OnClick = [this] { MnuCaptper_Click(app); };
    mnuFabGif.OnClick = [this] { mnuFabGif_Click(app); };
    MnuChgLang.OnClick = [this] { MnuChgLang_Click(app); };
    mnuzoomX.OnClick = [this](int i) { mnuzoomX_Click(int16_t(i)); };
    mnuveille.OnClick = [this] { mnuveille_Click(); };
    Mnured2.OnClick = [this] { Mnured2_Click(); };
    Picture2.OnMouseMove = [this](const ui::MouseEvent& e) { Picture2_MouseMove(e.x, e.y); };
    Picture1.OnMouseDown = [this](const ui::MouseEvent& e) {
        Picture1_MouseDown(e.button, e.x, e.y);
    };
    Picture1.OnMouseMove = [this](const ui::MouseEvent& e) { Picture1_MouseMove(e.x, e.y); };
    Picture1.OnMouseUp = [this](const ui::MouseEvent&) { Picture1_MouseUp(); };
}

void frmMain::bouton_Click(int Index) {
    GestCommande(Index, false);
}

void frmMain::GestCommande(int Index, bool parClavier) {
    // Any run-time error abandons the command silently, in the state reached.
    try {
        Timbouton.SetEnabled(true);
        RelacherBoutons();
        if (!GardeEnfonce(Index) && Index < kCmdZoneDouble)
            bouton[Index].SetBorderStyle(ui::kBorderFixedSingle);
        labdeb.SetVisible(false);
        app.ParClavier = parClavier;
        app.tip->Unload();
        // Capture commands never nest: one that arrives while a capture or an overlay
        // session is under way is ignored.
        const bool capture = Index == kCmdZone || Index == kCmdZoneDouble || Index == kCmdEcran ||
                             Index == kCmdFenetre || Index == kCmdAnnuler ||
                             Index == kCmdRafraichir;
        if (capture && (app.CaptureEnCours || app.full->EnSession())) return;
        struct EnCours {
            bool& drapeau;
            bool actif;
            EnCours(bool& d, bool a) : drapeau(d), actif(a) {
                if (actif) drapeau = true;
            }
            ~EnCours() {
                if (actif) drapeau = false;
            }
            EnCours(const EnCours&) = delete;
            EnCours& operator=(const EnCours&) = delete;
        } enCours{app.CaptureEnCours, capture};

        switch (Index) {
        case kCmdZone:
        case kCmdZoneDouble:
            // One command 0 allows one double-height capture.
            if (Index == kCmdZone) {
                app.ZoneAmorcee = 1;
            } else if (app.ZoneAmorcee == 0) {
                app.MsgBox(app.Lang(265), ui::kInformation);
                return;
            } else {
                app.ZoneAmorcee = 0;
            }
            if (app.params.GardeFenetres == 0) {
                Hide();
                app.DoEvents();
                app.list->Hide();
                app.DoEvents();
                Attente(0.4f);
            }
            app.TypeCapt = L"z";
            app.RetourZone = false;
            app.ParClavierSession = parClavier;
            app.full->InitFull(int16_t(Index));
            app.full->Show();
            app.full->PrendreClavier();
            RideauPhoto(app);
            app.RetourPossible = true;
            break;
        case kCmdEcran:
            CapturTTbis(app, 0);
            for (int i = 0; i <= 4; ++i) mnuzoomX[i].SetChecked(false);
            mnuzoomX[2].SetChecked(true);
            RideauPhoto(app);
            app.TypeCapt = L"e";
            MefImageF(0);
            GestVignettes(Picture1);
            CopiePP(app, app.TypeCapt);
            break;
        case kCmdFenetre:
            CapturTTbis(app, 1);
            for (int i = 0; i <= 4; ++i) mnuzoomX[i].SetChecked(false);
            mnuzoomX[3].SetChecked(true);
            TimZoom.SetEnabled(true);
            if (app.EchecFen) {
                app.MsgBox(app.Lang(143), ui::kInformation);
                return;
            }
            app.TypeCapt = L"f";
            MefImageF(1);
            GestVignettes(Picture2);
            CopiePP(app, app.TypeCapt);
            break;
        case kCmdCopier:
            Buttcopier(app);
            break;
        case kCmdEnregistrer:
            Enregistrer2(app);
            break;
        case kCmdEnregistrerTout: {
            int16_t ok = 0;
            EnregistrerTout(app, ok, 1, ExtensionAuto(app.params));
            break;
        }
        case kCmdImprimer:
            Imprimer(app);
            break;
        case kCmdEditer:
            MnuEditPaint_Click(app);
            break;
        case kCmdMulti:
            Mnumulti_Click();
            break;
        case kCmdSupprimer:
            SuppVignette(app.VignetteCourante);
            break;
        case kCmdSupprimerTout:
            Supprimertout(true);
            break;
        case kCmdAnnuler:
            if (!app.RetourPossible) break;
            app.RetourZone = true;
            app.ParClavierSession = parClavier;
            app.full->InitFull(1);
            app.full->Show();
            app.full->PrendreClavier();
            app.TypeCapt = L"z";
            break;
        case kCmdRafraichir:
            Rafraichir();
            CopiePP(app, app.TypeCapt);
            break;
        case kCmdRafraichirTim:
            MnuCaptper_Click(app);
            break;
        case kCmdQuitter:
            quitprog();
            break;
        case kCmdOptions:
            mnuoptions_Click();
            break;
        case kCmdAgrandir:
            Agrandred();
            break;
        case kCmdListe:
            if (app.NbVignettes <= 0) break;
            if (app.list->WindowState() == ui::kNormal) {
                app.list->SetWindowState(ui::kMinimized);
                bouton[kCmdListe].SetBorderStyle(ui::kBorderNone);
            } else {
                app.list->SetWindowState(ui::kNormal);
                // Hidden by standby or by the last capture's road: brought up as well.
                app.list->SetVisible(true);
                bouton[kCmdListe].SetBorderStyle(ui::kBorderFixedSingle);
            }
            break;
        case kCmdAPropos:
            TimPeriod.SetEnabled(false);
            app.about->Show();
            break;
        default:
            break;
        }
    } catch (...) {
        rt::CaughtError();
    }
}

bool frmMain::GardeEnfonce(int Index) {
    // Multi-selection, the periodic capture and the list keep their pressed look: it shows
    // their state, and the press flash leaves them alone.
    return Index == kCmdMulti || Index == kCmdRafraichirTim || Index == kCmdListe;
}

void frmMain::RelacherBoutons() {
    for (int i = 0; i <= kCmdAPropos; ++i)
        if (!GardeEnfonce(i)) bouton[i].SetBorderStyle(ui::kBorderNone);
}

void frmMain::Timbouton_Timer() {
    RelacherBoutons();
    Timbouton.SetEnabled(false);
}

void frmMain::Attente(float Secondes) {
    // The clock goes back to 0 at midnight: a time below the start is on the next day.
    const double debut = app.be.Timer();
    for (;;) {
        double maintenant = app.be.Timer();
        if (maintenant < debut) maintenant += 86400;
        if (maintenant >= debut + Secondes) break;
        app.DoEvents();
    }
}

void frmMain::Form_KeyDown(int16_t KeyCode, int16_t Shift) {
    if (!app.FichierEdite.empty() && KeyCode == ui::kKeyF5) {
        RafraichirEditeur(app);
    } else if (KeyCode == ui::kKeyDelete) {
        bouton_Click(kCmdSupprimer);
    } else if (KeyCode == ui::kKeyQ && Shift == ui::kCtrlMask) {
        quitprog();
    } else if (KeyCode == ui::kKeyF1) {
        app.aidfn->Montrer(*this);
    }
}

void frmMain::bouton_DblClick(int Index) {
    if (Index != kCmdEnregistrerTout) return;
    // Only a look at the saved files: the answer is not used.
    CDlg1.initDir = app.params.DossierEnregCourt;
    CDlg1.filter = L"Tous fichiers (*.*)|*.*";
    CDlg1.dialogTitle = app.Lang(240);
    CDlg1.cancelError = false;
    CDlg1.ShowOpen();
}

void frmMain::bouton_MouseMove(int Index, const ui::MouseEvent&) {
    if (Index > 19) {
        LabDoubleClick.SetVisible(false);
        return;
    }
    if (Index != BoutonSurvole || SurvolActif) {
        for (int i = 0; i <= 19; ++i) bouton[i].SetPicture(ImageList1.Item(i + 1));
        SurvolActif = false;
    } else {
        SurvolActif = true;
    }
    bouton[Index].SetPicture(ImageList1.Item(Index + 21));
    if (Index == kCmdEnregistrerTout) {
        LabDoubleClick.SetLeft(Width() - LabDoubleClick.Width() - 300);
        LabDoubleClick.SetTop(bouton[Index].Top() + bouton[Index].Height() + 50);
        LabDoubleClick.SetVisible(true);
        LabDoubleClick.ZOrder(0);
    } else {
        LabDoubleClick.SetVisible(false);
    }
    BoutonSurvole = int16_t(Index);
}

void frmMain::mnufichier_Click() {
    const bool actif = app.NbVignettes != 0;
    for (ui::Menu* m : {&Mnuenregistrer, &Mnuenregistrertout, &Mnuimprimer}) m->SetEnabled(actif);
}

void frmMain::mnuedition_Click() {
    const bool actif = app.NbVignettes != 0;
    for (ui::Menu* m :
         {&mnuretour, &mnucopier, &mnurafraichir, &Mnudelcap, &Mnudeltout, &MnuEditPaint})
        m->SetEnabled(actif);
}

void frmMain::Mnumulti_Click() {
    Mnumulti.SetChecked(!Mnumulti.Checked());
    bouton[kCmdMulti].SetBorderStyle(Mnumulti.Checked() ? ui::kBorderFixedSingle : ui::kBorderNone);
}

void frmMain::MnuEnAuto_Click() {
    MnuEnAuto.SetChecked(!MnuEnAuto.Checked());
    if (MnuEnAuto.Checked()) app.MsgBox(app.Lang(135), ui::kInformation);
}

void frmMain::mnuoptions_Click() {
    TimPeriod.SetEnabled(false);
    app.options->Load();
    app.options->ShowDialog();
}

void frmMain::MnuRaff_Click() {
    Form_KeyDown(ui::kKeyF5, 0);
}

} // namespace mv
