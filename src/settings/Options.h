// The options dialog: every setting of params.txt, read from the columns of the settings
// line, checked, joined into a new line and written back on OK.
#pragma once

#include "app/app.h"
#include "platform/ui/controls.h"
#include "platform/ui/form.h"

#include <array>

namespace mv {

class Options : public ui::Form {
public:
    explicit Options(App& app);
    App& app;

    ui::Label Label1{this, L"Label1"};
    ui::TextBox Text1{this, L"Text1"};
    ui::CommandButton Cdeparcourir{this, L"Cdeparcourir"};
    ui::Label LabChoixEdit{this, L"LabChoixEdit"};
    ui::TextBox TxtEdit{this, L"TxtEdit"};
    ui::CommandButton CdeParcEdit{this, L"CdeParcEdit"};
    ui::Label Label5{this, L"Label5"};
    ui::TextBox Txtpref{this, L"Txtpref"};
    ui::Label Label2{this, L"Label2"};
    ui::TextBox Txtinterval{this, L"Txtinterval"};
    ui::Label Label7{this, L"Label7"};
    ui::Slider Slidtempo{this, L"Slidtempo"};
    ui::Label Label4{this, L"Label4"};
    ui::Slider Slidqual{this, L"Slidqual"};
    ui::Label Label3{this, L"Label3"};
    ui::ControlArray<ui::CheckBox> Check1{this, L"Check1"};
    ui::Label lblt{this, L"lblt"};
    ui::TextBox TextTouche1{this, L"TextTouche1"};
    ui::TextBox TextTouche2{this, L"TextTouche2"};
    ui::TextBox TextTouche3{this, L"TextTouche3"};
    ui::TextBox TextTouche4{this, L"TextTouche4"};
    ui::TextBox TextTouche5{this, L"TextTouche5"};
    ui::Label LabTzone{this, L"LabTzone"};
    ui::Label LabTMzone{this, L"LabTMzone"};
    ui::Label LabTecran{this, L"LabTecran"};
    ui::Label LabTfen{this, L"LabTfen"};
    ui::Label LabDblH{this, L"LabDblH"};
    ui::CommandButton OKButton{this, L"OKButton"};
    ui::CommandButton CdeAnnul{this, L"CdeAnnul"};
    ui::CommonDialog Cdlgparc{this, L"Cdlgparc"};

    // The text of a hotkey box before the latest key press in it.
    std::wstring CarPrec;

    // Shows the dialog modally, or without waiting for it.
    void ShowDialog();
    void ShowNonModal();

    void Form_Load();
    void Check1_Click(int Index);
    void Cdeparcourir_Click();
    void CdeParcEdit_Click();
    void OKButton_Click();
    void TextTouche_Change(ui::TextBox& boite);
    // The key tests of OK: the first four keys all different, the first in range.
    bool ToucheOk() const;
    // The text a path field shows: its long form when the field holds a short one.
    std::wstring Lisible(const std::wstring& champ);
    // params.txt holds single bytes in the system's code page: a path outside it goes in
    // its short form (pourFichier); with none, a box says why the choice cannot be kept
    // (false). The box keeps the name the user sees.
    bool Transcriptible(const ui::TextBox& boite, std::wstring& pourFichier);
    // The settings line the dialog's controls make, joined piece by piece, with the editor
    // as the file holds it.
    std::wstring NouvelleLigne(const std::wstring& editeurFichier);

protected:
    void Design() override;

private:
    std::array<ui::TextBox*, 5> touches_{};
    // The file dialog with TimPeriod paused; false on Cancel.
    bool Parcourir();
};

} // namespace mv
