#include "language/FrmChoixLng.h"

#include "core/CursTransp.h"
#include "core/small_forms.h"
#include "language/charge.h"
#include "platform/gdi/bmp.h"
#include "runtime/files.h"
#include "runtime/strings.h"

namespace mv {

namespace {
constexpr uint32_t kFondTransparent = 0xC0FFFF;
}

FrmChoixLng::FrmChoixLng(App& a) : ui::Form(a.be, L"FrmChoixLng"), app(a) {
    OnLoad = [this] { Form_Load(); };
    Image1.OnClick = [this] { Image1_Click(); };
    Image2.OnClick = [this] { Image2_Click(); };
    Label1.OnClick = [this] { Image1_Click(); };
    Label2.OnClick = [this] { Image2_Click(); };
    TimSuite.OnTimer = [this] { TimSuite_Timer(); };
}

void FrmChoixLng::Design() {
    SetCaption(L"Mirovanta");
    borderStyle = ui::kBorderNone;
    showInTaskbar = true;
    SetBackColor(kFondTransparent);
    CenterOnScreen(4200, 2100);
    Image1.Move(480, 240, 1500, 1020);
    Image2.Move(2220, 240, 1500, 1020);
    for (ui::PictureBox* p : {&Image1, &Image2}) p->SetBorderStyle(ui::kBorderNone);
    Label1.Move(480, 1380, 1500, 360);
    Label1.SetCaption(L"Français");
    Label2.Move(2220, 1380, 1500, 360);
    Label2.SetCaption(L"English");
    for (ui::Label* l : {&Label1, &Label2}) {
        l->SetAlignment(2);
        l->SetFont({L"Arial", 11, true, false});
        l->SetBackColor(0xFFFFFF);
        l->SetBorderStyle(ui::kBorderFixedSingle);
    }
}

bool FrmChoixLng::LangueChoisie() {
    // An empty or garbled spoken.txt names no language file of the program: the choice
    // is asked again, and the new one replaces it.
    try {
        const std::wstring spoken = app.DossierParams + L"\\spoken.txt";
        if (!rt::FileExists(spoken)) return false;
        const std::wstring code = SpokenCode(rt::ReadFileBytes(spoken));
        return !rt::Trim(code).empty() &&
               rt::FileExists(app.be.GetShell().ProgramFolder() + L"\\" + LanguageFileName(code));
    } catch (...) {
        rt::CaughtError();
        return false;
    }
}

void FrmChoixLng::Form_Load() {
    // The see-through background leaves only the two flags and their names on screen.
    FenCleCouleur(*this, kFondTransparent, 0);
    app.DossierParams = app.be.GetShell().ShellFolder(L"AppData") + L"\\Mirovanta";
    if (LangueChoisie()) {
        ChargtConstEouF();
        Unload();
        return;
    }
    // Only the chooser needs the flags; a flag that cannot be read leaves its box blank,
    // with the language's name beneath it still to click.
    const std::wstring dossier = app.be.GetShell().ProgramFolder();
    for (auto [image, fichier] :
         {std::pair{&Image1, L"\\flagfr.bmp"}, {&Image2, L"\\flagen.bmp"}}) {
        try {
            image->SetPicture(gdi::LoadBmp(dossier + fichier));
        } catch (...) {
            rt::CaughtError();
        }
    }
    if (!rt::DirExists(app.DossierParams)) rt::MkDir(app.DossierParams);
}

void FrmChoixLng::Choisir(const std::string& code) {
    const std::string ligne = code + "\r\n";
    rt::WriteFileBytes(app.DossierParams + L"\\spoken.txt", ligne.data(), ligne.size());
    // The frame around the chosen flag shows for a moment before the program goes on.
    TimSuite.SetEnabled(true);
}

void FrmChoixLng::Image1_Click() {
    Image1.SetBorderStyle(ui::kBorderFixedSingle);
    Image2.SetBorderStyle(ui::kBorderNone);
    Choisir("ConstPRJF");
}

void FrmChoixLng::Image2_Click() {
    Image2.SetBorderStyle(ui::kBorderFixedSingle);
    Image1.SetBorderStyle(ui::kBorderNone);
    Choisir("ConstPRJA");
}

void FrmChoixLng::TimSuite_Timer() {
    ChargtConstEouF();
    TimSuite.SetEnabled(false);
    Unload();
}

void FrmChoixLng::ChargtConstEouF() {
    const std::wstring code = SpokenCode(rt::ReadFileBytes(app.DossierParams + L"\\spoken.txt"));
    const std::wstring fichier = app.be.GetShell().ProgramFolder() + L"\\" + LanguageFileName(code);
    if (!ChargerLangue(app.lang, rt::ReadFileBytes(fichier))) {
        // Nothing else opens: the program ends without a window.
        app.MsgBox(kPermanentError, ui::kCritical);
        return;
    }
    app.splash->Show();
}

} // namespace mv
