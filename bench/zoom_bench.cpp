// One zoom step of the main window's view on a whole-screen capture of 3840x2160, to 25, 50
// and 200 %, against one plain read of the capture in the same run (headless backend).
#include "bench_app.h"
#include "bench_util.h"
#include "core/commands.h"
#include "core/frmMain.h"

#include <cstdio>

int main() {
    const int w = 3840, h = 2160;
    BenchApp banc(w, h);
    gdi::Surface& ecran = banc.be.desktop.screen;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) ecran.At(x, y) = gdi::Rgb(x * 7 + y, x ^ y, (x * y) >> 3);
    mv::frmMain& m = *banc.app->main;
    ui::Dispatch(banc.be, [&] { m.GestCommande(mv::kCmdEcran, false); });
    banc.be.RunFor(500);

    const gdi::Surface& source = m.Picture2S.Picture();
    volatile uint64_t sink = 0;
    const double lecture = BestMs([&] {
        uint64_t somme = 0;
        for (int y = 0; y < source.Height(); ++y) {
            const gdi::Pixel* ligne = source.Row(y);
            for (int x = 0; x < source.Width(); ++x) somme += ligne[x];
        }
        sink = sink + somme;
    });
    std::printf("%-34s %9s %7s\n", "3840x2160 whole-screen capture", "ms", "reads");
    std::printf("%-34s %9.2f %7.2f\n", "plain read of the capture", lecture, 1.0);
    const struct {
        int index;
        const char* nom;
    } pas[] = {{0, "zoom step to 25 %"}, {1, "zoom step to 50 %"}, {4, "zoom step to 200 %"}};
    for (const auto& p : pas) {
        const double ms = BestMs([&] { m.mnuzoomX_Click(int16_t(p.index)); });
        std::printf("%-34s %9.2f %7.2f\n", p.nom, ms, ms / lecture);
    }
    return 0;
}
