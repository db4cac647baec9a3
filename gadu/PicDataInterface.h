#pragma once

#include "gadu/Rect.h"

#include <cstdint>

namespace gadu
{

class RenderingBufferInterface;

// A picture decoded from an APIC resource. It never owns its pixels: they stay
// in the loaded resource for the life of the module.
//
// The drawing operations take a region: the part of the picture's coordinate
// space whose top-left corner lands on the buffer's pixel (0, 0). The caller
// keeps the region within the buffer (a window's tiles never exceed it). The
// source rectangle limits what of the picture is drawn. Each answers 0 when it
// drew nothing, 1 otherwise.
class PicDataInterface
{
public:
    virtual ~PicDataInterface() = default;

    virtual std::int32_t draw(const Rect& region, RenderingBufferInterface& buffer, const Rect& source) const = 0;
    virtual std::int32_t draw_multiply(const Rect& region, RenderingBufferInterface& buffer,
                                       const Rect& source) const = 0;
    virtual std::int32_t draw_add(const Rect& region, RenderingBufferInterface& buffer, const Rect& source) const = 0;

    // Draws the picture turned by angle (radians, counter-clockwise on the
    // screen) so that the buffer's pixel (0, 0) samples the picture at (ox, oy).
    // Only pictures with alpha can: the others draw nothing.
    virtual std::int32_t draw_rotated(float ox, float oy, std::int32_t width, std::int32_t height, float angle,
                                      RenderingBufferInterface& buffer, const Rect& source) const;
    virtual std::int32_t draw_rotated_faded(float ox, float oy, std::int32_t width, std::int32_t height, float angle,
                                            RenderingBufferInterface& buffer, const Rect& source,
                                            float opacity) const;

    // Writes into out (width x height pixels of 4 bytes) this picture faded
    // towards other by t in [0, 1]. other must be of the same class and size;
    // answers -1 and writes nothing when it is not.
    virtual std::int32_t crossfade_into(std::uint8_t* out, const PicDataInterface& other, float t) const = 0;
    // Adds every pixel to its four sums (alpha, red, green, blue).
    virtual void accumulate(std::uint32_t* sums) const = 0;
    // Writes every pixel as blue, green, red (and alpha, where there is one).
    virtual void convert_to_32(std::uint8_t* out) const = 0;

    // (x, y) is the point of the picture that lands on the buffer's pixel
    // (0, 0); width x height is the area to fill.
    virtual std::int32_t draw_at(double x, double y, std::int32_t width, std::int32_t height,
                                 RenderingBufferInterface& buffer, const Rect& source) const;
    virtual std::int32_t draw_add_at(double x, double y, std::int32_t width, std::int32_t height,
                                     RenderingBufferInterface& buffer, const Rect& source) const;
    virtual std::int32_t draw_multiply_at(double x, double y, std::int32_t width, std::int32_t height,
                                          RenderingBufferInterface& buffer, const Rect& source) const;
    // As draw_at, at a fractional point and with an opacity in [0, 1] where the
    // picture can blend. A whole-pixel point draws a plain copy.
    virtual std::int32_t draw_subpixel(double x, double y, std::int32_t width, std::int32_t height,
                                       RenderingBufferInterface& buffer, const Rect& source, float opacity) const;

    std::int32_t get_width() const { return _width; }
    std::int32_t get_height() const { return _height; }
    Rect get_bounds() const { return Rect{0, 0, _width, _height}; }
    const std::uint8_t* use_pixels() const { return _pixels; }
    // Null for the classes without a palette.
    const std::uint8_t* use_palette() const { return _palette; }

protected:
    PicDataInterface(std::int32_t width, std::int32_t height, const std::uint8_t* pixels, const std::uint8_t* palette)
        : _width(width), _height(height), _pixels(pixels), _palette(palette)
    {
    }

    // Points this far out lie beyond any picture and any buffer; refusing them
    // keeps every conversion to a 32-bit pixel coordinate defined.
    static bool is_reachable(double v);
    // Rounds x and y to whole pixels (halves up); true when both were whole
    // already, up to the rounding noise of the caller's arithmetic.
    static bool round_if_whole(double x, double y, std::int32_t& rx, std::int32_t& ry);
    using DrawOperation = std::int32_t (PicDataInterface::*)(const Rect&, RenderingBufferInterface&,
                                                             const Rect&) const;
    // Runs the operation with the region of width x height whose corner is the
    // floored point; a point no picture can reach (not finite, or beyond the
    // 32-bit range) draws nothing.
    std::int32_t draw_floored(DrawOperation operation, double x, double y, std::int32_t width, std::int32_t height,
                              RenderingBufferInterface& buffer, const Rect& source) const;

    std::int32_t _width;
    std::int32_t _height;
    const std::uint8_t* _pixels;
    const std::uint8_t* _palette;
};

}  // namespace gadu
