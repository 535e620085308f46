// The start-up form: loads the language file, first asking for the language when the
// choice is not yet stored.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

namespace mv {

class FrmChoixLng : public ui::Form {
public:
    explicit FrmChoixLng(App& app);
    App& app;

    ui::PictureBox Image1{this, L"Image1"}; // the French flag
    ui::PictureBox Image2{this, L"Image2"}; // the English flag
    ui::Label Label1{this, L"Label1"};
    ui::Label Label2{this, L"Label2"};
    ui::Timer TimSuite{this, L"TimSuite", 500, false};

    void Form_Load();
    void Image1_Click();
    void Image2_Click();
    void TimSuite_Timer();
    // Reads spoken.txt and the language file into the tables, then shows frmSplash.
    void ChargtConstEouF();

protected:
    void Design() override;

private:
    void Choisir(const std::string& code);
    // True when spoken.txt names a language file of the program.
    bool LangueChoisie();
};

} // namespace mv
