#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace artgen
{

// An RGBA image for looking at the artwork as a user would: APIC resources
// decoded back into colours, composed and written as PNG.
class Preview
{
public:
    Preview(int width, int height);

    // Decodes a picture or unicolour font resource (fonts as black ink on
    // white); throws std::runtime_error on a resource it cannot read.
    static Preview decode(const std::vector<std::uint8_t>& apic);
    // Copies 4-byte pixels in memory order blue, green, red, unused, rows top
    // to bottom: the toolkit's rendering buffers.
    static Preview from_bgrx(int width, int height, const std::uint8_t* pixels);

    int get_width() const { return _width; }
    int get_height() const { return _height; }
    const std::uint8_t* pixel(int x, int y) const { return &_rgba[index(x, y)]; }
    void set_grey(int x, int y, std::uint8_t v);

    // Draws the image with its top-left corner at (x, y), mixed by its alpha.
    void compose(const Preview& over, int x, int y);
    Preview scaled(int factor) const;
    // The image composed over an opaque grey of the given level, so that
    // white shapes with alpha (the drag pointer) show as well as black ones.
    Preview on_grey(std::uint8_t level) const;

    // Writes a PNG; false when the file cannot be written.
    bool write_png(const std::string& path) const;

private:
    std::size_t index(int x, int y) const { return (static_cast<std::size_t>(y) * _width + x) * 4; }

    int _width;
    int _height;
    std::vector<std::uint8_t> _rgba;
};

}  // namespace artgen
