// The whole-screen and window grab, the cursor stamp and the clipboard copy.
#include "capture/capture.h"

#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "output/output.h"
#include "runtime/integer.h"
#include "settings/Options.h"

namespace mv {

namespace {
// A fixed system cursor handle the program never draws into a grab.
constexpr ui::CursorHandle kCurseurCache = 65557;
} // namespace

void CapturTTbis(App& app, int16_t Mode) {
    frmMain& M = *app.main;
    app.EchecFen = false;
    if (app.params.GardeFenetres == 0) {
        M.Hide();
        app.DoEvents();
        app.list->Hide();
        app.DoEvents();
    }
    // Always wait: the screen repaints what was beneath the windows.
    M.Attente(0.3f);

    const auto ecran = app.Screen();
    M.Picture1.SetWidth(ecran.WidthTwips());
    M.Picture1.SetHeight(ecran.HeightTwips());
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
    dc->CopyTo(M.Picture1.Image(), 0, 0, largeur, hauteur, 0, 0);
    // A window wider than the screen was cut by the buffer; it takes its real size here,
    // with the outside left blank.
    M.Picture1.SetWidth(ecran.TwipsX(largeur));
    M.Picture1.SetHeight(ecran.TwipsY(hauteur));
    app.LargCapt = M.Picture1.Width();
    app.HautCapt = M.Picture1.Height();

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
            gdi::DrawIcon(M.Picture1.Image(), x, y, icone);
        }
    }
    dc.reset();
    M.Picture1.Refresh();

    if (r.right != 0)
        M.Picture1.SetVisible(true);
    else
        app.EchecFen = true;
    M.labdeb.SetVisible(false);

    app.options->Load();
    if (app.options->Check1[2].Value() == 0 && !app.options->Visible()) {
        M.Show();
        app.list->Show();
        app.DoEvents();
    }
}

void CopiePP(App& app, std::wstring& Type) {
    frmMain& M = *app.main;
    auto& presse = app.be.GetClipboard();
    presse.Clear();
    app.DoEvents();
    // On purpose the clipboard then stays empty.
    if (app.params.SansCopieAuto == L"1") return;
    M.Timdeja.SetEnabled(true);
    if (Type == L"f" || Type == L"z") {
        presse.SetImage(M.Picture2.Image());
        M.Labdeja.SetLeft(50);
        M.Labdeja.SetTop(50);
        M.Labdeja.SetVisible(true);
        M.Labdeja.ZOrder(0);
    } else {
        presse.SetImage(M.Picture1.Image());
        M.Labdeja2.SetLeft(50);
        M.Labdeja2.SetTop(50);
        M.Labdeja2.SetVisible(true);
        M.Labdeja2.ZOrder(0);
    }
}

void TimCurs_Timer(App& app) {
    const ui::Point p = app.be.GetCursor().GetCursorPos();
    app.CurseurX = p.x;
    app.CurseurY = p.y;
}

void Timdeja_Timer(App& app) {
    frmMain& M = *app.main;
    // The labels stay while the external editor runs.
    if (PaintActif(app)) return;
    M.Labdeja.SetVisible(false);
    M.Labdeja2.SetVisible(false);
    M.Timdeja.SetEnabled(false);
}

} // namespace mv
