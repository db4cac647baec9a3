#include "gadu/Picture.h"

#include <cmath>

namespace gadu
{

void Picture::set_picture(const PicDataInterface* pic)
{
    _pic = pic;
    const Rect bounds = pic != nullptr ? pic->get_bounds() : Rect{};
    set_hit_rect(bounds);
    set_source_rect(bounds);
}

void Picture::set_hot_spot(std::int32_t x, std::int32_t y)
{
    const Rect bounds = _pic != nullptr ? _pic->get_bounds() : Rect{};
    set_hit_rect(bounds.moved(-static_cast<std::int64_t>(x), -static_cast<std::int64_t>(y)));
}

void Picture::get_hot_spot(std::int32_t& x, std::int32_t& y) const
{
    const Rect hit = get_hit_rect();
    x = -hit.x1;
    y = -hit.y1;
}

void Picture::set_source_rect(const Rect& source)
{
    const Rect bounds = _pic != nullptr ? _pic->get_bounds() : Rect{};
    _source = source.intersected(bounds);
    if (_source.is_empty())
    {
        _source = Rect{};
    }
}

std::int32_t Picture::draw(const Rect& region, RenderingBufferInterface& buffer) const
{
    if (_pic == nullptr)
    {
        return 0;
    }
    const Rect hit = get_hit_rect();
    return _pic->draw(region.moved(-static_cast<std::int64_t>(hit.x1), -static_cast<std::int64_t>(hit.y1)), buffer,
                      _source);
}

bool Picture::get_turned_origin(double x, double y, double angle, float& ox, float& oy) const
{
    if (!(std::fabs(angle) >= 1e-9))
    {
        return false;
    }
    const Rect hit = get_hit_rect();
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    ox = static_cast<float>(x * c - y * s - hit.x1);
    oy = static_cast<float>(x * s + y * c - hit.y1);
    return true;
}

std::int32_t Picture::draw_rotated(double x, double y, std::int32_t width, std::int32_t height, double angle,
                                   RenderingBufferInterface& buffer) const
{
    float ox = 0.0f;
    float oy = 0.0f;
    if (_pic == nullptr || !get_turned_origin(x, y, angle, ox, oy))
    {
        return draw_at(x, y, width, height, buffer);
    }
    return _pic->draw_rotated(ox, oy, width, height, static_cast<float>(angle), buffer, _source);
}

std::int32_t Picture::draw_rotated(double x, double y, std::int32_t width, std::int32_t height, double angle,
                                   RenderingBufferInterface& buffer, float opacity) const
{
    float ox = 0.0f;
    float oy = 0.0f;
    if (_pic == nullptr || !get_turned_origin(x, y, angle, ox, oy))
    {
        return draw_at(x, y, width, height, buffer, opacity);
    }
    return _pic->draw_rotated_faded(ox, oy, width, height, static_cast<float>(angle), buffer, _source, opacity);
}

std::int32_t Picture::draw_at(double x, double y, std::int32_t width, std::int32_t height,
                              RenderingBufferInterface& buffer, float opacity) const
{
    if (_pic == nullptr)
    {
        return 0;
    }
    const Rect hit = get_hit_rect();
    return _pic->draw_subpixel(x - hit.x1, y - hit.y1, width, height, buffer, _source, opacity);
}

bool Picture::hit_test(std::int32_t x, std::int32_t y) const
{
    const Rect hit = get_hit_rect();
    return check_point(x, y)
        && _source.contains(static_cast<std::int32_t>(static_cast<std::int64_t>(x) - hit.x1),
                            static_cast<std::int32_t>(static_cast<std::int64_t>(y) - hit.y1));
}

}  // namespace gadu
