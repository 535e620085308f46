// The overlay's costs on the headless backend: opening a session (grab, tint, clean copy)
// beside the bare desktop grab of the same size, and one mouse move while the rectangle is
// dragged beside one full redraw of the frozen picture. Prints a table.
#include "app/app.h"
#include "bench_util.h"
#include "overlay/FrmFull.h"
#include "platform/headless/headless.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>

namespace {

void Mesurer(int w, int h) {
    headless::Backend be;
    be.screen.widthPx = w;
    be.screen.heightPx = h;
    be.desktop.screen = gdi::Surface(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) be.desktop.screen.At(x, y) = gdi::Rgb(x, y, x ^ y);
    mv::App app(be);
    app.params.PreAffZone = 1;
    app.params.LargSel = L"0420";
    app.params.HautSel = L"0260";
    mv::FrmFull& f = *app.full;

    gdi::Surface nu(w, h);
    const double grab = BestMs([&] {
        auto dc = be.desktop.GetWindowDC(be.desktop.GetDesktopWindow());
        dc->CopyTo(nu, 0, 0, w, h, 0, 0);
    });
    const double init = BestMs([&] { f.InitFull(0); });
    std::printf("%dx%d  grab %.2f ms  InitFull %.2f ms  ratio %.2f\n", w, h, grab, init,
                init / grab);

    // A drag inside the rectangle: each move places the handles, the clear spot and labels.
    f.rectsel.Move(15 * 400, 15 * 300, 15 * 420, 15 * 260);
    f.PlacDesCoins(f.rectsel);
    f.DecalX = 15 * 200;
    f.DecalY = 15 * 130;
    int pas = 0;
    const double move = BestMs(
                            [&] {
                                for (int i = 0; i < 100; ++i, ++pas) {
                                    const float x = 15.0f * float(600 + pas % 200),
                                                y = 15.0f * float(430 + pas % 100);
                                    f.Picture1_MouseMove(ui::kLeftButton, 0, x, y);
                                }
                            },
                            3) /
                        100;
    gdi::Surface ecran(w, h);
    const double redraw = BestMs([&] { gdi::BitBlt(ecran, 0, 0, w, h, f.Picture1.Image(), 0, 0); });
    std::printf("%dx%d  mouse move %.3f ms  full redraw %.3f ms  ratio %.1f\n", w, h, move, redraw,
                redraw / move);
}

} // namespace

int main() {
    Mesurer(1920, 1080);
    Mesurer(3840, 2160);
    return 0;
}
