#include "draw.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace mk {

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

int Channel(double v) {
    return std::clamp(int(std::lround(v)), 0, 255);
}

double Clamp01(double v) {
    return std::clamp(v, 0.0, 1.0);
}

// Distance from p to the segment a-b.
double SegmentDistance(double px, double py, Pt a, Pt b) {
    double ex = b.x - a.x, ey = b.y - a.y;
    double wx = px - a.x, wy = py - a.y;
    double len2 = ex * ex + ey * ey;
    double t = len2 > 0 ? Clamp01((wx * ex + wy * ey) / len2) : 0.0;
    return std::hypot(wx - ex * t, wy - ey * t);
}

Pt OnCircle(double cx, double cy, double r, double degrees) {
    return {cx + r * std::cos(degrees * kDegree), cy + r * std::sin(degrees * kDegree)};
}

} // namespace

gdi::Pixel Mix(gdi::Pixel a, gdi::Pixel b, double t) {
    t = Clamp01(t);
    auto mix = [t](int x, int y) { return Channel(x + (y - x) * t); };
    return gdi::Rgb(mix(gdi::RedOf(a), gdi::RedOf(b)), mix(gdi::GreenOf(a), gdi::GreenOf(b)),
                    mix(gdi::BlueOf(a), gdi::BlueOf(b)));
}

gdi::Pixel Darker(gdi::Pixel c, double amount) {
    return Mix(c, gdi::Rgb(0, 0, 0), amount);
}

gdi::Pixel Lighter(gdi::Pixel c, double amount) {
    return Mix(c, gdi::Rgb(255, 255, 255), amount);
}

gdi::Pixel Paint::At(double x, double y) const {
    switch (kind) {
    case kSolid:
        return c0;
    case kLinear: {
        double ex = p1.x - p0.x, ey = p1.y - p0.y;
        double len2 = ex * ex + ey * ey;
        double t = len2 > 0 ? ((x - p0.x) * ex + (y - p0.y) * ey) / len2 : 0.0;
        return Mix(c0, c1, t);
    }
    case kRadial:
        return Mix(c0, c1, std::hypot(x - p0.x, y - p0.y) / radius);
    }
    return c0;
}

Paint Solid(gdi::Pixel c) {
    Paint p;
    p.c0 = p.c1 = c;
    return p;
}

Paint Linear(gdi::Pixel c0, Pt p0, gdi::Pixel c1, Pt p1) {
    Paint p;
    p.kind = Paint::kLinear;
    p.c0 = c0;
    p.c1 = c1;
    p.p0 = p0;
    p.p1 = p1;
    return p;
}

Paint Vertical(gdi::Pixel top, double y0, gdi::Pixel bottom, double y1) {
    return Linear(top, {0, y0}, bottom, {0, y1});
}

Paint Radial(gdi::Pixel centre, Pt c, double radius, gdi::Pixel edge) {
    Paint p;
    p.kind = Paint::kRadial;
    p.c0 = centre;
    p.c1 = edge;
    p.p0 = c;
    p.radius = radius;
    return p;
}

Shape Rect(double x0, double y0, double x1, double y1) {
    return RoundRect(x0, y0, x1, y1, 0);
}

Shape RoundRect(double x0, double y0, double x1, double y1, double r) {
    double cx = (x0 + x1) / 2, cy = (y0 + y1) / 2;
    double hx = (x1 - x0) / 2 - r, hy = (y1 - y0) / 2 - r;
    return [=](double x, double y) {
        double qx = std::abs(x - cx) - hx, qy = std::abs(y - cy) - hy;
        double outside = std::hypot(std::max(qx, 0.0), std::max(qy, 0.0));
        return outside + std::min(std::max(qx, qy), 0.0) - r;
    };
}

Shape Circle(double cx, double cy, double r) {
    return [=](double x, double y) { return std::hypot(x - cx, y - cy) - r; };
}

Shape Ellipse(double cx, double cy, double rx, double ry) {
    // A close approximation of the true distance, good enough for outlines.
    return [=](double x, double y) {
        double px = x - cx, py = y - cy;
        double k0 = std::hypot(px / rx, py / ry);
        double k1 = std::hypot(px / (rx * rx), py / (ry * ry));
        if (k1 == 0) return -std::min(rx, ry);
        return k0 * (k0 - 1.0) / k1;
    };
}

Shape Polygon(std::vector<Pt> pts) {
    return [v = std::move(pts)](double x, double y) {
        double best = 1e30;
        bool inside = false;
        for (size_t i = 0, j = v.size() - 1; i < v.size(); j = i++) {
            best = std::min(best, SegmentDistance(x, y, v[j], v[i]));
            // Crossing test on a ray towards +x.
            if ((v[i].y > y) != (v[j].y > y)) {
                double xCross = v[i].x + (y - v[i].y) * (v[j].x - v[i].x) / (v[j].y - v[i].y);
                if (x < xCross) inside = !inside;
            }
        }
        return inside ? -best : best;
    };
}

Shape Line(Pt a, Pt b, double width) {
    return [=](double x, double y) { return SegmentDistance(x, y, a, b) - width / 2; };
}

Shape Arc(double cx, double cy, double r, double a0, double a1, double width) {
    double lo = std::min(a0, a1), span = std::abs(a1 - a0);
    Pt capA0 = OnCircle(cx, cy, r - width / 2, lo), capA1 = OnCircle(cx, cy, r + width / 2, lo);
    Pt capB0 = OnCircle(cx, cy, r - width / 2, lo + span);
    Pt capB1 = OnCircle(cx, cy, r + width / 2, lo + span);
    return [=](double x, double y) {
        double angle = std::atan2(y - cy, x - cx) / kDegree;
        double t = std::fmod(angle - lo + 720.0, 360.0);
        double caps =
            std::min(SegmentDistance(x, y, capA0, capA1), SegmentDistance(x, y, capB0, capB1));
        if (t > span) return caps;
        double ring = std::abs(std::hypot(x - cx, y - cy) - r) - width / 2;
        return ring > 0 ? ring : std::max(ring, -caps);
    };
}

Shape ArcArrow(double cx, double cy, double r, double a0, double a1, double width,
               double headLength, double headWidth) {
    double dir = a1 > a0 ? 1.0 : -1.0;
    double c = std::cos(a1 * kDegree), s = std::sin(a1 * kDegree);
    Pt end = {cx + r * c, cy + r * s};
    Pt tip = {end.x - s * dir * headLength, end.y + c * dir * headLength};
    Pt outer = {end.x + c * headWidth / 2, end.y + s * headWidth / 2};
    Pt inner = {end.x - c * headWidth / 2, end.y - s * headWidth / 2};
    return Union(Arc(cx, cy, r, a0, a1, width), Polygon({outer, tip, inner}));
}

Shape Arrow(Pt from, Pt to, double width, double headLength, double headWidth) {
    double len = std::hypot(to.x - from.x, to.y - from.y);
    double ux = (to.x - from.x) / len, uy = (to.y - from.y) / len;
    double nx = -uy, ny = ux;
    Pt base = {to.x - ux * headLength, to.y - uy * headLength};
    // The shaft runs a little under the head so the two join without a seam.
    Pt under = {base.x + ux * 0.5, base.y + uy * 0.5};
    double hw = width / 2;
    Shape shaft = Polygon({{from.x + nx * hw, from.y + ny * hw},
                           {under.x + nx * hw, under.y + ny * hw},
                           {under.x - nx * hw, under.y - ny * hw},
                           {from.x - nx * hw, from.y - ny * hw}});
    Shape head = Polygon({{base.x + nx * headWidth / 2, base.y + ny * headWidth / 2},
                          to,
                          {base.x - nx * headWidth / 2, base.y - ny * headWidth / 2}});
    return Union(shaft, head);
}

Shape Union(Shape a, Shape b) {
    return [a = std::move(a), b = std::move(b)](double x, double y) {
        return std::min(a(x, y), b(x, y));
    };
}

Shape Intersect(Shape a, Shape b) {
    return [a = std::move(a), b = std::move(b)](double x, double y) {
        return std::max(a(x, y), b(x, y));
    };
}

Shape Subtract(Shape a, Shape b) {
    return [a = std::move(a), b = std::move(b)](double x, double y) {
        return std::max(a(x, y), -b(x, y));
    };
}

Shape Offset(Shape s, double d) {
    return [s = std::move(s), d](double x, double y) { return s(x, y) - d; };
}

Shape Move(Shape s, double dx, double dy) {
    return [s = std::move(s), dx, dy](double x, double y) { return s(x - dx, y - dy); };
}

Shape Border(Shape s, double width) {
    return [s = std::move(s), width](double x, double y) {
        double d = s(x, y);
        return std::max(d, -d - width);
    };
}

Shape RectDashes(double x0, double y0, double x1, double y1, double dash, double gap) {
    double w = x1 - x0, h = y1 - y0;
    return [=](double x, double y) {
        // Position along the perimeter, clockwise from the top left corner, taken on the
        // nearest side.
        double dTop = std::abs(y - y0), dRight = std::abs(x - x1);
        double dBottom = std::abs(y - y1), dLeft = std::abs(x - x0);
        double pos;
        double nearest = std::min({dTop, dRight, dBottom, dLeft});
        if (nearest == dTop)
            pos = x - x0;
        else if (nearest == dRight)
            pos = w + (y - y0);
        else if (nearest == dBottom)
            pos = w + h + (x1 - x);
        else
            pos = 2 * w + h + (y1 - y);
        double phase = std::fmod(pos + 4 * (dash + gap), dash + gap);
        return phase < dash ? -1.0 : 1.0;
    };
}

Canvas::Canvas(int width, int height, int scale)
    : width_(width), height_(height), scale_(scale),
      hi_(width * scale, height * scale, gdi::Rgb(255, 255, 255)) {}

template <typename Coverage> void Canvas::Blend(const Paint& p, double alpha, Coverage cover) {
    const double step = 1.0 / scale_;
    for (int j = 0; j < hi_.Height(); ++j) {
        double y = (j + 0.5) * step;
        gdi::Pixel* row = hi_.Row(j);
        for (int i = 0; i < hi_.Width(); ++i) {
            double x = (i + 0.5) * step;
            double a = cover(x, y) * alpha;
            if (a <= 0) continue;
            gdi::Pixel c = p.At(x, y);
            row[i] = a >= 1 ? c : Mix(row[i], c, a);
        }
    }
}

void Canvas::Fill(const Shape& s, const Paint& p, double alpha) {
    Blend(p, alpha, [&s](double x, double y) { return s(x, y) <= 0 ? 1.0 : 0.0; });
}

void Canvas::FillSoft(const Shape& s, const Paint& p, double alpha, double softness) {
    Blend(p, alpha, [&s, softness](double x, double y) {
        double d = s(x, y);
        return d <= 0 ? 1.0 : Clamp01(1.0 - d / softness);
    });
}

void Canvas::FillOutlined(const Shape& s, const Paint& fill, gdi::Pixel outline, double width) {
    Fill(s, fill);
    Stroke(s, outline, width);
}

gdi::Surface Canvas::Downsample() const {
    gdi::Surface out(width_, height_);
    gdi::StretchBlt(out, 0, 0, width_, height_, hi_, 0, 0, hi_.Width(), hi_.Height(),
                    gdi::kHalftone);
    return out;
}

} // namespace mk
