// libFuzzer target: the animated-GIF assembler on arbitrary files. The first byte says how
// the rest is cut into up to three input files; any of them may be anything. The build must
// end without a read or write outside its buffers and without looping, and the output
// always begins with the GIF89a header.
#include "gifanim/assembleur.h"

#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    const size_t parts = 1 + data[0] % 3;
    const size_t reste = size - 1, part = reste / parts;
    std::vector<std::vector<uint8_t>> fichiers;
    for (size_t i = 0; i < parts; ++i) {
        const uint8_t* debut = data + 1 + i * part;
        const size_t n = i + 1 == parts ? reste - i * part : part;
        fichiers.emplace_back(debut, debut + n);
    }
    mv::AssembleurGif a;
    a.Commencer((data[0] & 4) != 0);
    for (int i : mv::AssembleurGif::Ordre(int(fichiers.size()), (data[0] & 8) != 0)) {
        const mv::FinTrame fin = a.AjouterTrame(&fichiers[size_t(i)], uint16_t(data[0]) * 10);
        if (fin == mv::FinTrame::kPasUnGif || fin == mv::FinTrame::kTronquee) break;
    }
    a.Terminer();
    if (a.Sortie().size() < 13 || std::memcmp(a.Sortie().data(), "GIF89a", 6) != 0) std::abort();
    return 0;
}
