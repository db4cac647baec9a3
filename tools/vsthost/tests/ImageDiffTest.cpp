#include "tools/vsthost/ImageDiff.h"
#include "tools/vsthost/PngFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <stdexcept>

namespace
{

using vsthost::Image;
using vsthost::ImageDiff;
using vsthost::PngFile;

void paint(Image& image, int x0, int y0, int w, int h, std::uint8_t red)
{
    for (int y = y0; y < y0 + h; ++y)
    {
        for (int x = x0; x < x0 + w; ++x)
        {
            image.rgba[(static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                        static_cast<std::size_t>(x)) * 4] = red;
        }
    }
}

TEST(ImageDiff, BoxesEachChangedAreaAndCountsItsPixels)
{
    Image a(100, 60);
    Image b = a;
    paint(b, 10, 5, 20, 10, 200);
    paint(b, 70, 40, 3, 4, 200);
    const ImageDiff diff(a, b, 0);
    EXPECT_EQ(diff.get_changed(), 20 * 10 + 3 * 4);
    ASSERT_EQ(diff.get_boxes().size(), 2u);
    EXPECT_EQ(diff.get_boxes()[0].x, 10);
    EXPECT_EQ(diff.get_boxes()[0].y, 5);
    EXPECT_EQ(diff.get_boxes()[0].width, 20);
    EXPECT_EQ(diff.get_boxes()[0].height, 10);
    EXPECT_EQ(diff.get_boxes()[1].x, 70);
    EXPECT_EQ(diff.get_boxes()[1].width, 3);
    EXPECT_EQ(diff.get_boxes()[1].height, 4);
}

TEST(ImageDiff, JoinsChangesCloserThanACellAcrossCellBorders)
{
    // Two changes in neighbouring cells, on either side of a cell border.
    Image a(64, 64);
    Image b = a;
    paint(b, ImageDiff::cell - 1, 0, 1, 1, 1);
    paint(b, ImageDiff::cell + 2, 3, 1, 1, 1);
    const ImageDiff diff(a, b, 0);
    ASSERT_EQ(diff.get_boxes().size(), 1u);
    EXPECT_EQ(diff.get_boxes()[0].x, ImageDiff::cell - 1);
    EXPECT_EQ(diff.get_boxes()[0].width, 4);
    EXPECT_EQ(diff.get_boxes()[0].height, 4);
}

TEST(ImageDiff, ToleranceIgnoresSmallDifferencesAndAlphaNeverCounts)
{
    Image a(16, 16);
    Image b = a;
    paint(b, 0, 0, 16, 16, 3);
    b.rgba[3] = 255;
    EXPECT_EQ(ImageDiff(a, b, 3).get_changed(), 0);
    EXPECT_EQ(ImageDiff(a, b, 2).get_changed(), 256);
    std::ostringstream out;
    ImageDiff(a, a, 0).print(out);
    EXPECT_EQ(out.str(), "no pixels changed\n");
}

TEST(ImageDiff, RefusesPicturesOfDifferentSizes)
{
    EXPECT_THROW(ImageDiff(Image(4, 4), Image(4, 5), 0), std::invalid_argument);
}

TEST(PngFile, KeepsEveryPixelAndRefusesWhatIsNoPng)
{
    Image image(7, 3);
    for (std::size_t i = 0; i < image.rgba.size(); ++i)
    {
        image.rgba[i] = static_cast<std::uint8_t>(i % 4 == 3 ? 255 : i * 37);
    }
    const std::string path = ::testing::TempDir() + "vsthost-png-test.png";
    PngFile::write(path, image);
    const Image back = PngFile::read(path);
    EXPECT_EQ(back.width, 7);
    EXPECT_EQ(back.height, 3);
    EXPECT_EQ(back.rgba, image.rgba);
    std::FILE* f = std::fopen(path.c_str(), "wb");
    std::fputs("not a picture", f);
    std::fclose(f);
    EXPECT_THROW(PngFile::read(path), std::runtime_error);
    EXPECT_THROW(PngFile::write(path, Image()), std::runtime_error);
    std::remove(path.c_str());
}

}  // namespace
