// frmMain: the five capture hotkeys, polled from whichever application has the focus.
#include "core/commands.h"
#include "core/frmMain.h"
#include "language/AideRapide.h"
#include "runtime/integer.h"
#include "settings/Options.h"

namespace mv {

void frmMain::Timerclav_Timer() {
    auto& clavier = app.be.GetKeyboard();
    wchar_t touche = L' ';
    // Control with a letter or a main-row digit; the last match in the walk wins.
    for (int vk = 'A'; vk <= 'Z'; ++vk) {
        const int16_t t = clavier.GetAsyncKeyState(vk);
        const int16_t c = clavier.GetAsyncKeyState(ui::kKeyControl);
        if ((t & c) != 0) touche = wchar_t(vk);
    }
    for (int vk = '1'; vk <= '9'; ++vk) {
        const int16_t t = clavier.GetAsyncKeyState(vk);
        const int16_t c = clavier.GetAsyncKeyState(ui::kKeyControl);
        if ((t & c) != 0) touche = wchar_t(vk);
    }
    // Keypad digits fire alone, a press since the previous tick included.
    for (int vk = ui::kKeyNumpad1; vk <= ui::kKeyNumpad9; ++vk)
        if (clavier.GetAsyncKeyState(vk) != 0) touche = wchar_t(vk - ui::kKeyNumpad1 + '1');
    app.ParClavier = true;
    clavier.GetAsyncKeyState(ui::kKeyControl);

    // No key down reads as a blank, and a blank key column (a short settings line) is no
    // hotkey: the two never match.
    const Params& p = app.params;
    // A chord held down fires once: the key must be let go before it fires again.
    const wchar_t tenue = ToucheTenue;
    ToucheTenue = touche;
    if (touche == L' ' || touche == tenue) return;
    if (touche != p.ToucheZone && touche != p.ToucheMemeZone && touche != p.ToucheEcran &&
        touche != p.ToucheFenetre && touche != p.ToucheDoubleH)
        return;

    // A hotkey cancels the side windows, the options dialog among them.
    if (app.options->IsLoaded() && app.options->Visible()) app.options->Unload();
    FermerAidesRapides(app);

    const ui::Point pos = app.be.GetCursor().GetCursorPos();
    app.CurseurCapt = app.be.GetCursor().GetCursor();
    app.CurseurX = pos.x;
    app.CurseurY = pos.y;
    app.CurseurXClavier = pos.x;
    app.CurseurYClavier = pos.y;
    // Never lowered again: the process stays at high priority until it ends.
    app.be.GetShell().SetPriorityHigh();

    int index = kCmdZone;
    if (touche == p.ToucheMemeZone)
        index = kCmdRafraichir;
    else if (touche == p.ToucheEcran)
        index = kCmdEcran;
    else if (touche == p.ToucheFenetre)
        index = kCmdFenetre;
    else if (touche == p.ToucheDoubleH)
        index = kCmdZoneDouble;
    GestCommande(index, true);
}

} // namespace mv
