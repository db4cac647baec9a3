#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vsthost
{

// One program as a preset or bank file stores it through parameters.
struct FxProgram
{
    std::string name;  // at most 27 characters
    std::vector<float> params;
};

// The .fxp (one program) and .fxb (bank) files of VST 2 hosts, all numbers
// big-endian. Each holds either the parameter values of its programs or the
// plug-in's opaque chunk. The reader trusts no size or count in the file: it
// checks each against the bytes that are really there.
struct FxFile
{
    enum class Kind
    {
        program_params,  // "FxCk"
        program_chunk,   // "FPCh"
        bank_params,     // "FxBk"
        bank_chunk,      // "FBCh"
    };

    static constexpr int error_not_fx = -2001;        // no "CcnK" at the start
    static constexpr int error_unknown_kind = -2002;  // not one of the four kinds
    static constexpr int error_truncated = -2003;     // ends before its counts say
    static constexpr int error_bad_count = -2004;     // a negative or impossible count
    static constexpr int error_bad_program = -2005;   // a bank's program is not a parameter program

    Kind kind = Kind::program_params;
    std::int32_t format_version = 1;  // banks: 2 stores the current program
    std::int32_t unique_id = 0;
    std::int32_t plugin_version = 0;
    // The header's count where no list below gives it: the parameter count of
    // a chunk program, the program count of a chunk bank.
    std::int32_t chunk_count = 0;
    std::int32_t current_program = 0;  // banks of format version 2
    std::string chunk_program_name;    // program chunk files
    std::vector<FxProgram> programs;   // parameter kinds: one for a program file
    std::vector<std::uint8_t> chunk;   // chunk kinds

    bool is_bank() const { return kind == Kind::bank_params || kind == Kind::bank_chunk; }
    bool is_chunk() const { return kind == Kind::program_chunk || kind == Kind::bank_chunk; }

    // 0, or one of the error codes above; out is complete only on 0.
    static int read(const std::uint8_t* data, std::size_t size, FxFile& out);
    static const char* get_error_text(int code);
    std::vector<std::uint8_t> write() const;
};

}  // namespace vsthost
