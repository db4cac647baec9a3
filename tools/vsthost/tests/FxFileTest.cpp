#include "tools/vsthost/FxFile.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{

using vsthost::FxFile;
using vsthost::FxProgram;

std::uint32_t be32(const std::vector<std::uint8_t>& b, std::size_t at)
{
    return (std::uint32_t{b[at]} << 24) | (std::uint32_t{b[at + 1]} << 16) | (std::uint32_t{b[at + 2]} << 8)
           | b[at + 3];
}

FxFile make_params_bank()
{
    FxFile f;
    f.kind = FxFile::Kind::bank_params;
    f.format_version = 2;
    f.unique_id = 0x565A7271;
    f.plugin_version = 112;
    f.current_program = 1;
    f.programs = {FxProgram{"First", {0.0f, 0.5f, 1.0f}}, FxProgram{"Second", {0.25f, 0.75f, 0.125f}}};
    return f;
}

FxFile make_chunk_program()
{
    FxFile f;
    f.kind = FxFile::Kind::program_chunk;
    f.unique_id = 0x5674476E;
    f.plugin_version = 100;
    f.chunk_count = 6;
    f.chunk_program_name = "Chunky";
    f.chunk = {1, 2, 3, 4, 5, 0, 255};
    return f;
}

void expect_same(const FxFile& a, const FxFile& b)
{
    EXPECT_EQ(a.kind, b.kind);
    EXPECT_EQ(a.unique_id, b.unique_id);
    EXPECT_EQ(a.plugin_version, b.plugin_version);
    EXPECT_EQ(a.chunk, b.chunk);
    EXPECT_EQ(a.chunk_program_name, b.chunk_program_name);
    ASSERT_EQ(a.programs.size(), b.programs.size());
    for (std::size_t i = 0; i < a.programs.size(); ++i)
    {
        EXPECT_EQ(a.programs[i].name, b.programs[i].name);
        EXPECT_EQ(a.programs[i].params, b.programs[i].params);
    }
}

TEST(FxFile, ParameterProgramHasTheHostsLayout)
{
    FxFile f;
    f.unique_id = 0x565A7271;
    f.plugin_version = 1;
    f.programs = {FxProgram{"Default", {0.5f, 1.0f}}};
    const std::vector<std::uint8_t> b = f.write();
    ASSERT_EQ(b.size(), 56u + 8u);
    EXPECT_EQ(be32(b, 0), 0x43636E4Bu);  // CcnK
    EXPECT_EQ(be32(b, 4), b.size() - 8);
    EXPECT_EQ(be32(b, 8), 0x4678436Bu);  // FxCk
    EXPECT_EQ(be32(b, 12), 1u);
    EXPECT_EQ(be32(b, 16), 0x565A7271u);
    EXPECT_EQ(be32(b, 24), 2u);
    EXPECT_STREQ(reinterpret_cast<const char*>(&b[28]), "Default");
    EXPECT_EQ(be32(b, 56), 0x3F000000u);  // 0.5f
    EXPECT_EQ(be32(b, 60), 0x3F800000u);  // 1.0f
}

TEST(FxFile, BankKeepsCurrentProgramAndNestsProgramFiles)
{
    const std::vector<std::uint8_t> b = make_params_bank().write();
    EXPECT_EQ(be32(b, 8), 0x4678426Bu);  // FxBk
    EXPECT_EQ(be32(b, 12), 2u);
    EXPECT_EQ(be32(b, 24), 2u);   // programs
    EXPECT_EQ(be32(b, 28), 1u);   // current program, version 2
    EXPECT_EQ(be32(b, 156), 0x43636E4Bu);  // the first program is a whole program file
    EXPECT_EQ(be32(b, 164), 0x4678436Bu);
    EXPECT_EQ(b.size(), 156u + 2 * (56u + 12u));
}

TEST(FxFile, EveryKindRoundTrips)
{
    FxFile chunk_bank = make_chunk_program();
    chunk_bank.kind = FxFile::Kind::bank_chunk;
    chunk_bank.chunk_program_name.clear();
    chunk_bank.format_version = 2;
    for (const FxFile& f : {make_params_bank(), make_chunk_program(), chunk_bank})
    {
        const std::vector<std::uint8_t> b = f.write();
        FxFile back;
        ASSERT_EQ(FxFile::read(b.data(), b.size(), back), 0);
        expect_same(f, back);
        EXPECT_EQ(back.write(), b);
    }
}

TEST(FxFile, LongNamesAreCutToTheField)
{
    FxFile f;
    f.programs = {FxProgram{std::string(40, 'x'), {}}};
    const std::vector<std::uint8_t> b = f.write();
    FxFile back;
    ASSERT_EQ(FxFile::read(b.data(), b.size(), back), 0);
    EXPECT_EQ(back.programs[0].name, std::string(27, 'x'));
}

TEST(FxFile, EveryTruncationIsRefusedAndALyingByteSizeIsIgnored)
{
    for (const FxFile& f : {make_params_bank(), make_chunk_program()})
    {
        std::vector<std::uint8_t> b = f.write();
        for (std::size_t n = 0; n < b.size(); ++n)
        {
            FxFile back;
            EXPECT_NE(FxFile::read(b.data(), n, back), 0) << n;
        }
        b[4] = 0x7F;  // byte size far beyond the file
        FxFile back;
        EXPECT_EQ(FxFile::read(b.data(), b.size(), back), 0);
    }
}

TEST(FxFile, ImpossibleCountsAndForeignFilesAreRefused)
{
    std::vector<std::uint8_t> b = make_params_bank().write();
    FxFile back;
    std::vector<std::uint8_t> huge = b;
    huge[24] = 0x10;  // 268 million programs in a few hundred bytes
    EXPECT_EQ(FxFile::read(huge.data(), huge.size(), back), FxFile::error_truncated);
    std::vector<std::uint8_t> negative = b;
    negative[24] = 0xFF;
    EXPECT_EQ(FxFile::read(negative.data(), negative.size(), back), FxFile::error_bad_count);
    std::vector<std::uint8_t> inner = b;
    inner[164 + 1] = 'P';  // the first program claims to be a chunk program (FPCh)
    inner[164 + 3] = 'h';
    EXPECT_EQ(FxFile::read(inner.data(), inner.size(), back), FxFile::error_bad_program);
    std::vector<std::uint8_t> kind = b;
    kind[8] = 'Z';
    EXPECT_EQ(FxFile::read(kind.data(), kind.size(), back), FxFile::error_unknown_kind);
    b[0] = 'R';
    EXPECT_EQ(FxFile::read(b.data(), b.size(), back), FxFile::error_not_fx);

    std::vector<std::uint8_t> chunk = make_chunk_program().write();
    chunk[56] = 0x80;  // negative chunk size
    EXPECT_EQ(FxFile::read(chunk.data(), chunk.size(), back), FxFile::error_bad_count);
}

}  // namespace
