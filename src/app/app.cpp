#include "app/app.h"

#include "app/forms.h"
#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "runtime/files.h"

namespace mv {

App::App(ui::Backend& backend) : be(backend) {
    main = std::make_unique<frmMain>(*this);
    list = std::make_unique<Flistimages>(*this);
    full = std::make_unique<FrmFull>(*this);
    options = std::make_unique<Options>(*this);
    tip = std::make_unique<frmTip>(*this);
    about = std::make_unique<frmAbout>(*this);
}

App::~App() = default;

void App::Start() {
    DossierParams = be.GetShell().ShellFolder(L"AppData") + L"\\Mirovanta";
    if (!rt::DirExists(DossierParams)) rt::MkDir(DossierParams);
    main->Show();
}

int App::MsgBox(const std::wstring& prompt, int style, const std::wstring& title) {
    return be.MsgBox(prompt, style, title.empty() ? std::wstring(L"Mirovanta") : title);
}

} // namespace mv
