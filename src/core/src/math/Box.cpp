#include "math/Box.h"

#include "math/Matrix.h"
#include "math/Quaternion.h"
#include "object/eatable.h"

#include <istream>
#include <ostream>

namespace tesseralis {
namespace {
Vector minimumOf(Vector const & a, Vector const & b)
{
    return Vector(std::min(a[0], b[0]), std::min(a[1], b[1]), std::min(a[2], b[2]));
}

Vector maximumOf(Vector const & a, Vector const & b)
{
    return Vector(std::max(a[0], b[0]), std::max(a[1], b[1]), std::max(a[2], b[2]));
}

/// The box around the eight corners, each of them multiplied by the transformation.
template <class Transformation>
Box boundsOf(Box const & box, Transformation const & transformation)
{
    Vector minimum = transformation * box.GetCorner(0);
    Vector maximum = minimum;
    for (unsigned int i = 1; i < 8; ++i) {
        Vector const corner = transformation * box.GetCorner(i);
        minimum = minimumOf(minimum, corner);
        maximum = maximumOf(maximum, corner);
    }
    return Box(minimum, maximum);
}
} // namespace

Vector Box::GetCorner(unsigned int x, unsigned int y, unsigned int z) const
{
    return m_minimum + GetExtent() * Vector(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
}

bool Box::IsInside(Vector const & point) const
{
    auto const isBetween = [&](unsigned int i) { return m_minimum[i] <= point[i] && point[i] <= m_maximum[i]; };
    return isBetween(0) && isBetween(1) && isBetween(2);
}

bool Box::IsEmpty() const
{
    return m_maximum[0] <= m_minimum[0] || m_maximum[1] <= m_minimum[1] || m_maximum[2] <= m_minimum[2];
}

Vector Box::GetMinimum(Matrix const & transformation) const
{
    return boundsOf(*this, transformation).GetMinimum();
}

Vector Box::GetMaximum(Matrix const & transformation) const
{
    return boundsOf(*this, transformation).GetMaximum();
}

Box Box::GetTranslated(Vector const & translation) const
{
    return IsEmpty() ? *this : Box(m_minimum + translation, m_maximum + translation);
}

Box Box::GetRotated(Quaternion const & rotation) const
{
    return IsEmpty() ? *this : boundsOf(*this, rotation);
}

Box Box::GetTransformed(Matrix const & transformation) const
{
    return IsEmpty() ? *this : boundsOf(*this, transformation);
}

Box Box::operator+=(Vector const & point)
{
    Set(minimumOf(m_minimum, point), maximumOf(m_maximum, point));
    return *this;
}

Box const & Box::operator+=(Box const & other)
{
    if (!other.IsEmpty()) {
        Set(minimumOf(minimumOf(m_minimum, other.m_minimum), other.m_maximum),
            maximumOf(maximumOf(m_maximum, other.m_minimum), other.m_maximum));
    }
    return *this;
}

std::istream & operator>>(std::istream & stream, Box & box)
{
    Vector minimum;
    Vector maximum;
    stream >> eatable("(") >> minimum >> eatable(";") >> maximum >> eatable(")");
    if (!stream.fail()) {
        box.Set(minimum, maximum);
    }
    return stream;
}

std::ostream & operator<<(std::ostream & stream, Box const & box)
{
    return stream << "(" << box.GetMinimum() << ";" << box.GetMaximum() << ")";
}
} // namespace tesseralis
