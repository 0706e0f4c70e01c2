#pragma once

#include "math/Vector.h"
#include "object/Export.h"

#include <iosfwd>

namespace tesseralis {
/// A vector part and a scalar. Quaternions of unit length are rotations; angles are in radians. All four parts are zero
/// at first, which is not the identity: that is Quaternion(Vector(0, 0, 0), 1). Comparison is exact.
class TESSERALIS_API Quaternion
{
public:
    Quaternion() = default;
    Quaternion(Vector const & vector, float scalar) : m_vector(vector), m_scalar(scalar) {}
    /// The pure quaternion: its scalar is 0.
    Quaternion(Vector const & vector) : m_vector(vector) {}
    /// The rotation by an angle about an axis of any length. A zero axis gives a zero vector part.
    Quaternion(float angle, Vector const & axis);
    /// The rotation that turns one direction into the other; the identity where they are equal. Opposite directions
    /// name no axis and give a zero vector part.
    Quaternion(Vector const & from, Vector const & to);
    /// The rotation by c about the x axis, then by b about the z axis, then by a about the y axis.
    Quaternion(float a, float b, float c);

    Vector const & GetVector() const { return m_vector; }
    float const & GetScalar() const { return m_scalar; }
    void Set(Vector const & vector, float scalar) { *this = Quaternion(vector, scalar); }
    void SetVector(Vector const & vector) { m_vector = vector; }
    void SetScalar(float scalar) { m_scalar = scalar; }

    float GetMagnitude() const { return std::sqrt(GetDot(*this)); }
    float GetDot(Quaternion const & other) const { return m_vector.GetDot(other.m_vector) + m_scalar * other.m_scalar; }
    /// A zero quaternion stays as it is.
    Quaternion GetNormalized() const;
    void normalize() { *this = GetNormalized(); }
    /// The multiplicative inverse; not finite for a zero quaternion.
    Quaternion GetInverse() const;
    void invert() { *this = GetInverse(); }
    /// The exponential of the vector part.
    Quaternion GetExp() const;
    void exp() { *this = GetExp(); }
    /// The logarithm of a unit quaternion; a scalar above 1 counts as 1.
    Quaternion GetLog() const;
    void log() { *this = GetLog(); }

    bool operator==(Quaternion const & other) const = default;

    Quaternion operator+(Quaternion const & other) const
    {
        return Quaternion(m_vector + other.m_vector, m_scalar + other.m_scalar);
    }
    Quaternion operator-(Quaternion const & other) const
    {
        return Quaternion(m_vector - other.m_vector, m_scalar - other.m_scalar);
    }
    Quaternion operator*(float factor) const { return Quaternion(m_vector * factor, m_scalar * factor); }
    Quaternion operator/(float divisor) const { return Quaternion(m_vector / divisor, m_scalar / divisor); }
    /// The Hamilton product.
    Quaternion operator*(Quaternion const & other) const;
    /// The vector rotated, and stretched by its own length: the result of a unit quaternion is as long as the square of
    /// the vector's length.
    Vector operator*(Vector const & vector) const;

    Quaternion const & operator+=(Quaternion const & other) { return *this = *this + other; }
    Quaternion const & operator-=(Quaternion const & other) { return *this = *this - other; }
    Quaternion const & operator*=(Quaternion const & other) { return *this = *this * other; }
    Quaternion const & operator*=(float const & factor) { return *this = *this * factor; }
    Quaternion const & operator/=(float const & divisor) { return *this = *this / divisor; }

private:
    Vector m_vector;
    float m_scalar = 0.0f;
};

/// From a at 0 to b at 1 along the great circle, without turning either round to take the shorter way. The result is of
/// unit length.
TESSERALIS_API Quaternion slerp(Quaternion const & a, Quaternion const & b, float t);
/// From p at 0 to q at 1, drawn towards a and b in between.
TESSERALIS_API Quaternion squad(Quaternion const & p, Quaternion const & a, Quaternion const & b, Quaternion const & q,
                                float t);
/// The inner point of squad() at q1 that makes segments through q0, q1 and q2 join smoothly.
TESSERALIS_API Quaternion intermediate(Quaternion const & q0, Quaternion const & q1, Quaternion const & q2);
/// From q1 at 0 to q2 at 1, as the middle segment of a smooth curve through all four.
TESSERALIS_API Quaternion spline(Quaternion const & q0, Quaternion const & q1, Quaternion const & q2,
                                 Quaternion const & q3, float t);

/// The text form is `((x;y;z);w)`, its numbers in the stream's own format. The reader takes white space round each
/// sign, and "inf" and "nan"; where it fails the quaternion keeps its value.
TESSERALIS_API std::istream & operator>>(std::istream & stream, Quaternion & quaternion);
TESSERALIS_API std::ostream & operator<<(std::ostream & stream, Quaternion const & quaternion);
} // namespace tesseralis
