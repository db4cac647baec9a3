#include "gadu/PicDataInterface.h"

#include <cmath>

namespace gadu
{

bool PicDataInterface::is_reachable(double v)
{
    return std::isfinite(v) && std::fabs(v) < 1073741824.0;
}

std::int32_t PicDataInterface::draw_rotated(float, float, std::int32_t, std::int32_t, float,
                                            RenderingBufferInterface&, const Rect&) const
{
    return 0;
}

std::int32_t PicDataInterface::draw_rotated_faded(float, float, std::int32_t, std::int32_t, float,
                                                  RenderingBufferInterface&, const Rect&, float) const
{
    return 0;
}

bool PicDataInterface::round_if_whole(double x, double y, std::int32_t& rx, std::int32_t& ry)
{
    if (!is_reachable(x) || !is_reachable(y))
    {
        return false;
    }
    const double fx = std::floor(x + 0.5);
    const double fy = std::floor(y + 0.5);
    rx = static_cast<std::int32_t>(fx);
    ry = static_cast<std::int32_t>(fy);
    return std::fabs(fx - x) <= 1e-9 * std::fabs(fx) && std::fabs(fy - y) <= 1e-9 * std::fabs(fy);
}

std::int32_t PicDataInterface::draw_floored(DrawOperation operation, double x, double y, std::int32_t width,
                                            std::int32_t height, RenderingBufferInterface& buffer,
                                            const Rect& source) const
{
    if (!is_reachable(x) || !is_reachable(y))
    {
        return 0;
    }
    const Rect region = Rect::of_size(static_cast<std::int64_t>(std::floor(x)),
                                      static_cast<std::int64_t>(std::floor(y)), width, height);
    return (this->*operation)(region, buffer, source);
}

std::int32_t PicDataInterface::draw_at(double x, double y, std::int32_t width, std::int32_t height,
                                       RenderingBufferInterface& buffer, const Rect& source) const
{
    return draw_floored(&PicDataInterface::draw, x, y, width, height, buffer, source);
}

std::int32_t PicDataInterface::draw_add_at(double x, double y, std::int32_t width, std::int32_t height,
                                           RenderingBufferInterface& buffer, const Rect& source) const
{
    return draw_floored(&PicDataInterface::draw_add, x, y, width, height, buffer, source);
}

std::int32_t PicDataInterface::draw_multiply_at(double x, double y, std::int32_t width, std::int32_t height,
                                                RenderingBufferInterface& buffer, const Rect& source) const
{
    return draw_floored(&PicDataInterface::draw_multiply, x, y, width, height, buffer, source);
}

std::int32_t PicDataInterface::draw_subpixel(double x, double y, std::int32_t width, std::int32_t height,
                                             RenderingBufferInterface& buffer, const Rect& source, float) const
{
    std::int32_t rx = 0;
    std::int32_t ry = 0;
    if (round_if_whole(x, y, rx, ry))
    {
        return draw(Rect::of_size(rx, ry, width, height), buffer, source);
    }
    return draw_at(x, y, width, height, buffer, source);
}

}  // namespace gadu
