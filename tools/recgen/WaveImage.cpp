#include "WaveImage.h"

namespace recgen
{

namespace
{

void append_u32(std::vector<std::uint8_t>& out, std::uint32_t v)
{
    for (int i = 0; i < 4; ++i)
    {
        out.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
    }
}

void append_text(std::vector<std::uint8_t>& out, const std::string& text)
{
    out.insert(out.end(), text.begin(), text.end());
}

}  // namespace

WaveImage::WaveImage(const std::vector<std::int16_t>& samples, int rate, int layout, const std::string& title)
{
    put_tag("RIFF");
    put_u32(0);  // patched below
    put_tag("WAVE");
    switch (layout % nbr_layouts)
    {
    case 0:
        put_fmt(false, rate);
        put_data(samples);
        break;
    case 1:
        put_fmt(false, rate);
        put_list(title);
        put_data(samples);
        break;
    case 2:
        put_fmt(false, rate);
        put_data(samples);
        put_smpl(rate);
        break;
    case 3:
        put_fmt(true, rate);
        put_data(samples);
        put_list(title);
        break;
    case 4:
        put_list(title);
        put_fmt(false, rate);
        put_smpl(rate);
        put_data(samples);
        break;
    default:
        put_fmt(true, rate);
        put_smpl(rate);
        put_data(samples);
        put_list(title);
        break;
    }
    const auto riff_size = static_cast<std::uint32_t>(_bytes.size() - 8);
    for (int i = 0; i < 4; ++i)
    {
        _bytes[4 + i] = static_cast<std::uint8_t>(riff_size >> (8 * i));
    }
}

void WaveImage::put_u16(unsigned v)
{
    _bytes.push_back(static_cast<std::uint8_t>(v));
    _bytes.push_back(static_cast<std::uint8_t>(v >> 8));
}

void WaveImage::put_u32(std::uint32_t v)
{
    append_u32(_bytes, v);
}

void WaveImage::put_tag(const char* tag)
{
    for (int i = 0; i < 4; ++i)
    {
        _bytes.push_back(static_cast<std::uint8_t>(tag[i]));
    }
}

void WaveImage::put_chunk(const char* tag, const std::vector<std::uint8_t>& body)
{
    put_tag(tag);
    put_u32(static_cast<std::uint32_t>(body.size()));
    _bytes.insert(_bytes.end(), body.begin(), body.end());
    if (body.size() % 2 != 0)
    {
        _bytes.push_back(0);  // the pad byte, not counted in the size
    }
}

void WaveImage::put_fmt(bool extended, int rate)
{
    put_tag("fmt ");
    put_u32(extended ? 18 : 16);
    put_u16(1);  // PCM
    put_u16(1);  // mono
    put_u32(static_cast<std::uint32_t>(rate));
    put_u32(static_cast<std::uint32_t>(rate) * 2);
    put_u16(2);
    put_u16(16);
    if (extended)
    {
        put_u16(0);  // no extra format bytes
    }
}

void WaveImage::put_smpl(int rate)
{
    std::vector<std::uint8_t> body;
    append_u32(body, 0);                                             // manufacturer
    append_u32(body, 0);                                             // product
    append_u32(body, static_cast<std::uint32_t>(1000000000.0 / rate));  // ns per sample
    append_u32(body, 60);                                            // unity note
    for (int i = 0; i < 5; ++i)
    {
        append_u32(body, 0);  // pitch fraction, SMPTE format and offset, no loops, no extra data
    }
    put_chunk("smpl", body);
}

void WaveImage::put_list(const std::string& title)
{
    // The last sub-chunk keeps its odd length unpadded, as many editors write
    // it, so the LIST chunk itself may be odd-sized.
    std::vector<std::uint8_t> body;
    append_text(body, "INFO");
    const std::string software = std::string("Velnor recgen") + '\0';
    append_text(body, "ISFT");
    append_u32(body, static_cast<std::uint32_t>(software.size()));
    append_text(body, software);
    const std::string name = title + '\0';
    append_text(body, "INAM");
    append_u32(body, static_cast<std::uint32_t>(name.size()));
    append_text(body, name);
    put_chunk("LIST", body);
}

void WaveImage::put_data(const std::vector<std::int16_t>& samples)
{
    put_tag("data");
    put_u32(static_cast<std::uint32_t>(samples.size() * 2));
    for (std::int16_t s : samples)
    {
        put_u16(static_cast<std::uint16_t>(s));
    }
}

}  // namespace recgen
