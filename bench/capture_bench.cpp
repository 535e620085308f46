// The capture road of a whole-screen capture, timed on the real platform: desktop grab
// into a surface, the temporary BMP, and both halftone thumbnails of the capture list.
// Usage: capture_bench [RUNS] [FOLDER]   (prints one line a step, best and median in ms)
#include "platform/gdi/bmp.h"
#include "platform/win32/win32_backend.h"
#include "runtime/files.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace {
using Clock = std::chrono::steady_clock;
double Ms(Clock::duration d) {
    return std::chrono::duration<double, std::milli>(d).count();
}

void Report(const char* step, std::vector<double> v) {
    std::sort(v.begin(), v.end());
    std::printf("%-26s best %8.1f ms   median %8.1f ms\n", step, v.front(), v[v.size() / 2]);
}
} // namespace

int wmain(int argc, wchar_t** argv) {
    const int runs = argc > 1 ? std::max(1, _wtoi(argv[1])) : 10;
    const std::wstring folder = argc > 2 ? argv[2] : L".";
    auto desktop = win32::MakeDesktop();
    const ui::WindowHandle w = desktop->GetDesktopWindow();
    ui::Rect r;
    desktop->GetWindowRect(w, r);
    const int width = r.right - r.left, height = r.bottom - r.top;
    // The thumbnails of the capture list: 1450 twips wide, 1.7 times that for the large one.
    const int smallW = 1450 / 15, smallH = int(double(height) / width * 1450) / 15;
    std::vector<double> grab, save, thumbs, total;
    for (int i = 0; i < runs; ++i) {
        auto t0 = Clock::now();
        gdi::Surface screen(width, height, 0);
        desktop->GetWindowDC(w)->CopyTo(screen, 0, 0, width, height, 0, 0);
        auto t1 = Clock::now();
        gdi::SaveBmp(screen, folder + L"\\Captprov_bench.bmp");
        auto t2 = Clock::now();
        gdi::Surface small(smallW, smallH), large(int(smallW * 1.7), int(smallH * 1.7));
        gdi::StretchBlt(small, 0, 0, small.Width(), small.Height(), screen, 0, 0, width, height,
                        gdi::kHalftone);
        gdi::StretchBlt(large, 0, 0, large.Width(), large.Height(), screen, 0, 0, width, height,
                        gdi::kHalftone);
        auto t3 = Clock::now();
        grab.push_back(Ms(t1 - t0));
        save.push_back(Ms(t2 - t1));
        thumbs.push_back(Ms(t3 - t2));
        total.push_back(Ms(t3 - t0));
    }
    std::printf("screen %dx%d, %d runs\n", width, height, runs);
    Report("desktop grab", grab);
    Report("temporary BMP (24-bit)", save);
    Report("both thumbnails", thumbs);
    Report("capture road", total);
    rt::Kill(folder + L"\\Captprov_bench.bmp");
    return 0;
}
