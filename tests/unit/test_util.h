// Small helpers shared by the tests.
#pragma once

#include "runtime/errors.h"

#include <functional>

// Twips of a length in pixels on the tests' screens (96 DPI: 15 twips a pixel).
inline float Tw(int px) {
    return float(px) * 15;
}

// The run-time error number that f raises, or 0 when it returns.
inline int ErrorOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const rt::RuntimeError& e) {
        return e.number;
    }
    return 0;
}
