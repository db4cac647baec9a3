#pragma once

#include "gadu/RenderingBufferInterface.h"
#include "gadu/Zoom.h"

#include <cstdint>
#include <vector>

namespace gadu
{

// A rendering buffer that owns its pixels in ordinary memory: what tests, the
// off-screen window and the tools draw into. Its "screen" is another memory
// buffer given at construction (none: blit does nothing), so an off-screen
// window can keep a whole frame while drawing through a smaller buffer in tiles.
// A zoomed screen shows each pixel of this buffer as a block.
class MemoryRenderingBuffer : public RenderingBufferInterface
{
public:
    // Negative sizes count as 0.
    MemoryRenderingBuffer(std::int32_t width, std::int32_t height, MemoryRenderingBuffer* screen = nullptr,
                          const Zoom& zoom = Zoom());

    std::uint8_t* pixels() override { return _pixels.data(); }
    const std::uint8_t* pixels() const { return _pixels.data(); }

    // Copies the top-left width x height part to the screen at (x, y), clipped
    // to both buffers; position and size are in this buffer's pixels, which
    // the zoom enlarges on the screen.
    void blit(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) override;

    // One pixel as 0xUURRGGBB (UU the unused fourth byte); 0 outside the buffer.
    std::uint32_t get_pixel(std::int32_t x, std::int32_t y) const;
    // Ignored outside the buffer.
    void set_pixel(std::int32_t x, std::int32_t y, std::uint32_t value);
    void fill(std::uint32_t value);

private:
    std::vector<std::uint8_t> _pixels;
    MemoryRenderingBuffer* _screen;
    Zoom _zoom;
};

}  // namespace gadu
