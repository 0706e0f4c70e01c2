#include "math/Vector.h"
#include "support/Testing.h"

TEST(Vector, NormalisationAndInverseLeaveZerosAlone)
{
    EXPECT_EQ(Vector().GetNormalized(), Vector());
    EXPECT_EQ(Vector(3, 0, -4).GetNormalized(), Vector(0.6f, 0, -0.8f));
    EXPECT_EQ(Vector(2, 0, 4).GetInverse(), Vector(0.5f, 0, 0.25f));
}

TEST(Vector, ComparesExactly)
{
    Vector const odd(1, std::numeric_limits<float>::quiet_NaN(), 3);
    EXPECT_TRUE(odd != odd);
    EXPECT_NE(Vector(1, 2, 3), Vector(1, 2, std::nextafter(3.0f, 4.0f)));
}

TEST(Vector, ArithmeticWorksByComponentAndTakesTheVectorItself)
{
    Vector a(8, -6, 3);
    Vector const b(2, 3, -1);
    EXPECT_EQ(a * b, Vector(16, -18, -3));
    EXPECT_EQ(a / b, Vector(4, -2, -3));
    EXPECT_EQ(a.GetDot(b), -5.0f);
    EXPECT_EQ(a.GetCross(b), Vector(-3, 14, 36));
    EXPECT_EQ(a.GetMinimum(), -6.0f);
    EXPECT_EQ(a.GetMaximum(), 8.0f);
    a *= a[0];
    EXPECT_EQ(a, Vector(64, -48, 24));
    a /= a[2];
    EXPECT_EQ(a, Vector(64.0f / 24, -2, 1));
}
