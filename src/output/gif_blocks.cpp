#include "output/gif_blocks.h"

#include <cstddef>
#include <cstring>

namespace mv {

namespace {
constexpr size_t kEntete = 13;      // signature, logical screen descriptor
constexpr size_t kDescripteur = 10; // image descriptor, with its 0x2C
constexpr uint8_t kTablePresente = 0x80;

// Skips the data sub-blocks that start at i; returns the index after the terminator, or 0
// when the file ends first.
size_t SauterSousBlocs(const std::vector<uint8_t>& g, size_t i) {
    while (i < g.size() && g[i] != 0) i += size_t(g[i]) + 1;
    return i < g.size() ? i + 1 : 0;
}
} // namespace

bool TableLocaleEnGlobale(std::vector<uint8_t>& g) {
    if (g.size() < kEntete || std::memcmp(g.data(), "GIF8", 4) != 0) return false;
    if (g[10] & kTablePresente) return false;
    // The extensions before the image stay where they are.
    size_t i = kEntete;
    while (i < g.size() && g[i] == 0x21) {
        i = SauterSousBlocs(g, i + 2);
        if (i == 0) return false;
    }
    if (i + kDescripteur > g.size() || g[i] != 0x2C) return false;
    const uint8_t drapeaux = g[i + 9];
    if (!(drapeaux & kTablePresente)) return false;
    const size_t taille = 3 * (size_t(2) << (drapeaux & 7));
    const size_t debutTable = i + kDescripteur;
    if (debutTable + taille > g.size()) return false;
    // A second image would need its own table: only single images are changed.
    size_t suite = SauterSousBlocs(g, debutTable + taille + 1);
    if (suite == 0) return false;
    while (suite < g.size() && g[suite] == 0x21) {
        suite = SauterSousBlocs(g, suite + 2);
        if (suite == 0) return false;
    }
    if (suite < g.size() && g[suite] == 0x2C) return false;

    std::vector<uint8_t> table(g.begin() + std::ptrdiff_t(debutTable),
                               g.begin() + std::ptrdiff_t(debutTable + taille));
    g.erase(g.begin() + std::ptrdiff_t(debutTable),
            g.begin() + std::ptrdiff_t(debutTable + taille));
    // The image keeps its interlace bit; its table flag, sort bit and size go.
    g[i + 9] = uint8_t(drapeaux & 0x40);
    // Global table of the same size, colour resolution 8 bits.
    g[10] = uint8_t(kTablePresente | 0x70 | (drapeaux & 7));
    g.insert(g.begin() + std::ptrdiff_t(kEntete), table.begin(), table.end());
    return true;
}

} // namespace mv
