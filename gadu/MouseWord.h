#pragma once

#include <cstdint>

namespace gadu
{

// How a platform's mouse messages pack their data into two machine words:
// the position as two signed 16-bit halves, the buttons and modifier keys as
// bits of the other word (1 left, 2 right, 4 shift, 8 ctrl, 16 middle) and a
// wheel's turn in its high half, 120 to a notch. Pure arithmetic, so it is
// checked natively although only a platform window uses it.
namespace mouse_word
{

inline std::int32_t get_x(std::uint32_t position) { return static_cast<std::int16_t>(position & 0xFFFFu); }
inline std::int32_t get_y(std::uint32_t position) { return static_cast<std::int16_t>(position >> 16); }

// Left 1, right 2, middle 4, as in MouseClick.
inline std::int32_t get_buttons(std::uint32_t word)
{
    return static_cast<std::int32_t>(((word >> 2) & 4u) | (word & 3u));
}

// Ctrl 1, shift 2, as in MouseClick.
inline std::int32_t get_modifiers(std::uint32_t word)
{
    return static_cast<std::int32_t>((((word >> 2) & 2u) + (word & 4u)) >> 1);
}

// In notches: one detent of an ordinary wheel is 1.0.
inline float get_wheel_delta(std::uint32_t word)
{
    return static_cast<float>(static_cast<std::int16_t>(word >> 16)) * 0.008333334f;
}

}  // namespace mouse_word

}  // namespace gadu
