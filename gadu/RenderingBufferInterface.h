#pragma once

#include "gadu/Rect.h"

#include <cstdint>

namespace gadu
{

// The surface every drawing operation writes into: width x height pixels of four
// bytes (blue, green, red, unused), rows top to bottom, row stride width x 4.
// The window owns one and shows its top-left part on the screen with blit.
class RenderingBufferInterface
{
public:
    virtual ~RenderingBufferInterface() = default;

    virtual std::uint8_t* pixels() = 0;

    // Copies the buffer's top-left width x height area to the screen at (x, y).
    virtual void blit(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) = 0;

    std::int32_t get_width() const { return _width; }
    std::int32_t get_height() const { return _height; }

    // The buffer's pixels as a rectangle of a coordinate space whose point
    // (x, y) lands on the buffer's pixel (0, 0).
    Rect get_area_at(std::int32_t x, std::int32_t y) const { return Rect::of_size(x, y, _width, _height); }

protected:
    RenderingBufferInterface(std::int32_t width, std::int32_t height) : _width(width), _height(height) {}

    std::int32_t _width;
    std::int32_t _height;
};

}  // namespace gadu
