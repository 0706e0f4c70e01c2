#include "support/Values.h"

#include <numbers>

namespace {
Quaternion const c_identity(Vector(0, 0, 0), 1.0f);

Quaternion turn(float degrees, Vector const & axis = Vector(0, 0, 1))
{
    return Quaternion(degrees / 180.0f * std::numbers::pi_v<float>, axis);
}

void expectNear(Quaternion const & actual, Quaternion const & expected, float tolerance = 1e-5f)
{
    EXPECT_LT((actual - expected).GetMagnitude(), tolerance) << actual << " for " << expected;
}

Vector makeRandomVector(std::mt19937 & random)
{
    std::uniform_real_distribution<float> distribution(-3.0f, 3.0f);
    return Vector(distribution(random), distribution(random), distribution(random));
}
} // namespace

TEST(Quaternion, TurnsOneDirectionIntoTheOther)
{
    std::mt19937 random(1);
    for (int i = 0; i < 200; ++i) {
        Vector const from = makeRandomVector(random);
        Vector const to = makeRandomVector(random);
        Vector const turned = Matrix(Quaternion(from, to)).GetRotated(from.GetNormalized());
        EXPECT_LT((turned - to.GetNormalized()).GetMagnitude(), 2e-3f) << from << " to " << to;
        expectNear(Quaternion(from, from), c_identity);
    }
    expectNear(Quaternion(Vector(0, 2, 0), Vector(0, -1, 0)), Quaternion());
}

TEST(Quaternion, ThreeAnglesAreTurnsAboutXThenZThenY)
{
    expectNear(Quaternion(0.3f, 0.5f, 0.7f), Quaternion(0.3f, Vector(0, 1, 0)) * Quaternion(0.5f, Vector(0, 0, 1)) *
                                                 Quaternion(0.7f, Vector(1, 0, 0)));
}

TEST(Quaternion, MultipliesAsItsRotationDoes)
{
    std::mt19937 random(2);
    for (int i = 0; i < 50; ++i) {
        Quaternion const a = turn(40.0f, makeRandomVector(random));
        Quaternion const b = turn(200.0f, makeRandomVector(random));
        Vector const p = makeRandomVector(random);
        Vector const expected = Matrix(a).GetRotated(Matrix(b).GetRotated(p));
        EXPECT_LT((Matrix(a * b) * p - expected).GetMagnitude(), 1e-5f);
        EXPECT_LT((a * b * p - expected * p.GetMagnitude()).GetMagnitude(), 1e-4f) << "stretched by the length";
        Quaternion scaled = a;
        scaled /= a.GetScalar();
        expectNear(scaled * scaled.GetInverse(), c_identity);
        expectNear(scaled.GetNormalized(), a);
    }
}

TEST(Quaternion, LogarithmUndoesTheExponential)
{
    EXPECT_EQ(Quaternion().GetNormalized(), Quaternion());
    EXPECT_EQ(c_identity.GetLog(), Quaternion());
    EXPECT_EQ(Quaternion().GetExp(), c_identity);
    EXPECT_EQ(Quaternion(Vector(1, 2, 3), 1.5f).GetLog(), Quaternion(Vector(1, 2, 3))) << "counts as 1";
    for (float angle : {1e-3f, 0.5f, 1.5f, 3.0f}) {
        Quaternion const pure = Vector(0.6f, 0, -0.8f) * angle;
        expectNear(pure.GetExp(), Quaternion(2.0f * angle, Vector(0.6f, 0, -0.8f)));
        expectNear(pure.GetExp().GetLog(), pure, 1e-3f);
    }
}

TEST(Slerp, TurnsAtAnEvenSpeed)
{
    for (float t : {0.0f, 0.25f, 0.5f, 0.9f, 1.0f}) {
        expectNear(slerp(turn(30) * 2.0f, turn(150) * 2.0f, t), turn(30 + 120 * t));
        expectNear(slerp(turn(77), turn(77), t), turn(77));
        // The other sign of the same rotation is reached the long way round.
        expectNear(slerp(c_identity, turn(90) * -1.0f, t), turn(-270 * t));
    }
}

TEST(Spline, PassesThroughItsInnerPointsWithoutAKink)
{
    Vector const y(0, 1, 0);
    Quaternion const q[5] = {turn(10), turn(50, Vector(1, 1, 0)), turn(100, Vector(0, 1, 2)), turn(60), turn(20, y)};
    expectNear(spline(q[0], q[1], q[2], q[3], 0.0f), q[1]);
    expectNear(spline(q[0], q[1], q[2], q[3], 1.0f), q[2]);

    float const step = 1e-2f;
    Quaternion const before = q[2] - spline(q[0], q[1], q[2], q[3], 1.0f - step);
    Quaternion const after = spline(q[1], q[2], q[3], q[4], step) - q[2];
    expectNear(before / step, after / step, 0.1f);
    expectNear(squad(turn(0), turn(40), turn(40), turn(0), 0.5f), turn(20));
}
