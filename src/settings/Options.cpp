#include "settings/Options.h"
#include "runtime/files.h"

#include "core/commands.h"
#include "core/frmMain.h"
#include "overlay/FrmFull.h"
#include "runtime/errors.h"
#include "runtime/strings.h"
#include "settings/settings_app.h"
#include "settings/settings_file.h"

#include <algorithm>

namespace mv {

namespace {

// The columns of the check boxes in the settings line, by index.
constexpr int kColonnesCoches[8] = {107, 108, 109, 118, 121, 119, 120, 115};

std::wstring UnOuZero(const ui::CheckBox& c) {
    return c.Value() == 1 ? L"1" : L"0";
}

} // namespace

Options::Options(App& a) : ui::Form(a.be, L"Options"), app(a) {
    touches_ = {&TextTouche1, &TextTouche2, &TextTouche3, &TextTouche4, &TextTouche5};
    OnLoad = [this] { Form_Load(); };
    Check1.OnClick = [this](int i) { Check1_Click(i); };
    Cdeparcourir.OnClick = [this] { Cdeparcourir_Click(); };
    CdeParcEdit.OnClick = [this] { CdeParcEdit_Click(); };
    OKButton.OnClick = [this] { OKButton_Click(); };
    CdeAnnul.OnClick = [this] { Hide(); };
    for (ui::TextBox* t : touches_) {
        t->OnKeyDown = [this, t](int16_t&, int16_t) { CarPrec = t->Text(); };
        t->OnChange = [this, t] { TextTouche_Change(*t); };
    }
}

void Options::Design() {
    keyPreview = true;
    SetCaption(L"Options");
    borderStyle = ui::kBorderFixedDialog;
    Move(1200, 1200, 12100, 6900);
    for (int i = 0; i <= 7; ++i)
        if (!Check1.Exists(i)) Check1.Design(i);

    Label1.Move(120, 180, 3000, 255);
    Text1.Move(3150, 150, 7100, 315);
    Text1.SetLocked(true);
    Cdeparcourir.Move(10400, 120, 1450, 375);
    LabChoixEdit.Move(120, 630, 3000, 255);
    TxtEdit.Move(3150, 600, 7100, 315);
    TxtEdit.SetLocked(true);
    CdeParcEdit.Move(10400, 570, 1450, 375);
    Label5.Move(120, 1110, 3400, 255);
    Txtpref.SetMaxLength(6);
    Txtpref.SetText(L"Capt");
    Label2.Move(120, 1560, 4600, 255);
    Txtinterval.SetMaxLength(5);
    Label7.Move(120, 2040, 4000, 255);
    Slidtempo.SetMin(0);
    Slidtempo.SetMax(10);
    Slidtempo.SetLargeChange(1);
    Label4.Move(120, 2610, 1500, 255);
    Slidqual.Move(1650, 2500, 2600, 450);
    Slidqual.SetMin(0);
    Slidqual.SetMax(10);
    Slidqual.SetLargeChange(1);
    Label3.Move(4350, 2610, 4000, 255);

    Check1[0].Move(120, 3150, 6500, 255);
    lblt.Move(6700, 3150, 2400, 800);
    for (ui::TextBox* t : touches_) t->SetMaxLength(1);
    OKButton.Move(8800, 5950, 1450, 400);
    OKButton.SetCaption(L"OK");
    CdeAnnul.Move(10400, 5950, 1450, 400);
}

void Options::Form_Load() {
    const uint32_t fond = app.main->BackColor();
    SetBackColor(fond);

    // Layout: the key boxes in a column right of their heading, their labels beside them;
    // the check boxes in a column 300 apart; the fields 50 right of their labels.
    TextTouche1.Move(lblt.Left() + lblt.Width() + 50, lblt.Top() + 30, 300, 285);
    for (size_t i = 1; i < touches_.size(); ++i)
        touches_[i]->Move(TextTouche1.Left(),
                          touches_[i - 1]->Top() + touches_[i - 1]->Height() + 30,
                          TextTouche1.Width(), TextTouche1.Height());
    ui::Label* libelles[] = {&LabTzone, &LabTMzone, &LabTecran, &LabTfen, &LabDblH};
    for (size_t i = 0; i < touches_.size(); ++i)
        libelles[i]->Move(TextTouche1.Left() + 400, touches_[i]->Top() + 20, 2300,
                          i == 4 ? 480 : 255);
    for (int i = 1; i <= 7; ++i)
        Check1[i].Move(Check1[i - 1].Left(), Check1[i - 1].Top() + 300, Check1[i - 1].Width(),
                       Check1[i - 1].Height());
    const float largeurTexte = 95; // twips a character, for the widths of the captions
    auto aDroite = [&](ui::Label& l, ui::Control& c, float largeur, float hauteur) {
        l.SetWidth(std::max(1200.f, float(l.Caption().size()) * largeurTexte));
        c.Move(l.Left() + l.Width() + 50, l.Top() - 30, largeur, hauteur);
    };

    // Captions.
    SetCaption(app.Lang(89));
    Label1.SetCaption(app.Lang(69));
    Cdeparcourir.SetCaption(app.Lang(70));
    CdeParcEdit.SetCaption(app.Lang(70));
    Label5.SetCaption(app.Lang(71));
    Label2.SetCaption(app.Lang(81));
    Label3.SetCaption(app.Lang(83));
    Label4.SetCaption(app.Lang(82));
    Label7.SetCaption(app.Lang(59));
    LabChoixEdit.SetCaption(app.Lang(90));
    for (int i = 0; i <= 5; ++i) Check1[i].SetCaption(app.Lang(75 + i));
    Check1[5].SetToolTipText(app.Lang(176));
    Check1[6].SetCaption(app.Lang(267));
    Check1[7].SetCaption(app.Lang(269));
    lblt.SetCaption(app.Lang(72) + L"\r\n" + app.Lang(73) + L"\r\n" + app.Lang(74));
    LabTzone.SetCaption(app.Lang(84));
    LabTMzone.SetCaption(app.Lang(85));
    LabTecran.SetCaption(app.Lang(86));
    LabTfen.SetCaption(app.Lang(87));
    LabDblH.SetCaption(app.Lang(266));
    CdeAnnul.SetCaption(app.Lang(88));
    aDroite(Label5, Txtpref, 900, 315);
    aDroite(Label2, Txtinterval, 900, 315);
    aDroite(Label7, Slidtempo, 2600, 450);

    for (ui::Label* l : {&Label1, &Label2, &Label3, &Label4, &Label5, &Label7, &LabChoixEdit, &lblt,
                         &LabTzone, &LabTMzone, &LabTecran, &LabTfen, &LabDblH})
        l->SetBackColor(fond);
    for (int i = 0; i <= 7; ++i) Check1[i].SetBackColor(fond);

    TxtEdit.SetText(app.params.Editeur);
    Text1.SetText(Lisible(app.params.DossierEnreg));

    // The controls from the columns of the settings line.
    const std::wstring& l = app.params.LigneParams;
    for (int i = 0; i <= 7; ++i) {
        const std::wstring c = rt::Mid(l, kColonnesCoches[i], 1);
        Check1[i].SetValue(c == L"1" ? 1 : 0);
    }
    Slidqual.SetValue(int(rt::Val(rt::Mid(l, 110))));
    Slidtempo.SetValue(int(rt::Val(rt::Mid(l, 117, 1))));
    Txtinterval.SetText(rt::Mid(l, 122, 5));
    Txtpref.SetText(rt::Mid(l, 111, 4));
    TxtEdit.SetText(Lisible(rt::Mid(l, 131, 150)));
    for (size_t i = 0; i < touches_.size(); ++i) {
        CarPrec = touches_[i]->Text();
        touches_[i]->SetText(rt::Mid(l, 101 + long(i), 1));
    }
}

void Options::Check1_Click(int Index) {
    if (Index != 6 || Check1[6].Value() != 0) return;
    // The rectangle of the frozen screen goes at once, handles and all.
    FrmFull& F = *app.full;
    F.rectsel.SetVisible(false);
    for (int i = 0; i <= 7; ++i)
        if (F.coinrect.Exists(i)) F.coinrect[i].SetVisible(false);
}

bool Options::Parcourir() {
    frmMain& M = *app.main;
    const bool periodique = M.TimPeriod.Enabled();
    if (periodique) M.TimPeriod.SetEnabled(false);
    Cdlgparc.cancelError = true;
    try {
        Cdlgparc.ShowOpen();
    } catch (...) {
        rt::CaughtError();
        if (periodique) M.TimPeriod.SetEnabled(true);
        return false;
    }
    if (periodique) M.TimPeriod.SetEnabled(true);
    return true;
}

void Options::Cdeparcourir_Click() {
    // A folder is chosen by choosing a file name in it.
    Cdlgparc.initDir = rt::RTrim(Text1.Text());
    Cdlgparc.fileName = app.Lang(130);
    if (!Parcourir()) return;
    const std::wstring& f = Cdlgparc.fileName;
    const int barre = rt::InStrRev(f, L"\\");
    Text1.SetText(barre > 0 ? rt::Left(f, barre - 1) : f);
}

void Options::CdeParcEdit_Click() {
    Cdlgparc.initDir.clear();
    Cdlgparc.fileName.clear();
    if (Parcourir()) TxtEdit.SetText(Cdlgparc.fileName);
}

void Options::TextTouche_Change(ui::TextBox& boite) {
    // 1 to 9, A to Z and a to z; anything else, and an emptied box, gets the old character
    // back. The box writes only a text that differs, so these writes end.
    auto code = [&boite]() -> int { return boite.Text().empty() ? -1 : int(boite.Text()[0]); };
    int c = code();
    if (c < 0 || c > 122) boite.SetText(CarPrec);
    c = code();
    if (c >= 0 && c < 49) boite.SetText(CarPrec);
    c = code();
    if (c > 57 && c < 65) boite.SetText(CarPrec);
    c = code();
    if (c > 90 && c < 97) boite.SetText(CarPrec);
    boite.SetText(rt::UCase(boite.Text()));
}

bool Options::ToucheOk() const {
    // Joined into four characters: the fifth key falls away and may equal any other.
    std::wstring jointes;
    for (const ui::TextBox* t : touches_) jointes += t->Text();
    jointes = Cadrer(jointes, 4);
    for (size_t i = 0; i < 4; ++i)
        for (size_t j = i + 1; j < 4; ++j)
            if (jointes[i] == jointes[j]) return false;
    const std::wstring& t1 = TextTouche1.Text();
    return (t1 >= L"1" && t1 <= L"9") || (t1 >= L"A" && t1 <= L"Z");
}

std::wstring Options::NouvelleLigne(const std::wstring& editeurFichier) {
    const Params& p = app.params;
    std::wstring l = std::wstring(92, L' ') + p.LargSel + p.HautSel;
    for (const ui::TextBox* t : touches_) l += rt::Left(t->Text(), 1);
    l += L" " + UnOuZero(Check1[0]) + UnOuZero(Check1[1]) + UnOuZero(Check1[2]);
    // Joined, not placed: a quality of 10 gives "0", a pause of 10 moves what follows.
    l += rt::Right(std::to_wstring(Slidqual.Value()), 1);
    l += rt::Left(Txtpref.Text(), 4);
    l += UnOuZero(Check1[7]) + L" ";
    l += rt::Format(Slidtempo.Value(), L"0");
    l += UnOuZero(Check1[3]) + UnOuZero(Check1[5]) + UnOuZero(Check1[6]) + UnOuZero(Check1[4]);
    l += rt::Format(rt::Val(Txtinterval.Text()), L"00000");
    l += L"    ";
    const std::wstring editeur = rt::Left(editeurFichier, 150);
    // Over 150 characters the count of blanks is negative: the error of the original.
    l += editeur + rt::String(150 - rt::Len(editeurFichier), L' ');
    l += p.DossierTemp + L"<=======";
    return Cadrer(l);
}

void Options::OKButton_Click() {
    frmMain& M = *app.main;
    Params& p = app.params;
    if (M.MnuCaptper.Checked()) M.TimPeriod.SetEnabled(true);
    if (rt::Len(Txtpref.Text()) < 4) {
        app.MsgBox(app.Lang(66), ui::kExclamation);
        Txtpref.SetFocus();
        return;
    }
    if (!ToucheOk()) {
        app.MsgBox(app.Lang(67), ui::kExclamation);
        return;
    }
    std::wstring dossier, editeur;
    if (!Transcriptible(Text1, dossier) || !Transcriptible(TxtEdit, editeur)) return;
    p.LigneParams = NouvelleLigne(editeur);

    // The interval: at most 65000, written back into its columns.
    const double intervalle = rt::Val(rt::Mid(p.LigneParams, 122, 5));
    if (intervalle < 65000) {
        M.TimPeriod.SetInterval(int(intervalle));
    } else {
        M.TimPeriod.SetInterval(65000);
        p.LigneParams.replace(121, 5, L"65000");
    }

    // The save-all button's tooltip: up to its arrow, then the line up to its first blank.
    const std::wstring& bulle = M.bouton[kCmdEnregistrerTout].ToolTipText();
    const int fleche = rt::InStr(bulle, L"--->");
    M.bouton[kCmdEnregistrerTout].SetToolTipText(
        rt::Left(bulle, fleche) + L"-->    " +
        rt::Left(p.LigneParams, rt::InStr(p.LigneParams, L"  ")));

    RafraichirParams(p, Slidtempo.Value() / 10.0);
    p.Editeur = editeur;
    const int exe = rt::InStr(p.Editeur, L".exe");
    const int barre = rt::InStrRev(p.Editeur, L"\\");
    p.EditeurNom = rt::Mid(p.Editeur, barre + 1, exe + 3);

    p.DossierEnregCourt = DossierCourt(dossier);
    p.DossierPerso = p.DossierEnregCourt;
    p.DossierEnreg = Cadrer(p.DossierEnregCourt);
    SavOptions(app);
    Hide();
}

std::wstring Options::Lisible(const std::wstring& champ) {
    // A path kept in its short form shows under its real name; OK shortens it again.
    const std::wstring chemin = rt::RTrim(champ);
    const std::wstring long_ = app.be.GetShell().LongPath(chemin);
    return long_ == chemin ? champ : long_;
}

bool Options::Transcriptible(const ui::TextBox& boite, std::wstring& pourFichier) {
    pourFichier = boite.Text();
    const std::wstring chemin = DossierCourt(pourFichier);
    if (rt::AnsiHolds(chemin)) return true;
    const std::wstring court = app.be.GetShell().ShortPath(chemin);
    if (rt::AnsiHolds(court)) {
        pourFichier = court;
        return true;
    }
    app.MsgBox(app.Lang(286) + L"\r\n\r\n" + chemin, ui::kExclamation);
    return false;
}

void Options::ShowDialog() {
    Show(true);
}

void Options::ShowNonModal() {
    Show(false);
}

} // namespace mv
