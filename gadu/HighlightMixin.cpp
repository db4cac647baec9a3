#include "gadu/HighlightMixin.h"

namespace gadu
{

namespace
{

const Picture kNoPicture;

std::uint32_t bit(std::int32_t state)
{
    return std::uint32_t{1} << state;
}

}  // namespace

void HighlightMixin::set_highlight_picture(std::int32_t state, const Picture& picture)
{
    if (is_state(state))
    {
        _pictures[state] = picture;
        _mask |= bit(state);
    }
}

void HighlightMixin::clear_highlight_picture(std::int32_t state)
{
    if (is_state(state))
    {
        _pictures[state] = Picture();
        _mask &= ~bit(state);
    }
}

bool HighlightMixin::has_highlight_picture(std::int32_t state) const
{
    return is_state(state) && (_mask & bit(state)) != 0;
}

const Picture& HighlightMixin::use_highlight_picture(std::int32_t state) const
{
    return is_state(state) ? _pictures[state] : kNoPicture;
}

}  // namespace gadu
