// The tip of the day: one random tip of the language file at start-up, until the user
// turns the tips off. The choice is the program's one setting kept in the per-user
// settings store rather than in params.txt.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

namespace mv {

// The tips setting: on unless the store holds exactly "0".
bool AstucesAuDemarrage(App& app);
// Writes 1 (on) or 0 (off).
void EcrireAstucesAuDemarrage(App& app, bool actives);

class frmTip : public ui::Form {
public:
    explicit frmTip(App& app);
    App& app;

    ui::PictureBox Picture1{this, L"Picture1"};
    ui::Label Label1{this, L"Label1"};
    ui::Label lblTipText{this, L"lblTipText"};
    ui::CheckBox chkLoadTipsAtStartup{this, L"chkLoadTipsAtStartup"};
    ui::CommandButton cmdNextTip{this, L"cmdNextTip"};
    ui::CommandButton cmdOK{this, L"cmdOK"};
    // Closes the form; nothing enables it.
    ui::Timer Timer1{this, L"Timer1", 30000, false};

    // The tip on display, from 1.
    int32_t AstuceCourante = 0;
    // The name of the old tips file; the tips come from the language file.
    static constexpr wchar_t kFichierAstuces[] = L"TIPOFDAY.TXT";

    void Form_Load();
    void AstuceSuivante();
    void DisplayCurrentTip();
    void cmdNextTip_Click();
    void cmdOK_Click();
    void chkLoadTipsAtStartup_Click();
    // Shown at the end of the start-up: the form unloads itself when tips are off.
    void ShowTip();

protected:
    void Design() override;
};

} // namespace mv
