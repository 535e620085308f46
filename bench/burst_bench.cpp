// The burst road timed on the real platform: one tick (an 800x600 zone grabbed from the
// desktop, written as a BMP), and a burst on a 50 ms window timer for 10 seconds, counting
// the images against the periods and the timer's lateness.
// Usage: burst_bench [TICKS] [FOLDER]
#include "platform/gdi/bmp.h"
#include "platform/win32/win32_backend.h"
#include "runtime/files.h"

#include <windows.h>

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

constexpr int kLargeur = 800, kHauteur = 600, kGauche = 100, kHaut = 100;

struct Rafale {
    platform::Desktop* bureau = nullptr;
    std::wstring dossier;
    int images = 0;
    std::vector<double> ecarts; // between two ticks, ms
    Clock::time_point precedent{};
    Clock::time_point fin{};
};
Rafale* rafale = nullptr;

void Tick(platform::Desktop& bureau, const std::wstring& nom) {
    gdi::Surface zone(kLargeur, kHauteur, 0);
    bureau.GetWindowDC(bureau.GetDesktopWindow())
        ->CopyTo(zone, 0, 0, kLargeur, kHauteur, kGauche, kHaut);
    gdi::SaveBmp(zone, nom);
}

void CALLBACK Minuterie(HWND, UINT, UINT_PTR, DWORD) {
    const auto maintenant = Clock::now();
    if (rafale->images > 0) rafale->ecarts.push_back(Ms(maintenant - rafale->precedent));
    rafale->precedent = maintenant;
    ++rafale->images;
    Tick(*rafale->bureau,
         rafale->dossier + L"\\rafale_" + std::to_wstring(rafale->images) + L".bmp");
    if (maintenant >= rafale->fin) PostQuitMessage(0);
}
} // namespace

int wmain(int argc, wchar_t** argv) {
    const int ticks = argc > 1 ? std::max(1, _wtoi(argv[1])) : 30;
    const std::wstring dossier = argc > 2 ? argv[2] : L".";
    auto bureau = win32::MakeDesktop();

    std::vector<double> t, saisie;
    for (int i = 0; i < ticks; ++i) {
        const auto t0 = Clock::now();
        Tick(*bureau, dossier + L"\\tick.bmp");
        t.push_back(Ms(Clock::now() - t0));
        const auto t1 = Clock::now();
        gdi::Surface zone(kLargeur, kHauteur, 0);
        bureau->GetWindowDC(bureau->GetDesktopWindow())
            ->CopyTo(zone, 0, 0, kLargeur, kHauteur, kGauche, kHaut);
        saisie.push_back(Ms(Clock::now() - t1));
    }
    std::sort(t.begin(), t.end());
    std::sort(saisie.begin(), saisie.end());
    std::printf("burst tick, %dx%d zone grab and BMP, %d ticks: best %.1f ms, median %.1f ms "
                "(the grab alone: median %.1f ms)\n",
                kLargeur, kHauteur, ticks, t.front(), t[t.size() / 2], saisie[saisie.size() / 2]);

    Rafale r;
    r.bureau = bureau.get();
    r.dossier = dossier;
    rafale = &r;
    const auto debut = Clock::now();
    r.fin = debut + std::chrono::seconds(10);
    SetTimer(nullptr, 0, 50, Minuterie);
    MSG m;
    while (GetMessageW(&m, nullptr, 0, 0) > 0) DispatchMessageW(&m);
    const double duree = Ms(Clock::now() - debut);
    std::sort(r.ecarts.begin(), r.ecarts.end());
    double somme = 0;
    for (double e : r.ecarts) somme += e;
    const double periodes = duree / 50;
    std::printf("burst at 50 ms for %.1f s: %d images for %.0f periods (%.0f %%); interval mean "
                "%.1f ms, median %.1f ms, max %.1f ms\n",
                duree / 1000, r.images, periodes, 100.0 * r.images / periodes,
                somme / double(r.ecarts.size()), r.ecarts[r.ecarts.size() / 2], r.ecarts.back());
    for (int i = 1; i <= r.images; ++i)
        rt::Kill(dossier + L"\\rafale_" + std::to_wstring(i) + L".bmp");
    rt::Kill(dossier + L"\\tick.bmp");
    return 0;
}
