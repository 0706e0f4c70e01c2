#pragma once

#include "math/Vector.h"
#include "object/Export.h"

namespace tesseralis {
class Matrix;

/// An oriented plane: the points p with n * p = d, for a normal n of unit length and a distance d from the origin. At
/// first it is the plane z = 0 with its normal along z.
class TESSERALIS_API Plane
{
public:
    Plane() = default;
    /// Normalises the normal and takes the distance as it is.
    Plane(Vector const & normal, float distance) : m_normal(normal.GetNormalized()), m_distance(distance) {}
    /// The plane through a point.
    Plane(Vector const & normal, Vector const & point)
        : m_normal(normal.GetNormalized()), m_distance(m_normal.GetDot(point))
    {
    }
    /// The plane through three points; seen from the side of its normal they turn counter-clockwise.
    Plane(Vector const & a, Vector const & b, Vector const & c) : Plane((b - a).GetCross(c - a), a) {}
    /// The points with a * x + b * y + c * z = d, whose coefficients are brought to a normal of unit length together.
    /// Not finite where a, b and c are zero.
    Plane(float a, float b, float c, float d);
    /// Takes the four coefficients from an array.
    explicit Plane(float const * coefficients)
        : Plane(coefficients[0], coefficients[1], coefficients[2], coefficients[3])
    {
    }

    Vector const & GetNormal() const { return m_normal; }
    float GetDistance() const { return m_distance; }
    /// The distance of a point from the plane, positive on the side of the normal.
    float GetDistance(Vector const & point) const { return m_normal.GetDot(point) - m_distance; }
    /// The point of the plane that is closest to the origin.
    Vector GetCenter() const { return m_normal * m_distance; }
    /// Whether the point lies on the plane or on the side of its normal.
    bool IsInside(Vector const & point) const { return m_normal.GetDot(point) >= m_distance; }
    Vector GetClosestPoint(Vector const & point) const { return point + m_normal * -GetDistance(point); }

    /// The coefficients times the transposed inverse of the matrix. The distance goes with its own sign: a translation
    /// by t lowers it by n * t.
    Plane GetTransformed(Matrix const & transformation) const;
    void transform(Matrix const & transformation) { *this = GetTransformed(transformation); }

    /// The same points, with the sides exchanged.
    Plane operator-() const;

private:
    Vector m_normal = Vector(0.0f, 0.0f, 1.0f);
    float m_distance = 0.0f;
};
} // namespace tesseralis
