#include "zarquette/WavFile.h"

#include "sys/Resource.h"

#include <algorithm>
#include <cstring>

namespace zarquette
{

namespace
{

constexpr std::size_t not_found = ~std::size_t(0);
constexpr std::size_t chunk_header = 8;  // tag and size
constexpr std::size_t fmt_body = 16;     // the part of "fmt " that is read

std::uint32_t read_u32(const std::uint8_t* p)
{
    return std::uint32_t(p[0]) | (std::uint32_t(p[1]) << 8) | (std::uint32_t(p[2]) << 16)
         | (std::uint32_t(p[3]) << 24);
}

std::uint16_t read_u16(const std::uint8_t* p)
{
    return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}

bool is_tag(const std::uint8_t* p, const char* tag)
{
    return std::memcmp(p, tag, 4) == 0;
}

// Offset of the first chunk with this tag, walking from the first chunk after
// "WAVE"; each body is padded to an even length. not_found when the walk
// reaches end without a match.
std::size_t find_chunk(const std::uint8_t* image, std::size_t end, const char* tag)
{
    std::uint64_t pos = 12;
    while (pos + chunk_header <= end)
    {
        if (is_tag(image + pos, tag))
        {
            return static_cast<std::size_t>(pos);
        }
        pos = (pos + chunk_header + read_u32(image + pos + 4) + 1) & ~std::uint64_t(1);
    }
    return not_found;
}

bool is_mono_pcm16(const std::uint8_t* fmt)
{
    return read_u16(fmt + 8) == 1 && read_u16(fmt + 10) == 1 && read_u16(fmt + 20) == 2
        && read_u16(fmt + 22) == 16;
}

}  // namespace

int WavFile::load(const char* name)
{
    std::size_t size = 0;
    const std::uint8_t* image = sys::get_resource("WAVE", name, &size);
    return image != nullptr ? load_image(image, size) : -1;
}

int WavFile::load_image(const std::uint8_t* image, std::size_t size)
{
    if (image == nullptr || size < 12 || !is_tag(image, "RIFF") || !is_tag(image + 8, "WAVE"))
    {
        return -1;
    }
    // The RIFF size tells where the chunks end; an image cut short ends sooner.
    const std::size_t end = static_cast<std::size_t>(
        std::min<std::uint64_t>(std::uint64_t(read_u32(image + 4)) + 8, size));
    const std::size_t fmt = find_chunk(image, end, "fmt ");
    const std::size_t data = find_chunk(image, end, "data");
    if (fmt == not_found || data == not_found)
    {
        return -1;
    }
    if (read_u32(image + fmt + 4) < fmt_body || end - fmt - chunk_header < fmt_body
        || !is_mono_pcm16(image + fmt))
    {
        return -1;
    }
    const std::uint32_t data_size = read_u32(image + data + 4);
    const std::uint8_t* samples = image + data + chunk_header;
    // Samples are read in place as 16-bit words: they must all be there and
    // aligned (an embedded resource always is).
    if (data_size > end - data - chunk_header
        || reinterpret_cast<std::uintptr_t>(samples) % alignof(std::int16_t) != 0)
    {
        return -1;
    }
    _image = image;
    _samples = reinterpret_cast<const std::int16_t*>(samples);
    _sample_freq = static_cast<float>(read_u32(image + fmt + 12));
    _nbr_frames = data_size / 2;
    return 0;
}

}  // namespace zarquette
