#include "flags.h"

#include "draw.h"

#include <cmath>

namespace mk {

namespace {

constexpr double kW = kFlagWidth;
constexpr double kH = kFlagHeight;
constexpr gdi::Pixel kEdge = gdi::Rgb(0x33, 0x33, 0x33);

// Inside (-1) where `in` holds, outside (1) elsewhere: the canvas only looks at the sign.
template <typename F> Shape Region(F in) {
    return [in](double x, double y) { return in(x, y) ? -1.0 : 1.0; };
}

gdi::Surface Finish(Canvas& c) {
    c.Stroke(Rect(0, 0, kW, kH), kEdge, 1.0);
    return c.Downsample();
}

} // namespace

gdi::Surface FlagFrench() {
    Canvas c(kFlagWidth, kFlagHeight, 8);
    c.Fill(Rect(0, 0, kW / 3, kH), Solid(gdi::Rgb(0x00, 0x55, 0xA4)));
    c.Fill(Rect(kW / 3, 0, 2 * kW / 3, kH), Solid(gdi::Rgb(0xFF, 0xFF, 0xFF)));
    c.Fill(Rect(2 * kW / 3, 0, kW, kH), Solid(gdi::Rgb(0xEF, 0x41, 0x35)));
    return Finish(c);
}

gdi::Surface FlagBritish() {
    const gdi::Pixel blue = gdi::Rgb(0x01, 0x21, 0x69);
    const gdi::Pixel red = gdi::Rgb(0xC8, 0x10, 0x2E);
    const gdi::Pixel white = gdi::Rgb(0xFF, 0xFF, 0xFF);
    // Widths in the flag's own units, 30 to its height.
    const double u = kH / 30;
    const double cx = kW / 2, cy = kH / 2, len = std::hypot(kW, kH);
    // Signed distances across the two diagonals, positive below each; and the position along
    // them, positive towards the right.
    auto across1 = [=](double x, double y) { return (kW * (y - cy) - kH * (x - cx)) / len; };
    auto across2 = [=](double x, double y) { return (kW * (y - cy) + kH * (x - cx)) / len; };

    Canvas c(kFlagWidth, kFlagHeight, 8);
    c.Fill(Rect(0, 0, kW, kH), Solid(blue));
    c.Fill(Region([=](double x, double y) {
               return std::abs(across1(x, y)) <= 3 * u || std::abs(across2(x, y)) <= 3 * u;
           }),
           Solid(white));
    // The red saltire is counterchanged: in each arm it lies on one side of the diagonal, the
    // broad white uppermost at the hoist, the red uppermost at the fly.
    c.Fill(Region([=](double x, double y) {
               const double a1 = across1(x, y), a2 = across2(x, y);
               const bool left = x < cx;
               const bool on1 = left ? (a1 >= 0 && a1 <= 2 * u) : (a1 <= 0 && a1 >= -2 * u);
               const bool on2 = left ? (a2 >= 0 && a2 <= 2 * u) : (a2 <= 0 && a2 >= -2 * u);
               return on1 || on2;
           }),
           Solid(red));
    c.Fill(Union(Rect(cx - 5 * u, 0, cx + 5 * u, kH), Rect(0, cy - 5 * u, kW, cy + 5 * u)),
           Solid(white));
    c.Fill(Union(Rect(cx - 3 * u, 0, cx + 3 * u, kH), Rect(0, cy - 3 * u, kW, cy + 3 * u)),
           Solid(red));
    return Finish(c);
}

} // namespace mk
