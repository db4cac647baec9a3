// Feeds arbitrary bytes to the picture factory. Whatever it accepts must lie
// wholly inside the input, and every drawing operation on it, at offsets and
// angles taken from the input, must stay inside the picture and the buffer.
#include "gadu/MemoryRenderingBuffer.h"
#include "gadu/PicDataFactory.h"
#include "tests/fuzz/FuzzCheck.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto pic = gadu::PicDataFactory::use_instance().create_from_bytes(data, size);
    if (pic == nullptr)
    {
        return 0;
    }
    const std::uint8_t* pixels = pic->use_pixels();
    zq_test::require(pixels >= data && pixels <= data + size && pic->get_width() >= 0 && pic->get_height() >= 0);
    // Kept small so the fuzzer spends its time on formats, not on huge fills.
    if (static_cast<std::int64_t>(pic->get_width()) * pic->get_height() > 65536)
    {
        return 0;
    }
    // The input's last bytes steer the drawing: floats read from them.
    const auto tail_float = [data, size](std::size_t from_end) {
        float v = 0.0f;
        if (size >= from_end + sizeof v)
        {
            std::memcpy(&v, data + size - from_end - sizeof v, sizeof v);
        }
        return v;
    };
    gadu::MemoryRenderingBuffer buffer(24, 20);
    const float x = tail_float(0);
    const float y = tail_float(4);
    const float angle = tail_float(8);
    const gadu::Rect whole = pic->get_bounds();
    const gadu::Rect region = gadu::Rect::of_size(static_cast<std::int32_t>(data[size - 1]) - 128,
                                                  static_cast<std::int32_t>(data[size - 2]) - 128, 24, 20);
    pic->draw(region, buffer, whole);
    pic->draw_multiply(region, buffer, whole);
    pic->draw_add(region, buffer, whole);
    pic->draw_subpixel(x, y, 24, 20, buffer, whole, 0.7f);
    pic->draw_rotated_faded(x, y, 24, 20, angle, buffer, whole, 0.5f);
    pic->draw_rotated(x, y, 24, 20, angle, buffer, gadu::Rect{1, 1, 3, 3});

    const std::size_t count = static_cast<std::size_t>(pic->get_width()) * pic->get_height();
    std::vector<std::uint8_t> out(count * 4);
    std::vector<std::uint32_t> sums(count * 4);
    pic->convert_to_32(out.data());
    pic->accumulate(sums.data());
    pic->crossfade_into(out.data(), *pic, 0.5f);
    return 0;
}
