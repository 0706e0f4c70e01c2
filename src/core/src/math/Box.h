#pragma once

#include "math/Vector.h"
#include "object/Export.h"

#include <iosfwd>
#include <limits>

namespace tesseralis {
class Matrix;
class Quaternion;

/// An axis-aligned box between two corners, which are kept as given, in whatever order. It is empty at first, with
/// corners such that the first point it is extended by becomes both. Comparison is exact.
class TESSERALIS_API Box
{
public:
    /// The empty box.
    Box() = default;
    Box(Vector const & minimum, Vector const & maximum) : m_minimum(minimum), m_maximum(maximum) {}

    Vector const & GetMinimum() const { return m_minimum; }
    Vector const & GetMaximum() const { return m_maximum; }
    void Set(Vector const & minimum, Vector const & maximum) { *this = Box(minimum, maximum); }
    void SetMinimum(Vector const & minimum) { m_minimum = minimum; }
    void SetMaximum(Vector const & maximum) { m_maximum = maximum; }

    Vector GetCenter() const { return (m_minimum + m_maximum) * 0.5f; }
    Vector GetExtent() const { return m_maximum - m_minimum; }
    /// Half the length of the extent.
    float GetRadius() const { return GetExtent().GetMagnitude() * 0.5f; }
    /// A corner by one choice for each axis: 0 for the minimum, 1 for the maximum.
    Vector GetCorner(unsigned int x, unsigned int y, unsigned int z) const;
    /// A corner by its number, 0 to 7: bit 0 chooses x, bit 1 y, bit 2 z.
    Vector GetCorner(unsigned int i) const { return GetCorner(i & 1, (i >> 1) & 1, (i >> 2) & 1); }
    /// Whether the point lies in the box or on its surface.
    bool IsInside(Vector const & point) const;
    /// Whether the box has no thickness on some axis; true for a single point.
    bool IsEmpty() const;

    /// What surrounds the eight corners after the transformation, even if the box is empty.
    Vector GetMinimum(Matrix const & transformation) const;
    Vector GetMaximum(Matrix const & transformation) const;
    /// The moved box, or the box around the eight transformed corners. An empty box stays as it is.
    Box GetTranslated(Vector const & translation) const;
    /// Corners turn as vectors do under Quaternion::operator*, stretched by their own distance from the origin.
    Box GetRotated(Quaternion const & rotation) const;
    Box GetTransformed(Matrix const & transformation) const;
    void translate(Vector const & translation) { *this = GetTranslated(translation); }
    void rotate(Quaternion const & rotation) { *this = GetRotated(rotation); }
    void transform(Matrix const & transformation) { *this = GetTransformed(transformation); }

    /// Extends the box to hold a point and returns a copy.
    Box operator+=(Vector const & point);
    /// Extends the box to hold another; one that IsEmpty() adds nothing.
    Box const & operator+=(Box const & other);
    Box operator+(Vector const & point) const { return Box(*this) += point; }
    Box operator+(Box const & other) const { return Box(*this) += other; }

    bool operator==(Box const & other) const = default;

private:
    static constexpr float c_limit = std::numeric_limits<float>::max();

    Vector m_minimum = Vector(c_limit, c_limit, c_limit);
    Vector m_maximum = Vector(-c_limit, -c_limit, -c_limit);
};

/// The text form is `((x;y;z);(x;y;z))`, minimum and maximum, with numbers in the stream's own format. The reader takes
/// white space round each sign, and "inf" and "nan"; where it fails the box keeps its value.
TESSERALIS_API std::istream & operator>>(std::istream & stream, Box & box);
TESSERALIS_API std::ostream & operator<<(std::ostream & stream, Box const & box);
} // namespace tesseralis
