#include "support/Values.h"

namespace {
Matrix const c_counting(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);

Matrix makeRandomMatrix(std::mt19937 & random)
{
    std::uniform_real_distribution<float> distribution(-2.0f, 2.0f);
    Matrix result;
    for (unsigned int i = 0; i < 16; ++i) {
        result(i / 4, i % 4) = distribution(random);
    }
    return result;
}

/// The largest difference of a matrix from the product of two others, computed in double precision.
double differenceFromProduct(Matrix const & matrix, Matrix const & a, Matrix const & b)
{
    double result = 0.0;
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column) {
            double difference = matrix.Get(column, row);
            for (unsigned int k = 0; k < 4; ++k) {
                difference -= static_cast<double>(a.Get(k, row)) * b.Get(column, k);
            }
            result = std::max(result, std::abs(difference));
        }
    }
    return result;
}
} // namespace

TEST(Matrix, LiesColumnByColumn)
{
    float const columns[4][4] = {{1, 5, 9, 13}, {2, 6, 10, 14}, {3, 7, 11, 15}, {4, 8, 12, 16}};
    EXPECT_EQ(Matrix(columns), c_counting);
    EXPECT_EQ(Matrix(&columns[0][0]), c_counting);
    EXPECT_EQ(c_counting.GetTransposed().Get(3, 1), c_counting.Get(1, 3));
    EXPECT_EQ(c_counting.Get(3, 1), 8.0f);
    EXPECT_EQ(Matrix(Vector(1, 2, 3), Vector(4, 5, 6), Vector(7, 8, 9), Vector(10, 11, 12)),
              Matrix(1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 1));

    float const values[4] = {-1, -2, -3, -4};
    Matrix matrix = c_counting;
    matrix.SetRow(1, values);
    matrix.SetColumn(2, values);
    EXPECT_EQ(matrix, Matrix(1, 2, -1, 4, -1, -2, -2, -4, 9, 10, -3, 12, 13, 14, -4, 16));
    matrix.SetRow(0, Vector(20, 21, 22));
    matrix.SetColumn(1, Vector(30, 31, 32));
    matrix.SetTranslation(Vector(40, 41, 42));
    EXPECT_EQ(matrix, Matrix(20, 30, 22, 40, -1, 31, -2, 41, 9, 32, -3, 42, 13, 14, -4, 1));
    EXPECT_EQ(matrix.GetTrace(), 20.0f + 31 - 3 + 1);
}

TEST(Matrix, ProductAndInverseAgreeWithDoublePrecision)
{
    std::mt19937 random(1);
    for (int i = 0; i < 200; ++i) {
        Matrix const a = makeRandomMatrix(random);
        Matrix const b = makeRandomMatrix(random);
        EXPECT_LT(differenceFromProduct(a * b, a, b), 1e-5);

        // The inverse of a matrix that is nearly singular is large, and so are its errors.
        Matrix const inverse = a.GetInverse();
        auto const [least, most] = std::minmax_element(inverse.Get(), inverse.Get() + 16);
        double const scale = std::max({1.0f, -*least, *most});
        EXPECT_LT(differenceFromProduct(Matrix(), a, inverse), 1e-5 * scale * scale);
        EXPECT_LT(differenceFromProduct(Matrix(), inverse, a), 1e-5 * scale * scale);
    }
    EXPECT_FALSE(std::isfinite((Matrix() * 0.0f).GetInverse().Get(0)));
}

TEST(Matrix, InPlaceArithmeticTakesTheMatrixItself)
{
    Matrix matrix = c_counting;
    matrix *= matrix;
    matrix /= matrix(0, 0);
    EXPECT_EQ(matrix, c_counting * c_counting / 90.0f);
    matrix += matrix;
    EXPECT_EQ(matrix, c_counting * c_counting / 90.0f * 2.0f);
}

TEST(Matrix, TransformsPointsAndDirections)
{
    Matrix const projection(2, 0, 0, 1, 0, 3, 0, 2, 0, 0, 4, 3, 1, 2, 3, -4);
    EXPECT_EQ(projection * Vector(3, 2, 1), Vector(7.0f / 6, 8.0f / 6, 7.0f / 6));
    EXPECT_EQ(projection.GetRotated(Vector(3, 2, 1)), Vector(6, 6, 4));
    EXPECT_FALSE(std::isfinite((projection * Vector(4, 0, 0)).GetX())) << "a point at infinity";
}

TEST(Matrix, AppendedTransformationsComeFirst)
{
    std::mt19937 random(2);
    Matrix const matrix = makeRandomMatrix(random);
    Vector const v(0.5f, -2, 3);
    Quaternion const q(0.7f, Vector(1, 2, 3));
    Matrix const translation(1, 0, 0, 0.5f, 0, 1, 0, -2, 0, 0, 1, 3, 0, 0, 0, 1);
    Matrix const scaling(0.5f, 0, 0, 0, 0, -2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 1);
    EXPECT_LT(differenceFromProduct(matrix.GetTranslated(v), matrix, translation), 1e-5);
    EXPECT_LT(differenceFromProduct(matrix.GetScaled(v), matrix, scaling), 1e-5);
    EXPECT_LT(differenceFromProduct(matrix.GetRotated(q), matrix, q), 1e-5);

    Matrix const composed = translation * Matrix(q) * scaling.GetScaled(Vector(1, -1, 1));
    EXPECT_EQ(composed.GetTranslationMatrix(), translation);
    EXPECT_LT((composed.GetScale() - Vector(0.5f, 2, 3)).GetMagnitude(), 1e-5f);
    EXPECT_EQ(composed.GetScaleMatrix(), Matrix().GetScaled(composed.GetScale()));
    EXPECT_LT(differenceFromProduct(q, composed.GetRotationMatrix(), Matrix()), 1e-5);
}

TEST(Matrix, GivesItsRotationAsAQuaternion)
{
    for (Vector const & axis : {Vector(1, 2, 3), Vector(-1, 0.5f, 0), Vector(0, -1, -2)}) {
        for (float angle : {0.0f, 1.0f, 2.0f, 3.0f}) {
            Quaternion const expected(angle, axis);
            EXPECT_LT((Matrix(expected).GetRotation() - expected).GetMagnitude(), 1e-3f);
        }
    }
    // Half a turn leaves the signs open.
    Matrix const halfTurn(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1);
    EXPECT_EQ(halfTurn.GetRotation(), Quaternion(Vector(0, 1, 0), 0.0f));
}
