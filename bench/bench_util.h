// Timing shared by the benchmarks.
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>

// The best of n runs, in milliseconds.
inline double BestMs(const std::function<void()>& run, int n = 5) {
    double best = 1e30;
    for (int i = 0; i < n; ++i) {
        const auto t0 = std::chrono::steady_clock::now();
        run();
        const auto t1 = std::chrono::steady_clock::now();
        best = std::min(best, std::chrono::duration<double, std::milli>(t1 - t0).count());
    }
    return best;
}
