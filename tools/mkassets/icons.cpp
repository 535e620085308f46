// Button background, shared pieces, and the capture and file symbols (commands 0 to 9).
#include "icons.h"

#include <algorithm>
#include <cmath>

namespace mk {

using namespace pal;

namespace {
constexpr gdi::Pixel kWhite = gdi::Rgb(255, 255, 255);
} // namespace

const std::vector<ButtonPicture>& ToolbarButtons() {
    static const std::vector<ButtonPicture> buttons = {
        {"camera.bmp", "camerac.bmp", DrawNewZone},
        {"toutecran.bmp", "toutecranc.bmp", DrawWholeScreen},
        {"camerafen.bmp", "camerafenc.bmp", DrawWindow},
        {"copy.bmp", "copyc.bmp", DrawCopy},
        {"savex.bmp", "savecx.bmp", DrawSave},
        {"saveallx.bmp", "saveallcx.bmp", DrawSaveAll},
        {"printerx.bmp", "printercx.bmp", DrawPrint},
        {"paintx.bmp", "paintcx.bmp", DrawPaint},
        {"multiselx.bmp", "multiselcx.bmp", DrawMultiSelect},
        {"deletex.bmp", "deletecx.bmp", DrawDelete},
        {"waste.bmp", "wastec.bmp", DrawBin},
        {"undox.bmp", "undocx.bmp", DrawUndo},
        {"moverbox.bmp", "moverboxc.bmp", DrawRepeat},
        {"moverboxtim.bmp", "moverboxtimc.bmp", DrawTimer},
        {"closex.bmp", "closecx.bmp", DrawQuit},
        {"wrench.bmp", "wrenchc.bmp", DrawOptions},
        {"agrandir.bmp", "agrandirc.bmp", DrawEnlarge},
        {"filmx.bmp", "filmcx.bmp", DrawFilm},
        {"report.bmp", "reportc.bmp", DrawAbout},
        {"camerag.bmp", "cameragc.bmp", DrawTallZone},
    };
    return buttons;
}

void DrawButtonBackground(Canvas& c, bool highlight) {
    const double n = kButtonSize;
    // The bar: a soft vertical gradient with a light top line and a darker bottom edge, so
    // that buttons and strip pieces side by side read as one band.
    c.Fill(Rect(0, 0, n, n),
           Vertical(gdi::Rgb(0xf8, 0xfa, 0xfd), 0, gdi::Rgb(0xdf, 0xe6, 0xef), n));
    c.Fill(Rect(0, 0, n, 1), Solid(kWhite));
    c.Fill(Rect(0, n - 1, n, n), Solid(gdi::Rgb(0xbf, 0xcb, 0xd9)));
    if (!highlight) return;
    Shape frame = RoundRect(0, 0, n, n, 4);
    c.Fill(frame, Vertical(gdi::Rgb(0xee, 0xf7, 0xff), 0, gdi::Rgb(0xaa, 0xd3, 0xff), n));
    c.FillSoft(Ellipse(n / 2, n / 2 + 2, 8, 7), Solid(kWhite), 0.85, 10);
    c.Fill(Border(RoundRect(1, 1, n - 1, n - 1, 3), 1), Solid(kWhite), 0.7);
    c.Stroke(frame, gdi::Rgb(0x2f, 0x84, 0xe4));
}

void DrawCamera(Canvas& c, double x, double y, double w, double h) {
    double top = y + h * 0.2;
    c.FillOutlined(RoundRect(x + w * 0.26, y, x + w * 0.6, top + 1.5, 1.2), Solid(kBody), kInk);
    c.FillOutlined(RoundRect(x + w * 0.7, y + h * 0.06, x + w * 0.88, top + 1, 0.8), Solid(kRed),
                   kRedDark);
    Shape body = RoundRect(x, top, x + w, y + h, 2.5);
    c.Fill(body, Vertical(kBodyLight, top, kBody, y + h));
    c.Fill(Rect(x + 2, top + 1, x + w - 2, top + 2), Solid(kWhite), 0.3);
    c.Stroke(body, kInk);
    c.Fill(RoundRect(x + w * 0.08, top + 2, x + w * 0.22, top + 4, 0.5), Solid(kYellow));
    double cx = x + w * 0.52, cy = y + h * 0.6, r = h * 0.34;
    c.FillOutlined(Circle(cx, cy, r), Vertical(kMetal, cy - r, kMetalDark, cy + r), kInk);
    double g = r * 0.66;
    c.FillOutlined(Circle(cx, cy, g),
                   Radial(kBlueLight, {cx - g * 0.3, cy - g * 0.3}, g * 1.4, kBlueDark),
                   Darker(kBlueDark, 0.3), 0.8);
    c.Fill(Circle(cx - g * 0.35, cy - g * 0.35, g * 0.28), Solid(kWhite), 0.85);
}

void DrawPicture(Canvas& c, double x0, double y0, double x1, double y1) {
    double w = x1 - x0, h = y1 - y0;
    Shape frame = Rect(x0, y0, x1, y1);
    c.Fill(frame, Vertical(Lighter(kBlueLight, 0.4), y0, Lighter(kBlue, 0.25), y1));
    c.Fill(Circle(x0 + w * 0.72, y0 + h * 0.32, std::min(w, h) * 0.15), Solid(kYellow));
    c.Fill(Intersect(frame, Ellipse(x0 + w * 0.85, y1 + h * 0.15, w * 0.5, h * 0.5)),
           Solid(Darker(kGreen, 0.2)));
    c.Fill(Intersect(frame, Ellipse(x0 + w * 0.25, y1 + h * 0.2, w * 0.6, h * 0.6)),
           Vertical(Lighter(kGreen, 0.2), y0 + h * 0.5, kGreen, y1));
    c.Stroke(frame, kPaperEdge);
}

void DrawSelection(Canvas& c, double x0, double y0, double x1, double y1) {
    Shape band = Border(Rect(x0, y0, x1, y1), 1);
    c.Fill(Rect(x0, y0, x1, y1), Solid(kBlueLight), 0.3);
    c.Fill(band, Solid(kWhite));
    c.Fill(Intersect(band, RectDashes(x0, y0, x1, y1, 2, 2)), Solid(kBlueDark));
}

void DrawNewZone(Canvas& c) {
    DrawSelection(c, 2, 2, 23, 19);
    DrawCamera(c, 9, 12, 21, 17);
}

void DrawWholeScreen(Canvas& c) {
    c.FillOutlined(Polygon({{13, 22}, {19, 22}, {20.5, 27}, {11.5, 27}}),
                   Vertical(kMetal, 22, kMetalDark, 27), kInk);
    c.FillOutlined(RoundRect(8, 26, 24, 29.5, 1.5), Vertical(kMetal, 26, kMetalDark, 29.5), kInk);
    Shape bezel = RoundRect(2, 4, 30, 24, 2);
    c.FillOutlined(bezel, Vertical(kBodyLight, 4, kBody, 24), kInk);
    Shape screen = Rect(4, 6, 28, 21);
    c.Fill(screen, Vertical(Lighter(kBlueLight, 0.2), 6, kBlue, 21));
    c.Fill(Intersect(screen, Polygon({{4, 6}, {19, 6}, {9, 21}, {4, 21}})), Solid(kWhite), 0.22);
    c.Stroke(screen, Darker(kBlueDark, 0.3));
    // Corner marks: the capture takes the whole screen.
    const gdi::Pixel mark = kWhite;
    double l = 4;
    c.Fill(Union(Rect(6, 8, 6 + l, 9.5), Rect(6, 8, 7.5, 8 + l)), Solid(mark));
    c.Fill(Union(Rect(26 - l, 8, 26, 9.5), Rect(24.5, 8, 26, 8 + l)), Solid(mark));
    c.Fill(Union(Rect(6, 17.5, 6 + l, 19), Rect(6, 19 - l, 7.5, 19)), Solid(mark));
    c.Fill(Union(Rect(26 - l, 17.5, 26, 19), Rect(24.5, 19 - l, 26, 19)), Solid(mark));
}

void DrawWindow(Canvas& c) {
    Shape frame = RoundRect(2, 4, 30, 28, 2);
    c.Fill(frame, Solid(kPaper));
    c.Fill(Intersect(frame, Rect(2, 4, 30, 10)), Vertical(Lighter(kBlue, 0.3), 4, kBlue, 10));
    c.Fill(Rect(2, 10, 30, 11), Solid(kBlueDark));
    c.Stroke(frame, kInk);
    c.FillOutlined(RoundRect(24, 5.5, 28, 8.5, 0.6), Solid(kRed), kRedDark, 0.7);
    c.Fill(RoundRect(19, 5.5, 23, 8.5, 0.6), Solid(kWhite), 0.85);
    c.Fill(Rect(4, 6.5, 12, 7.5), Solid(kWhite), 0.9);
    DrawPicture(c, 5, 13, 16, 25);
    for (double y : {14.0, 17.0, 20.0, 23.0})
        c.Fill(Rect(18, y, y == 23.0 ? 24 : 27, y + 1.2), Solid(kTextLine));
}

namespace {
// A sheet of paper with its top right corner folded.
void DrawSheet(Canvas& c, double x0, double y0, double x1, double y1, bool lines) {
    double f = 4;
    Shape sheet = Polygon({{x0, y0}, {x1 - f, y0}, {x1, y0 + f}, {x1, y1}, {x0, y1}});
    c.FillOutlined(sheet, Vertical(kPaper, y0, kPaperShade, y1), kPaperEdge);
    c.FillOutlined(Polygon({{x1 - f, y0}, {x1 - f, y0 + f}, {x1, y0 + f}}), Solid(kPaperShade),
                   kPaperEdge, 0.9);
    if (!lines) return;
    for (double y = y0 + 6; y + 2 < y1; y += 3)
        c.Fill(Rect(x0 + 3, y, (y + 5 < y1) ? x1 - 3 : x1 - 7, y + 1.2), Solid(kTextLine));
}

// A diskette seen from the front, `s` pixels square.
void DrawFloppy(Canvas& c, double x, double y, double s) {
    double k = s / 24.0; // drawn on a 24-pixel grid
    auto P = [&](double u, double v) { return Pt{x + u * k, y + v * k}; };
    Shape body = Polygon({P(0, 0), P(21, 0), P(24, 3), P(24, 24), P(0, 24)});
    c.FillOutlined(body, Vertical(Lighter(kBlue, 0.15), y, Darker(kBlue, 0.15), y + s), kBlueDark);
    Shape shutter = Rect(P(5, 0).x, y, P(18, 0).x, P(0, 8.5).y);
    c.FillOutlined(shutter, Vertical(kMetal, y, kMetalDark, P(0, 8.5).y), kInk, 0.9);
    c.Fill(Rect(P(13, 0).x, P(0, 1.8).y, P(16, 0).x, P(0, 6.8).y), Solid(kBody));
    Shape label = Rect(P(3.5, 0).x, P(0, 12.5).y, P(20.5, 0).x, y + s - 1);
    c.Fill(label, Solid(kPaper));
    for (double v : {15.5, 19.0})
        c.Fill(Rect(P(6, 0).x, P(0, v).y, P(18, 0).x, P(0, v).y + 1.1 * k), Solid(kTextLine));
    c.Stroke(body, kBlueDark);
}
} // namespace

gdi::Surface Bulb() {
    Canvas c(32, 32, 8);
    c.FillSoft(Circle(16, 12, 9), Solid(kYellow), 0.35, 4);
    Shape verre =
        Union(Circle(16, 12, 8), Polygon({{10.5, 16}, {21.5, 16}, {19.5, 23}, {12.5, 23}}));
    c.FillOutlined(verre, Radial(Lighter(kYellow, 0.7), {14, 9}, 10, kYellow),
                   Darker(kYellow, 0.45));
    c.Fill(Arc(16, 12, 5, 200, 260, 1.4), Solid(kWhite), 0.8);
    c.FillOutlined(RoundRect(12, 23, 20, 29, 1.5), Vertical(kMetal, 23, kMetalDark, 29), kInk);
    for (double y : {25.0, 27.0}) c.Fill(Rect(12.5, y, 19.5, y + 0.8), Solid(kBody), 0.7);
    return c.Downsample();
}

gdi::Surface SavedMark() {
    Canvas c(16, 15, 8);
    DrawFloppy(c, 1, 0.5, 14);
    return c.Downsample();
}

gdi::Surface MailedMark() {
    Canvas c(16, 15, 8);
    Shape envelope = RoundRect(0.5, 2.5, 15.5, 13.5, 1);
    c.FillOutlined(envelope, Vertical(kPaper, 2.5, kPaperShade, 13.5), kBlueDark);
    c.Fill(Line({1.5, 3.5}, {8, 8.5}, 1.0), Solid(kBlueDark));
    c.Fill(Line({8, 8.5}, {14.5, 3.5}, 1.0), Solid(kBlueDark));
    c.FillOutlined(Circle(12, 11, 2.6), Solid(kGreen), kGreenDark);
    return c.Downsample();
}

void DrawCopy(Canvas& c) {
    DrawSheet(c, 4, 3, 19, 22, false);
    c.Fill(Rect(7, 9, 16, 10.2), Solid(kTextLine));
    c.Fill(Rect(7, 12, 13, 13.2), Solid(kTextLine));
    DrawSheet(c, 12, 10, 28, 29, true);
}

void DrawSave(Canvas& c) {
    DrawFloppy(c, 4, 4, 24);
}

void DrawSaveAll(Canvas& c) {
    DrawFloppy(c, 12, 2, 18);
    DrawFloppy(c, 7, 7, 18);
    DrawFloppy(c, 2, 12, 18);
}

void DrawPrint(Canvas& c) {
    c.FillOutlined(Rect(8, 2, 24, 13), Solid(kPaper), kPaperEdge);
    for (double y : {5.0, 8.0}) c.Fill(Rect(11, y, 21, y + 1.1), Solid(kTextLine));
    Shape body = RoundRect(2, 11, 30, 24, 2.5);
    c.FillOutlined(body, Vertical(Lighter(kMetal, 0.5), 11, kMetalDark, 24), kInk);
    c.Fill(Rect(5, 12, 27, 13), Solid(kWhite), 0.7);
    c.FillOutlined(Circle(25.5, 15.5, 1.4), Solid(kGreen), kGreenDark, 0.6);
    c.Fill(RoundRect(5, 19, 27, 22, 1), Solid(kBody));
    c.FillOutlined(Rect(8, 20.5, 24, 30), Vertical(kPaper, 21, kPaperShade, 30), kPaperEdge);
    c.Fill(Rect(8, 20.5, 24, 21.5), Solid(kBody), 0.5);
    for (double y : {23.5, 26.5}) c.Fill(Rect(11, y, y > 25 ? 18 : 21, y + 1.1), Solid(kTextLine));
}

void DrawPaint(Canvas& c) {
    const gdi::Pixel wood = gdi::Rgb(0xee, 0xc9, 0x8e);
    const gdi::Pixel woodDark = gdi::Rgb(0x9a, 0x64, 0x2c);
    Shape palette =
        Subtract(Ellipse(14.5, 18, 13, 10.5), Union(Circle(9.5, 23, 2.6), Circle(27.5, 25, 4.5)));
    c.FillOutlined(palette, Vertical(Lighter(wood, 0.3), 8, wood, 28), woodDark);
    const gdi::Pixel dots[] = {kRed, kYellow, kGreen, kBlue};
    const Pt at[] = {{6.5, 16.5}, {10, 11.5}, {16, 10}, {21.5, 20.5}};
    for (int i = 0; i < 4; ++i)
        c.FillOutlined(Circle(at[i].x, at[i].y, 2.4), Solid(dots[i]), Darker(dots[i], 0.35), 0.8);
    // The brush lies across the palette, its wet tip near the middle.
    const Pt tip = {15, 22}, end = {29.5, 3};
    const double len = std::hypot(end.x - tip.x, end.y - tip.y);
    const Pt u = {(end.x - tip.x) / len, (end.y - tip.y) / len}, n = {-u.y, u.x};
    auto onBrush = [&](double along, double side) {
        return Pt{tip.x + u.x * along + n.x * side, tip.y + u.y * along + n.y * side};
    };
    c.FillOutlined(Line(onBrush(8.5, 0), end, 3.2),
                   Linear(gdi::Rgb(0xd6, 0x5a, 0x30), onBrush(0, -1.5), gdi::Rgb(0x8a, 0x2a, 0x12),
                          onBrush(0, 1.5)),
                   gdi::Rgb(0x5e, 0x1a, 0x0a), 0.8);
    c.FillOutlined(Polygon({onBrush(5, -1.7), onBrush(9, -1.7), onBrush(9, 1.7), onBrush(5, 1.7)}),
                   Solid(kMetal), kInk, 0.8);
    c.FillOutlined(Polygon({onBrush(0, 0), onBrush(2, -1.3), onBrush(5.3, -1.7), onBrush(5.3, 1.7),
                            onBrush(2, 1.3)}),
                   Solid(kBlue), kBlueDark, 0.8);
}

void DrawMultiSelect(Canvas& c) {
    const double w = 11, h = 9;
    const Pt at[] = {{3, 5}, {18, 5}, {3, 18}, {18, 18}};
    for (int i = 0; i < 4; ++i) {
        bool selected = i == 0 || i == 3;
        double x = at[i].x, y = at[i].y;
        if (selected) {
            c.Fill(RoundRect(x - 2, y - 2, x + w + 2, y + h + 2, 1.5),
                   Vertical(Lighter(kBlue, 0.2), y - 2, kBlue, y + h + 2));
            c.Stroke(RoundRect(x - 2, y - 2, x + w + 2, y + h + 2, 1.5), kBlueDark);
        }
        DrawPicture(c, x, y, x + w, y + h);
    }
}

void DrawDelete(Canvas& c) {
    DrawPicture(c, 2, 4, 25, 22);
    Shape cross = Union(Line({15, 14}, {27, 27}, 4.2), Line({27, 14}, {15, 27}, 4.2));
    c.FillSoft(cross, Solid(kWhite), 0.9, 1.5);
    c.FillOutlined(cross, Vertical(Lighter(kRed, 0.15), 13, Darker(kRed, 0.1), 28), kRedDark);
}

} // namespace mk
