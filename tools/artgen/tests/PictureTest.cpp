#include "ApicReader.h"
#include "ArtworkSet.h"
#include "Layout.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

constexpr double pi = 3.14159265358979323846;

const artgen::ArtworkSet& artwork()
{
    static const artgen::ArtworkSet set(ZQ_FONT_DIR);
    return set;
}

}  // namespace

TEST(KnobPictures, BodiesAreRoundAboutTheirHotSpotWithSmoothEdges)
{
    for (const artgen::KnobLayout& k : artgen::knob_layouts)
    {
        SCOPED_TRACE(k.resource);
        const ApicView v(artwork().get(k.resource).bytes);
        EXPECT_EQ(v.alpha(k.hot_x, k.hot_y), 255);
        double area = 0.0;
        int partial = 0;
        for (int y = 0; y < v.height; ++y)
        {
            for (int x = 0; x < v.width; ++x)
            {
                area += v.alpha(x, y) / 255.0;
                partial += (v.alpha(x, y) > 0 && v.alpha(x, y) < 255) ? 1 : 0;
                // Nothing of the body beyond its radius: it turns inside its picture.
                const double dx = x + 0.5 - (k.hot_x + 0.5), dy = y + 0.5 - (k.hot_y + 0.5);
                if (std::sqrt(dx * dx + dy * dy) > k.radius + 1.0)
                {
                    ASSERT_EQ(v.alpha(x, y), 0) << x << ", " << y;
                }
            }
        }
        // Knurled, so a little less than the full disc; anti-aliased all round.
        const double disc = pi * k.radius * k.radius;
        EXPECT_GT(area, 0.85 * disc);
        EXPECT_LT(area, 1.01 * disc);
        EXPECT_GT(partial, static_cast<int>(2 * pi * k.radius));
    }
}

TEST(SwitchPictures, TheTwoStatesAreToldApartAtOnce)
{
    const ApicView off(artwork().get("FF_01_00").bytes);
    const ApicView on(artwork().get("FF_01_01").bytes);
    int black_off = 0, black_on = 0, differ = 0;
    for (int y = 0; y < off.height; ++y)
    {
        for (int x = 0; x < off.width; ++x)
        {
            black_off += off.black(x, y) ? 1 : 0;
            black_on += on.black(x, y) ? 1 : 0;
            differ += off.index(x, y) != on.index(x, y) ? 1 : 0;
        }
    }
    const int n = off.width * off.height;
    // Off is a light slider, on a dark one: most pixels change.
    EXPECT_LT(black_off, n / 3);
    EXPECT_GT(black_on, n / 2);
    EXPECT_GT(differ, n / 3);
}

TEST(ArrowPicture, ShapeLiesInTheAlphaAroundTheHotSpot)
{
    const ApicView v(artwork().get("ARW_06").bytes);
    EXPECT_EQ(v.alpha(artgen::arrow_hot, artgen::arrow_hot), 255);
    int opaque = 0;
    for (int y = 0; y < v.height; ++y)
    {
        for (int x = 0; x < v.width; ++x)
        {
            opaque += v.alpha(x, y) == 255 ? 1 : 0;
        }
        // Up-and-down: the same on both sides of the hot spot's column.
        for (int d = 1; d <= artgen::arrow_hot; ++d)
        {
            EXPECT_EQ(v.alpha(artgen::arrow_hot - d, y), v.alpha(artgen::arrow_hot + d, y)) << d << ", " << y;
        }
    }
    EXPECT_GT(opaque, 40);
    EXPECT_EQ(v.alpha(0, 0), 0);
}
