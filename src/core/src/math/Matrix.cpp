#include "math/Matrix.h"

#include "math/Quaternion.h"
#include "math/detail/Component.h"
#include "object/eatable.h"

#include <functional>
#include <istream>
#include <ostream>

namespace tesseralis {
Matrix::Matrix(float const & m00, float const & m01, float const & m02, float const & m03, float const & m10,
               float const & m11, float const & m12, float const & m13, float const & m20, float const & m21,
               float const & m22, float const & m23, float const & m30, float const & m31, float const & m32,
               float const & m33)
    : m_elements{m00, m10, m20, m30, m01, m11, m21, m31, m02, m12, m22, m32, m03, m13, m23, m33}
{
}

Matrix::Matrix(Vector const & row0, Vector const & row1, Vector const & row2, Vector const & row3)
{
    SetRow(0, row0);
    SetRow(1, row1);
    SetRow(2, row2);
    SetRow(3, row3);
}

Matrix::Matrix(float const (*const columns)[4])
{
    for (unsigned int i = 0; i < 4; ++i) {
        SetColumn(i, columns[i]);
    }
}

Matrix::Matrix(Quaternion const & rotation)
{
    float const x = rotation.GetVector().GetX();
    float const y = rotation.GetVector().GetY();
    float const z = rotation.GetVector().GetZ();
    float const w = rotation.GetScalar();
    SetColumn(0, Vector(1.0f - 2.0f * (y * y + z * z), 2.0f * (x * y + z * w), 2.0f * (x * z - y * w)));
    SetColumn(1, Vector(2.0f * (x * y - z * w), 1.0f - 2.0f * (x * x + z * z), 2.0f * (y * z + x * w)));
    SetColumn(2, Vector(2.0f * (x * z + y * w), 2.0f * (y * z - x * w), 1.0f - 2.0f * (x * x + y * y)));
}

void Matrix::SetRow(unsigned int i, float const * const elements)
{
    for (unsigned int column = 0; column < 4; ++column) {
        m_elements[column * 4 + i] = elements[column];
    }
}

void Matrix::SetRow(unsigned int i, Vector const & elements)
{
    for (unsigned int column = 0; column < 3; ++column) {
        m_elements[column * 4 + i] = elements[column];
    }
}

void Matrix::SetColumn(unsigned int i, float const * const elements)
{
    std::copy_n(elements, 4, &(*this)(i, 0));
}

void Matrix::SetColumn(unsigned int i, Vector const & elements)
{
    std::copy_n(elements.Get(), 3, &(*this)(i, 0));
}

float Matrix::GetTrace() const
{
    return m_elements[0] + m_elements[5] + m_elements[10] + m_elements[15];
}

void Matrix::SetTranslation(Vector const & translation)
{
    SetColumn(3, translation);
    m_elements[15] = 1.0f;
}

Matrix Matrix::GetTranslationMatrix() const
{
    Matrix result;
    result.SetTranslation(GetTranslation());
    return result;
}

Vector Matrix::GetScale() const
{
    return Vector(GetColumn(0).GetMagnitude(), GetColumn(1).GetMagnitude(), GetColumn(2).GetMagnitude());
}

Matrix Matrix::GetScaleMatrix() const
{
    Matrix result;
    for (unsigned int i = 0; i < 3; ++i) {
        result(i, i) = GetColumn(i).GetMagnitude();
    }
    return result;
}

Matrix Matrix::GetRotationMatrix() const
{
    Matrix result;
    for (unsigned int i = 0; i < 3; ++i) {
        result.SetColumn(i, GetColumn(i) / GetColumn(i).GetMagnitude());
    }
    return result;
}

Quaternion Matrix::GetRotation() const
{
    float const * const m = m_elements;
    auto const halfRoot = [](float square) { return 0.5f * std::sqrt(std::max(0.0f, square)); };
    float const w = halfRoot(1.0f + m[0] + m[5] + m[10]);
    float const x = halfRoot(1.0f + m[0] - m[5] - m[10]);
    float const y = halfRoot(1.0f - m[0] + m[5] - m[10]);
    float const z = halfRoot(1.0f - m[0] - m[5] + m[10]);
    return Quaternion(
        Vector(std::copysign(x, m[6] - m[9]), std::copysign(y, m[8] - m[2]), std::copysign(z, m[1] - m[4])), w);
}

Vector Matrix::GetRotated(Vector const & vector) const
{
    return GetColumn(0) * vector.GetX() + GetColumn(1) * vector.GetY() + GetColumn(2) * vector.GetZ();
}

Matrix Matrix::GetRotated(Quaternion const & rotation) const
{
    return *this * Matrix(rotation);
}

Matrix Matrix::GetTranslated(Vector const & translation) const
{
    Matrix result(*this);
    for (unsigned int row = 0; row < 4; ++row) {
        result.m_elements[12 + row] = m_elements[row] * translation.GetX() + m_elements[4 + row] * translation.GetY() +
                                      m_elements[8 + row] * translation.GetZ() + m_elements[12 + row];
    }
    return result;
}

Matrix Matrix::GetScaled(Vector const & factors) const
{
    Matrix result(*this);
    for (unsigned int i = 0; i < 12; ++i) {
        result.m_elements[i] *= factors[i / 4];
    }
    return result;
}

void Matrix::rotate(Quaternion const & rotation)
{
    *this = GetRotated(rotation);
}

Matrix Matrix::GetTransposed() const
{
    Matrix result;
    for (unsigned int i = 0; i < 4; ++i) {
        result.SetRow(i, &Get(i, 0));
    }
    return result;
}

Matrix Matrix::GetInverse() const
{
    Matrix const & m = *this;

    // The 2 by 2 determinants of the first two columns and of the last two, by the pair of rows they take.
    auto const minor = [&m](unsigned int column, unsigned int j, unsigned int k) {
        return m(column, j) * m(column + 1, k) - m(column, k) * m(column + 1, j);
    };
    float const a01 = minor(0, 0, 1);
    float const a02 = minor(0, 0, 2);
    float const a03 = minor(0, 0, 3);
    float const a12 = minor(0, 1, 2);
    float const a13 = minor(0, 1, 3);
    float const a23 = minor(0, 2, 3);
    float const b01 = minor(2, 0, 1);
    float const b02 = minor(2, 0, 2);
    float const b03 = minor(2, 0, 3);
    float const b12 = minor(2, 1, 2);
    float const b13 = minor(2, 1, 3);
    float const b23 = minor(2, 2, 3);

    float const determinant = a01 * b23 - a02 * b13 + a03 * b12 + a12 * b03 - a13 * b02 + a23 * b01;
    float const cofactors[16] = {
        +m(1, 1) * b23 - m(1, 2) * b13 + m(1, 3) * b12, -m(0, 1) * b23 + m(0, 2) * b13 - m(0, 3) * b12,
        +m(3, 1) * a23 - m(3, 2) * a13 + m(3, 3) * a12, -m(2, 1) * a23 + m(2, 2) * a13 - m(2, 3) * a12,
        -m(1, 0) * b23 + m(1, 2) * b03 - m(1, 3) * b02, +m(0, 0) * b23 - m(0, 2) * b03 + m(0, 3) * b02,
        -m(3, 0) * a23 + m(3, 2) * a03 - m(3, 3) * a02, +m(2, 0) * a23 - m(2, 2) * a03 + m(2, 3) * a02,
        +m(1, 0) * b13 - m(1, 1) * b03 + m(1, 3) * b01, -m(0, 0) * b13 + m(0, 1) * b03 - m(0, 3) * b01,
        +m(3, 0) * a13 - m(3, 1) * a03 + m(3, 3) * a01, -m(2, 0) * a13 + m(2, 1) * a03 - m(2, 3) * a01,
        -m(1, 0) * b12 + m(1, 1) * b02 - m(1, 2) * b01, +m(0, 0) * b12 - m(0, 1) * b02 + m(0, 2) * b01,
        -m(3, 0) * a12 + m(3, 1) * a02 - m(3, 2) * a01, +m(2, 0) * a12 - m(2, 1) * a02 + m(2, 2) * a01};
    return Matrix(cofactors) * (1.0f / determinant);
}

Matrix Matrix::operator*(Matrix const & other) const
{
    Matrix result;
    for (unsigned int column = 0; column < 4; ++column) {
        float const * const factors = &other.Get(column, 0);
        for (unsigned int row = 0; row < 4; ++row) {
            result.m_elements[column * 4 + row] = m_elements[row] * factors[0] + m_elements[4 + row] * factors[1] +
                                                  m_elements[8 + row] * factors[2] + m_elements[12 + row] * factors[3];
        }
    }
    return result;
}

Vector Matrix::operator*(Vector const & point) const
{
    float const w = point[0] * m_elements[3] + point[1] * m_elements[7] + point[2] * m_elements[11] + m_elements[15];
    return (GetRotated(point) + GetTranslation()) / w;
}

Matrix Matrix::operator*(float factor) const
{
    Matrix result;
    std::transform(m_elements, m_elements + 16, result.m_elements,
                   [factor](float element) { return element * factor; });
    return result;
}

Matrix Matrix::operator/(float divisor) const
{
    Matrix result;
    std::transform(m_elements, m_elements + 16, result.m_elements,
                   [divisor](float element) { return element / divisor; });
    return result;
}

Matrix Matrix::operator-() const
{
    Matrix result;
    std::transform(m_elements, m_elements + 16, result.m_elements, std::negate<>());
    return result;
}

Matrix Matrix::operator+(Matrix const & other) const
{
    Matrix result;
    std::transform(m_elements, m_elements + 16, other.m_elements, result.m_elements, std::plus<>());
    return result;
}

Matrix Matrix::operator-(Matrix const & other) const
{
    Matrix result;
    std::transform(m_elements, m_elements + 16, other.m_elements, result.m_elements, std::minus<>());
    return result;
}

std::istream & operator>>(std::istream & stream, Matrix & matrix)
{
    float elements[16] = {};
    for (unsigned int i = 0; i < 16; ++i) {
        stream >> eatable(i == 0 ? "(" : ";");
        if (i % 4 == 0) {
            stream >> eatable("(");
        }
        detail::readComponent(stream, elements[i]);
        if (i % 4 == 3) {
            stream >> eatable(")");
        }
    }
    stream >> eatable(")");
    if (!stream.fail()) {
        matrix.Set(elements);
    }
    return stream;
}

std::ostream & operator<<(std::ostream & stream, Matrix const & matrix)
{
    for (unsigned int i = 0; i < 4; ++i) {
        stream << (i == 0 ? "(" : ";") << "(" << matrix.Get(i, 0) << ";" << matrix.Get(i, 1) << ";" << matrix.Get(i, 2)
               << ";" << matrix.Get(i, 3) << ")";
    }
    return stream << ")";
}
} // namespace tesseralis
