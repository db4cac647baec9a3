#pragma once

#include "gadu/PicDataInterface.h"
#include "gadu/RenderingBufferInterface.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace gadu
{

// The operations every picture class shares, written once over the pixel
// layout of Derived, which supplies:
//   kBytesPerPixel, kHasAlpha;
//   colour_of(pixel): its 4-byte colour word (blue, green, red, fourth byte);
//   with alpha, alpha_of(pixel) and blend(s, d, a) for a partly covering draw.
// Blends shift right by 8 instead of dividing by 255: the results are the
// exact bytes the artwork was made for.
template <class Derived>
class PicDataBase : public PicDataInterface
{
public:
    std::int32_t draw(const Rect& region, RenderingBufferInterface& buffer, const Rect& source) const override
    {
        return for_each_clipped(region, buffer, source, [this](const std::uint8_t* px, std::uint8_t* d) {
            const std::uint8_t* s = self().colour_of(px);
            if constexpr (Derived::kHasAlpha)
            {
                const int a = Derived::alpha_of(px);
                if (a == 0)
                {
                    return;
                }
                if (a != 255)
                {
                    for (int c = 0; c < 3; ++c)
                    {
                        d[c] = Derived::blend(s[c], d[c], a);
                    }
                    return;
                }
            }
            std::memcpy(d, s, 4);
        });
    }

    std::int32_t draw_multiply(const Rect& region, RenderingBufferInterface& buffer,
                               const Rect& source) const override
    {
        return for_each_towards(region, buffer, source, [](int s, int d) { return (s * d) >> 8; });
    }

    std::int32_t draw_add(const Rect& region, RenderingBufferInterface& buffer, const Rect& source) const override
    {
        return for_each_towards(region, buffer, source, [](int s, int d) { return std::min(255, d + s); });
    }

    std::int32_t crossfade_into(std::uint8_t* out, const PicDataInterface& other, float t) const override
    {
        const auto* that = dynamic_cast<const Derived*>(&other);
        if (out == nullptr || that == nullptr || that->get_width() != _width || that->get_height() != _height)
        {
            return -1;
        }
        const int k = fade_step(t);
        for (std::ptrdiff_t i = 0; i < pixel_count(); ++i, out += 4)
        {
            const std::uint8_t* px = pixel(i);
            const std::uint8_t* other_px = that->pixel(i);
            const std::uint8_t* a = self().colour_of(px);
            const std::uint8_t* b = that->colour_of(other_px);
            for (int c = 0; c < 3; ++c)
            {
                out[c] = fade(a[c], b[c], k);
            }
            if constexpr (Derived::kHasAlpha)
            {
                out[3] = fade(Derived::alpha_of(px), Derived::alpha_of(other_px), k);
            }
        }
        return 0;
    }

    void accumulate(std::uint32_t* sums) const override
    {
        for (std::ptrdiff_t i = 0; i < pixel_count(); ++i, sums += 4)
        {
            const std::uint8_t* s = self().colour_of(pixel(i));
            if constexpr (Derived::kHasAlpha)
            {
                sums[0] += Derived::alpha_of(pixel(i));
            }
            sums[1] += s[2];
            sums[2] += s[1];
            sums[3] += s[0];
        }
    }

    void convert_to_32(std::uint8_t* out) const override
    {
        for (std::ptrdiff_t i = 0; i < pixel_count(); ++i, out += 4)
        {
            std::memcpy(out, self().colour_of(pixel(i)), 3);
            if constexpr (Derived::kHasAlpha)
            {
                out[3] = Derived::alpha_of(pixel(i));
            }
        }
    }

protected:
    PicDataBase(std::int32_t width, std::int32_t height, const std::uint8_t* pixels, const std::uint8_t* palette)
        : PicDataInterface(width, height, pixels, palette)
    {
    }

    const Derived& self() const { return static_cast<const Derived&>(*this); }

    std::ptrdiff_t pixel_count() const { return static_cast<std::ptrdiff_t>(_width) * _height; }
    const std::uint8_t* pixel(std::ptrdiff_t index) const { return _pixels + index * Derived::kBytesPerPixel; }
    const std::uint8_t* pixel(std::int32_t x, std::int32_t y) const
    {
        return pixel(static_cast<std::ptrdiff_t>(y) * _width + x);
    }

    // Calls op(source pixel, buffer pixel) for every picture pixel of the region
    // inside the source rectangle; answers 0 when there is none. Callers keep
    // the region inside the buffer and the source inside the picture, but one
    // that did not would make this read or write outside memory: both are
    // clipped here too, once per call, never per pixel.
    template <class Op>
    std::int32_t for_each_clipped(const Rect& region, RenderingBufferInterface& buffer, const Rect& source,
                                  Op op) const
    {
        const Rect area = region.intersected(source).intersected(get_bounds()).intersected(
            buffer.get_area_at(region.x1, region.y1));
        if (area.is_empty())
        {
            return 0;
        }
        constexpr std::ptrdiff_t bpp = Derived::kBytesPerPixel;
        const std::ptrdiff_t columns = area.x2 - area.x1;
        const std::ptrdiff_t buffer_stride = static_cast<std::ptrdiff_t>(buffer.get_width()) * 4;
        const std::uint8_t* src = pixel(area.x1, area.y1);
        std::uint8_t* dst = buffer.pixels() + (area.y1 - region.y1) * buffer_stride + (area.x1 - region.x1) * 4;
        for (std::int32_t y = area.y1; y < area.y2; ++y, src += _width * bpp, dst += buffer_stride)
        {
            for (std::ptrdiff_t x = 0; x < columns; ++x)
            {
                op(src + x * bpp, dst + x * 4);
            }
        }
        return 1;
    }

    // Moves every covered buffer byte towards target(s, d): all the way where
    // the picture is opaque, by a/256 of the distance where it is not.
    template <class Target>
    std::int32_t for_each_towards(const Rect& region, RenderingBufferInterface& buffer, const Rect& source,
                                  Target target) const
    {
        return for_each_clipped(region, buffer, source, [this, target](const std::uint8_t* px, std::uint8_t* d) {
            const std::uint8_t* s = self().colour_of(px);
            for (int c = 0; c < 3; ++c)
            {
                const int t = target(s[c], d[c]);
                if constexpr (Derived::kHasAlpha)
                {
                    const int a = Derived::alpha_of(px);
                    d[c] = static_cast<std::uint8_t>(a == 255 ? t : d[c] + (((t - d[c]) * a) >> 8));
                }
                else
                {
                    d[c] = static_cast<std::uint8_t>(t);
                }
            }
        });
    }

private:
    // floor(t x 255), as the rounding of 2t x 255 - 0.5 to the nearest even
    // number halved. A factor outside [0, 1] (or NaN) is no fade the operation
    // knows: it is held to the nearer end (NaN to 0) so no byte can overflow.
    static int fade_step(float t)
    {
        const double held = t > 0.0f ? std::min(1.0, static_cast<double>(t)) : 0.0;
        return static_cast<int>(std::nearbyint(2.0 * held * 255.0 - 0.5)) >> 1;
    }

    static std::uint8_t fade(int from, int to, int k)
    {
        return static_cast<std::uint8_t>(from + (((to - from) * k) >> 8));
    }
};

}  // namespace gadu
