#include "math/EigenSolver.h"
#include "math/Gaussian.h"
#include "math/Vector.h"
#include "support/Testing.h"

namespace {
/// A symmetric matrix of uniform values; one with a stride falls apart into independent parts.
EigenSolver makeMatrix(unsigned int size, unsigned int stride, unsigned int seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> distribution(-1.0f, 1.0f);
    EigenSolver result(size);
    for (unsigned int i = 0; i < size; ++i) {
        for (unsigned int j = i % stride; j <= i; j += stride) {
            result(i, j) = result(j, i) = distribution(random);
        }
    }
    return result;
}

/// The sum over both columns of element times element, in double precision.
double dotColumns(EigenSolver & a, unsigned int i, EigenSolver & b, unsigned int j, unsigned int size)
{
    double sum = 0.0;
    for (unsigned int k = 0; k < size; ++k) {
        sum += static_cast<double>(a(k, i)) * b(k, j);
    }
    return sum;
}
} // namespace

TEST(EigenSolver, FindsOrthonormalEigenvectorsInAscendingOrder)
{
    for (unsigned int size : {1u, 2u, 3u, 4u, 5u, 15u, 16u, 17u, 20u, 37u, 70u}) {
        for (unsigned int stride : {1u, 2u, 3u, 1000u}) {
            SCOPED_TRACE(testing::Message() << size << " by " << stride);
            EigenSolver matrix = makeMatrix(size, stride, size + stride);
            EigenSolver solved = matrix;
            solved.solve();
            for (unsigned int i = 0; i < size; ++i) {
                EXPECT_LE(solved.GetEigenvalue(i > 0 ? i - 1 : 0), solved.GetEigenvalue(i));
                for (unsigned int j = 0; j < size; ++j) {
                    double const expected = static_cast<double>(solved.GetEigenvalue(i)) * solved(j, i);
                    EXPECT_NEAR(dotColumns(matrix, j, solved, i, size), expected, 2e-5);
                    EXPECT_NEAR(dotColumns(solved, i, solved, j, size), i == j ? 1.0 : 0.0, 1e-5);
                }
            }
        }
    }
}

TEST(EigenSolver, GivesARotationInThreeDimensions)
{
    for (unsigned int seed = 0; seed < 50; ++seed) {
        EigenSolver solver = makeMatrix(3, 1, seed);
        solver.solve();
        Vector const x(solver.GetEigenvector(0).data());
        Vector const y(solver.GetEigenvector(1).data());
        Vector const z(solver.GetEigenvector(2).data());
        EXPECT_LT((x.GetCross(y) - z).GetMagnitude(), 1e-5f) << seed;
    }
}

TEST(EigenSolver, ComesToAnEndOnAnyInput)
{
    EigenSolver(0).solve();
    using Limits = std::numeric_limits<float>;
    for (float value : {Limits::quiet_NaN(), Limits::infinity(), Limits::max(), Limits::denorm_min()}) {
        EigenSolver solver(20);
        for (unsigned int i = 0; i < 400; ++i) {
            solver(i / 20, i % 20) = value;
        }
        solver.solve();
        EXPECT_EQ(solver.GetEigenvector(19).size(), 20u);
    }
}

TEST(Gaussian, PeaksAtHalfItsSize)
{
    Gaussian const even(6);
    EXPECT_EQ(even.Get(0, 0, 0), 1.0f);
    EXPECT_NEAR(even.Get(1, -2, 2), std::exp(-4.5), 1e-6);
    Gaussian const odd(9);
    EXPECT_NEAR(odd.Get(4, -4, 0), std::exp(-(3.5 * 3.5 + 4.5 * 4.5 + 0.25) / 4.5), 1e-6);
    EXPECT_NEAR(Gaussian(1).Get(0, 0, 0), std::exp(-13.5), 1e-9);
}

TEST(Gaussian, IsZeroOutsideAndRefusesSizesThatOverflow)
{
    EXPECT_EQ(Gaussian(0).Get(0, 0, 0), 0.0f);
    Gaussian const gaussian(4);
    for (int offset : {-3, 2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(gaussian.Get(offset, 0, 0) + gaussian.Get(0, offset, 0) + gaussian.Get(0, 0, offset), 0.0f) << offset;
    }
    for (unsigned int size : {1u << 22, 1u << 31, std::numeric_limits<unsigned int>::max()}) {
        EXPECT_THROW(Gaussian{size}, Exception) << size;
    }
}
