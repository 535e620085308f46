#include "gifanim/FrmGifAnim.h"

#include "core/frmMain.h"
#include "output/conversion.h"
#include "output/output.h"
#include "runtime/errors.h"
#include "runtime/files.h"
#include "runtime/strings.h"

#include <algorithm>

namespace mv {

namespace {

constexpr int kSablier = 11; // the wait cursor

bool FinitPar(const std::wstring& s, const std::wstring& fin) {
    return s.size() >= fin.size() && rt::LCase(s.substr(s.size() - fin.size())) == fin;
}

} // namespace

FrmGifAnim::FrmGifAnim(App& a) : ui::Form(a.be, L"FrmGifAnim"), app(a) {
    OnLoad = [this] { Form_Load(); };
    OnUnload = [this](int&) { Form_Unload(); };
    CdeCreGif.OnClick = [this] { CdeCreGif_Click(); };
    CdeH.OnClick = [this] { CdeH_Click(); };
    CdeB.OnClick = [this] { CdeB_Click(); };
    ListUtiles.OnMouseDown = [this](const ui::MouseEvent&) { ListUtiles_MouseDown(); };
    ListUtiles.OnKeyDown = [this](int16_t& k, int16_t) { ListUtiles_KeyDown(k); };
    Chkloop.OnClick = [this] { Chkloop_Click(); };
    CdeUplGif.OnClick = [this] { CdeUplGif_Click(); };
    Cdestop.OnClick = [this] { Unload(); };
    CdeAideGif.OnClick = [this] { CdeAideGif_Click(); };
    TimApercu.OnTimer = [this] { TimApercu_Timer(); };
    TabFichiers.assign(kMaxFichiers, L"");
}

void FrmGifAnim::Design() {
    SetCaption(L"Animated GIF");
    borderStyle = ui::kBorderFixedSingle;
    maxButton = false;
    Move(1500, 1500, 9000, 7000);
    Labslide.Move(200, 120, 4200, 255);
    Slider1.Move(200, 400, 3600, 450);
    Slider1.SetMin(0);
    Slider1.SetMax(10);
    Slider1.SetSmallChange(1);
    Slider1.SetLargeChange(5);
    Slider1.SetValue(5);
    Chkloop.Move(4000, 150, 2300, 255);
    Chkloop.SetValue(1);
    ChkAR.Move(4000, 480, 2300, 255);
    CdeCreGif.Move(6500, 120, 2100, 400);
    CdeUplGif.Move(6500, 560, 2100, 400);
    CdeUplGif.SetCaption(L"Upload");
    CdeUplGif.SetEnabled(false);
    Cdestop.Move(8700, 120, 1300, 400);
    Cdestop.SetCaption(L"Exit/Sortie");
    CdeAideGif.Move(8700, 560, 1300, 400);
    CdeAideGif.SetCaption(L"Help/Aide");
    Pictevaldim.Move(200, 1100, 3000, 2000);
    Pictevaldim.SetVisible(false);
    WebBrowsGif.Move(200, 1100, 3000, 2000);
    WebBrowsGif.SetBackColor(0xFFFFFF);
    ListUtiles.Move(3500, 1100, 2500, 4000);
    CdeH.Move(6100, 1100, 450, 450);
    CdeH.SetCaption(L"\u25B2");
    CdeB.Move(6100, 1650, 450, 450);
    CdeB.SetCaption(L"\u25BC");
    StatusBar1.Move(0, 6400, 9000, 300);
    StatusBar1.SetBorderStyle(ui::kBorderFixedSingle);
}

std::vector<std::wstring> FrmGifAnim::FichiersDossier() const {
    std::vector<std::wstring> noms;
    for (const auto& n : rt::FolderNames(DossierFichiers, false))
        if (FinitPar(n, L".gif")) noms.push_back(n);
    std::sort(noms.begin(), noms.end(), [](const std::wstring& a, const std::wstring& b) {
        return rt::LCase(a) < rt::LCase(b);
    });
    return noms;
}

void FrmGifAnim::Form_Load() {
    const float tpp = app.Screen().tppX;
    std::wstring premier;
    if (ModeCaptures) {
        // The frame GIFs of an earlier load go; the captures stay.
        EffacerEcrits();
        int n = app.NbVignettes;
        if (n > kMaxFichiers) {
            app.MsgBox(app.Lang(275), ui::kExclamation);
            n = kMaxFichiers;
        }
        NbFichiers = int16_t(n);
        for (int i = 1; i <= n; ++i) {
            const std::wstring bmp = app.DossierTemp + L"\\" + app.tab.FichierV[i];
            const std::wstring gif = rt::Left(bmp, rt::Len(bmp) - 4) + L".gif";
            if (rt::FileExists(gif)) rt::Kill(gif);
            app.conversion->ConvertirImage(bmp, gif, kFormatGif, app.params.QualiteJpeg);
            ecrits_.push_back(gif);
            TabFichiers[size_t(i - 1)] = gif;
        }
        if (n > 0) premier = TabFichiers[0];
        ListUtiles.SetVisible(false);
        CdeH.SetVisible(false);
        CdeB.SetVisible(false);
        CdeCreGif.SetEnabled(n > 0);
    } else {
        ListUtiles.Clear();
        int rejetes = 0;
        for (const auto& nom : FichiersDossier()) {
            if (rt::LCase(rt::Left(nom, 7)) == L"animgif") continue;
            if (ListUtiles.ListCount() >= kMaxFichiers) {
                ++rejetes;
                continue;
            }
            ListUtiles.AddItem(nom);
        }
        if (rejetes > 0) app.MsgBox(app.Lang(275), ui::kExclamation);
        NbFichiers = int16_t(ListUtiles.ListCount());
        // An empty folder shows the page that says how the builder works, at its size.
        premier = NbFichiers > 0
                      ? DossierFichiers + L"\\" + ListUtiles.List(0)
                      : app.be.GetShell().ProgramFolder() + L"\\" + app.Lang(258) + L".gif";
    }

    // The first frame gives the preview its size.
    std::vector<gdi::Surface> images;
    std::vector<int> delais;
    int boucles = -1;
    if (!premier.empty() && app.be.GetCodec().LoadFrames(premier, images, delais, boucles) == 0 &&
        !images.empty()) {
        Pictevaldim.Move(Pictevaldim.Left(), Pictevaldim.Top(), float(images[0].Width()) * tpp,
                         float(images[0].Height()) * tpp);
    }
    Apercu(Pictevaldim.Width(), Pictevaldim.Height());

    if (ModeCaptures) {
        if (!premier.empty()) Naviguer(premier);
        SetWidth(CdeAideGif.Left() + CdeAideGif.Width() + 1000);
    } else {
        // Beside the preview as it shows (a big first frame is shown smaller).
        ListUtiles.SetLeft(WebBrowsGif.Left() + WebBrowsGif.Width() + 300);
        CdeH.SetLeft(ListUtiles.Left() + ListUtiles.Width() + 40);
        CdeB.SetLeft(ListUtiles.Left() + ListUtiles.Width() + 40);
        SetWidth(std::max(CdeB.Left() + CdeB.Width() + 200,
                          CdeAideGif.Left() + CdeAideGif.Width() + 400));
        ListUtiles.SetVisible(true);
        CdeH.SetVisible(true);
        CdeB.SetVisible(true);
        if (NbFichiers > 0) ListUtiles.SetListIndex(0);
        CdeCreGif.SetEnabled(NbFichiers > 0);
        Naviguer(premier);
    }
    PlacerStatut(1200);
    SetCaption(app.Lang(218) + L" - maximum 50 images");
    Labslide.SetCaption(app.Lang(219));
    CdeCreGif.SetCaption(app.Lang(222));
    Chkloop.SetCaption(app.Lang(220));
    ChkAR.SetCaption(app.Lang(221));
    StatusBar1.SetCaption(app.Lang(252));
}

void FrmGifAnim::CdeCreGif_Click() {
    SetMousePointer(kSablier);
    try {
        if (!ModeCaptures) {
            NbFichiers = int16_t(std::min(ListUtiles.ListCount(), kMaxFichiers));
            for (int i = 0; i < NbFichiers; ++i)
                TabFichiers[size_t(i)] = DossierFichiers + L"\\" + ListUtiles.List(i);
        }
        const rt::SystemTime t = app.be.Now();
        wchar_t heure[8];
        std::swprintf(heure, 8, L"%02d%02d%02d", t.hour, t.minute, t.second);
        const std::wstring chemin = app.params.DossierEnregCourt + L"\\animgif" + heure + L".gif";
        // A folder that is missing or closed to writing: its box, and nothing is built.
        rt::WriteFileBytes(chemin, "", 0);
        CheminGif = chemin;

        assembleur.Commencer(Chkloop.Value() == 1);
        const uint16_t delai = uint16_t(Slider1.Value() * 10);
        bool arret = false, fermer = false;
        for (int i : AssembleurGif::Ordre(NbFichiers, ChkAR.Value() == 1)) {
            std::vector<uint8_t> octets;
            bool lu = true;
            try {
                octets = rt::ReadFileBytes(TabFichiers[size_t(i)]);
            } catch (...) {
                rt::CaughtError();
                lu = false;
            }
            const FinTrame fin = assembleur.AjouterTrame(lu ? &octets : nullptr, delai, [&] {
                app.MsgBox(L"Error reading file .../Pb lecture fichier", ui::kCritical);
            });
            if (fin == FinTrame::kIllisible) {
                app.MsgBox(app.Lang(225), ui::kCritical);
                break;
            }
            if (fin == FinTrame::kPasUnGif) {
                app.MsgBox(app.Lang(223), ui::kCritical);
                arret = true;
                break;
            }
            if (fin == FinTrame::kTronquee) {
                app.MsgBox(app.Lang(224), ui::kCritical);
                arret = fermer = true;
                break;
            }
        }
        if (!arret) assembleur.Terminer();
        // What was built stays on the disk, a failed build included.
        rt::WriteFileBytes(chemin, assembleur.Sortie().data(), assembleur.Sortie().size());
        if (arret) {
            SetMousePointer(ui::kPointerDefault);
            if (fermer) Unload();
            return;
        }

        const float tpp = app.Screen().tppX;
        Apercu(float(assembleur.LargeurCanevas()) * tpp + 650,
               float(assembleur.HauteurCanevas()) * app.Screen().tppY + 700);
        Naviguer(CheminGif);
        app.DoEvents();
        ListUtiles.SetVisible(false);
        CdeH.SetVisible(false);
        CdeB.SetVisible(false);
        SetWidth(std::max(WebBrowsGif.Left() + WebBrowsGif.Width() + 100, 9000.f));
        PlacerStatut(2000);
        const std::wstring nom = rt::Mid(CheminGif, rt::InStrRev(CheminGif, L"\\") + 1);
        app.MsgBox(app.Lang(245) + app.params.DossierEnregCourt + L"\r\n" + app.Lang(246) + nom,
                   ui::kInformation);
        CdeUplGif.SetEnabled(true);
        SetMousePointer(ui::kPointerDefault);
    } catch (...) {
        const rt::RuntimeError e = rt::CaughtError();
        app.MsgBox(std::to_wstring(e.number) + L" " + e.text, ui::kCritical);
        SetMousePointer(ui::kPointerDefault);
    }
}

void FrmGifAnim::CdeH_Click() {
    const int i = ListUtiles.ListIndex();
    if (i == 0) {
        CdeH.SetEnabled(false);
        return;
    }
    CdeB.SetEnabled(true);
    if (i < 0) return;
    const std::wstring haut = ListUtiles.List(i - 1);
    ListUtiles.SetList(i - 1, ListUtiles.List(i));
    ListUtiles.SetList(i, haut);
    ListUtiles.SetListIndex(i - 1);
    Naviguer(DossierFichiers + L"\\" + ListUtiles.List(i - 1));
}

void FrmGifAnim::CdeB_Click() {
    const int i = ListUtiles.ListIndex();
    if (i == ListUtiles.ListCount() - 1) {
        CdeB.SetEnabled(false);
        return;
    }
    CdeH.SetEnabled(true);
    if (i < 0) return;
    const std::wstring bas = ListUtiles.List(i + 1);
    ListUtiles.SetList(i + 1, ListUtiles.List(i));
    ListUtiles.SetList(i, bas);
    ListUtiles.SetListIndex(i + 1);
    Naviguer(DossierFichiers + L"\\" + ListUtiles.List(i + 1));
}

void FrmGifAnim::ListUtiles_MouseDown() {
    const int i = ListUtiles.ListIndex();
    if (i < 0) return;
    Naviguer(DossierFichiers + L"\\" + ListUtiles.List(i));
    const int dernier = ListUtiles.ListCount() - 1;
    CdeH.SetEnabled(i != 0);
    CdeB.SetEnabled(i != dernier);
}

void FrmGifAnim::ListUtiles_KeyDown(int16_t KeyCode) {
    if (KeyCode != 46) return;
    const int i = ListUtiles.ListIndex();
    if (i < 0) return;
    ListUtiles.RemoveItem(i);
    NbFichiers = int16_t(NbFichiers - 1);
    // The entry now at its place, or the new last.
    const int suivant = std::min(i, ListUtiles.ListCount() - 1);
    if (suivant >= 0) {
        ListUtiles.SetListIndex(suivant);
        Naviguer(DossierFichiers + L"\\" + ListUtiles.List(suivant));
    }
}

void FrmGifAnim::Chkloop_Click() {
    // Clearing the box sets the whole dialog up again; ticking it does nothing more.
    if (Chkloop.Value() == 0) Form_Load();
}

void FrmGifAnim::CdeUplGif_Click() {
    LancerUploader(app, CheminGif);
}

void FrmGifAnim::CdeAideGif_Click() {
    app.MsgBox(app.Lang(276), ui::kInformation, app.Lang(218));
}

void FrmGifAnim::Form_Unload() {
    TimApercu.SetEnabled(false);
    // The animation stays in the save folder.
    EffacerEcrits();
}

void FrmGifAnim::EffacerEcrits() {
    // Only the frame GIFs this dialog wrote: a file held by another program is left.
    for (const auto& f : ecrits_) rt::KillQuietly(f);
    ecrits_.clear();
}

// ---- the preview --------------------------------------------------------------------------

void FrmGifAnim::Naviguer(const std::wstring& chemin) {
    TimApercu.SetEnabled(false);
    images_.clear();
    delais_.clear();
    boucles_ = -1;
    image_ = 0;
    if (app.be.GetCodec().LoadFrames(chemin, images_, delais_, boucles_) != 0) images_.clear();
    Afficher();
}

void FrmGifAnim::PlacerStatut(float marge) {
    // The status line under the preview, across the window, and the window down to it.
    float bas = WebBrowsGif.Top() + WebBrowsGif.Height();
    if (!ModeCaptures) bas = std::max(bas, ListUtiles.Top() + ListUtiles.Height());
    SetHeight(bas + marge);
    StatusBar1.Move(100, bas + 200, std::max(Width() - 400, 3000.f), 300);
}

void FrmGifAnim::Apercu(float largeur, float hauteur) {
    // Never more than half the screen each way: a screen-size frame is shown smaller, so
    // that the list and the buttons stay on the screen.
    const auto ecran = app.Screen();
    const float k =
        std::min({1.f, ecran.WidthTwips() / 2 / largeur, ecran.HeightTwips() / 2 / hauteur});
    WebBrowsGif.Move(WebBrowsGif.Left(), WebBrowsGif.Top(), largeur * k, hauteur * k);
    echelle_ = k;
}

void FrmGifAnim::Afficher() {
    WebBrowsGif.Cls();
    if (images_.empty()) {
        WebBrowsGif.Refresh();
        return;
    }
    const gdi::Surface& s = images_[image_];
    if (echelle_ < 1)
        gdi::StretchBlt(WebBrowsGif.Image(), 0, 0, int(float(s.Width()) * echelle_),
                        int(float(s.Height()) * echelle_), s, 0, 0, s.Width(), s.Height(),
                        gdi::kHalftone);
    else
        gdi::BitBlt(WebBrowsGif.Image(), 0, 0, s.Width(), s.Height(), s, 0, 0);
    WebBrowsGif.Refresh();
    if (images_.size() < 2) return;
    // Delays below 2 hundredths play at 10, as the common viewers do.
    const int d = image_ < delais_.size() ? delais_[image_] : 0;
    TimApercu.SetInterval(d < 2 ? 100 : d * 10);
    TimApercu.SetEnabled(true);
}

void FrmGifAnim::TimApercu_Timer() {
    TimApercu.SetEnabled(false);
    if (images_.size() < 2) return;
    if (image_ + 1 < images_.size()) {
        ++image_;
    } else {
        // Without a loop extension the animation plays once and stays on its last frame.
        if (boucles_ < 0) return;
        image_ = 0;
    }
    Afficher();
}

// ---- opening ------------------------------------------------------------------------------

void OuvrirGifAnim(App& app, bool modeCaptures, const std::wstring& dossier) {
    if (app.gif && app.gif->IsLoaded()) app.gif->Unload();
    app.gif = std::make_unique<FrmGifAnim>(app);
    app.gif->ModeCaptures = modeCaptures;
    app.gif->DossierFichiers = modeCaptures ? app.DossierTemp : dossier;
    app.gif->Show();
}

void mnuFabGif_Click(App& app) {
    app.MsgBox(app.Lang(271), ui::kInformation, app.Lang(270));
    ui::CommonDialog& d = app.main->CDlg1;
    d.cancelError = true;
    d.dialogTitle = app.Lang(257);
    d.filter = L"Images (gif)|*.gif";
    d.fileName = L"navigate";
    try {
        d.ShowOpen();
    } catch (...) {
        // Cancel: nothing opens.
        rt::CaughtError();
        return;
    }
    const std::wstring& choisi = d.fileName;
    const int barre = rt::InStrRev(choisi, L"\\");
    OuvrirGifAnim(app, false, barre > 0 ? rt::Left(choisi, barre - 1) : choisi);
}

} // namespace mv
