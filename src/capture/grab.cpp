// frmMain: the whole-screen and window grab, the cursor stamp and the clipboard copy.
#include "app/forms.h"
#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "runtime/integer.h"

namespace mv {

namespace {
// A fixed system cursor handle the program never draws into a grab.
constexpr ui::CursorHandle kCurseurCache = 65557;
} // namespace

void frmMain::CapturTTbis(int16_t Mode) {
    app.EchecFen = false;
    if (app.params.GardeFenetres == 0) {
        Hide();
        app.DoEvents();
        app.list->Hide();
        app.DoEvents();
    }
    // Always wait: the screen repaints what was beneath the windows.
    Attente(0.3f);

    const auto ecran = app.Screen();
    Picture1.SetWidth(ecran.WidthTwips());
    Picture1.SetHeight(ecran.HeightTwips());
    app.DoEvents();

    auto& desktop = app.be.GetDesktop();
    const ui::WindowHandle fenetre =
        Mode != 0 ? desktop.GetForegroundWindow() : desktop.GetDesktopWindow();
    ui::Rect r;
    desktop.GetWindowRect(fenetre, r);
    auto dc = desktop.GetWindowDC(fenetre);
    app.DoEvents();

    const int largeur = r.right - r.left;
    const int hauteur = r.bottom - r.top;
    dc->CopyTo(Picture1.Image(), 0, 0, largeur, hauteur, 0, 0);
    // A window wider than the screen was cut by the buffer; it takes its real size here,
    // with the outside left blank.
    Picture1.SetWidth(float(largeur) * ecran.tppX);
    Picture1.SetHeight(float(hauteur) * ecran.tppY);
    app.LargCapt = Picture1.Width();
    app.HautCapt = Picture1.Height();

    if (app.CurseurCapt != kCurseurCache) {
        gdi::IconImage icone;
        if (app.be.GetCursor().GetImage(app.CurseurCapt, icone)) {
            int x, y;
            if (Mode == 0 && app.ParClavier) {
                x = app.CurseurX;
                y = app.CurseurY;
            } else {
                // The click road and the window road share this 6-pixel offset.
                x = app.CurseurX - r.left - 6;
                y = app.CurseurY - r.top - 6;
            }
            gdi::DrawIcon(Picture1.Image(), x, y, icone);
        }
    }
    dc.reset();
    Picture1.Refresh();

    if (r.right != 0)
        Picture1.SetVisible(true);
    else
        app.EchecFen = true;
    labdeb.SetVisible(false);

    app.options->Load();
    if (app.options->Check1[2].Value() == 0 && !app.options->Visible()) {
        Show();
        app.list->Show();
        app.DoEvents();
    }
}

void frmMain::CopiePP(std::wstring& Type) {
    auto& presse = app.be.GetClipboard();
    presse.Clear();
    app.DoEvents();
    // On purpose the clipboard then stays empty.
    if (app.params.SansCopieAuto == L"1") return;
    Timdeja.SetEnabled(true);
    if (Type == L"f" || Type == L"z") {
        presse.SetImage(Picture2.Image());
        Labdeja.SetLeft(50);
        Labdeja.SetTop(50);
        Labdeja.SetVisible(true);
        Labdeja.ZOrder(0);
    } else {
        presse.SetImage(Picture1.Image());
        Labdeja2.SetLeft(50);
        Labdeja2.SetTop(50);
        Labdeja2.SetVisible(true);
        Labdeja2.ZOrder(0);
    }
}

void frmMain::TimCurs_Timer() {
    const ui::Point p = app.be.GetCursor().GetCursorPos();
    app.CurseurX = rt::I16(p.x);
    app.CurseurY = rt::I16(p.y);
}

void frmMain::Timdeja_Timer() {
    // The labels stay while the external editor runs.
    if (PaintActif()) return;
    Labdeja.SetVisible(false);
    Labdeja2.SetVisible(false);
    Timdeja.SetEnabled(false);
}

} // namespace mv
