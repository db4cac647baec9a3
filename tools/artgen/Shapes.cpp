#include "Shapes.h"

#include <algorithm>
#include <cmath>

namespace artgen
{

namespace
{

double distance_to_segment(Point p, Point a, Point b)
{
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double len2 = dx * dx + dy * dy;
    double t = len2 > 0.0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / len2 : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    const double ex = p.x - (a.x + t * dx), ey = p.y - (a.y + t * dy);
    return std::sqrt(ex * ex + ey * ey);
}

}  // namespace

Figure disc(Point c, double r)
{
    return {{c.x - r, c.y - r, c.x + r, c.y + r},
            [c, r](double x, double y) { return (x - c.x) * (x - c.x) + (y - c.y) * (y - c.y) < r * r; }};
}

Figure ring(Point c, double r_outer, double r_inner)
{
    return subtract(disc(c, r_outer), disc(c, r_inner));
}

Figure ellipse(Point c, double rx, double ry, double angle)
{
    const double ca = std::cos(angle * pi / 180.0), sa = std::sin(angle * pi / 180.0);
    const double r = std::max(rx, ry);
    return {{c.x - r, c.y - r, c.x + r, c.y + r}, [=](double x, double y) {
                const double u = (x - c.x) * ca - (y - c.y) * sa;
                const double v = (x - c.x) * sa + (y - c.y) * ca;
                return (u * u) / (rx * rx) + (v * v) / (ry * ry) < 1.0;
            }};
}

Figure wedge(Point c, double r_outer, double r_inner, double mid_deg, double half_deg)
{
    return intersect(ring(c, r_outer, r_inner), {disc(c, r_outer).box, [=](double x, double y) {
                                                      double diff = angle_deg(c, x, y) - mid_deg;
                                                      diff -= 360.0 * std::floor((diff + 180.0) / 360.0);
                                                      return std::abs(diff) < half_deg;
                                                  }});
}

Figure stroke(Point a, Point b, double width)
{
    const double h = width / 2.0;
    return {{std::min(a.x, b.x) - h, std::min(a.y, b.y) - h, std::max(a.x, b.x) + h, std::max(a.y, b.y) + h},
            [=](double x, double y) { return distance_to_segment({x, y}, a, b) < h; }};
}

Figure polygon(const std::vector<Point>& points)
{
    Canvas::Box box{1e9, 1e9, -1e9, -1e9};
    for (const Point& p : points)
    {
        box = {std::min(box.x1, p.x), std::min(box.y1, p.y), std::max(box.x2, p.x), std::max(box.y2, p.y)};
    }
    return {box, [points](double x, double y) {
                bool in = false;
                for (std::size_t i = 0, j = points.size() - 1; i < points.size(); j = i++)
                {
                    const Point& a = points[i];
                    const Point& b = points[j];
                    if ((a.y > y) != (b.y > y) && x < (b.x - a.x) * (y - a.y) / (b.y - a.y) + a.x)
                    {
                        in = !in;
                    }
                }
                return in;
            }};
}

std::vector<Figure> polyline(const std::vector<Point>& points, double width)
{
    std::vector<Figure> out;
    for (std::size_t i = 1; i < points.size(); ++i)
    {
        out.push_back(stroke(points[i - 1], points[i], width));
    }
    return out;
}

std::vector<Point> bezier(Point p0, Point p1, Point p2, Point p3, int steps)
{
    std::vector<Point> out;
    for (int i = 0; i <= steps; ++i)
    {
        const double t = static_cast<double>(i) / steps, u = 1.0 - t;
        const double a = u * u * u, b = 3 * u * u * t, c = 3 * u * t * t, d = t * t * t;
        out.push_back({a * p0.x + b * p1.x + c * p2.x + d * p3.x, a * p0.y + b * p1.y + c * p2.y + d * p3.y});
    }
    return out;
}

std::vector<Point> arc(Point c, double r, double from_deg, double to_deg, int steps)
{
    std::vector<Point> out;
    for (int i = 0; i <= steps; ++i)
    {
        out.push_back(polar(c, r, from_deg + (to_deg - from_deg) * i / steps));
    }
    return out;
}

Figure intersect(const Figure& a, const Figure& b)
{
    return {{std::max(a.box.x1, b.box.x1), std::max(a.box.y1, b.box.y1), std::min(a.box.x2, b.box.x2),
             std::min(a.box.y2, b.box.y2)},
            [a, b](double x, double y) { return a.inside(x, y) && b.inside(x, y); }};
}

Figure subtract(const Figure& a, const Figure& b)
{
    return {a.box, [a, b](double x, double y) { return a.inside(x, y) && !b.inside(x, y); }};
}

Figure screen(double level)
{
    static const int bayer[8][8] = {
        {0, 32, 8, 40, 2, 34, 10, 42},   {48, 16, 56, 24, 50, 18, 58, 26}, {12, 44, 4, 36, 14, 46, 6, 38},
        {60, 28, 52, 20, 62, 30, 54, 22}, {3, 35, 11, 43, 1, 33, 9, 41},   {51, 19, 59, 27, 49, 17, 57, 25},
        {15, 47, 7, 39, 13, 45, 5, 37},  {63, 31, 55, 23, 61, 29, 53, 21}};
    return {{-1e9, -1e9, 1e9, 1e9}, [level](double x, double y) {
                const int px = static_cast<int>(std::floor(x)) & 7, py = static_cast<int>(std::floor(y)) & 7;
                return level * 64.0 > bayer[py][px] + 0.5;
            }};
}

void paint_grey(Canvas& canvas, const Figure& f, double level)
{
    paint(canvas, f, 0.0);
    paint(canvas, intersect(f, screen(level)), 1.0);
}

void paint(Canvas& canvas, const Figure& f, double tone, double opacity)
{
    canvas.paint(f.box, f.inside, tone, opacity);
}

void paint(Canvas& canvas, const std::vector<Figure>& fs, double tone, double opacity)
{
    // One union, so overlapping strokes do not darken where they meet.
    Canvas::Box box{1e9, 1e9, -1e9, -1e9};
    for (const Figure& f : fs)
    {
        box = {std::min(box.x1, f.box.x1), std::min(box.y1, f.box.y1), std::max(box.x2, f.box.x2),
               std::max(box.y2, f.box.y2)};
    }
    canvas.paint(box, [&fs](double x, double y) {
        for (const Figure& f : fs)
        {
            if (x >= f.box.x1 && x <= f.box.x2 && y >= f.box.y1 && y <= f.box.y2 && f.inside(x, y))
            {
                return true;
            }
        }
        return false;
    }, tone, opacity);
}

Point polar(Point c, double r, double deg)
{
    return {c.x + r * std::cos(deg * pi / 180.0), c.y - r * std::sin(deg * pi / 180.0)};
}

double angle_deg(Point c, double x, double y)
{
    return std::atan2(c.y - y, x - c.x) * 180.0 / pi;
}

}  // namespace artgen
