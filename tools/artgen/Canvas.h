#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace artgen
{

// A picture being drawn: every pixel has a tone (0 white, 1 black) and an
// opacity (0 transparent, 1 opaque). Shapes are painted over it with their
// coverage of each pixel, found by sampling the pixel on a regular grid, so
// every edge is anti-aliased the same way whatever its shape.
class Canvas
{
public:
    // An inside test in picture coordinates: pixel (x, y) spans [x, x+1) x [y, y+1).
    using Shape = std::function<bool(double x, double y)>;

    struct Box
    {
        double x1, y1, x2, y2;
    };

    Canvas(int width, int height, double tone, double alpha);

    int get_width() const { return _width; }
    int get_height() const { return _height; }
    double tone(int x, int y) const { return _tone[index(x, y)]; }
    double alpha(int x, int y) const { return _alpha[index(x, y)]; }

    // Paints the shape, which lies inside the box, in the tone with the opacity.
    void paint(const Box& box, const Shape& inside, double tone, double opacity = 1.0);

private:
    // The shape's coverage of pixel (x, y), 0 to 1.
    static double coverage(const Shape& inside, int x, int y);
    // Paints one pixel with a coverage already known.
    void blend(int x, int y, double tone, double cover);

    std::size_t index(int x, int y) const { return static_cast<std::size_t>(y) * _width + x; }

    int _width;
    int _height;
    std::vector<double> _tone;
    std::vector<double> _alpha;
};

}  // namespace artgen
