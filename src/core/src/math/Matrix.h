#pragma once

#include "math/Vector.h"
#include "object/Export.h"

#include <iosfwd>

namespace tesseralis {
class Quaternion;

/// A homogeneous transformation of 4 by 4 floats. Points are column vectors: M * p transforms the point p, and M * N
/// applies N first. The sixteen floats lie column by column, the translation at 12, 13, 14, as OpenGL takes them. Two
/// indices (i, j) name element i * 4 + j: the column first, then the row inside it. No index is checked; comparison is
/// exact.
class TESSERALIS_API Matrix
{
public:
    /// The identity.
    Matrix() = default;
    /// Takes the elements in reading order, row by row.
    Matrix(float const & m00, float const & m01, float const & m02, float const & m03, float const & m10,
           float const & m11, float const & m12, float const & m13, float const & m20, float const & m21,
           float const & m22, float const & m23, float const & m30, float const & m31, float const & m32,
           float const & m33);
    /// Takes the four rows; the last column becomes (0, 0, 0, 1).
    Matrix(Vector const & row0, Vector const & row1, Vector const & row2, Vector const & row3);
    /// Copies sixteen floats in the order in which they lie.
    explicit Matrix(float const * elements) { Set(elements); }
    explicit Matrix(float const (*const columns)[4]);
    /// The rotation by a quaternion, which is taken to be of unit length.
    Matrix(Quaternion const & rotation);

    float const * Get() const { return m_elements; }
    float const & Get(unsigned int i) const { return m_elements[i]; }
    float const & Get(unsigned int i, unsigned int j) const { return m_elements[i * 4 + j]; }
    float const & operator()(unsigned int i, unsigned int j) const { return m_elements[i * 4 + j]; }
    float & operator()(unsigned int i, unsigned int j) { return m_elements[i * 4 + j]; }

    void Set(float const * elements) { std::copy_n(elements, 16, m_elements); }
    void Set(unsigned int i, unsigned int j, float const & value) { m_elements[i * 4 + j] = value; }
    void SetRow(unsigned int i, float const * const elements);
    /// Sets three elements; the one in the last column stays.
    void SetRow(unsigned int i, Vector const & elements);
    void SetColumn(unsigned int i, float const * const elements);
    /// Sets three elements; the one in the last row stays.
    void SetColumn(unsigned int i, Vector const & elements);

    float GetTrace() const;
    Vector GetTranslation() const { return Vector(m_elements + 12); }
    /// Also sets the homogeneous corner to 1.
    void SetTranslation(Vector const & translation);
    /// The identity with the translation of this matrix.
    Matrix GetTranslationMatrix() const;
    /// The lengths of the first three columns, without their last row.
    Vector GetScale() const;
    Matrix GetScaleMatrix() const;
    /// The upper 3 by 3 block with columns of unit length, in an else empty matrix; not finite where a column is zero.
    Matrix GetRotationMatrix() const;
    /// The rotation in the upper 3 by 3 block, which is taken to hold no scale. The scalar part is never negative.
    Quaternion GetRotation() const;

    /// The upper 3 by 3 block times the vector.
    Vector GetRotated(Vector const & vector) const;
    /// This matrix times a rotation, translation or scaling, which thus comes first.
    Matrix GetRotated(Quaternion const & rotation) const;
    Matrix GetTranslated(Vector const & translation) const;
    Matrix GetScaled(Vector const & factors) const;
    void rotate(Quaternion const & rotation);
    void translate(Vector const & translation) { *this = GetTranslated(translation); }
    void scale(Vector const & factors) { *this = GetScaled(factors); }

    Matrix GetTransposed() const;
    void transpose() { *this = GetTransposed(); }
    /// Not finite where the matrix is singular.
    Matrix GetInverse() const;
    void invert() { *this = GetInverse(); }

    bool operator==(Matrix const & other) const = default;

    Matrix operator*(Matrix const & other) const;
    /// The point, divided by its homogeneous coordinate; not finite where that is 0.
    Vector operator*(Vector const & point) const;
    Matrix operator*(float factor) const;
    Matrix operator/(float divisor) const;
    Matrix operator-() const;
    Matrix operator+(Matrix const & other) const;
    Matrix operator-(Matrix const & other) const;

    Matrix const & operator*=(Matrix const & other) { return *this = *this * other; }
    Matrix const & operator*=(float factor) { return *this = *this * factor; }
    Matrix const & operator/=(float divisor) { return *this = *this / divisor; }
    Matrix const & operator+=(Matrix const & other) { return *this = *this + other; }
    Matrix const & operator-=(Matrix const & other) { return *this = *this - other; }

private:
    Vector GetColumn(unsigned int i) const { return Vector(&Get(i, 0)); }

    float m_elements[16] = {1.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f,
                            0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f};
};

/// The text form is `((m0;m1;m2;m3);(m4;...);(m8;...);(m12;...;m15))`: each inner group is a column. Numbers are in the
/// stream's own format. The reader takes white space round each sign, "inf", "nan"; a failed one leaves the matrix.
TESSERALIS_API std::istream & operator>>(std::istream & stream, Matrix & matrix);
TESSERALIS_API std::ostream & operator<<(std::ostream & stream, Matrix const & matrix);
} // namespace tesseralis
