#include "language/frmTip.h"

#include "core/frmMain.h"
#include "platform/gdi/bmp.h"
#include "runtime/errors.h"
#include "runtime/integer.h"

namespace mv {

namespace {

const wchar_t* const kProgramme = L"Mirovanta";
const wchar_t* const kSection = L"Options";
const wchar_t* const kCle = L"Show Tips at Startup";

} // namespace

bool AstucesAuDemarrage(App& app) {
    return app.be.GetShell().GetSetting(kProgramme, kSection, kCle, L"1") != L"0";
}

void EcrireAstucesAuDemarrage(App& app, bool actives) {
    app.be.GetShell().SaveSetting(kProgramme, kSection, kCle, actives ? L"1" : L"0");
}

frmTip::frmTip(App& a) : ui::Form(a.be, L"frmTip"), app(a) {
    OnLoad = [this] { Form_Load(); };
    cmdNextTip.OnClick = [this] { cmdNextTip_Click(); };
    cmdOK.OnClick = [this] { cmdOK_Click(); };
    chkLoadTipsAtStartup.OnClick = [this] { chkLoadTipsAtStartup_Click(); };
    Timer1.OnTimer = [this] { cmdOK_Click(); };
}

void frmTip::Design() {
    borderStyle = ui::kBorderFixedDialog;
    CenterOnScreen(6600, 2950);
    Picture1.Move(240, 240, 480, 480);
    Label1.Move(960, 240, 5300, 360);
    Label1.SetFont({L"Arial", 12, true, false});
    Label1.SetTransparent(true);
    lblTipText.Move(960, 720, 5300, 1150);
    lblTipText.SetFont({L"Arial", 10, false, false});
    lblTipText.SetTransparent(true);
    chkLoadTipsAtStartup.Move(240, 2050, 3000, 300);
    cmdNextTip.Move(3500, 2000, 1450, 400);
    cmdOK.Move(5100, 2000, 1160, 400);
}

void frmTip::Form_Load() {
    SetBackColor(app.main->BackColor());
    if (!AstucesAuDemarrage(app)) {
        Unload();
        return;
    }
    SetCaption(app.Lang(170));
    Label1.SetCaption(app.Lang(168));
    cmdNextTip.SetCaption(app.Lang(169));
    cmdOK.SetCaption(app.Lang(174));
    chkLoadTipsAtStartup.SetCaption(app.Lang(171));
    chkLoadTipsAtStartup.SetBackColor(BackColor());
    chkLoadTipsAtStartup.SetValue(1);
    try {
        Picture1.SetPicture(gdi::LoadBmp(app.be.GetShell().ProgramFolder() + L"\\bulb.bmp"));
    } catch (const rt::RuntimeError&) {
        // Without its bulb the tip reads the same.
    }
    app.rnd.Randomize(app.be.Timer());
    AstuceSuivante();
}

void frmTip::AstuceSuivante() {
    const auto nombre = double(app.lang.TabBulles.size());
    AstuceCourante = int32_t(rt::Int(app.rnd.Rnd() * nombre + 1));
    DisplayCurrentTip();
}

void frmTip::DisplayCurrentTip() {
    const auto& astuces = app.lang.TabBulles;
    if (astuces.empty()) return;
    lblTipText.SetCaption(astuces.at(size_t(AstuceCourante - 1)));
}

void frmTip::cmdNextTip_Click() {
    AstuceSuivante();
    Timer1.SetEnabled(false);
}

void frmTip::cmdOK_Click() {
    Unload();
}

void frmTip::chkLoadTipsAtStartup_Click() {
    EcrireAstucesAuDemarrage(app, chkLoadTipsAtStartup.Value() != 0);
}

void frmTip::ShowTip() {
    Show();
}

} // namespace mv
