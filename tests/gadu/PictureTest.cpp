#include "gadu/MemoryRenderingBuffer.h"
#include "gadu/PicDataFactory.h"
#include "gadu/Picture.h"

#include "ApicImage.h"

#include <gtest/gtest.h>

namespace gadu
{
namespace
{

// The 4 x 3 picture whose pixel (x, y) has the colour 0x10 (1 + x + 4y).
std::uint32_t numbered(int x, int y)
{
    return 0x10u * static_cast<std::uint32_t>(1 + x + 4 * y);
}

TEST(BoundingBoxDefaultCheckerTest, HitsNothingUntilGivenARectangleThenHalfOpenEdges)
{
    BoundingBoxDefaultChecker checker;
    EXPECT_FALSE(checker.check_point(0, 0));
    EXPECT_FALSE(checker.check_point(INT32_MIN, INT32_MIN));
    checker.set_hit_rect(Rect{-2, -1, 3, 4});
    EXPECT_TRUE(checker.check_point(-2, -1));
    EXPECT_TRUE(checker.check_point(2, 3));
    EXPECT_FALSE(checker.check_point(3, 0));
    EXPECT_FALSE(checker.check_point(0, 4));
    checker.set_custom_checker([](std::int32_t x, std::int32_t y) { return x == 10 && y == 10; });
    EXPECT_FALSE(checker.check_point(0, 0));
    EXPECT_TRUE(checker.check_point(10, 10));
    checker.set_custom_checker(nullptr);
    EXPECT_TRUE(checker.check_point(0, 0));
}

TEST(RectTest, MovingAnUnsetRectangleNeitherWrapsNorBecomesNonEmpty)
{
    const Rect unset{INT32_MIN, INT32_MIN, INT32_MIN, INT32_MIN};
    EXPECT_TRUE(unset.moved(-5, -5).is_empty());
    EXPECT_EQ(unset.moved(-5, 7).x1, INT32_MIN);
    EXPECT_EQ((Rect{1, 2, 3, 4}.moved(10, 20)), (Rect{11, 22, 13, 24}));
    EXPECT_EQ(Rect::of_size(INT32_MAX - 1, 0, 10, 1).x2, INT32_MAX);
}

TEST(MemoryRenderingBufferTest, BlitCopiesTheTopLeftPartClippedToTheScreen)
{
    MemoryRenderingBuffer screen(6, 5);
    MemoryRenderingBuffer tile(3, 3, &screen);
    for (int y = 0; y < 3; ++y)
    {
        for (int x = 0; x < 3; ++x)
        {
            tile.set_pixel(x, y, 0x01000000u + static_cast<std::uint32_t>(10 * y + x));
        }
    }
    tile.blit(4, 3, 3, 3);  // Only 2 x 2 of it lands on the screen.
    EXPECT_EQ(screen.get_pixel(4, 3), 0x01000000u);
    EXPECT_EQ(screen.get_pixel(5, 4), 0x01000000u + 11u);
    EXPECT_EQ(screen.get_pixel(3, 3), 0u);
    tile.blit(-1, 0, 2, 1);  // Only the tile's pixel (1, 0) lands.
    EXPECT_EQ(screen.get_pixel(0, 0), 0x01000000u + 1u);
    EXPECT_EQ(screen.get_pixel(1, 0), 0u);
}

TEST(PictureTest, HotSpotMovesTheHitRectangleAndTheDrawnPicture)
{
    const gadu_test::HeldPicture np(gadu_test::numbered_apic(4, 3));
    Picture picture(np.pic.get());
    EXPECT_EQ(picture.get_hit_rect(), (Rect{0, 0, 4, 3}));
    picture.set_hot_spot(2, 1);
    EXPECT_EQ(picture.get_hit_rect(), (Rect{-2, -1, 2, 2}));

    // The region is relative to the hot spot: (-2, -1) is the picture's corner.
    MemoryRenderingBuffer buffer(8, 8);
    EXPECT_EQ(picture.draw(Rect{-3, -2, 5, 6}, buffer), 1);
    EXPECT_EQ(buffer.get_pixel(1, 1), numbered(0, 0));
    EXPECT_EQ(buffer.get_pixel(4, 3), numbered(3, 2));
    EXPECT_EQ(buffer.get_pixel(0, 0), 0u);
    EXPECT_EQ(buffer.get_pixel(5, 1), 0u);
}

TEST(PictureTest, SourceRectangleLimitsDrawingAndHitting)
{
    const gadu_test::HeldPicture np(gadu_test::numbered_apic(4, 3));
    Picture picture(np.pic.get());
    picture.set_source_rect(Rect{1, 1, 10, 10});
    EXPECT_EQ(picture.get_source_rect(), (Rect{1, 1, 4, 3}));
    EXPECT_FALSE(picture.hit_test(0, 0));
    EXPECT_TRUE(picture.hit_test(1, 1));
    EXPECT_TRUE(picture.hit_test(3, 2));
    EXPECT_FALSE(picture.hit_test(4, 2));

    MemoryRenderingBuffer buffer(4, 3);
    picture.draw(Rect{0, 0, 4, 3}, buffer);
    EXPECT_EQ(buffer.get_pixel(0, 0), 0u);
    EXPECT_EQ(buffer.get_pixel(1, 1), numbered(1, 1));

    picture.set_source_rect(Rect{3, 2, 1, 1});
    EXPECT_EQ(picture.get_source_rect(), Rect{});
    EXPECT_FALSE(picture.hit_test(3, 2));
    MemoryRenderingBuffer untouched(4, 3);
    EXPECT_EQ(picture.draw(Rect{0, 0, 4, 3}, untouched), 0);
}

TEST(PictureTest, WithoutAPictureNothingIsDrawnOrHit)
{
    Picture picture;
    MemoryRenderingBuffer buffer(2, 2);
    EXPECT_EQ(picture.draw(Rect{0, 0, 2, 2}, buffer), 0);
    EXPECT_EQ(picture.draw_rotated(0.0, 0.0, 2, 2, 1.0, buffer), 0);
    EXPECT_EQ(picture.draw_at(0.5, 0.0, 2, 2, buffer), 0);
    EXPECT_FALSE(picture.hit_test(0, 0));
}

}  // namespace
}  // namespace gadu
