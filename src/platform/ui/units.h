// Twips and pixels: the one conversion between the model's geometry and the screen's.
#pragma once

#include <cmath>

namespace ui {

// Twips per pixel at a screen resolution: 1440 / DPI exactly (8.57 at 168 DPI), so that
// a length converted to twips and back keeps its pixels. An unknown DPI counts as 96.
inline float TwipsPerPixel(int dpi) {
    return dpi > 0 ? 1440.f / float(dpi) : 15.f;
}

// Pixels of a length in twips, rounded to the nearest pixel. Twips per pixel is read by
// the caller when needed, never cached, so that a change of DPI reaches every window.
inline int ToPixels(float twips, float tpp) {
    if (!(tpp > 0)) return 0;
    return int(std::lround(double(twips) / double(tpp)));
}

// Twips of a length in pixels.
inline float ToTwips(int pixels, float tpp) {
    return float(pixels) * tpp;
}

} // namespace ui
