#include "app/app.h"
#include "capture/capture.h"
#include "core/commands.h"
#include "core/frmMain.h"
#include "output/output.h"
#include "runtime/clock.h"
#include "runtime/strings.h"
#include "timed/FrmChrono.h"
#include "timed/timed.h"

#include <cmath>

namespace mv {

namespace {

// Seconds since midnight of a "hh:mm:ss" text.
double SecondesTexte(const std::wstring& t) {
    if (t.size() < 8) return 0;
    return rt::Val(t.substr(0, 2)) * 3600 + rt::Val(t.substr(3, 2)) * 60 + rt::Val(t.substr(6, 2));
}

} // namespace

double SecondesRun(App& app) {
    const rt::SystemTime t = app.be.Now();
    return double(rt::DaysFromCivil(t.year, t.month, t.day)) * 86400 + rt::SecondsSinceMidnight(t) -
           app.BaseRun;
}

std::wstring HeureTexte(App& app) {
    return rt::TimeText(app.be.Now(), L"HH:mm:ss");
}

void CommencerPlan(App& app) {
    app.PlanCommence = true;
    const double maintenant = SecondesRun(app);
    app.FinPlan = maintenant + SecondesTexte(app.HeureFin) - rt::SecondsSinceMidnight(app.be.Now());
}

bool PlanFini(App& app, double images) {
    return images >= app.NbImgMax ||
           (app.NbImgMax == kSansLimite && SecondesRun(app) >= app.FinPlan);
}

void MnuCaptper_Click(App& app) {
    FrmChrono& C = *app.chrono;
    // A schedule repeats a zone; during a run the schedule comes back whatever the list.
    if (!C.EnCours() && (app.TypeCapt == L"f" || app.TypeCapt == L"e" || app.NbVignettes == 0)) {
        app.MsgBox(app.Lang(33), ui::kInformation);
        return;
    }
    if (C.Visible())
        C.SetWindowState(ui::kNormal);
    else
        C.Show();
    // Above the main window, whose view may be large.
    C.ZOrder(0);
}

void FinLente(App& app, bool Sauver) {
    frmMain& M = *app.main;
    FrmChrono& C = *app.chrono;
    M.TimerLngPerio.SetEnabled(false);
    M.TimPeriod.SetEnabled(false);
    app.PlanCommence = false;
    if (Sauver) {
        int16_t ok = -1;
        EnregistrerTout(app, ok, 1, C.ExtensionChoisie());
    }
    C.Load();
    C.Timer1.SetEnabled(true);
    M.bouton[kCmdRafraichirTim].SetBorderStyle(ui::kBorderNone);
    M.MnuCaptper.SetChecked(false);
}

void TimerLngPerio_Timer(App& app) {
    frmMain& M = *app.main;
    // The schedule comes back if it was closed: the engine reads its format and caption.
    FrmChrono& C = *app.chrono;
    // The capture's waits let this timer tick again: such a tick waits for the next one.
    const TickEnCours tick(C.TickLentEnCours);
    if (!tick.Libre()) return;
    C.Load();
    app.CurseurCapt = app.be.GetCursor().GetCursor();
    const std::wstring extension = C.ExtensionChoisie();

    if (!app.PlanCommence) {
        if (HeureTexte(app) < app.HeureDebut) return;
        CommencerPlan(app);
    }
    if (PlanFini(app, app.NbImgFaites)) {
        FinLente(app, true);
        return;
    }
    if (app.PremierTop) {
        app.ProchainTop = SecondesRun(app) + std::floor(app.PeriodeMs / 1000);
        app.PremierTop = false;
    }
    C.Timer1.SetEnabled(false);
    const double reste = app.ProchainTop - SecondesRun(app);
    C.SetCaption(HeureTexte(app) + app.Lang(232) + L" " +
                 (reste > 0 ? rt::Format(reste, L"###00.000") : std::wstring(L"0,00")) + L" sec");
    if (float(app.ProchainTop) > float(SecondesRun(app))) return;

    // Due: the next one a whole number of seconds from now.
    app.ProchainTop = SecondesRun(app) + std::floor(app.PeriodeMs / 1000);
    const int16_t avant = app.NbVignettes;
    M.Rafraichir();
    CopiePP(app, app.TypeCapt);
    if (app.NbVignettes <= avant) {
        // The repeat was refused (its box said why) or the list is full: the run ends
        // here, its captures kept.
        FinLente(app, false);
        return;
    }
    app.NbImgFaites += 1;
    C.Labcpt.SetCaption(rt::Str(app.NbImgFaites) + L" images");
    M.Labdeja.SetLeft(50);
    M.Labdeja.SetTop(50);
    M.Labdeja.SetVisible(true);
    M.Timdeja.SetEnabled(true);

    int16_t ok = -1;
    EnregistrerTout(app, ok, 1, extension);
    app.DoEvents();
    if (ok == 0) {
        // One box said it; the captures stay in the list.
        FinLente(app, false);
        return;
    }
    // Ten kept captures, all saved, leave the list so that the temporary store stays
    // small; not while one is out in the editor.
    if (app.NbVignettes >= 10 && app.FichierEdite.empty()) {
        M.Supprimertout(false);
        app.VignetteCourante = 0;
        app.DoEvents();
    }
}

void TimPeriod_Timer(App& app) {
    frmMain& M = *app.main;
    app.CurseurCapt = app.be.GetCursor().GetCursor();
    M.Rafraichir();
    CopiePP(app, app.TypeCapt);
    if (app.NbVignettes <= 9) return;
    int16_t ok = -1;
    EnregistrerTout(app, ok, 1, ExtensionAuto(app.params));
    if (ok != 0) {
        M.Supprimertout(false);
    } else {
        M.TimPeriod.SetEnabled(false);
        M.MnuCaptper.SetChecked(false);
    }
}

} // namespace mv
