#include "math/Color.h"
#include "support/Testing.h"

TEST(Color, ClampsAndTruncates)
{
    EXPECT_EQ(Color(300, -5, 0, 255), Color(255, 0, 0));
    EXPECT_EQ(Color(1.0f, 0.5f, 0.0f, 1.0f), Color(255, 127, 0));
    EXPECT_EQ(Color(INFINITY, -INFINITY, NAN, 1e30f), Color(255, 0, 0));
    for (int i = 0; i < 256; ++i) {
        Color const color(i, 0, 0, 255 - i);
        EXPECT_EQ(Color(color.GetNormalizedRed(), 0.0f, 0.0f, color.GetNormalizedAlpha()), color);
    }
}

TEST(Color, ArithmeticSaturatesInAllChannels)
{
    EXPECT_EQ(Color(200, 0, 7, 255) + Color(100, 1, 8, 0), Color(255, 1, 15, 255));
    EXPECT_EQ(Color(10, 0, 9, 255) - Color(20, 0, 4, 255), Color(0, 0, 5, 0));
    EXPECT_EQ(Color(10, 101, 200, 50) * 1.5f, Color(15, 151, 255, 75));
    EXPECT_EQ(Color(10, 101, 200, 50) / 2.0f, Color(5, 50, 100, 25));
    EXPECT_EQ(Color(10, 0, 0, 1) / 0.0f, Color(255, 0, 0, 255));
}

TEST(Color, FollowsTheColourCircle)
{
    std::pair<float, Color> const hues[] = {{0.0f, Color(255, 0, 0)},    {0.25f, Color(127, 255, 0)},
                                            {0.375f, Color(0, 255, 63)}, {0.625f, Color(0, 63, 255)},
                                            {0.75f, Color(127, 0, 255)}, {0.875f, Color(255, 0, 191)}};
    Color color(1, 2, 3, 4);
    for (auto const & [hue, expected] : hues) {
        color.SetHSV(hue, 1.0f, 1.0f);
        EXPECT_EQ(color, expected) << hue;
    }
    for (float hue : {1.0f, -0.1f, 1e30f, NAN}) {
        color.SetHSV(hue, 1.0f, 0.5f);
        EXPECT_EQ(color, Color(127, 127, 127)) << hue;
    }
    color.SetHSV(0.125f, 0.5f, 1.0f);
    EXPECT_EQ(color, Color(255, 223, 127));
    color.SetHSV(0.5f, 0.0f, 0.5f);
    EXPECT_EQ(color, Color(127, 127, 127));
}
