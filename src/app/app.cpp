#include "app/app.h"

#include "browser/Flistimages.h"
#include "capture/Fcam.h"
#include "core/frmMain.h"
#include "core/small_forms.h"
#include "gifanim/FrmGifAnim.h"
#include "language/AideRapide.h"
#include "language/FrmAideStd.h"
#include "language/FrmChoixLng.h"
#include "language/frmTip.h"
#include "output/conversion.h"
#include "overlay/FrmFull.h"
#include "runtime/files.h"
#include "settings/Options.h"
#include "timed/FrmChrono.h"

namespace mv {

App::App(ui::Backend& backend) : be(backend) {
    main = std::make_unique<frmMain>(*this);
    list = std::make_unique<Flistimages>(*this);
    full = std::make_unique<FrmFull>(*this);
    options = std::make_unique<Options>(*this);
    tip = std::make_unique<frmTip>(*this);
    aide = std::make_unique<FrmAideStd>(*this);
    aidfn = std::make_unique<FrmAidfn>(*this);
    aidfv = std::make_unique<Frmaidfv>(*this);
    aidopt = std::make_unique<FrmAidOpt>(*this);
    actua = std::make_unique<FrmActua>(*this);
    about = std::make_unique<frmAbout>(*this);
    choix = std::make_unique<FrmChoixLng>(*this);
    splash = std::make_unique<frmSplash>(*this);
    sortie = std::make_unique<FrmSortie>(*this);
    cam = std::make_unique<Fcam>(*this);
    conversion = std::make_unique<Conversion>(*this);
    chrono = std::make_unique<FrmChrono>(*this);
    brows = std::make_unique<FrmBrows>(*this);
    dialtemp = std::make_unique<FrmDialTemp>(*this);
}

App::~App() = default;

void App::Start() {
    // With the language stored the chooser unloads itself during its load, never seen.
    choix->Load();
    if (choix->IsLoaded()) choix->Show();
}

int App::MsgBox(const std::wstring& prompt, int style, const std::wstring& title) {
    return be.MsgBox(prompt, style, title.empty() ? std::wstring(L"Mirovanta") : title);
}

void App::MsgErreur(const rt::RuntimeError& e, const std::wstring& avant, int style) {
    MsgBox(avant + std::to_wstring(e.number) + L" " + e.text, style);
}

} // namespace mv
