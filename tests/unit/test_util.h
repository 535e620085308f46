// Small helpers shared by the tests.
#pragma once

#include "runtime/errors.h"

#include <functional>

// The run-time error number that f raises, or 0 when it returns.
inline int ErrorOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const rt::RuntimeError& e) {
        return e.number;
    }
    return 0;
}
