#include "timed/FrmChrono.h"

#include "core/commands.h"
#include "core/frmMain.h"
#include "output/conversion.h"
#include "platform/gdi/bmp.h"
#include "runtime/errors.h"
#include "runtime/files.h"
#include "runtime/strings.h"
#include "settings/settings_file.h"
#include "timed/timed.h"

#include <algorithm>

namespace mv {

namespace {

constexpr float kLargeurChamp = 420;
constexpr float kPasColonne = 600;
constexpr float kPasLigne = 770;
constexpr float kGaucheChamps = 1500;
constexpr float kHautChamps = 700;

// Text colours of the rows: start green, end light red, period brown-orange.
constexpr uint32_t kVert = 0x008000;
constexpr uint32_t kRougeClair = 0x0000FF;
constexpr uint32_t kPeriode = 0x3278C8; // RGB(200, 120, 50)

std::wstring Deux(int v) {
    return rt::Format(v, L"00");
}

} // namespace

FrmChrono::FrmChrono(App& a) : ui::Form(a.be, L"FrmChrono"), app(a) {
    OnLoad = [this] { Form_Load(); };
    OnActivate = [this] { Form_Activate(); };
    OnQueryUnload = [this](int& cancel, int) {
        // During a run the window only hides: the burst's timer lives on it, and the slow
        // engine writes its caption.
        if (EnCours()) {
            cancel = 1;
            Hide();
        }
    };
    Txtchrono.OnChange = [this](int i) { Txtchrono_Change(i); };
    CdeChronoM.OnClick = [this](int i) { CdeChronoM_Click(i); };
    CdeChronoP.OnClick = [this](int i) { CdeChronoP_Click(i); };
    TxtNbImg.OnChange = [this] { TxtNbImg_Change(); };
    CdeOk.OnClick = [this] { CdeOk_Click(); };
    CdeStopper.OnClick = [this] { CdeStopper_Click(); };
    CdeAnnul.OnClick = [this] { Unload(); };
    Command1.OnClick = [this] { app.brows->Show(); };
    Timer1.OnTimer = [this] { Timer1_Timer(); };
    Timrapid.OnTimer = [this] { Timrapid_Timer(); };
}

void FrmChrono::Design() {
    SetCaption(L"Periodic capture");
    borderStyle = ui::kBorderFixedSingle;
    maxButton = false;
    Move(0, 1000, 7900, 5200);
    if (!Txtchrono.Exists(0)) {
        Txtchrono.Design(0);
        LabInterm.Design(0);
        CdeChronoM.Design(0);
        CdeChronoP.Design(0);
        for (int i = 0; i <= 3; ++i) OptSav.Design(i);
    }
    Txtchrono[0].SetVisible(false);
    Txtchrono[0].SetMaxLength(2);
    Txtchrono[0].Move(kGaucheChamps, kHautChamps, kLargeurChamp, 315);
    LabInterm[0].SetVisible(false);
    CdeChronoM[0].SetVisible(false);
    CdeChronoM[0].SetCaption(L"-");
    CdeChronoP[0].SetVisible(false);
    CdeChronoP[0].SetCaption(L"+");
    LabHdebChrono.Move(120, kHautChamps + 40, 1350, 255);
    LabHfinChrono.Move(120, kHautChamps + kPasLigne + 40, 1350, 255);
    LabPerioChrono.Move(120, kHautChamps + 2 * kPasLigne + 40, 1350, 255);
    LabNbImg.Move(4700, kHautChamps + kPasLigne + 40, 1900, 255);
    TxtNbImg.Move(6650, kHautChamps + kPasLigne, 900, 315);
    const wchar_t* formats[] = {L"bmp", L"jpg", L"gif", L"png"};
    for (int i = 0; i <= 3; ++i) {
        OptSav[i].Move(200 + float(i) * 900, 3000, 800, 255);
        OptSav[i].SetCaption(formats[i]);
    }
    OptSav[0].SetValue(true);
    Labcpt.Move(4200, 3000, 1800, 255);
    Labcpt.SetFont({L"Arial", 9, true, false});
    LabChangt.Move(200, 3400, 7400, 520);
    Ficdescapt.Move(0, 0, 100, 100);
    Ficdescapt.SetVisible(false);
    imgcache.Move(0, 0, 100, 100);
    imgcache.SetVisible(false);
    CdeOk.Move(200, 4100, 1700, 420);
    CdeOk.SetCaption(L"Start/D\u00e9part");
    CdeStopper.Move(2050, 4100, 1700, 420);
    CdeStopper.SetCaption(L"Stop/Arr\u00eat");
    Command1.Move(3900, 4100, 1700, 420);
    Command1.SetCaption(L"Files/Fichiers...");
    CdeAnnul.Move(5750, 4100, 1700, 420);
    CdeAnnul.SetCaption(L"Close/Fermer");
}

void FrmChrono::Form_Load() {
    frmMain& M = *app.main;
    SetLeft(M.Left());
    const rt::SystemTime now = app.be.Now();

    // The interval of the settings, as minutes, seconds and milliseconds.
    const double I = rt::Val(rt::Mid(app.params.LigneParams, 122, 5));
    int minutes = 0;
    double reste = I;
    if (I >= 60000) {
        minutes = 1;
        reste = I - 60000;
    }
    const int secondes = int(reste / 1000);
    const int millis = int(std::fmod(reste, 1000.0));

    SetBackColor(M.BackColor());
    for (IndexFic = 1; IndexFic <= 10; ++IndexFic) {
        const int i = int(IndexFic);
        const int ligne = i == 10 ? 2 : (i - 1) / 3;
        const int colonne = i == 10 ? 3 : (i - 1) % 3;
        if (!Txtchrono.Exists(i)) {
            Txtchrono.Load(i);
            LabInterm.Load(i);
            CdeChronoM.Load(i);
            CdeChronoP.Load(i);
        }
        const float gauche = kGaucheChamps + float(colonne) * (kLargeurChamp + kPasColonne);
        const float haut = kHautChamps + float(ligne) * kPasLigne;
        const float largeur = i == 10 ? 2 * kLargeurChamp : kLargeurChamp;
        ui::TextBox& t = Txtchrono[i];
        t.Move(gauche, haut, largeur, 315);
        if (i == 10) t.SetMaxLength(4);
        t.SetForeColor(ligne == 0 ? kVert : ligne == 1 ? kRougeClair : kPeriode);
        LabInterm[i].Move(gauche + largeur + 40, haut + 40, kPasColonne - 80, 255);
        LabInterm[i].SetCaption(app.Lang(i == 10 ? 230 : 227 + (i - 1) % 3));
        LabInterm[i].SetBackColor(M.BackColor());
        // The buttons stand above the field's left and right halves.
        CdeChronoM[i].Move(gauche, haut - 240, largeur / 2, 225);
        CdeChronoP[i].Move(gauche + largeur / 2, haut - 240, largeur / 2, 225);
        for (ui::Control* c :
             {static_cast<ui::Control*>(&t), static_cast<ui::Control*>(&LabInterm[i]),
              static_cast<ui::Control*>(&CdeChronoM[i]), static_cast<ui::Control*>(&CdeChronoP[i])})
            c->SetVisible(true);
    }
    Txtchrono[7].SetText(L"00");
    Txtchrono[8].SetText(Deux(minutes));
    Txtchrono[9].SetText(Deux(secondes));
    Txtchrono[10].SetText(rt::Format(millis, L"0000"));
    Txtchrono[1].SetText(Deux(now.hour));
    Txtchrono[2].SetText(Deux(now.minute));
    Txtchrono[3].SetText(Deux(now.second));
    Txtchrono[4].SetText(Deux(now.hour));
    // No carry here: at minute 59 this is "60", which the change rule carries.
    Txtchrono[5].SetText(Deux(now.minute + 1));
    Txtchrono[6].SetText(Deux(now.second));

    for (ui::Label* l :
         {&LabHdebChrono, &LabHfinChrono, &LabPerioChrono, &LabNbImg, &Labcpt, &LabChangt})
        l->SetBackColor(M.BackColor());
    LabHdebChrono.SetCaption(app.Lang(234));
    LabHfinChrono.SetCaption(app.Lang(235));
    LabPerioChrono.SetCaption(app.Lang(236));
    LabChangt.SetCaption(app.Lang(233));
    LabNbImg.SetCaption(app.Lang(249));
    for (int i = 0; i <= 3; ++i) OptSav[i].SetBackColor(M.BackColor());
    Timer1_Timer();

    RafraichirFichiers();
    if (Ficdescapt.ListCount() > 0)
        app.MsgBox(app.Lang(255) + app.params.DossierEnregCourt + app.Lang(260),
                   ui::kOkCancel | ui::kExclamation);
}

void FrmChrono::RafraichirFichiers() {
    auto noms = rt::FolderNames(DossierCourt(app.params.DossierEnreg), false);
    std::sort(noms.begin(), noms.end());
    Ficdescapt.Clear();
    for (auto& n : noms) Ficdescapt.AddItem(std::move(n));
}

void FrmChrono::Form_Activate() {
    if (Txtchrono.Exists(9) && Valeur(7) == 0 && Valeur(8) == 0 && Valeur(9) == 0 &&
        Txtchrono[7].Text() == L"00" && Txtchrono[8].Text() == L"00" &&
        Txtchrono[9].Text() == L"00")
        LabChangt.SetCaption(app.Lang(253));
}

int FrmChrono::Valeur(int Index) const {
    if (!Txtchrono.Exists(Index)) return 0;
    const double v = rt::Val(Txtchrono[Index].Text());
    return v > 99999 ? 99999 : v < -99999 ? -99999 : int(v);
}

void FrmChrono::Txtchrono_Change(int Index) {
    if (Index == 10) {
        if (Valeur(10) > 1000) Txtchrono[10].SetText(L"0000");
    } else if (Index >= 1 && Valeur(Index) == 60) {
        // Only 60 carries, with no row boundaries: out of field 1 into the unseen element 0.
        Txtchrono[Index].SetText(L"00");
        Txtchrono[Index - 1].SetText(Deux(Valeur(Index - 1) + 1));
    }
    if (Txtchrono.Exists(9) && Txtchrono[7].Text() == L"00" && Txtchrono[8].Text() == L"00" &&
        Txtchrono[9].Text() == L"00")
        LabChangt.SetCaption(app.Lang(253));
}

void FrmChrono::CdeChronoM_Click(int Index) {
    const int v = Valeur(Index) - 1;
    if (v > 0)
        Txtchrono[Index].SetText(Index == 10 ? rt::Format(v, L"0000") : Deux(v));
    else
        Txtchrono[Index].SetText(Index == 10 ? L"1000" : L"00");
}

void FrmChrono::CdeChronoP_Click(int Index) {
    const int v = Valeur(Index) + 1;
    int limite = 0;
    if (Index == 1 || Index == 4) limite = 24;
    if (Index == 7) limite = 100;
    if (Index == 10) limite = 1001;
    if (limite > 0 && v >= limite)
        Txtchrono[Index].SetText(Index == 10 ? L"0001" : L"00");
    else
        Txtchrono[Index].SetText(Index == 10 ? rt::Format(v, L"0000") : Deux(v));
}

void FrmChrono::TxtNbImg_Change() {
    // A number of images replaces the end time.
    for (int i = 4; i <= 6; ++i) Txtchrono[i].SetText(L"00");
}

std::wstring FrmChrono::ExtensionChoisie() const {
    for (int i = 0; i <= 3; ++i)
        if (OptSav[i].Value()) return OptSav[i].Caption();
    return L"bmp";
}

bool FrmChrono::EnCours() const {
    return Timrapid.Enabled() || app.main->TimerLngPerio.Enabled();
}

bool FrmChrono::PretAPartir() {
    Labcpt.SetCaption(L"0");
    if (app.NbVignettes > 0 && app.tab.TypeV[app.NbVignettes] != L"z") {
        app.MsgBox(app.Lang(58), ui::kInformation);
        return false;
    }
    app.HeureDebut = Txtchrono[1].Text() + L":" + Txtchrono[2].Text() + L":" + Txtchrono[3].Text();
    app.HeureFin = Txtchrono[4].Text() + L":" + Txtchrono[5].Text() + L":" + Txtchrono[6].Text();
    app.NbImgMax = std::max(0.0, std::min(rt::Val(TxtNbImg.Text()), kSansLimite));
    // Compared as text: a plan across midnight is refused.
    if (app.HeureDebut > app.HeureFin && app.NbImgMax == 0) {
        app.MsgBox(app.Lang(194), ui::kExclamation);
        return false;
    }
    if (app.NbImgMax == 0) app.NbImgMax = kSansLimite;
    return true;
}

void FrmChrono::CdeOk_Click() {
    if (EnCours() || !PretAPartir()) return;
    app.PlanCommence = false;
    app.BaseRun = 0;
    app.BaseRun = SecondesRun(app);
    frmMain& M = *app.main;
    if (Valeur(7) == 0 && Valeur(8) == 0 && Valeur(9) == 0) {
        // Burst: the format is fixed now; an interval of 0 is a timer that never ticks.
        FormatRafale = FormatExtension(ExtensionChoisie());
        ecritsRafale_.clear();
        Timrapid.SetInterval(std::max(0, Valeur(10)));
        Timrapid.SetEnabled(Timrapid.Interval() > 0);
        NbRapid = 0;
        return;
    }
    app.PeriodeMs = Valeur(7) * 3600000.0 + Valeur(8) * 60000.0 + Valeur(9) * 1000.0 + Valeur(10);
    app.NbImgFaites = 0;
    M.TimerLngPerio.SetEnabled(true);
    app.PremierTop = true;
    M.bouton[kCmdRafraichirTim].SetBorderStyle(ui::kBorderFixedSingle);
    M.MnuCaptper.SetChecked(true);
    SetWindowState(ui::kMinimized);
}

void FrmChrono::CdeStopper_Click() {
    // Each engine ends through its own end steps.
    if (Timrapid.Enabled()) {
        FinRafale();
    } else if (app.main->TimerLngPerio.Enabled()) {
        FinLente(app, true);
    } else {
        app.main->bouton[kCmdRafraichirTim].SetBorderStyle(ui::kBorderNone);
        app.main->MnuCaptper.SetChecked(false);
    }
}

void FrmChrono::Timer1_Timer() {
    SetCaption(HeureTexte(app) + L" " + app.Lang(231));
}

void FrmChrono::Timrapid_Timer() {
    const TickEnCours tick(TickRapideEnCours);
    if (!tick.Libre()) return;
    if (!app.PlanCommence) {
        if (HeureTexte(app) < app.HeureDebut) return;
        CommencerPlan(app);
    }
    if (PlanFini(app, NbRapid)) {
        FinRafale();
        return;
    }
    ++NbRapid;
    const auto ecran = app.Screen();
    const int largeur = int(app.ZoneLargeur / ecran.tppX);
    const int hauteur = int(app.ZoneHauteur / ecran.tppY);
    imgcache.Move(0, 0, app.ZoneLargeur, app.ZoneHauteur);
    auto& bureau = app.be.GetDesktop();
    const ui::WindowHandle fenetre = bureau.GetDesktopWindow();
    ui::Rect r;
    bureau.GetWindowRect(fenetre, r);
    {
        auto dc = bureau.GetWindowDC(fenetre);
        dc->CopyTo(imgcache.Image(), 0, 0, largeur, hauteur, int(app.ZoneGauche / ecran.tppX),
                   int(app.ZoneHaut / ecran.tppY));
    }
    const std::wstring nom = DossierCourt(app.params.DossierEnreg) + L"\\" + app.params.PrefixeNom +
                             L"_" + rt::TimeText(app.be.Now(), L"HHmmss") + L"_" +
                             rt::Format(NbRapid, L"000") + L".bmp";
    try {
        gdi::SaveBmp(imgcache.Image(), nom);
    } catch (...) {
        // The folder went missing or cannot be written: one message, the images already
        // written stay.
        const rt::RuntimeError e = rt::CaughtError();
        --NbRapid;
        ArreterRafale(false);
        app.MsgErreur(e, app.Lang(277) + app.params.DossierEnregCourt + L"\r\n\r\n",
                      ui::kExclamation);
        return;
    }
    ecritsRafale_.push_back(nom);
    if (FormatRafale != kFormatBmp) {
        const std::wstring cible = rt::Left(nom, rt::Len(nom) - 3) + ExtensionFormat(FormatRafale);
        app.conversion->ConvertirImage(nom, cible, FormatRafale, app.params.QualiteJpeg);
        if (app.conversion->status != 0) {
            // Its box was the message; this bitmap and the earlier ones' stay as written.
            ArreterRafale(false);
            return;
        }
    }
    app.DoEvents();
    imgcache.Cls();
    Labcpt.SetCaption(std::to_wstring(NbRapid) + L" images");
}

void FrmChrono::FinRafale() {
    ArreterRafale(true);
}

void FrmChrono::ArreterRafale(bool message) {
    frmMain& M = *app.main;
    Timrapid.SetEnabled(false);
    app.PlanCommence = false;
    RafraichirFichiers();
    app.DoEvents();
    M.bouton[kCmdRafraichirTim].SetBorderStyle(ui::kBorderNone);
    M.MnuCaptper.SetChecked(false);
    M.TimPeriod.SetEnabled(false);
    if (message)
        app.MsgBox(std::to_wstring(NbRapid) + app.Lang(254) + app.params.DossierEnregCourt,
                   ui::kInformation);
    if (FormatRafale == kFormatBmp) return;
    // Only the bitmaps this burst wrote, and each only once its converted file is there.
    for (const auto& bmp : ecritsRafale_) {
        const std::wstring cible = rt::Left(bmp, rt::Len(bmp) - 3) + ExtensionFormat(FormatRafale);
        try {
            if (rt::FileExists(cible) && rt::FileExists(bmp)) rt::Kill(bmp);
        } catch (...) {
            rt::CaughtError();
        }
    }
    ecritsRafale_.clear();
    RafraichirFichiers();
}

// ---- side windows --------------------------------------------------------------------------

FrmBrows::FrmBrows(App& a) : ui::Form(a.be, L"FrmBrows"), app(a) {
    OnLoad = [this] { Form_Load(); };
    OnActivate = [this] { Form_Load(); };
    CdeFermer.OnClick = [this] { Unload(); };
}

void FrmBrows::Design() {
    SetCaption(L"Files");
    borderStyle = ui::kBorderFixedToolWindow;
    maxButton = false;
    minButton = false;
    showInTaskbar = false;
    Move(8000, 1000, 4200, 5000);
    LabDossier.Move(100, 80, 3900, 480);
    ListFichiers.Move(100, 600, 3900, 3300);
    CdeFermer.Move(2500, 4050, 1500, 400);
}

void FrmBrows::Form_Load() {
    // The save folder's files, newest name last; read again each time it comes forward.
    SetCaption(app.params.DossierEnregCourt);
    LabDossier.SetCaption(app.params.DossierEnregCourt);
    CdeFermer.SetCaption(app.Lang(202));
    auto noms = rt::FolderNames(app.params.DossierEnregCourt, false);
    std::sort(noms.begin(), noms.end());
    ListFichiers.Clear();
    for (auto& n : noms) ListFichiers.AddItem(std::move(n));
}

FrmDialTemp::FrmDialTemp(App& a) : ui::Form(a.be, L"FrmDialTemp"), app(a) {
    OnLoad = [this] { Form_Load(); };
    Timer1.OnTimer = [this] {
        Timer1.SetEnabled(false);
        Unload();
    };
}

void FrmDialTemp::Design() {
    borderStyle = ui::kBorderFixedToolWindow;
    Move(0, 0, 3600, 1100);
    LabAffich.Move(200, 200, 3200, 400);
}

void FrmDialTemp::Form_Load() {
    Move(app.main->Left(), app.main->Top(), Width(), Height());
    LabAffich.SetCaption(app.Lang(241));
    SetCaption(app.Lang(242));
}

} // namespace mv
