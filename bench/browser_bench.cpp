// The collection window with 100 screen-size captures, on the headless backend: the
// process's resident memory once they are filed, one slider step (the column re-stacked)
// and one hover (the enlarged picture shown, the others put back). Prints a table.
#include "bench_app.h"
#include "bench_util.h"
#include "browser/Flistimages.h"
#include "core/frmMain.h"

#include <cstdio>
#include <fstream>
#include <string>

namespace {

// VmRSS of /proc/self/status, in megabytes.
double ResidentMb() {
    std::ifstream in("/proc/self/status");
    std::string mot;
    while (in >> mot)
        if (mot == "VmRSS:") {
            double kb = 0;
            in >> kb;
            return kb / 1024;
        }
    return 0;
}

} // namespace

int main() {
    BenchApp banc(1920, 1080);
    headless::Backend& be = banc.be;
    mv::App& app = *banc.app;
    const double avant = ResidentMb();
    mv::frmMain& m = *app.main;
    gdi::Surface image(1920, 1080);
    m.Picture1.Move(0, 0, 1920 * 15, 1080 * 15);
    for (int k = 0; k < 100; ++k) {
        for (int y = 0; y < 1080; y += 4)
            for (int x = 0; x < 1920; ++x) image.At(x, y) = gdi::Rgb(x + k, y, k * 2);
        m.Picture1.SetPicture(image);
        ui::Dispatch(be, [&] { m.GestVignettes(m.Picture1); });
    }
    const double apres = ResidentMb();
    mv::Flistimages& l = *app.list;
    int v = 1;
    const double pas = BestMs([&] { l.Vscroll1.SetValue(v = v % 100 + 1); }, 20);
    int i = 1;
    const double survol = BestMs([&] { l.Image1_MouseMove(i = i % 100 + 1); }, 20);
    std::printf("100 captures of 1920x1080 filed: %d rows, resident %.0f MB (%.0f MB before)\n",
                app.NbVignettes, apres, avant);
    std::printf("slider step %.3f ms  hover %.3f ms\n", pas, survol);
    return 0;
}
