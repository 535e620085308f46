// The side windows: the quick help panels of the main window, the thumbnails and the
// options (F1 in each; a hotkey puts them away), and the news window of the Help menu.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

namespace mv {

// A small panel with one help text of the language file, beside the window it explains.
class AideRapide : public ui::Form {
public:
    AideRapide(App& app, const wchar_t* nom, int texte);
    App& app;
    ui::Label LabTexte{this, L"LabTexte"};
    ui::CommandButton CdeFermer{this, L"CdeFermer"};
    // Shows the panel at the right of that window, or at its left when the screen ends.
    void Montrer(const ui::Form& fenetre);

protected:
    void Design() override;

private:
    int texte_;
};

class FrmAidfn : public AideRapide {
public:
    explicit FrmAidfn(App& a) : AideRapide(a, L"FrmAidfn", 92) {}
};

class Frmaidfv : public AideRapide {
public:
    explicit Frmaidfv(App& a) : AideRapide(a, L"Frmaidfv", 93) {}
};

class FrmAidOpt : public AideRapide {
public:
    explicit FrmAidOpt(App& a) : AideRapide(a, L"FrmAidOpt", 94) {}
};

// What is new in this version, and where to find the program on the web.
class FrmActua : public ui::Form {
public:
    explicit FrmActua(App& app);
    App& app;
    ui::Label LabTitre{this, L"LabTitre"};
    ui::Label LabNouveau{this, L"LabNouveau"};
    ui::Label LabSite{this, L"LabSite"};
    ui::CommandButton CdeFermer{this, L"CdeFermer"};

protected:
    void Design() override;
};

// Help > News and Help > Mirovanta on the web.
void MnuNouversion_Click(App& app);
void Tutosite_Click(App& app);
// A hotkey fired: the quick help panels go.
void FermerAidesRapides(App& app);

} // namespace mv
