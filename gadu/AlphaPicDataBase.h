#pragma once

#include "gadu/PicDataBase.h"

#include <cmath>
#include <cstdint>

namespace gadu
{

// What pictures with alpha add to the shared operations: drawing at fractional
// positions and turned, both with bilinear sampling and an opacity. Weights are
// integers that sum to the opacity in 256ths, so a fully opaque, untouched
// region stays exact and the sums need one shift by 16.
template <class Derived>
class AlphaPicDataBase : public PicDataBase<Derived>
{
public:
    std::int32_t draw_rotated(float ox, float oy, std::int32_t width, std::int32_t height, float angle,
                              RenderingBufferInterface& buffer, const Rect& source) const override
    {
        return draw_rotated_faded(ox, oy, width, height, angle, buffer, source, 1.0f);
    }

    std::int32_t draw_rotated_faded(float ox, float oy, std::int32_t, std::int32_t, float angle,
                                    RenderingBufferInterface& buffer, const Rect& source,
                                    float opacity) const override
    {
        const Rect src = source.intersected(this->get_bounds());
        if (src.is_empty() || !PicDataInterface::is_reachable(ox) || !PicDataInterface::is_reachable(oy)
            || !std::isfinite(angle))
        {
            return 0;
        }
        const float c = std::cos(angle);
        const float s = std::sin(angle);
        const Rect box = rotated_box(ox, oy, c, s, src).intersected(buffer.get_area_at(0, 0));
        if (box.is_empty())
        {
            return 0;
        }
        const int w = opacity_weight(opacity);
        const std::ptrdiff_t stride = static_cast<std::ptrdiff_t>(buffer.get_width()) * 4;
        std::uint8_t* row = buffer.pixels() + box.y1 * stride;
        for (std::int32_t y = box.y1; y < box.y2; ++y, row += stride)
        {
            float sx = ox + static_cast<float>(box.x1) * c - static_cast<float>(y) * s;
            float sy = oy + static_cast<float>(box.x1) * s + static_cast<float>(y) * c;
            for (std::int32_t x = box.x1; x < box.x2; ++x, sx += c, sy += s)
            {
                const std::int32_t i = floor_to_int(sx);
                const std::int32_t j = floor_to_int(sy);
                const int fx = static_cast<int>((sx - static_cast<float>(i)) * 255.99f);
                const int fy = static_cast<int>((sy - static_cast<float>(j)) * 255.99f);
                Weights k;
                k.w11 = (fy * w * fx) >> 16;
                k.w10 = ((fx * w) >> 8) - k.w11;
                k.w01 = ((fy * w) >> 8) - k.w11;
                k.w00 = w - k.w10 - k.w01 - k.w11;
                blend_neighbours(row + x * 4, i, j, k, src);
            }
        }
        return 1;
    }

    std::int32_t draw_at(double x, double y, std::int32_t width, std::int32_t height,
                         RenderingBufferInterface& buffer, const Rect& source) const override
    {
        return draw_subpixel(x, y, width, height, buffer, source, 1.0f);
    }

    std::int32_t draw_subpixel(double x, double y, std::int32_t width, std::int32_t height,
                               RenderingBufferInterface& buffer, const Rect& source, float opacity) const override
    {
        const int w = opacity_weight(opacity);
        // At whole-pixel points a fully opaque drawing is the plain one, which
        // writes alpha 255 exactly; a faded one must still blend by its weight.
        std::int32_t rx = 0;
        std::int32_t ry = 0;
        if (w == kFullWeight && PicDataInterface::round_if_whole(x, y, rx, ry))
        {
            return this->draw(Rect::of_size(rx, ry, width, height), buffer, source);
        }
        const Rect src = source.intersected(this->get_bounds());
        if (src.is_empty() || !PicDataInterface::is_reachable(x) || !PicDataInterface::is_reachable(y))
        {
            return 0;
        }
        const double floor_x = std::floor(x);
        const double floor_y = std::floor(y);
        const double fx = x - floor_x;
        const double fy = y - floor_y;
        Weights k;
        k.w11 = static_cast<int>(std::floor(w * fx * fy));
        k.w10 = static_cast<int>(std::floor(w * fx)) - k.w11;
        k.w01 = static_cast<int>(std::floor(w * fy)) - k.w11;
        k.w00 = w - k.w10 - k.w01 - k.w11;
        const auto ix = static_cast<std::int32_t>(floor_x);
        const auto iy = static_cast<std::int32_t>(floor_y);
        // The buffer pixels whose four samples reach into the source at all.
        const Rect area = Rect::of_size(0, 0, width, height)
                              .intersected(buffer.get_area_at(0, 0))
                              .intersected(Rect::of_size(static_cast<std::int64_t>(src.x1) - 1 - ix,
                                                         static_cast<std::int64_t>(src.y1) - 1 - iy,
                                                         static_cast<std::int64_t>(src.x2) - src.x1 + 1,
                                                         static_cast<std::int64_t>(src.y2) - src.y1 + 1));
        if (area.is_empty())
        {
            return 0;
        }
        const std::ptrdiff_t stride = static_cast<std::ptrdiff_t>(buffer.get_width()) * 4;
        for (std::int32_t by = area.y1; by < area.y2; ++by)
        {
            std::uint8_t* row = buffer.pixels() + by * stride;
            for (std::int32_t bx = area.x1; bx < area.x2; ++bx)
            {
                blend_neighbours(row + bx * 4, ix + bx, iy + by, k, src);
            }
        }
        return 1;
    }

protected:
    AlphaPicDataBase(std::int32_t width, std::int32_t height, const std::uint8_t* pixels,
                     const std::uint8_t* palette)
        : PicDataBase<Derived>(width, height, pixels, palette)
    {
    }

private:
    // Weights of the sample's own pixel (00), its right (10), lower (01) and
    // lower right (11) neighbours, in 256ths of full opacity.
    struct Weights
    {
        int w00 = 0;
        int w10 = 0;
        int w01 = 0;
        int w11 = 0;
    };

    static constexpr int kFullWeight = 256;

    // round(opacity x 256), halves up. Opacities outside [0, 1] (or NaN) are no
    // fade the operation knows: held to the nearer end (NaN to 0) so the
    // weights can never make a byte overflow.
    static int opacity_weight(float opacity)
    {
        const float held = opacity > 0.0f ? std::min(opacity, 1.0f) : 0.0f;
        return static_cast<int>(std::floor(held * 256.0f + 0.5f));
    }

    // The buffer pixels a turned source rectangle can touch: its corners mapped
    // to the buffer, widened by the reach of the bilinear samples.
    static Rect rotated_box(float ox, float oy, float c, float s, const Rect& src)
    {
        std::int64_t min_x = 0, min_y = 0, max_x = 0, max_y = 0;
        bool first = true;
        for (const std::int32_t x : {src.x1, src.x2})
        {
            for (const std::int32_t y : {src.y1, src.y2})
            {
                const float dx = static_cast<float>(x) - ox;
                const float dy = static_cast<float>(y) - oy;
                const auto xd = static_cast<std::int64_t>(std::floor(dx * c + dy * s));
                const auto yd = static_cast<std::int64_t>(std::floor(dy * c - dx * s));
                min_x = first ? xd : std::min(min_x, xd);
                max_x = first ? xd : std::max(max_x, xd);
                min_y = first ? yd : std::min(min_y, yd);
                max_y = first ? yd : std::max(max_y, yd);
                first = false;
            }
        }
        return Rect::of_size(min_x - 1, min_y - 1, max_x - min_x + 3, max_y - min_y + 3);
    }

    // floor() for the samples of the rotated path, which stay within a few
    // pixels of the picture: the library call it would be on plain x86 is the
    // largest cost of a pixel.
    static std::int32_t floor_to_int(float v)
    {
        const auto t = static_cast<std::int32_t>(v);
        return static_cast<float>(t) > v ? t - 1 : t;
    }

    // Moves the buffer pixel d towards the picture pixels (i, j) .. (i + 1,
    // j + 1) that lie inside src, each by its alpha times its weight. Inlined
    // into the per-pixel loops: the call alone cost a fifth of a knob's pixel.
    [[gnu::always_inline]] void blend_neighbours(std::uint8_t* d, std::int32_t i, std::int32_t j, const Weights& k,
                                                 const Rect& src) const
    {
        int sum[3] = {0, 0, 0};
        if (src.x1 <= i && i < src.x2 - 1 && src.y1 <= j && j < src.y2 - 1)
        {
            // All four inside, as for most of a knob's pixels: no tests.
            const std::uint8_t* p = this->pixel(i, j);
            const std::ptrdiff_t down = static_cast<std::ptrdiff_t>(this->_width) * Derived::kBytesPerPixel;
            add_sample(sum, d, p, k.w00);
            add_sample(sum, d, p + Derived::kBytesPerPixel, k.w10);
            add_sample(sum, d, p + down, k.w01);
            add_sample(sum, d, p + down + Derived::kBytesPerPixel, k.w11);
            apply_sum(d, sum);
            return;
        }
        const bool column0 = src.x1 <= i && i < src.x2;
        const bool column1 = src.x1 - 1 <= i && i < src.x2 - 1;
        const bool row0 = src.y1 <= j && j < src.y2;
        const bool row1 = src.y1 - 1 <= j && j < src.y2 - 1;
        if (row0 && column0)
        {
            add_sample(sum, d, this->pixel(i, j), k.w00);
        }
        if (row0 && column1)
        {
            add_sample(sum, d, this->pixel(i + 1, j), k.w10);
        }
        if (row1 && column0)
        {
            add_sample(sum, d, this->pixel(i, j + 1), k.w01);
        }
        if (row1 && column1)
        {
            add_sample(sum, d, this->pixel(i + 1, j + 1), k.w11);
        }
        apply_sum(d, sum);
    }

    static void apply_sum(std::uint8_t* d, const int (&sum)[3])
    {
        for (int c = 0; c < 3; ++c)
        {
            d[c] = static_cast<std::uint8_t>(d[c] + (sum[c] >> 16));
        }
    }

    void add_sample(int (&sum)[3], const std::uint8_t* d, const std::uint8_t* px, int weight) const
    {
        const int aw = Derived::alpha_of(px) * weight;
        const std::uint8_t* s = this->self().colour_of(px);
        for (int c = 0; c < 3; ++c)
        {
            sum[c] += (s[c] - d[c]) * aw;
        }
    }
};

}  // namespace gadu
