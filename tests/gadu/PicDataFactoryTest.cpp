#include "gadu/PicDataFactory.h"

#include "ApicImage.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace gadu
{
namespace
{

using gadu_test::make_apic;
using gadu_test::put_u32;
using Bytes = std::vector<std::uint8_t>;

std::unique_ptr<PicDataInterface> make(const Bytes& bytes)
{
    return PicDataFactory::use_instance().create_from_bytes(bytes.data(), bytes.size());
}

// A valid 2 x 2 alpha palette picture, changed by one edit.
Bytes edited(const std::function<void(Bytes&)>& edit)
{
    Bytes bytes = make_apic(1, 8, 2, 2, {0x00FFFFFFu, 0u}, {0, 255, 1, 0, 1, 128, 0, 10});
    edit(bytes);
    return bytes;
}

// Which class each kind gets shows in how it draws (the arithmetic tests);
// here only that a picture reads the resource's bytes in place.
TEST(PicDataFactoryTest, APictureReadsTheResourceInPlace)
{
    const Bytes alpha_pal = make_apic(1, 8, 1, 1, {0u}, {0, 9});
    const auto pic = make(alpha_pal);
    EXPECT_EQ(pic->use_pixels(), alpha_pal.data() + 40);
    EXPECT_EQ(pic->use_palette(), alpha_pal.data() + 36);
}

TEST(PicDataFactoryTest, HeaderRulesRefuseWhatTheyMust)
{
    EXPECT_NE(make(edited([](Bytes&) {})), nullptr);
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 0, 0); })), nullptr);             // marker
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 4, 35); })), nullptr);            // header size
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 4, 0x80000000u); })), nullptr);   // negative header size
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 12, 16); })), nullptr);           // bits
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 12, 0); })), nullptr);            // a font's depth
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 8, 2); })), nullptr);             // a font's kind
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 8, 0xFFFFFFFFu); })), nullptr);   // kind -1
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 24, 0xFFFFFFFFu); })), nullptr);  // palette -1
    EXPECT_EQ(make(Bytes(35, 0xFF)), nullptr);
    EXPECT_EQ(PicDataFactory::use_instance().create_from_bytes(nullptr, 100), nullptr);
}

TEST(PicDataFactoryTest, PaletteOf256IsTheMost)
{
    std::vector<std::uint32_t> palette(256, 0u);
    EXPECT_NE(make(make_apic(0, 8, 1, 1, palette, {255})), nullptr);
    palette.push_back(0u);
    EXPECT_EQ(make(make_apic(0, 8, 1, 1, palette, {255})), nullptr);
}

TEST(PicDataFactoryTest, SizesThatCannotBeAddressedAreRefused)
{
    auto sized = [](std::uint32_t w, std::uint32_t h) {
        return edited([w, h](Bytes& b) {
            put_u32(b, 16, w);
            put_u32(b, 20, h);
        });
    };
    EXPECT_EQ(make(sized(0xFFFFFFFEu, 0xFFFFFFFEu)), nullptr);  // both negative
    EXPECT_EQ(make(sized(0xFFFFFFFEu, 2)), nullptr);            // one negative
    EXPECT_EQ(make(sized(0, 0xFFFFFFFFu)), nullptr);            // zero by negative
    EXPECT_EQ(make(sized(0x7FFFFFFFu, 0x7FFFFFFFu)), nullptr);  // overflowing
    EXPECT_EQ(make(sized(0x10000u, 0x10000u)), nullptr);        // 2^32 pixels
    EXPECT_EQ(make(sized(3, 2)), nullptr);                      // one row too many for the bytes
    const auto empty = make(sized(0, 5));
    ASSERT_NE(empty, nullptr);  // nothing to draw, but nothing wrong either
    EXPECT_EQ(empty->get_width(), 0);
}

TEST(PicDataFactoryTest, EverythingMustLieInsideTheBytes)
{
    const Bytes good = edited([](Bytes&) {});
    // Cut anywhere inside the pixels: refused.
    for (std::size_t cut = 0; cut < good.size(); ++cut)
    {
        EXPECT_EQ(PicDataFactory::use_instance().create_from_bytes(good.data(), cut), nullptr) << cut;
    }
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 28, 0xFFFFFFF0u); })), nullptr);  // pixel offset
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 32, 48); })), nullptr);          // palette past the end
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 4, 1000); })), nullptr);         // header past the end
    // Kinds without a palette ignore its offset.
    Bytes direct = make_apic(1, 24, 1, 1, {}, {1, 2, 3, 4});
    put_u32(direct, 32, 0xFFFFFFFFu);
    EXPECT_NE(make(direct), nullptr);
    // A pixel naming palette entry 2 of 2.
    EXPECT_EQ(make(edited([](Bytes& b) { b[40 + 4] = 2; })), nullptr);
}

}  // namespace
}  // namespace gadu
