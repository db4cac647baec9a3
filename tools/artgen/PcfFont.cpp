#include "PcfFont.h"

#include <zlib.h>

#include <algorithm>
#include <stdexcept>

namespace artgen
{

namespace
{

// Table types and format bits of the file format.
constexpr std::uint32_t pcf_accelerators = 1u << 1;
constexpr std::uint32_t pcf_metrics = 1u << 2;
constexpr std::uint32_t pcf_bitmaps = 1u << 3;
constexpr std::uint32_t pcf_encodings = 1u << 5;
constexpr std::uint32_t pcf_bdf_accelerators = 1u << 8;
constexpr std::uint32_t format_compressed_metrics = 0x100;
constexpr std::uint32_t format_msb_byte = 1u << 2;
constexpr std::uint32_t format_msb_bit = 1u << 3;

[[noreturn]] void fail(const std::string& what)
{
    throw std::runtime_error("artgen::PcfFont : " + what);
}

std::vector<std::uint8_t> read_gzip_or_plain(const std::string& path)
{
    gzFile f = gzopen(path.c_str(), "rb");
    if (f == nullptr)
    {
        fail("cannot open " + path);
    }
    std::vector<std::uint8_t> out;
    std::uint8_t chunk[65536];
    int n = 0;
    while ((n = gzread(f, chunk, sizeof(chunk))) > 0)
    {
        out.insert(out.end(), chunk, chunk + n);
    }
    gzclose(f);
    if (n < 0)
    {
        fail("cannot read " + path);
    }
    return out;
}

// Reads integers of one table, in the byte order its format names, refusing
// to run past the file.
class TableReader
{
public:
    TableReader(const std::vector<std::uint8_t>& file, std::uint32_t offset) : _file(file), _pos(offset)
    {
        _format = get(4, false);
    }

    std::uint32_t get_format() const { return _format; }

    std::uint32_t u32() { return get(4, (_format & format_msb_byte) != 0); }
    std::uint32_t u16() { return get(2, (_format & format_msb_byte) != 0); }
    std::int32_t s16() { return static_cast<std::int16_t>(u16()); }
    std::uint8_t u8() { return static_cast<std::uint8_t>(get(1, false)); }
    std::size_t get_pos() const { return _pos; }

private:
    std::uint32_t get(int bytes, bool msb_first)
    {
        if (_pos + bytes > _file.size())
        {
            fail("table runs past the end of the file");
        }
        std::uint32_t v = 0;
        for (int i = 0; i < bytes; ++i)
        {
            const std::uint32_t b = _file[_pos + i];
            v |= msb_first ? b << (8 * (bytes - 1 - i)) : b << (8 * i);
        }
        _pos += bytes;
        return v;
    }

    const std::vector<std::uint8_t>& _file;
    std::size_t _pos;
    std::uint32_t _format = 0;
};

struct Metrics
{
    int left, right, advance, ascent, descent;
};

}  // namespace

PcfFont::PcfFont(const std::string& path)
{
    read_tables(read_gzip_or_plain(path));
}

const PcfFont::Glyph& PcfFont::get_glyph(std::uint32_t code) const
{
    return code < _glyphs.size() ? _glyphs[code] : _missing;
}

bool PcfFont::dot(const Glyph& g, int x, int y) const
{
    if (x < 0 || x >= g.width || y < 0 || y >= get_height())
    {
        return false;
    }
    return g.dots[static_cast<std::size_t>(y * g.width + x)] != 0;
}

void PcfFont::read_tables(const std::vector<std::uint8_t>& file)
{
    if (file.size() < 8 || file[0] != 1 || file[1] != 'f' || file[2] != 'c' || file[3] != 'p')
    {
        fail("not a portable compiled font");
    }
    TableReader toc(file, 0);  // the "format" slot of the header is the magic
    const std::uint32_t count = toc.u32();
    std::uint32_t metrics_at = 0, bitmaps_at = 0, encodings_at = 0, accel_at = 0;
    for (std::uint32_t i = 0; i < count; ++i)
    {
        const std::uint32_t type = toc.u32();
        toc.u32();  // format, repeated at the table's start
        toc.u32();  // size
        const std::uint32_t offset = toc.u32();
        if (type == pcf_metrics) metrics_at = offset;
        if (type == pcf_bitmaps) bitmaps_at = offset;
        if (type == pcf_encodings) encodings_at = offset;
        if (type == pcf_bdf_accelerators || (type == pcf_accelerators && accel_at == 0)) accel_at = offset;
    }
    if (metrics_at == 0 || bitmaps_at == 0 || encodings_at == 0 || accel_at == 0)
    {
        fail("a table the artwork needs is missing");
    }

    TableReader accel(file, accel_at);
    for (int i = 0; i < 8; ++i)
    {
        accel.u8();  // flags, draw direction and padding
    }
    _ascent = static_cast<std::int32_t>(accel.u32());
    _descent = static_cast<std::int32_t>(accel.u32());

    TableReader mt(file, metrics_at);
    std::vector<Metrics> metrics;
    const bool compressed = (mt.get_format() & format_compressed_metrics) != 0;
    const std::uint32_t nbr_metrics = compressed ? mt.u16() : mt.u32();
    for (std::uint32_t i = 0; i < nbr_metrics; ++i)
    {
        Metrics m{};
        if (compressed)
        {
            m = Metrics{mt.u8() - 0x80, mt.u8() - 0x80, mt.u8() - 0x80, mt.u8() - 0x80, mt.u8() - 0x80};
        }
        else
        {
            m = Metrics{mt.s16(), mt.s16(), mt.s16(), mt.s16(), mt.s16()};
            mt.u16();  // attributes
        }
        metrics.push_back(m);
    }

    TableReader bt(file, bitmaps_at);
    const std::uint32_t nbr_bitmaps = bt.u32();
    std::vector<std::uint32_t> offsets;
    for (std::uint32_t i = 0; i < nbr_bitmaps; ++i)
    {
        offsets.push_back(bt.u32());
    }
    for (int i = 0; i < 4; ++i)
    {
        bt.u32();  // bitmap sizes for each padding
    }
    const std::size_t bits_at = bt.get_pos();
    const int pad = 1 << (bt.get_format() & 3);
    const bool msb_bit = (bt.get_format() & format_msb_bit) != 0;

    TableReader et(file, encodings_at);
    const int min2 = et.s16(), max2 = et.s16(), min1 = et.s16(), max1 = et.s16();
    et.s16();  // default character
    _glyphs.assign(0x10000, Glyph{});
    for (int b1 = min1; b1 <= max1; ++b1)
    {
        for (int b2 = min2; b2 <= max2; ++b2)
        {
            const std::uint32_t index = et.u16();
            if (index == 0xFFFF || index >= metrics.size() || index >= offsets.size())
            {
                continue;
            }
            const Metrics& m = metrics[index];
            Glyph& g = _glyphs[static_cast<std::size_t>((b1 << 8) | b2)];
            g.present = true;
            g.advance = m.advance;
            g.left = m.left;
            g.width = std::max(0, m.right - m.left);
            g.dots.assign(static_cast<std::size_t>(g.width * get_height()), 0);
            const int row_bytes = ((g.width + 7) / 8 + pad - 1) / pad * pad;
            for (int r = 0; r < m.ascent + m.descent; ++r)
            {
                const int y = _ascent - m.ascent + r;
                for (int x = 0; x < g.width; ++x)
                {
                    const std::size_t at = bits_at + offsets[index] + static_cast<std::size_t>(r * row_bytes + x / 8);
                    if (at >= file.size() || y < 0 || y >= get_height())
                    {
                        continue;
                    }
                    const int bit = msb_bit ? 7 - x % 8 : x % 8;
                    g.dots[static_cast<std::size_t>(y * g.width + x)] = (file[at] >> bit) & 1;
                }
            }
        }
    }
}

}  // namespace artgen
