#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace recgen
{

// A mono 16-bit PCM RIFF WAVE file in memory. Besides "fmt " and "data" it may
// carry the extra chunks real recordings come with, in one of a few layouts:
// an INFO "LIST" (of odd size, with its pad byte) before or after the data, a
// "smpl" chunk, an 18-byte "fmt ".
class WaveImage
{
public:
    static constexpr int nbr_layouts = 6;

    WaveImage(const std::vector<std::int16_t>& samples, int rate, int layout, const std::string& title);

    const std::vector<std::uint8_t>& get_bytes() const { return _bytes; }

private:
    void put_u16(unsigned v);
    void put_u32(std::uint32_t v);
    void put_tag(const char* tag);
    void put_chunk(const char* tag, const std::vector<std::uint8_t>& body);
    void put_fmt(bool extended, int rate);
    void put_smpl(int rate);
    void put_list(const std::string& title);
    void put_data(const std::vector<std::int16_t>& samples);

    std::vector<std::uint8_t> _bytes;
};

}  // namespace recgen
