#include "language/AideRapide.h"

#include "core/frmMain.h"
#include "runtime/strings.h"

#include <algorithm>
#include <array>

namespace mv {

namespace {

constexpr float kLargeur = 4200;
constexpr float kHauteur = 2300;
const wchar_t* const kSite = L"https://mirovanta.app";

} // namespace

AideRapide::AideRapide(App& a, const wchar_t* nom, int texte)
    : ui::Form(a.be, nom), app(a), texte_(texte) {
    OnLoad = [this] {
        SetBackColor(app.main->BackColor());
        SetCaption(app.Lang(95));
        LabTexte.SetCaption(app.Lang(texte_));
        CdeFermer.SetCaption(app.Lang(174));
    };
    CdeFermer.OnClick = [this] { Unload(); };
}

void AideRapide::Design() {
    borderStyle = ui::kBorderFixedToolWindow;
    showInTaskbar = false;
    topMost = true;
    Move(0, 0, kLargeur, kHauteur);
    LabTexte.Move(180, 150, kLargeur - 420, 1300);
    LabTexte.SetFont({L"Arial", 9, false, false});
    LabTexte.SetTransparent(true);
    CdeFermer.Move(kLargeur - 1500, 1500, 1200, 360);
}

void AideRapide::Montrer(const ui::Form& fenetre) {
    Load();
    const float ecran = app.Screen().WidthTwips();
    float gauche = fenetre.Left() + fenetre.Width() + 60;
    if (gauche + Width() > ecran) gauche = std::max(0.0f, fenetre.Left() - Width() - 60);
    SetLeft(gauche);
    SetTop(std::max(0.0f, fenetre.Top()));
    Show();
}

FrmActua::FrmActua(App& a) : ui::Form(a.be, L"FrmActua"), app(a) {
    OnLoad = [this] {
        SetBackColor(app.main->BackColor());
        LabTitre.SetCaption(app.Lang(281) + kVersion);
        LabNouveau.SetCaption(app.Lang(282) + L"\r\n\r\n" + app.Lang(283) + L"\r\n\r\n" +
                              app.Lang(284));
        LabSite.SetCaption(app.Lang(285) + L" " + kSite);
        CdeFermer.SetCaption(app.Lang(174));
    };
    CdeFermer.OnClick = [this] { Unload(); };
}

void FrmActua::Design() {
    borderStyle = ui::kBorderFixedDialog;
    CenterOnScreen(7200, 4700);
    LabTitre.Move(300, 240, 6600, 400);
    LabTitre.SetFont({L"Arial", 12, true, false});
    LabTitre.SetTransparent(true);
    LabNouveau.Move(300, 800, 6600, 2600);
    LabNouveau.SetFont({L"Arial", 9, false, false});
    LabNouveau.SetTransparent(true);
    LabSite.Move(300, 3550, 4800, 300);
    LabSite.SetForeColor(0x8B0000);
    LabSite.SetTransparent(true);
    CdeFermer.Move(5700, 3450, 1200, 400);
}

void MnuNouversion_Click(App& app) {
    app.actua->Load();
    app.actua->SetCaption(rt::Replace(app.Lang(184), L"&", L""));
    app.actua->Show();
}

void Tutosite_Click(App& app) {
    app.actua->Load();
    app.actua->SetCaption(app.Lang(27));
    app.actua->Show();
}

void FermerAidesRapides(App& app) {
    const std::array<AideRapide*, 3> panneaux = {app.aidfv.get(), app.aidfn.get(),
                                                 app.aidopt.get()};
    for (AideRapide* f : panneaux)
        if (f->IsLoaded()) f->Unload();
}

} // namespace mv
