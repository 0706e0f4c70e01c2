#pragma once

#include "object/Export.h"

#include <algorithm>
#include <cmath>
#include <iosfwd>

namespace tesseralis {
/// Three floats: a position, a direction or a size. Operators with another vector work component by component, the
/// product and the quotient too; comparison is exact. Nothing is checked, neither an index nor a divisor.
class TESSERALIS_API Vector
{
public:
    Vector() = default;
    Vector(float x, float y, float z) : m_elements{x, y, z} {}
    /// Copies three floats.
    explicit Vector(float const * const elements) : Vector(elements[0], elements[1], elements[2]) {}

    /// The three floats, in the order x, y, z; good as long as the vector.
    float const * Get() const { return m_elements; }
    float Get(unsigned int i) const { return m_elements[i]; }
    float GetX() const { return m_elements[0]; }
    float GetY() const { return m_elements[1]; }
    float GetZ() const { return m_elements[2]; }
    float operator[](unsigned int i) const { return m_elements[i]; }
    float & operator[](unsigned int i) { return m_elements[i]; }

    void Set(float x, float y, float z) { *this = Vector(x, y, z); }
    void Set(unsigned int i, float value) { m_elements[i] = value; }
    void SetX(float x) { m_elements[0] = x; }
    void SetY(float y) { m_elements[1] = y; }
    void SetZ(float z) { m_elements[2] = z; }

    float GetMagnitude() const { return std::sqrt(GetSquaredMagnitude()); }
    float GetSquaredMagnitude() const { return GetDot(*this); }
    float GetDot(Vector const & other) const { return GetX() * other[0] + GetY() * other[1] + GetZ() * other[2]; }
    /// This vector times the other, by the right-hand rule.
    Vector GetCross(Vector const & other) const
    {
        return Vector(GetY() * other[2] - other[1] * GetZ(), other[0] * GetZ() - GetX() * other[2],
                      other[1] * GetX() - GetY() * other[0]);
    }
    /// The smallest component.
    float GetMinimum() const { return std::min({GetX(), GetY(), GetZ()}); }
    /// The largest component.
    float GetMaximum() const { return std::max({GetX(), GetY(), GetZ()}); }

    /// A zero vector stays as it is.
    Vector GetNormalized() const
    {
        float const magnitude = GetMagnitude();
        return magnitude > 0.0f ? *this / magnitude : *this;
    }
    void normalize() { *this = GetNormalized(); }
    /// The reciprocal of each component, 0 where the component is 0.
    Vector GetInverse() const
    {
        auto const invertComponent = [](float value) { return value == 0.0f ? 0.0f : 1.0f / value; };
        return Vector(invertComponent(GetX()), invertComponent(GetY()), invertComponent(GetZ()));
    }
    void invert() { *this = GetInverse(); }

    bool operator==(Vector const & other) const = default;

    Vector operator+(Vector const & other) const
    {
        return Vector(GetX() + other[0], GetY() + other[1], GetZ() + other[2]);
    }
    Vector operator-(Vector const & other) const
    {
        return Vector(GetX() - other[0], GetY() - other[1], GetZ() - other[2]);
    }
    Vector operator*(Vector const & other) const
    {
        return Vector(GetX() * other[0], GetY() * other[1], GetZ() * other[2]);
    }
    Vector operator/(Vector const & other) const
    {
        return Vector(GetX() / other[0], GetY() / other[1], GetZ() / other[2]);
    }
    Vector operator*(float const & factor) const { return Vector(GetX() * factor, GetY() * factor, GetZ() * factor); }
    Vector operator/(float const & divisor) const
    {
        return Vector(GetX() / divisor, GetY() / divisor, GetZ() / divisor);
    }
    Vector operator-() const { return Vector(-GetX(), -GetY(), -GetZ()); }

    // The result is complete before it is assigned, so that the argument may be this vector or one of its components.
    Vector const & operator+=(Vector const & other) { return *this = *this + other; }
    Vector const & operator-=(Vector const & other) { return *this = *this - other; }
    Vector const & operator*=(Vector const & other) { return *this = *this * other; }
    Vector const & operator/=(Vector const & other) { return *this = *this / other; }
    Vector const & operator*=(float const & factor) { return *this = *this * factor; }
    Vector const & operator/=(float const & divisor) { return *this = *this / divisor; }

private:
    float m_elements[3] = {0.0f, 0.0f, 0.0f};
};

/// The text form is `(x;y;z)`, its numbers in the stream's own format. The reader takes white space round each sign
/// and the names of infinity and not-a-number, "inf" and "nan"; where it fails the vector keeps its value.
TESSERALIS_API std::istream & operator>>(std::istream & stream, Vector & vector);
TESSERALIS_API std::ostream & operator<<(std::ostream & stream, Vector const & vector);
} // namespace tesseralis
