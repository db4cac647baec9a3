#include "FxFile.h"

#include "ByteReader.h"
#include "ByteWriter.h"
#include "lumo/vst2/Vst2Abi.h"

#include <algorithm>

namespace vsthost
{

namespace
{

constexpr std::size_t name_field_size = 28;
constexpr std::size_t bank_reserved_size = 128;
// A program inside a parameter bank is a whole program file of this many
// bytes plus four per value.
constexpr std::size_t program_header_size = 28 + name_field_size;

std::int32_t magic_of(FxFile::Kind kind)
{
    switch (kind)
    {
    case FxFile::Kind::program_params:
        return lumo::vst2::fx_program_params;
    case FxFile::Kind::program_chunk:
        return lumo::vst2::fx_program_chunk;
    case FxFile::Kind::bank_params:
        return lumo::vst2::fx_bank_params;
    default:
        return lumo::vst2::fx_bank_chunk;
    }
}

bool kind_of(std::int32_t magic, FxFile::Kind& kind)
{
    for (FxFile::Kind k : {FxFile::Kind::program_params, FxFile::Kind::program_chunk, FxFile::Kind::bank_params,
                           FxFile::Kind::bank_chunk})
    {
        if (magic_of(k) == magic)
        {
            kind = k;
            return true;
        }
    }
    return false;
}

std::string read_name(const std::uint8_t* field)
{
    const auto* end = std::find(field, field + name_field_size, std::uint8_t{0});
    return std::string(field, end);
}

void write_name(ByteWriter& w, const std::string& name)
{
    std::uint8_t field[name_field_size] = {};
    std::copy_n(name.begin(), std::min(name.size(), name_field_size - 1), field);
    w.put_bytes(field, name_field_size);
}

// The common start of both file kinds: "CcnK", byte size, kind, version, ID,
// plug-in version and the count of values or programs.
struct Header
{
    FxFile::Kind kind = FxFile::Kind::program_params;
    std::int32_t version = 0;
    std::int32_t unique_id = 0;
    std::int32_t plugin_version = 0;
    std::int32_t count = 0;
};

int read_header(ByteReader& r, Header& h)
{
    std::int32_t magic = 0;
    std::int32_t byte_size = 0;
    std::int32_t kind = 0;
    if (!r.get_i32_be(magic) || magic != lumo::vst2::chunk_magic)
    {
        return FxFile::error_not_fx;
    }
    // The byte size is not trusted: the bytes really present decide.
    if (!r.get_i32_be(byte_size) || !r.get_i32_be(kind))
    {
        return FxFile::error_truncated;
    }
    if (!kind_of(kind, h.kind))
    {
        return FxFile::error_unknown_kind;
    }
    if (!r.get_i32_be(h.version) || !r.get_i32_be(h.unique_id) || !r.get_i32_be(h.plugin_version)
        || !r.get_i32_be(h.count))
    {
        return FxFile::error_truncated;
    }
    return h.count < 0 ? FxFile::error_bad_count : 0;
}

int read_params(ByteReader& r, std::int32_t count, FxProgram& program)
{
    const std::uint8_t* name = nullptr;
    if (!r.get_bytes(name_field_size, name))
    {
        return FxFile::error_truncated;
    }
    program.name = read_name(name);
    if (static_cast<std::size_t>(count) > r.get_remaining() / 4)
    {
        return FxFile::error_truncated;
    }
    program.params.resize(static_cast<std::size_t>(count));
    for (float& v : program.params)
    {
        r.get_float_be(v);
    }
    return 0;
}

int read_chunk(ByteReader& r, std::vector<std::uint8_t>& chunk)
{
    std::int32_t size = 0;
    const std::uint8_t* data = nullptr;
    if (!r.get_i32_be(size))
    {
        return FxFile::error_truncated;
    }
    if (size < 0)
    {
        return FxFile::error_bad_count;
    }
    if (!r.get_bytes(static_cast<std::size_t>(size), data))
    {
        return FxFile::error_truncated;
    }
    chunk.assign(data, data + size);
    return 0;
}

int read_bank_programs(ByteReader& r, std::int32_t count, FxFile& out)
{
    if (static_cast<std::size_t>(count) > r.get_remaining() / program_header_size)
    {
        return FxFile::error_truncated;
    }
    out.programs.resize(static_cast<std::size_t>(count));
    for (FxProgram& program : out.programs)
    {
        Header h;
        const int result = read_header(r, h);
        if (result != 0)
        {
            return result;
        }
        if (h.kind != FxFile::Kind::program_params)
        {
            return FxFile::error_bad_program;
        }
        const int params_result = read_params(r, h.count, program);
        if (params_result != 0)
        {
            return params_result;
        }
    }
    return 0;
}

int read_body(ByteReader& r, const Header& h, FxFile& out)
{
    switch (h.kind)
    {
    case FxFile::Kind::program_params:
        out.programs.resize(1);
        return read_params(r, h.count, out.programs[0]);
    case FxFile::Kind::program_chunk:
    {
        const std::uint8_t* name = nullptr;
        if (!r.get_bytes(name_field_size, name))
        {
            return FxFile::error_truncated;
        }
        out.chunk_program_name = read_name(name);
        return read_chunk(r, out.chunk);
    }
    default:
    {
        const std::uint8_t* reserved = nullptr;
        if (!r.get_bytes(bank_reserved_size, reserved))
        {
            return FxFile::error_truncated;
        }
        if (h.version >= 2)
        {
            ByteReader current(reserved, 4);
            current.get_i32_be(out.current_program);
        }
        return h.kind == FxFile::Kind::bank_chunk ? read_chunk(r, out.chunk) : read_bank_programs(r, h.count, out);
    }
    }
}

void write_header(ByteWriter& w, FxFile::Kind kind, std::int32_t version, std::int32_t unique_id,
                  std::int32_t plugin_version, std::int32_t count)
{
    w.put_i32_be(lumo::vst2::chunk_magic);
    w.put_i32_be(0);  // byte size, patched when the end is known
    w.put_i32_be(magic_of(kind));
    w.put_i32_be(version);
    w.put_i32_be(unique_id);
    w.put_i32_be(plugin_version);
    w.put_i32_be(count);
}

void patch_byte_size(ByteWriter& w, std::size_t start)
{
    w.patch_u32_be(start + 4, static_cast<std::uint32_t>(w.use_bytes().size() - start - 8));
}

void write_params_program(ByteWriter& w, const FxFile& file, const FxProgram& program)
{
    const std::size_t start = w.use_bytes().size();
    write_header(w, FxFile::Kind::program_params, 1, file.unique_id, file.plugin_version,
                 static_cast<std::int32_t>(program.params.size()));
    write_name(w, program.name);
    for (float v : program.params)
    {
        w.put_float_be(v);
    }
    patch_byte_size(w, start);
}

void write_chunk(ByteWriter& w, const std::vector<std::uint8_t>& chunk)
{
    w.put_i32_be(static_cast<std::int32_t>(chunk.size()));
    w.put_bytes(chunk.data(), chunk.size());
}

// The reserved block of a bank; format version 2 keeps the current program
// in its first four bytes.
void write_bank_reserved(ByteWriter& w, std::int32_t current_program)
{
    w.put_i32_be(current_program);
    const std::uint8_t zeros[bank_reserved_size - 4] = {};
    w.put_bytes(zeros, sizeof zeros);
}

}  // namespace

int FxFile::read(const std::uint8_t* data, std::size_t size, FxFile& out)
{
    ByteReader r(data, size);
    Header h;
    const int result = read_header(r, h);
    if (result != 0)
    {
        return result;
    }
    out = FxFile{};
    out.kind = h.kind;
    out.format_version = h.version;
    out.unique_id = h.unique_id;
    out.plugin_version = h.plugin_version;
    out.chunk_count = out.is_chunk() ? h.count : 0;
    return read_body(r, h, out);
}

const char* FxFile::get_error_text(int code)
{
    switch (code)
    {
    case 0:
        return "no error";
    case error_not_fx:
        return "not a VST preset or bank file (no CcnK)";
    case error_unknown_kind:
        return "unknown kind of preset or bank file";
    case error_truncated:
        return "the file ends before its contents do";
    case error_bad_count:
        return "the file holds a negative count or size";
    case error_bad_program:
        return "a program of the bank is not a parameter program";
    default:
        return "unknown error";
    }
}

std::vector<std::uint8_t> FxFile::write() const
{
    ByteWriter w;
    if (kind == Kind::program_params)
    {
        write_params_program(w, *this, programs.empty() ? FxProgram{} : programs[0]);
        return w.use_bytes();
    }
    const std::int32_t count = kind == Kind::bank_params ? static_cast<std::int32_t>(programs.size()) : chunk_count;
    write_header(w, kind, is_bank() ? format_version : 1, unique_id, plugin_version, count);
    if (kind == Kind::program_chunk)
    {
        write_name(w, chunk_program_name);
        write_chunk(w, chunk);
    }
    else
    {
        write_bank_reserved(w, format_version >= 2 ? current_program : 0);
        if (kind == Kind::bank_chunk)
        {
            write_chunk(w, chunk);
        }
        else
        {
            for (const FxProgram& program : programs)
            {
                write_params_program(w, *this, program);
            }
        }
    }
    patch_byte_size(w, 0);
    return w.use_bytes();
}

}  // namespace vsthost
