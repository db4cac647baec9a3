#pragma once

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

    std::int32_t get_width() const { return width_; }
    std::int32_t get_height() const { return height_; }

protected:
    RenderingBufferInterface(std::int32_t width, std::int32_t height) : width_(width), height_(height) {}

    std::int32_t width_;
    std::int32_t height_;
};

}  // namespace gadu
