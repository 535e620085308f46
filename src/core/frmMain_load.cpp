// frmMain: design, start-up, window size and shutdown.
#include "browser/Flistimages.h"
#include "capture/Fcam.h"
#include "core/commands.h"
#include "core/frmMain.h"
#include "core/small_forms.h"
#include "gifanim/FrmGifAnim.h"
#include "language/AideRapide.h"
#include "language/frmTip.h"
#include "output/output.h"
#include "output/tags.h"
#include "overlay/FrmFull.h"
#include "platform/gdi/bmp.h"
#include "runtime/files.h"
#include "runtime/integer.h"
#include "runtime/random.h"
#include "runtime/strings.h"
#include "settings/Options.h"
#include "settings/settings_app.h"
#include "settings/settings_file.h"

namespace mv {

frmMain::frmMain(App& a) : ui::Form(a.be, L"frmMain"), app(a) {
    WireEvents();
}

void frmMain::Design() {
    SetCaption(L"Mirovanta");
    borderStyle = ui::kBorderFixedSingle;
    maxButton = false;
    keyPreview = true;
    Move(12000, 0, 3000, 1430);

    auto& b0 = bouton.Design(0);
    b0.Move(60, 0, 480, 480);
    b0.SetBorderStyle(ui::kBorderNone);
    // The bitmaps grow with the buttons on a scaled screen.
    b0.stretch = true;

    for (ui::PictureBox* p : {&Picture1, &Picture2, &Picture2S, &ImgTTscreen}) {
        p->Move(20, 560, 1500, 1000);
        p->SetVisible(false);
        p->SetBackColor(0xFFFFFF);
    }
    // The unseen source of the view takes the size of each capture it holds.
    Picture2S.autoSize = true;
    PictSave.Move(30, 500, 240, 225);
    PictSave.SetVisible(false);
    PictReserv.SetVisible(false);

    labdeb.Move(6000, 520, 6000, 285);
    labdeb.SetTransparent(true);
    labdeb.SetForeColor(0x804000);
    Labtaille.Move(5000, 520, 2500, 255);
    Labtaille.SetVisible(false);
    Labtaill2.Move(0, 0, 2500, 255);
    Labtaill2.SetVisible(false);
    Labtaill2.SetBackColor(0xE1FFFF);
    rectsel.SetContainer(&Picture1);
    rectsel.SetBorderColor(0x0000FF);
    rectsel.SetVisible(false);
    for (ui::Label* l : {&Labdeja, &Labdeja2}) {
        l->Move(50, 50, 3200, 300);
        l->SetVisible(false);
        l->SetBackColor(0xE1FFFF);
        l->SetBorderStyle(ui::kBorderFixedSingle);
        l->SetAlignment(2);
    }
    LabDoubleClick.Move(0, 0, 2600, 255);
    LabDoubleClick.SetVisible(false);
    LabDoubleClick.SetBackColor(0xE1FFFF);
    LabDoubleClick.SetBorderStyle(ui::kBorderFixedSingle);
    Line1.SetBorderColor(0x808080);

    // Design captions; the language load replaces them.
    mnufichier.SetCaption(L"&File");
    Mnuenregistrer.SetCaption(L"&Save...");
    Mnuenregistrertout.SetCaption(L"Save &all");
    Mnuimprimer.SetCaption(L"&Print...");
    mnusepF1.SetCaption(L"-");
    mnucourriel.SetCaption(L"&Mail");
    mnujoindreune.SetCaption(L"Attach the current capture");
    mnujoindrecoch.SetCaption(L"Attach the ticked captures");
    mnujoindretout.SetCaption(L"Attach all captures");
    mnuimgforum.SetCaption(L"Upload the current capture");
    mnusepF2.SetCaption(L"-");
    Mnuquitter.SetCaption(L"&Quit\tCtrl+Q");
    mnuedition.SetCaption(L"&Edit");
    mnuttscreen.SetCaption(L"New &zone");
    mnuretour.SetCaption(L"&Back to the last zone");
    mnurafraichir.SetCaption(L"&Same capture again");
    mnusepE1.SetCaption(L"-");
    mnucopier.SetCaption(L"&Copy");
    MnuEditPaint.SetCaption(L"&Edit in the image editor");
    MnuRaff.SetCaption(L"&Refresh from the editor\tF5");
    MnuRaff.SetVisible(false);
    mnusepE2.SetCaption(L"-");
    Mnudelcap.SetCaption(L"&Delete\tDel");
    Mnudeltout.SetCaption(L"Delete a&ll");
    mnusepE3.SetCaption(L"-");
    mnuzoom.SetCaption(L"&Zoom");
    const wchar_t* zooms[] = {L"-> 25 %", L"-> 50 %", L"-> 75 %", L"-> 100%", L"-> 200 %"};
    for (int i = 0; i < 5; ++i) {
        if (!mnuzoomX.Exists(i)) mnuzoomX.Design(i, &mnuzoom);
        mnuzoomX[i].SetCaption(zooms[i]);
        mnuzoomX[i].SetChecked(false);
    }
    mnuoutils.SetCaption(L"&Tools");
    Mnumulti.SetCaption(L"&Multi-selection");
    MnuEnAuto.SetCaption(L"Save &automatically");
    MnuCaptper.SetCaption(L"&Periodic capture...");
    mnusepT1.SetCaption(L"-");
    mnuFabGif.SetCaption(L"Animated &GIF...");
    mnusepT2.SetCaption(L"-");
    mnuoptions.SetCaption(L"&Options...");
    MnuChgLang.SetCaption(L"&Language");
    mnuHelp.SetCaption(L"&Help");
    MnuAide.SetCaption(L"&Help");
    mnuReacTip.SetCaption(L"&Tips of the day");
    mnumail.SetCaption(L"&Write to us");
    MnuNouversion.SetCaption(L"&News");
    Tutosite.SetCaption(L"&Tutorial");
    mnusepH1.SetCaption(L"-");
    mnuapropos.SetCaption(L"&About");
    Mnured2.SetCaption(L"&Standby");
    Mnured2.SetVisible(false);
    mnucaptu.SetCaption(L"Tray");
    mnucaptu.SetVisible(false);
    Mnuphotorapid.SetCaption(L"New &zone");
    mnuveille.SetCaption(L"&Standby");
    Mnuquitt.SetCaption(L"&Quit");
    Mnuflott.SetCaption(L"Capture");
    Mnuflott.SetVisible(false);
    mnuFenregistrer.SetCaption(L"&Save...");
    MnuFenregistrertout.SetCaption(L"Save &all");
    MnuFdelcap.SetCaption(L"&Delete");
    Mnufdeltout.SetCaption(L"Delete a&ll");
    mnufDelCaptCoch.SetCaption(L"Delete the &ticked captures");
    mnuFeditpaint.SetCaption(L"&Edit in the image editor");
    for (ui::Menu* m : {&mnufichier, &mnuedition, &mnuoutils, &mnuHelp}) m->SetVisible(false);
}

void frmMain::Form_Load() {
    app.PremierSav = true;
    if (!app.be.GetCodec().Startup()) {
        app.MsgBox(app.Lang(157), ui::kCritical);
        Unload();
        return;
    }
    // Each run has a slightly different pale tint.
    rt::Random& rnd = app.rnd;
    rnd.Randomize(app.be.Timer());
    int r = int(rt::Int(rnd.Rnd() * 11)) + 245;
    int g = int(rt::Int(rnd.Rnd() * 11)) + 245;
    SetBackColor(uint32_t(r) | uint32_t(g) << 8 | uint32_t(245) << 16);
    // The thumbnail window takes this colour; TimerUnload hides it once the load is over.
    app.list->Load();
    // F1 in the thumbnails or the options: their quick help panel.
    app.list->OnKeyDown = [this](int16_t& key, int16_t) {
        if (key == ui::kKeyF1) app.aidfv->Montrer(*app.list);
    };
    app.options->OnKeyDown = [this](int16_t& key, int16_t) {
        if (key == ui::kKeyF1) app.aidopt->Montrer(*app.options);
    };

    chargtconstMain();
    chargtparam();

    auto& shell = app.be.GetShell();
    rt::SystemTime now = app.be.Now();
    app.TagHeure = CalcTagHeure(rt::TimeText(now, shell.TimePattern()));
    app.TagDate = CalcTagDate(rt::DateText(now, shell.ShortDatePattern()));

    Picture2.Move(20, bouton[0].Height() + 80, Picture2.Width(), Picture2.Height());
    ImgTTscreen.Move(20, bouton[0].Height() + 80, ImgTTscreen.Width(), ImgTTscreen.Height());
    ImgTTscreen.SetVisible(false);

    // A folder left by a crashed run is never reused: the name grows instead.
    rnd.Randomize(app.be.Timer());
    app.DossierTemp = app.params.DossierTemp;
    // A file of that name (not ours to remove) takes the name as well.
    while (rt::DirExists(app.DossierTemp) || rt::FileExists(app.DossierTemp))
        app.DossierTemp += rt::Format(rt::Int(rnd.Rnd() * 999), L"000");
    rt::MkDir(app.DossierTemp);
    verrouSession_.open(rt::ToFsPath(app.DossierTemp + kVerrouSession));

    const std::wstring dossier = app.be.GetShell().ProgramFolder();
    ImageList1.Clear();
    for (const Commande& c : TableCommandes())
        ImageList1.Add(c.cle, gdi::LoadBmp(dossier + c.bitmap));
    for (const Commande& c : TableCommandes())
        ImageList1.Add(std::wstring(c.cle) + L"2", gdi::LoadBmp(dossier + c.bitmapSurvol));

    std::wstring bulles[20];
    for (int i = 0; i <= 18; ++i) bulles[i] = app.Lang(39 + i);
    bulles[19] = app.Lang(263);
    bulles[5] += L" --->    " + app.params.DossierEnregCourt;
    bouton[0].SetPicture(ImageList1.Item(1));
    bouton[0].SetToolTipText(bulles[0]);
    for (int i = 1; i <= 19; ++i) {
        auto& b = bouton.Load(i);
        b.SetTop(bouton[i - 1].Top());
        b.SetPicture(ImageList1.Item(i + 1));
        b.SetToolTipText(bulles[i]);
        b.SetVisible(true);
    }
    PlaceToolbar();

    // The decoration strip only paints the rest of the bar.
    const gdi::Surface fond = gdi::LoadBmp(dossier + L"\\toutbleuc.bmp");
    int precedent = OrdreBarre().back();
    for (int i = 20; i <= 100; ++i) {
        auto& b = bouton.Load(i);
        b.SetTop(bouton[precedent].Top());
        b.SetLeft(bouton[precedent].Left() + bouton[precedent].Width() - 5);
        b.SetPicture(fond);
        b.SetVisible(true);
        precedent = i;
    }

    app.NbVignettes = 0;
    try {
        SetWindowState(ui::kNormal);
        labdeb.SetTop(bouton[0].Height() + 20);
        Timlabdeb.SetEnabled(true);
        app.HautCapt = 200;
        PosDimRedMain();
        const float basBarre = bouton[0].Top() + bouton[0].Height();
        Line1.SetPoints(0, basBarre, app.Screen().WidthTwips(), basBarre);
        for (ui::Menu* m : {&mnufichier, &mnuedition, &mnuoutils, &mnuHelp}) m->SetVisible(true);
        SetCaption(L"Mirovanta - " + app.Lang(210));
        Labtaille.SetVisible(false);
        Labdeja.SetCaption(app.Lang(172));
        Labdeja2.SetCaption(app.Lang(172));
        app.cam->Load();
        app.be.onEnd = [this] { Form_Terminate(); };
        app.be.GetTray().Add(Handle(), app.Lang(104));
        app.tip->ShowTip();
    } catch (...) {
        const rt::RuntimeError e = rt::CaughtError();
        app.MsgErreur(e);
    }
    ReprendreCaptures();
}

void frmMain::PlaceToolbar() {
    const auto& ordre = OrdreBarre();
    const auto& ecarts = EcartsBarre();
    for (size_t k = 1; k < ordre.size(); ++k) {
        auto& precedent = bouton[ordre[k - 1]];
        bouton[ordre[k]].SetLeft(precedent.Left() + bouton[0].Width() + float(ecarts[k]));
    }
}

void frmMain::chargtconstMain() {
    Picture1.SetToolTipText(app.Lang(0));
    labdeb.SetCaption(app.Lang(1));
    LabDoubleClick.SetCaption(app.Lang(185));
    const std::pair<ui::Menu*, int> menus[] = {
        {&mnufichier, 2},      {&Mnuenregistrer, 3},    {&Mnuenregistrertout, 4},
        {&Mnuimprimer, 5},     {&Mnuquitter, 6},        {&mnucourriel, 7},
        {&mnujoindreune, 8},   {&mnujoindrecoch, 9},    {&mnujoindretout, 10},
        {&mnuimgforum, 11},    {&mnuedition, 12},       {&mnuttscreen, 13},
        {&mnuretour, 14},      {&mnurafraichir, 15},    {&mnucopier, 16},
        {&MnuEditPaint, 17},   {&MnuRaff, 18},          {&Mnudelcap, 22},
        {&Mnudeltout, 23},     {&mnuzoom, 24},          {&mnuoutils, 25},
        {&Tutosite, 27},       {&Mnumulti, 28},         {&MnuEnAuto, 29},
        {&MnuCaptper, 30},     {&mnuFabGif, 31},        {&mnuoptions, 32},
        {&MnuChgLang, 34},     {&mnuHelp, 35},          {&MnuAide, 36},
        {&mnuReacTip, 37},     {&mnumail, 38},          {&MnuNouversion, 184},
        {&mnuapropos, 186},    {&Mnured2, 187},         {&Mnuphotorapid, 193},
        {&Mnuquitt, 196},      {&mnuFenregistrer, 201}, {&MnuFenregistrertout, 204},
        {&MnuFdelcap, 213},    {&Mnufdeltout, 214},     {&mnufDelCaptCoch, 239},
        {&mnuFeditpaint, 256}, {&mnuveille, 105},
    };
    for (const auto& [menu, entree] : menus) menu->SetCaption(app.Lang(entree));
}

void frmMain::chargtparam() {
    // Fills app.params and sets TimPeriod's interval; on a damaged file the program ends.
    mv::chargtparam(app);
}

void frmMain::TimerUnload_Timer() {
    app.list->Hide();
    TimerUnload.SetEnabled(false);
}

void frmMain::Form_Activate() {
    if (app.ZoneValidee) {
        Picture2.Move(20, bouton[0].Height() + 80, app.LargCapt, app.HautCapt);
        Picture1.SetVisible(false);
        PictSave.SetVisible(false);
        Picture2.SetVisible(true);
        app.HautPic1 = rt::CLng(Picture1.Height());
        app.LargPic1 = rt::CLng(Picture1.Width());
        SetCaption(app.Lang(107));
        PosDimRedMain();
        Labtaille.SetVisible(false);
        if (Picture2.Width() > 0.9f * app.Screen().WidthTwips()) mnuzoomX_Click(2);
        app.ZoneValidee = false;
        app.HautPic1 = rt::CLng(Picture1.Height());
        app.LargPic1 = rt::CLng(Picture1.Width());
    }
}

void frmMain::PosDimRedMain() {
    const float largeurMin = LargeurMin();
    const float haut = app.HautCapt + 1430;
    const float larg = largeurMin < Picture2.Width() ? Picture2.Width() + 180 : largeurMin;
    if (WindowState() == ui::kNormal && !app.ModeReduit) {
        SetHeight(haut);
        SetWidth(larg);
        CollerADroite();
        SetTop(0);
    } else {
        app.HautNormal = rt::CLng(haut);
        app.LargNormal = rt::CLng(larg);
    }
}

void frmMain::Agrandred() {
    if (app.NbVignettes <= 0 || app.VignetteCourante <= 0) return;
    const float largeurMin = LargeurMin();
    if (!app.ModeReduit) {
        if (Picture2.Visible()) {
            Picture2.SetVisible(false);
            app.VueCourante = L"picture";
        }
        if (ImgTTscreen.Visible()) {
            ImgTTscreen.SetVisible(false);
            app.VueCourante = L"image";
        }
        app.HautNormal = rt::CLng(Height());
        app.LargNormal = rt::CLng(Width());
        app.GaucheNormal = rt::CLng(Left());
        SetHeight(1430);
        SetWidth(largeurMin);
        app.ModeReduit = true;
        CollerADroite(50);
    } else {
        SetHeight(app.HautNormal);
        SetWidth(std::max<float>(app.LargNormal, largeurMin));
        CollerADroite(50);
        if (app.VueCourante == L"picture") Picture2.SetVisible(true);
        if (app.VueCourante == L"image") ImgTTscreen.SetVisible(true);
        app.ModeReduit = false;
    }
}

void frmMain::Timderoul_Timer() {
    if (22 * bouton[0].Width() > Width()) {
        SetWidth(Width() + 300);
        return;
    }
    Timderoul.SetEnabled(false);
    Timlabdeb.SetEnabled(true);
    for (ui::Menu* m : {&mnufichier, &mnuedition, &mnuoutils, &mnuHelp, &Mnured2})
        m->SetVisible(true);
}

void frmMain::Timlabdeb_Timer() {
    PosLabDeb += 100;
    if (PosLabDeb == 100) Timerclav.SetEnabled(true);
    labdeb.SetLeft(float(6000 - PosLabDeb));
    if (PosLabDeb >= 5900) {
        PosLabDeb = 0;
        Timlabdeb.SetEnabled(false);
    }
}

void frmMain::Form_QueryUnload(int& cancel, int unloadMode) {
    if (unloadMode == ui::kFormCode) {
        app.SortieDemandee = true;
        return;
    }
    if (unloadMode == ui::kAppWindows) {
        app.SortieDemandee = true;
        // The session ends: save without asking, no time for the temporary files.
        if (app.NbVignettes > 0) {
            int16_t ok = -1;
            EnregistrerTout(app, ok, 1, ExtensionAuto(app.params));
            if (app.NbSavAppel > 0) {
                app.sortie->Show();
                app.sortie->Label1.SetCaption(app.Lang(134));
                Attente(3);
                app.sortie->Unload();
                app.be.End();
            }
            return;
        }
        app.be.End();
    }
    // Closing by the user goes through the same road as the Quit command; a Cancel there
    // keeps the window.
    cancel = 1;
    quitprog();
}

void frmMain::Form_Terminate() {
    app.be.GetTray().Delete();
}

void frmMain::quitprog() {
    // Every step ignores its own run-time error and the next one runs, so that the
    // temporary store and the tray icon go whatever state the list is in.
    auto pas = [](const auto& etape) {
        try {
            etape();
        } catch (...) {
            rt::CaughtError();
        }
    };
    const bool periodique = TimPeriod.Enabled();
    pas([&] { TimPeriod.SetEnabled(false); });
    pas([&] { app.options->Unload(); });
    // A mark that cannot be read counts as a capture not saved: the question comes.
    bool auMoinsUneNonSauvee = false;
    for (int i = 1; i <= app.NbVignettes && !auMoinsUneNonSauvee; ++i) {
        bool sauvee = false;
        pas([&] { sauvee = app.list->PictSave[i].Visible(); });
        auMoinsUneNonSauvee = !sauvee;
    }
    if (app.NbVignettes >= 1 && auMoinsUneNonSauvee) {
        int rep = app.MsgBox(app.Lang(115), ui::kYesNoCancel | ui::kQuestion, app.Lang(116));
        if (rep == ui::kCancel) {
            // Back on only if it was running.
            pas([&] { TimPeriod.SetEnabled(periodique); });
            return;
        }
        if (rep == ui::kYes) {
            int16_t ok = -1;
            EnregistrerTout(app, ok, 1, ExtensionAuto(app.params));
            if (ok == 0) return;
        }
    }
    // From here the program ends: its windows let themselves be unloaded.
    app.SortieDemandee = true;
    pas([&] {
        verrouSession_.close();
        rt::Kill(app.DossierTemp + kVerrouSession);
    });
    // The builder takes its frame GIFs away with it.
    pas([&] {
        if (app.gif) app.gif->Unload();
    });
    // A file already gone is skipped.
    for (int i = 1; i <= app.NbVignettes; ++i)
        pas([&] { rt::Kill(app.DossierTemp + L"\\" + app.tab.FichierV[i]); });
    // The JPEG files of mail and the uploader; one still held open is left.
    for (const auto& f : app.FichiersSortie) rt::KillQuietly(f);
    pas([&] { rt::RmDir(app.DossierTemp); });
    // The icon leaves the notification area with the program.
    pas([&] { app.be.GetTray().Delete(); });
    // The last rectangle size, in pixels, for the next run. Reading a control of the
    // overlay loads it, as the original runtime did.
    if (app.params.MemoZone != 0) {
        pas([&] {
            app.full->Load();
            const ui::ScreenMetrics ecran = app.Screen();
            // The size as a fraction of pixels: its text is cut to the field's width.
            MemoriserTaille(app.params.LigneParams,
                            double(app.full->rectsel.Width()) / double(ecran.tppX),
                            double(app.full->rectsel.Height()) / double(ecran.tppY));
        });
        pas([&] { SavOptions(app); });
    }
    pas([&] { app.list->Unload(); });
    pas([&] { Unload(); });
    pas([&] { app.cam->Unload(); });
    pas([&] { app.full->Unload(); });
    app.be.End();
}

} // namespace mv
