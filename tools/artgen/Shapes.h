#pragma once

#include "Canvas.h"

#include <vector>

namespace artgen
{

constexpr double pi = 3.14159265358979323846;

// The shapes the artwork is drawn from, each with the box it lies in.
struct Point
{
    double x, y;
};

struct Figure
{
    Canvas::Box box;
    Canvas::Shape inside;
};

Figure disc(Point c, double r);
Figure ring(Point c, double r_outer, double r_inner);
Figure ellipse(Point c, double rx, double ry, double angle = 0.0);
// The part of a ring within half_deg of the direction mid_deg.
Figure wedge(Point c, double r_outer, double r_inner, double mid_deg, double half_deg);
// A line of the given width with round ends.
Figure stroke(Point a, Point b, double width);
// A closed polygon, filled by the even-odd rule.
Figure polygon(const std::vector<Point>& points);
// Strokes along a polyline.
std::vector<Figure> polyline(const std::vector<Point>& points, double width);
// Points of a cubic Bezier curve, ends included.
std::vector<Point> bezier(Point p0, Point p1, Point p2, Point p3, int steps = 24);
// Points on an arc of a circle (angles in degrees, counter-clockwise, y up).
std::vector<Point> arc(Point c, double r, double from_deg, double to_deg, int steps = 48);

// The part of a that lies inside b, and the part of a outside b.
Figure intersect(const Figure& a, const Figure& b);
Figure subtract(const Figure& a, const Figure& b);

// Everywhere, the pixels that an ordered 8 x 8 dither turns black for a grey
// of the given level (0 white to 1 black): a two-colour picture's grey.
Figure screen(double level);
// The figure in white, overlaid with the dither pattern of the level.
void paint_grey(Canvas& canvas, const Figure& f, double level);

void paint(Canvas& canvas, const Figure& f, double tone, double opacity = 1.0);
void paint(Canvas& canvas, const std::vector<Figure>& fs, double tone, double opacity = 1.0);

// A direction in picture coordinates from an angle in degrees measured
// counter-clockwise from the right, as on the screen with y growing downwards.
Point polar(Point c, double r, double deg);
// The other way round: the angle in degrees at which (x, y) lies seen from c.
double angle_deg(Point c, double x, double y);

}  // namespace artgen
