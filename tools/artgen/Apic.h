#pragma once

#include "Canvas.h"

#include <cstdint>
#include <vector>

namespace artgen
{

// Encodes pictures and fonts in the plug-in's APIC resource format: a header
// of nine little-endian 32-bit fields, the palette, then the pixel rows, top
// to bottom, without padding.
namespace apic
{

constexpr std::int32_t header_size = 36;
constexpr std::int32_t kind_opaque = 0;
constexpr std::int32_t kind_alpha = 1;
constexpr std::int32_t kind_unicolour_font = 2;

// Palette index of a tone: black from half-way on. Greys are drawn as
// patterns before this (see screen()), so only the edges of shapes are cut here.
std::uint8_t to_index(double tone);

// Opaque two-colour picture (white, black): one index byte per pixel.
std::vector<std::uint8_t> encode_opaque(const Canvas& canvas);

// Two-colour picture with alpha: index then alpha per pixel. The edges of a
// shape go into the alpha bytes, so they stay smooth over any background.
std::vector<std::uint8_t> encode_alpha(const Canvas& canvas);

// One-entry (white) palette: the shape lies in the alpha bytes alone.
std::vector<std::uint8_t> encode_white_mask(const Canvas& canvas);

// Unicolour font strip: one coverage byte per pixel (0 nothing, 255 ink).
std::vector<std::uint8_t> encode_unicolour_font(int width, int height, const std::vector<std::uint8_t>& coverage);

}  // namespace apic

}  // namespace artgen
