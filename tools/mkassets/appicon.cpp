// The program's icon: a blue tile with the white corners of a capture frame around a red
// shutter dot. Edges are laid on whole pixels at every size; the alpha comes from drawing
// the icon once over black and once over white.
#include "appicon.h"

#include "draw.h"
#include "icons.h"
#include "platform/gdi/little_endian.h"

#include <algorithm>
#include <cmath>

namespace mk {

namespace {

using gdi::Put16;
using gdi::Put32;

constexpr gdi::Pixel kWhite = gdi::Rgb(255, 255, 255);

void DrawIcon(Canvas& c, int n) {
    const double s = n;
    const double rayon = std::max(2.0, std::round(s * 0.18));
    Shape tuile = RoundRect(0, 0, s, s, rayon);
    c.Fill(tuile, Vertical(pal::kBlue, 0, pal::kBlueDark, s));
    if (n >= 24) c.Stroke(tuile, Darker(pal::kBlueDark, 0.35), 1.0);

    // The four corners of the frame: whole-pixel bands.
    const double marge = std::round(s * 0.19);
    const double bras = std::round(s * 0.27);
    const double trait = std::max(1.0, std::round(s / 12));
    const double a = marge, b = s - marge;
    for (int coin = 0; coin < 4; ++coin) {
        const bool droite = coin & 1, bas = coin & 2;
        const double x = droite ? b - trait : a, y = bas ? b - trait : a;
        const double xb = droite ? b - bras : a, yb = bas ? b - bras : a;
        c.Fill(Rect(xb, y, xb + bras, y + trait), Solid(kWhite));
        c.Fill(Rect(x, yb, x + trait, yb + bras), Solid(kWhite));
    }
    // The shutter dot in the middle.
    const double r = std::max(1.5, s * 0.14);
    c.Fill(Circle(s / 2, s / 2, r), Solid(pal::kRed));
    if (n >= 24) c.Fill(Circle(s / 2 - r * 0.3, s / 2 - r * 0.3, r * 0.35), Solid(kWhite), 0.6);
}

// The icon over a plain background.
gdi::Surface Over(int n, gdi::Pixel fond) {
    Canvas c(n, n, 8);
    c.Fill(Rect(-1, -1, n + 1, n + 1), Solid(fond));
    DrawIcon(c, n);
    return c.Downsample();
}

// One image of the icon file: BITMAPINFOHEADER of double height, BGRA rows bottom-up,
// then the AND mask (set where the image is fully transparent).
std::vector<uint8_t> Image(int n) {
    const gdi::Surface noir = Over(n, 0);
    const gdi::Surface blanc = Over(n, kWhite);
    const int masque = (n + 31) / 32 * 4;
    std::vector<uint8_t> out;
    Put32(out, 40);
    Put32(out, uint32_t(n));
    Put32(out, uint32_t(2 * n));
    Put16(out, 1);
    Put16(out, 32);
    Put32(out, 0);
    Put32(out, uint32_t(n * n * 4 + masque * n));
    for (int i = 0; i < 4; ++i) Put32(out, 0);
    std::vector<uint8_t> et(size_t(masque) * size_t(n), 0);
    for (int y = n - 1; y >= 0; --y) {
        for (int x = 0; x < n; ++x) {
            const gdi::Pixel pn = noir.At(x, y), pb = blanc.At(x, y);
            // Over white minus over black is 255 times the transparency.
            const int alpha = std::clamp(255 - (gdi::GreenOf(pb) - gdi::GreenOf(pn)), 0, 255);
            auto canal = [&](int v) { return alpha == 0 ? 0 : std::min(255, v * 255 / alpha); };
            out.push_back(uint8_t(canal(gdi::BlueOf(pn))));
            out.push_back(uint8_t(canal(gdi::GreenOf(pn))));
            out.push_back(uint8_t(canal(gdi::RedOf(pn))));
            out.push_back(uint8_t(alpha));
            if (alpha == 0)
                et[size_t(n - 1 - y) * size_t(masque) + size_t(x / 8)] |= uint8_t(0x80 >> (x % 8));
        }
    }
    out.insert(out.end(), et.begin(), et.end());
    return out;
}

} // namespace

std::vector<uint8_t> ProgramIcon() {
    constexpr int nombre = int(std::size(kIconSizes));
    std::vector<std::vector<uint8_t>> images;
    for (int n : kIconSizes) images.push_back(Image(n));
    std::vector<uint8_t> out;
    Put16(out, 0);
    Put16(out, 1); // an icon
    Put16(out, nombre);
    uint32_t decalage = 6 + 16 * nombre;
    for (int i = 0; i < nombre; ++i) {
        const int n = kIconSizes[i];
        out.push_back(uint8_t(n));
        out.push_back(uint8_t(n));
        out.push_back(0); // no palette
        out.push_back(0);
        Put16(out, 1);  // planes
        Put16(out, 32); // bits
        Put32(out, uint32_t(images[size_t(i)].size()));
        Put32(out, decalage);
        decalage += uint32_t(images[size_t(i)].size());
    }
    for (const auto& im : images) out.insert(out.end(), im.begin(), im.end());
    return out;
}

} // namespace mk
