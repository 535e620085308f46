// Anti-aliased drawing for the asset generator. Shapes are signed distance functions in
// picture pixel units (negative inside); a Canvas paints them onto a supersampled surface
// and averages it down to the picture size, which gives clean edges at 32x32.
#pragma once

#include "platform/gdi/surface.h"

#include <functional>
#include <vector>

namespace mk {

struct Pt {
    double x = 0;
    double y = 0;
};

// Signed distance from (x, y) to the shape's edge: negative inside, in picture pixels.
using Shape = std::function<double(double x, double y)>;

// Colour helpers.
gdi::Pixel Mix(gdi::Pixel a, gdi::Pixel b, double t); // t = 0 gives a, 1 gives b
gdi::Pixel Darker(gdi::Pixel c, double amount);       // towards black
gdi::Pixel Lighter(gdi::Pixel c, double amount);      // towards white

// A fill: a solid colour, a linear gradient from p0 to p1, or a radial gradient around p0
// reaching c1 at `radius`.
struct Paint {
    enum Kind { kSolid, kLinear, kRadial };
    Kind kind = kSolid;
    gdi::Pixel c0 = 0;
    gdi::Pixel c1 = 0;
    Pt p0;
    Pt p1;
    double radius = 1;

    gdi::Pixel At(double x, double y) const;
};

Paint Solid(gdi::Pixel c);
Paint Linear(gdi::Pixel c0, Pt p0, gdi::Pixel c1, Pt p1);
Paint Vertical(gdi::Pixel top, double y0, gdi::Pixel bottom, double y1);
Paint Radial(gdi::Pixel centre, Pt c, double radius, gdi::Pixel edge);

// Basic shapes. Angles are in degrees, clockwise on screen from the +x axis.
Shape Rect(double x0, double y0, double x1, double y1);
Shape RoundRect(double x0, double y0, double x1, double y1, double r);
Shape Circle(double cx, double cy, double r);
Shape Ellipse(double cx, double cy, double rx, double ry);
Shape Polygon(std::vector<Pt> pts);
Shape Line(Pt a, Pt b, double width);                                          // round caps
Shape Arc(double cx, double cy, double r, double a0, double a1, double width); // butt ends
// An arc from a0 to a1 with an arrow head at a1 pointing on along the circle.
Shape ArcArrow(double cx, double cy, double r, double a0, double a1, double width,
               double headLength, double headWidth);
// A straight arrow from `from` to the tip `to`.
Shape Arrow(Pt from, Pt to, double width, double headLength, double headWidth);

// Combinations.
Shape Union(Shape a, Shape b);
Shape Intersect(Shape a, Shape b);
Shape Subtract(Shape a, Shape b);
Shape Offset(Shape s, double d); // grows the shape by d (shrinks when negative)
Shape Move(Shape s, double dx, double dy);
Shape Border(Shape s, double width); // the inner band of `width` along the edge
// Dashes along the border of a rectangle: inside where the perimeter position falls in a dash.
Shape RectDashes(double x0, double y0, double x1, double y1, double dash, double gap);

class Canvas {
public:
    explicit Canvas(int size, int scale = 8) : Canvas(size, size, scale) {}
    Canvas(int width, int height, int scale);

    int Size() const { return width_; }
    int Width() const { return width_; }
    int Height() const { return height_; }

    void Fill(const Shape& s, const Paint& p, double alpha = 1.0);
    // Coverage ramps from full at the edge to none `softness` pixels outside: glows, shadows.
    void FillSoft(const Shape& s, const Paint& p, double alpha, double softness);
    // Fills the shape and draws an inner outline of `width` pixels in `outline`.
    void FillOutlined(const Shape& s, const Paint& fill, gdi::Pixel outline, double width = 1.0);
    void Stroke(const Shape& s, gdi::Pixel c, double width = 1.0) {
        Fill(Border(s, width), Solid(c));
    }

    // The picture at its final size, each pixel the average of its supersampled block.
    gdi::Surface Downsample() const;

private:
    template <typename Coverage> void Blend(const Paint& p, double alpha, Coverage cover);

    int width_;
    int height_;
    int scale_;
    gdi::Surface hi_;
};

} // namespace mk
