#include "math/Quaternion.h"

#include "math/detail/Component.h"
#include "object/eatable.h"

#include <istream>
#include <limits>
#include <ostream>

namespace tesseralis {
namespace {
/// The cosine of the angle between two directions. Rounding must not take it out of the range of acos().
float cosineBetween(Vector const & from, Vector const & to)
{
    return std::clamp(from.GetNormalized().GetDot(to.GetNormalized()), -1.0f, 1.0f);
}

/// The quotient, or 0 where the divisor is too small for it to be finite.
float divideOrZero(float dividend, float divisor)
{
    bool const overflows =
        std::abs(divisor) < 1.0f && std::abs(divisor) * std::numeric_limits<float>::max() <= std::abs(dividend);
    return overflows ? 0.0f : dividend / divisor;
}

/// sin(x) / x, with its limit where x is so small that it makes no difference.
float sinc(float x)
{
    double const square = static_cast<double>(x) * x;
    return 1.0 + square == 1.0 ? 1.0f : std::sin(x) / x;
}
} // namespace

Quaternion::Quaternion(float angle, Vector const & axis)
    : m_vector(axis.GetNormalized() * std::sin(angle * 0.5f)), m_scalar(std::cos(angle * 0.5f))
{
}

Quaternion::Quaternion(Vector const & from, Vector const & to)
    : Quaternion(std::acos(cosineBetween(from, to)), from.GetNormalized().GetCross(to.GetNormalized()))
{
}

Quaternion::Quaternion(float a, float b, float c)
{
    float const ca = std::cos(a * 0.5f);
    float const sa = std::sin(a * 0.5f);
    float const cb = std::cos(b * 0.5f);
    float const sb = std::sin(b * 0.5f);
    float const cc = std::cos(c * 0.5f);
    float const sc = std::sin(c * 0.5f);
    m_vector.Set(sa * sb * cc + ca * cb * sc, sa * cb * cc + ca * sb * sc, ca * sb * cc - sa * cb * sc);
    m_scalar = ca * cb * cc - sa * sb * sc;
}

Quaternion Quaternion::GetNormalized() const
{
    float const magnitude = GetMagnitude();
    return magnitude > 0.0f ? *this / magnitude : *this;
}

Quaternion Quaternion::GetInverse() const
{
    return Quaternion(-m_vector, m_scalar) / GetDot(*this);
}

Quaternion Quaternion::GetExp() const
{
    float const angle = m_vector.GetMagnitude();
    return Quaternion(m_vector * divideOrZero(std::sin(angle), angle), std::cos(angle));
}

Quaternion Quaternion::GetLog() const
{
    float const angle = std::acos(std::min(m_scalar, 1.0f));
    if (angle == 0.0f) {
        return Quaternion(m_vector, 0.0f);
    }
    return Quaternion(m_vector * divideOrZero(angle, std::sin(angle)), 0.0f);
}

Quaternion Quaternion::operator*(Quaternion const & other) const
{
    return Quaternion(m_vector.GetCross(other.m_vector) + m_vector * other.m_scalar + other.m_vector * m_scalar,
                      m_scalar * other.m_scalar - m_vector.GetDot(other.m_vector));
}

Vector Quaternion::operator*(Vector const & vector) const
{
    Quaternion const rotated = *this * Quaternion(vector) * GetInverse();
    return rotated.m_vector * vector.GetMagnitude();
}

Quaternion slerp(Quaternion const & a, Quaternion const & b, float t)
{
    float const u = 1.0f - t;
    float const angle = 2.0f * std::atan2((a - b).GetMagnitude(), (a + b).GetMagnitude());
    Quaternion const sum = a * (sinc(u * angle) / sinc(angle)) * u + b * (sinc(t * angle) / sinc(angle)) * t;
    return sum.GetNormalized();
}

Quaternion squad(Quaternion const & p, Quaternion const & a, Quaternion const & b, Quaternion const & q, float t)
{
    return slerp(slerp(p, q, t), slerp(a, b, t), (1.0f - t) * 2.0f * t);
}

Quaternion intermediate(Quaternion const & q0, Quaternion const & q1, Quaternion const & q2)
{
    Quaternion const inverse = q1.GetInverse();
    Quaternion const exponent = ((inverse * q0).GetLog() + (inverse * q2).GetLog()) * -0.25f;
    return (q1 * exponent.GetExp()).GetNormalized();
}

Quaternion spline(Quaternion const & q0, Quaternion const & q1, Quaternion const & q2, Quaternion const & q3, float t)
{
    return squad(q1, intermediate(q0, q1, q2), intermediate(q1, q2, q3), q2, t);
}

std::istream & operator>>(std::istream & stream, Quaternion & quaternion)
{
    Vector vector;
    float scalar = 0.0f;
    detail::readComponent(stream >> eatable("(") >> vector >> eatable(";"), scalar) >> eatable(")");
    if (!stream.fail()) {
        quaternion.Set(vector, scalar);
    }
    return stream;
}

std::ostream & operator<<(std::ostream & stream, Quaternion const & quaternion)
{
    return stream << "(" << quaternion.GetVector() << ";" << quaternion.GetScalar() << ")";
}
} // namespace tesseralis
