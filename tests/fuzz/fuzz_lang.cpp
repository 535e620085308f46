// libFuzzer target: any bytes read as a language file either load, or stop at an entry out of
// sequence, or raise a run-time error (62 short file, 9 table bound, 5 or 6 unreadable key).
#include "language/charge.h"
#include "runtime/errors.h"

#include <cstdint>
#include <cstdlib>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    mv::Language lang;
    try {
        const mv::LoadResult r = mv::ChargerLangue(lang, std::span<const uint8_t>(data, size));
        // Nothing past the entries is read once they are out of sequence.
        if (r.permanentError && (!lang.TabBulles.empty() || !lang.AideMenu(4, 6).empty()))
            std::abort();
    } catch (const rt::RuntimeError& e) {
        if (e.number != rt::kInputPastEnd && e.number != rt::kSubscriptOutOfRange &&
            e.number != rt::kInvalidCall && e.number != rt::kOverflow)
            std::abort();
    }
    try {
        mv::SpokenCode(std::span<const uint8_t>(data, size));
    } catch (const rt::RuntimeError& e) {
        if (e.number != rt::kInputPastEnd) std::abort();
    }
    return 0;
}
