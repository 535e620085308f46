// Symbols of the list, window and program commands (commands 10 to 19).
#include "icons.h"

#include <cmath>
#include <numbers>

namespace mk {

using namespace pal;

namespace {
constexpr gdi::Pixel kWhite = gdi::Rgb(255, 255, 255);
} // namespace

void DrawBin(Canvas& c) {
    c.FillOutlined(Border(RoundRect(12, 2.5, 20, 8, 1.5), 1.8), Solid(kMetalDark), kInk, 0.7);
    Shape body = Polygon({{7, 9}, {25, 9}, {23, 29.5}, {9, 29.5}});
    c.Fill(body, Linear(Lighter(kMetal, 0.6), {9, 0}, kMetalDark, {25, 0}));
    for (double x : {12.0, 16.0, 20.0})
        c.Fill(Line({x, 13}, {x + (x - 16) * 0.1, 26.5}, 1.4), Solid(Darker(kMetalDark, 0.15)));
    c.Stroke(body, kInk);
    Shape lid = RoundRect(4.5, 6, 27.5, 10.5, 1.2);
    c.FillOutlined(lid, Vertical(Lighter(kMetal, 0.5), 6, kMetalDark, 10.5), kInk);
}

void DrawUndo(Canvas& c) {
    Shape arrow = ArcArrow(16.5, 17, 8, 105, -90, 4.2, 7.5, 11.5);
    c.FillOutlined(arrow, Linear(Lighter(kBlue, 0.35), {10, 5}, kBlueDark, {26, 27}),
                   Darker(kBlueDark, 0.2));
}

void DrawRepeat(Canvas& c) {
    DrawPicture(c, 10.5, 11, 21.5, 21);
    Shape arrows =
        Union(ArcArrow(16, 16, 12, -170, -30, 3.4, 6, 9), ArcArrow(16, 16, 12, 10, 150, 3.4, 6, 9));
    c.FillOutlined(arrows, Vertical(Lighter(kGreen, 0.3), 3, Darker(kGreen, 0.1), 29), kGreenDark);
}

void DrawTimer(Canvas& c) {
    c.FillOutlined(Rect(14.5, 3.5, 17.5, 7.5), Solid(kMetalDark), kInk, 0.8);
    c.FillOutlined(RoundRect(12.5, 1, 19.5, 4.5, 1), Vertical(kMetal, 1, kMetalDark, 4.5), kInk);
    c.FillOutlined(Line({24.5, 8}, {26.5, 6}, 3), Solid(kMetal), kInk, 0.8);
    const double cx = 16, cy = 18;
    c.FillOutlined(Circle(cx, cy, 12), Vertical(Lighter(kBlue, 0.25), 6, kBlueDark, 30), kInk);
    c.FillOutlined(Circle(cx, cy, 9.5), Radial(kWhite, {cx - 2, cy - 3}, 12, kPaperShade),
                   Darker(kBlueDark, 0.3), 0.8);
    for (int i = 0; i < 12; ++i) {
        double a = i * 30 * 3.14159265358979 / 180;
        double r0 = i % 3 == 0 ? 6.6 : 7.4;
        c.Fill(Line({cx + r0 * std::cos(a), cy + r0 * std::sin(a)},
                    {cx + 8.3 * std::cos(a), cy + 8.3 * std::sin(a)}, i % 3 == 0 ? 1.4 : 0.9),
               Solid(kInk));
    }
    c.Fill(Line({cx, cy}, {cx, cy - 6}, 1.8), Solid(kInk));
    c.Fill(Line({cx, cy}, {cx + 4.5, cy + 2.5}, 1.6), Solid(kInk));
    c.Fill(Line({cx + 1.5, cy - 1.5}, {cx - 4.5, cy + 4.5}, 0.9), Solid(kRed));
    c.Fill(Circle(cx, cy, 1.4), Solid(kRed));
}

void DrawQuit(Canvas& c) {
    Shape disc = Circle(16, 16, 13.5);
    c.FillOutlined(disc, Radial(Lighter(kRed, 0.4), {12, 10}, 19, Darker(kRed, 0.25)), kRedDark);
    c.Fill(Intersect(disc, Ellipse(16, 8.5, 10, 6)), Solid(kWhite), 0.15);
    Shape symbol = Union(Arc(16, 17, 7.2, -55, 235, 2.8), Line({16, 7.5}, {16, 15.5}, 2.8));
    c.FillSoft(Move(symbol, 0, 0.7), Solid(kRedDark), 0.45, 1.2);
    c.Fill(symbol, Solid(kWhite));
}

void DrawOptions(Canvas& c) {
    const Pt head = {22, 10}, tail = {9, 23};
    const Pt out = {0.7071, -0.7071}; // from the handle towards the open jaw
    Shape wrench =
        Union(Union(Line(tail, head, 5), Circle(head.x, head.y, 6.6)), Circle(tail.x, tail.y, 4.4));
    Shape jaw = Line({head.x - out.x * 0.5, head.y - out.y * 0.5},
                     {head.x + out.x * 10, head.y + out.y * 10}, 4.8);
    wrench = Subtract(Subtract(wrench, jaw), Circle(tail.x, tail.y, 1.9));
    c.FillSoft(Move(wrench, 0.8, 1), Solid(gdi::Rgb(0x70, 0x7c, 0x8a)), 0.3, 0.8);
    c.FillOutlined(wrench, Linear(Lighter(kMetal, 0.7), {8, 8}, kMetalDark, {24, 24}), kInk);
}

void DrawEnlarge(Canvas& c) {
    const Pt corners[] = {{2.5, 2.5}, {29.5, 2.5}, {2.5, 29.5}, {29.5, 29.5}};
    Shape arrows = Arrow({13, 13}, corners[0], 3.2, 7.5, 10);
    arrows = Union(arrows, Arrow({19, 13}, corners[1], 3.2, 7.5, 10));
    arrows = Union(arrows, Arrow({13, 19}, corners[2], 3.2, 7.5, 10));
    arrows = Union(arrows, Arrow({19, 19}, corners[3], 3.2, 7.5, 10));
    c.FillOutlined(arrows, Linear(Lighter(kBlue, 0.35), {2, 2}, kBlueDark, {30, 30}),
                   Darker(kBlueDark, 0.2));
    c.FillOutlined(RoundRect(11.5, 11.5, 20.5, 20.5, 1), Vertical(kPaper, 11.5, kPaperShade, 20.5),
                   kInk);
}

void DrawFilm(Canvas& c) {
    const gdi::Pixel film = gdi::Rgb(0x3b, 0x45, 0x53);
    c.FillOutlined(Rect(2, 5, 30, 27), Vertical(Lighter(film, 0.15), 5, Darker(film, 0.2), 27),
                   Darker(kInk, 0.3));
    for (double x = 3.5; x < 29; x += 4) {
        c.Fill(RoundRect(x, 6.5, x + 2, 8.5, 0.4), Solid(kPaperShade));
        c.Fill(RoundRect(x, 23.5, x + 2, 25.5, 0.4), Solid(kPaperShade));
    }
    DrawPicture(c, 4, 10.5, 15, 21.5);
    DrawPicture(c, 17, 10.5, 28, 21.5);
}

void DrawAbout(Canvas& c) {
    Shape disc = Circle(16, 16, 13.5);
    c.FillOutlined(disc, Radial(Lighter(kBlue, 0.45), {12, 10}, 19, kBlueDark),
                   Darker(kBlueDark, 0.25));
    c.Fill(Intersect(disc, Ellipse(16, 8.5, 10, 6)), Solid(kWhite), 0.18);
    Shape letter = Union(Union(Rect(14.3, 13, 17.7, 23), Rect(12.5, 13, 17.7, 15)),
                         Union(Rect(12.5, 22, 19.5, 24.2), Circle(16, 8.8, 2.3)));
    c.FillSoft(Move(letter, 0, 0.7), Solid(kBlueDark), 0.5, 1.2);
    c.Fill(letter, Solid(kWhite));
}

void DrawTallZone(Canvas& c) {
    DrawSelection(c, 19, 2, 30, 30);
    Shape arrows =
        Union(Arrow({24.5, 16}, {24.5, 4.5}, 2, 4, 6), Arrow({24.5, 16}, {24.5, 27.5}, 2, 4, 6));
    c.Fill(arrows, Solid(kBlue));
    DrawCamera(c, 1, 9, 18.5, 15);
}

gdi::Surface ShutterPicture() {
    const double w = kShutterWidth, h = kShutterHeight;
    Canvas c(kShutterWidth, kShutterHeight, 6);
    c.Fill(Rect(0, 0, w, h),
           Vertical(gdi::Rgb(0x3a, 0x44, 0x52), 0, gdi::Rgb(0x1f, 0x25, 0x2e), h));
    c.Stroke(Rect(0, 0, w, h), gdi::Rgb(0x6f, 0x7c, 0x8c));

    // The camera, big: a top plate with the viewfinder hump, a leather band, the lens.
    const double x0 = 16, x1 = 96, y0 = 30, y1 = 76;
    c.FillOutlined(RoundRect(40, 20, 70, y0 + 4, 4), Vertical(Lighter(kMetal, 0.3), 20, kMetal, y0),
                   kInk, 1.5);
    c.FillOutlined(RoundRect(76, 23, 88, y0 + 2, 2), Vertical(kRed, 23, kRedDark, y0), kInk, 1.2);
    Shape body = RoundRect(x0, y0, x1, y1, 7);
    c.Fill(body, Vertical(Lighter(kMetal, 0.35), y0, kMetalDark, y1));
    c.Fill(Intersect(body, Rect(x0, 43, x1, 68)), Vertical(kBodyLight, 43, kBody, 68));
    c.Fill(Intersect(body, Rect(x0, 43, x1, 44)), Solid(kInk), 0.5);
    c.Fill(Intersect(body, Rect(x0, 67, x1, 68)), Solid(kInk), 0.5);
    c.Stroke(body, kInk, 1.5);
    const double cx = 56, cy = 54, r = 18;
    c.FillSoft(Circle(cx, cy + 1.5, r), Solid(kInk), 0.5, 2.5);
    c.FillOutlined(Circle(cx, cy, r), Vertical(Lighter(kMetal, 0.4), cy - r, kMetalDark, cy + r),
                   kInk, 1.5);
    c.Fill(Border(Circle(cx, cy, r - 4.5), 1.2), Solid(kInk), 0.6);
    const double g = r - 6;
    c.Fill(Circle(cx, cy, g),
           Radial(kBlueLight, {cx - g * 0.3, cy - g * 0.35}, g * 1.3, kBlueDark));
    c.Fill(Circle(cx, cy, g * 0.45), Solid(Darker(kBlueDark, 0.45)), 0.8);
    c.Fill(Ellipse(cx - g * 0.38, cy - g * 0.4, g * 0.3, g * 0.22), Solid(kWhite), 0.9);
    c.Fill(Circle(cx + g * 0.35, cy + g * 0.4, g * 0.1), Solid(kWhite), 0.6);

    // The flash window, firing: a glow and rays over the top left of the body.
    const double fx = 27, fy = 37;
    c.FillOutlined(RoundRect(fx - 6, fy - 3.5, fx + 6, fy + 3.5, 1.5), Solid(Lighter(kYellow, 0.6)),
                   kInk, 1.0);
    c.FillSoft(Circle(fx, fy, 5), Solid(kWhite), 0.9, 16);
    for (int k = 0; k < 8; ++k) {
        const double a = (k * 45 + 22.5) * std::numbers::pi / 180;
        const double r0 = 9, r1 = k % 2 == 0 ? 19 : 14;
        c.Fill(Line({fx + r0 * std::cos(a), fy + r0 * std::sin(a)},
                    {fx + r1 * std::cos(a), fy + r1 * std::sin(a)}, 1.6),
               Solid(kWhite), 0.85);
    }
    c.Fill(Circle(fx, fy, 3.2), Solid(kWhite));
    return c.Downsample();
}

} // namespace mk
