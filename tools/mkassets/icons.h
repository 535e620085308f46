// The toolbar pictures: 20 command buttons, each with a normal and a highlight bitmap, and
// the plain strip piece that fills the rest of the bar.
#pragma once

#include "draw.h"

#include <vector>

namespace mk {

constexpr int kButtonSize = 32;

// One palette for the whole bar.
namespace pal {
constexpr gdi::Pixel kInk = gdi::Rgb(0x2b, 0x37, 0x48); // dark outlines
constexpr gdi::Pixel kBlue = gdi::Rgb(0x2f, 0x7c, 0xdf);
constexpr gdi::Pixel kBlueLight = gdi::Rgb(0x8f, 0xc8, 0xff);
constexpr gdi::Pixel kBlueDark = gdi::Rgb(0x1b, 0x4c, 0x96);
constexpr gdi::Pixel kRed = gdi::Rgb(0xe2, 0x3f, 0x3b);
constexpr gdi::Pixel kRedDark = gdi::Rgb(0x9e, 0x1c, 0x1c);
constexpr gdi::Pixel kGreen = gdi::Rgb(0x3c, 0xb0, 0x5a);
constexpr gdi::Pixel kGreenDark = gdi::Rgb(0x1d, 0x6e, 0x34);
constexpr gdi::Pixel kYellow = gdi::Rgb(0xf7, 0xbe, 0x38);
constexpr gdi::Pixel kPaper = gdi::Rgb(0xff, 0xff, 0xff);
constexpr gdi::Pixel kPaperShade = gdi::Rgb(0xe3, 0xea, 0xf2);
constexpr gdi::Pixel kPaperEdge = gdi::Rgb(0x6a, 0x7a, 0x8e);
constexpr gdi::Pixel kMetal = gdi::Rgb(0xc9, 0xd1, 0xda);
constexpr gdi::Pixel kMetalDark = gdi::Rgb(0x7f, 0x8c, 0x9a);
constexpr gdi::Pixel kBody = gdi::Rgb(0x45, 0x50, 0x5e);
constexpr gdi::Pixel kBodyLight = gdi::Rgb(0x6f, 0x7c, 0x8c);
constexpr gdi::Pixel kTextLine = gdi::Rgb(0x9d, 0xb2, 0xc9);
} // namespace pal

// Command buttons in command order; `draw` paints the symbol over the button background.
struct ButtonPicture {
    const char* normalFile;
    const char* highlightFile;
    void (*draw)(Canvas& c);
};
const std::vector<ButtonPicture>& ToolbarButtons();

// The plain bar background (normal buttons and the strip piece) or the hover glow.
void DrawButtonBackground(Canvas& c, bool highlight);

// Pieces shared by several symbols.
void DrawCamera(Canvas& c, double x, double y, double w, double h);
void DrawPicture(Canvas& c, double x0, double y0, double x1, double y1);
void DrawSelection(Canvas& c, double x0, double y0, double x1, double y1);

// The symbols, split over two files by theme.
// The tip of the day's light bulb, 32x32.
gdi::Surface Bulb();
// The thumbnails' marks, 16x15: saved, and sent by mail.
gdi::Surface SavedMark();
gdi::Surface MailedMark();

void DrawNewZone(Canvas& c);
void DrawWholeScreen(Canvas& c);
void DrawWindow(Canvas& c);
void DrawCopy(Canvas& c);
void DrawSave(Canvas& c);
void DrawSaveAll(Canvas& c);
void DrawPrint(Canvas& c);
void DrawPaint(Canvas& c);
void DrawMultiSelect(Canvas& c);
void DrawDelete(Canvas& c);
void DrawBin(Canvas& c);
void DrawUndo(Canvas& c);
void DrawRepeat(Canvas& c);
void DrawTimer(Canvas& c);
void DrawQuit(Canvas& c);
void DrawOptions(Canvas& c);
void DrawEnlarge(Canvas& c);
void DrawFilm(Canvas& c);
void DrawAbout(Canvas& c);
void DrawTallZone(Canvas& c);

// The shutter window's picture: a camera firing its flash, kShutterWidth x kShutterHeight.
constexpr int kShutterWidth = 112;
constexpr int kShutterHeight = 84;
gdi::Surface ShutterPicture();

} // namespace mk
