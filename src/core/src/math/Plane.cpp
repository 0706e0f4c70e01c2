#include "math/Plane.h"

#include "math/Matrix.h"

namespace tesseralis {
Plane::Plane(float a, float b, float c, float d) : m_normal(a, b, c)
{
    float const magnitude = m_normal.GetMagnitude();
    m_normal /= magnitude;
    m_distance = d / magnitude;
}

Plane Plane::GetTransformed(Matrix const & transformation) const
{
    // Row i of the transposed inverse is column i of the inverse.
    Matrix const inverse = transformation.GetInverse();
    auto const coefficient = [&](unsigned int i) {
        return inverse(i, 0) * m_normal[0] + inverse(i, 1) * m_normal[1] + inverse(i, 2) * m_normal[2] +
               inverse(i, 3) * m_distance;
    };
    return Plane(coefficient(0), coefficient(1), coefficient(2), coefficient(3));
}

Plane Plane::operator-() const
{
    Plane result(*this);
    result.m_normal = -m_normal;
    result.m_distance = -m_distance;
    return result;
}
} // namespace tesseralis
