#include "math/Plane.h"
#include "support/Values.h"

#include <numbers>

namespace {
Box const c_box(Vector(1, 2, 3), Vector(4, 6, 8));
}

TEST(Box, GrowsFromEmpty)
{
    Box box;
    EXPECT_EQ(box.GetCenter(), Vector());
    EXPECT_EQ(box += Vector(1, 2, 3), Box(Vector(1, 2, 3), Vector(1, 2, 3)));
    EXPECT_TRUE(box.IsEmpty());
    EXPECT_FALSE((box + Vector(2, 3, 4)).IsEmpty());

    EXPECT_EQ(c_box + Box(), c_box);
    EXPECT_EQ(c_box + Box(Vector(9, 0, 0), Vector(9, 9, 9)), c_box) << "no thickness";
    EXPECT_EQ(c_box + Box(Vector(0, 3, 4), Vector(2, 7, 5)), Box(Vector(0, 2, 3), Vector(4, 7, 8)));
}

TEST(Box, HoldsItsCorners)
{
    EXPECT_EQ(c_box.GetCorner(1), Vector(4, 2, 3));
    EXPECT_EQ(c_box.GetCorner(5), Vector(4, 2, 8));
    EXPECT_EQ(c_box.GetRadius(), 0.5f * std::sqrt(50.0f));
    for (unsigned int i = 0; i < 8; ++i) {
        EXPECT_TRUE(c_box.IsInside(c_box.GetCorner(i)));
        Vector beyond = c_box.GetCenter();
        beyond[i % 3] = c_box.GetCorner(i)[i % 3] * 1.001f - beyond[i % 3] * 0.001f;
        EXPECT_FALSE(c_box.IsInside(beyond)) << i;
    }
}

TEST(Box, SurroundsItsTransformedCorners)
{
    Matrix const quarterTurn(0, -1, 0, 10, 1, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1);
    EXPECT_EQ(c_box.GetTransformed(quarterTurn), Box(Vector(4, 1, 6), Vector(8, 4, 16)));
    EXPECT_EQ(c_box.GetMaximum(quarterTurn), Vector(8, 4, 16));
    EXPECT_EQ(c_box.GetTranslated(Vector(1, 1, -1)), Box(Vector(2, 3, 2), Vector(5, 7, 7)));

    // Each corner, at a distance of the root of 2, goes out to the distance 2 in turning.
    Quaternion const eighthTurn(std::numbers::pi_v<float> / 4, Vector(0, 0, 1));
    Box const square = Box(Vector(-1, -1, 0), Vector(1, 1, 1e-3f)).GetRotated(eighthTurn);
    EXPECT_LT((square.GetMaximum() - Vector(2, 2, 0)).GetMagnitude(), 1e-2f);

    for (Box const & box : {Box(), Box(Vector(1, 2, 3), Vector(1, 4, 5)), Box(Vector(1, 2, 3), Vector(4, 2, 5)),
                            Box(Vector(3, 1, 2), Vector(4, 4, 2))}) {
        EXPECT_EQ(box.GetTranslated(Vector(1, 1, 1)).GetRotated(eighthTurn).GetTransformed(quarterTurn), box)
            << "empty";
    }
}

TEST(Plane, TellsTheSidesOfAPoint)
{
    for (Plane const & plane : {Plane(Vector(0, 0, 2), 3.0f), Plane(Vector(0, 0, 2), Vector(5, 6, 3)),
                                Plane(0, 0, 2, 6), Plane(Vector(0, 0, 3), Vector(5, 0, 3), Vector(5, 5, 3))}) {
        EXPECT_EQ(plane.GetDistance(Vector(7, 8, 5)), 2.0f);
        EXPECT_TRUE(plane.IsInside(Vector(7, 8, 5)));
        EXPECT_EQ((-plane).GetDistance(Vector(7, 8, 5)), -2.0f);
        EXPECT_EQ(plane.GetClosestPoint(Vector(7, 8, 5)), Vector(7, 8, 3));
    }
    EXPECT_TRUE(Plane().IsInside(Vector(5, 5, 0)));
    EXPECT_TRUE((-Plane()).IsInside(Vector(5, 5, 0)));
}

TEST(Plane, TransformsAsItsPointsDoButMovesTheOtherWay)
{
    Plane const plane(Vector(1, 2, -2), 2.0f);
    Matrix const tilt(1, 1, 0, 0, 0, 1, 0.5f, 0, 0, 0, 4, 0, 0, 0, 0, 1);
    for (Vector const & offset : {Vector(0, 0, 0), Vector(2, 0, 1), Vector(0, 5, 5)}) {
        Vector const point = tilt * (plane.GetCenter() + offset);
        EXPECT_NEAR(plane.GetTransformed(tilt).GetDistance(point), 0.0f, 1e-5f);
    }
    Matrix const translation = Matrix().GetTranslated(Vector(3, 4, -5));
    EXPECT_NEAR(plane.GetTransformed(translation).GetDistance(), 2.0f - 7.0f, 1e-5f);
}
