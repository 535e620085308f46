// The program's conversion of a capture to JPEG, PNG and GIF, timed on the real platform.
// Usage: convert_bench SOURCE.bmp OUTPUT_FOLDER [RUNS]   (best and median in ms per format)
#include "app/app.h"
#include "output/conversion.h"
#include "platform/gdi/bmp.h"
#include "platform/gdi/quantize.h"
#include "platform/win32/win32_backend.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

int wmain(int argc, wchar_t** argv) {
    if (argc < 3) return 2;
    const std::wstring source = argv[1], dossier = argv[2];
    const int runs = argc > 3 ? std::max(1, _wtoi(argv[3])) : 5;
    win32::Win32Backend backend;
    mv::App app(backend);
    if (!backend.GetCodec().Startup()) return 1;
    mv::Conversion conversion(app);
    for (int format : {mv::kFormatJpeg, mv::kFormatPng, mv::kFormatGif}) {
        const std::wstring ext = mv::ExtensionFormat(format);
        std::vector<double> ms;
        for (int i = 0; i < runs; ++i) {
            const auto t0 = std::chrono::steady_clock::now();
            conversion.ConvertirImage(source, dossier + L"\\bench." + ext, format, 70);
            ms.push_back(
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0)
                    .count());
        }
        std::sort(ms.begin(), ms.end());
        std::printf("Mirovanta %-4ls  best %7.1f ms   median %7.1f ms\n", ext.c_str(), ms.front(),
                    ms[ms.size() / 2]);
    }
    // The palette alone, for the part of the GIF time that is the program's own.
    const gdi::Surface image = gdi::LoadBmp(source);
    std::vector<double> ms;
    for (int i = 0; i < runs; ++i) {
        const auto t0 = std::chrono::steady_clock::now();
        const gdi::IndexedImage indexee = gdi::Quantize(image);
        ms.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0)
                .count());
    }
    std::sort(ms.begin(), ms.end());
    std::printf("of which the palette   best %7.1f ms   median %7.1f ms\n", ms.front(),
                ms[ms.size() / 2]);
    return 0;
}
