#include "math/Color.h"

#include "object/eatable.h"

#include <istream>
#include <ostream>
#include <string>

namespace tesseralis {
namespace {
unsigned char clampToByte(int value)
{
    return static_cast<unsigned char>(std::clamp(value, 0, 255));
}
} // namespace

Color::Color(int r, int g, int b, int a) : Color(clampToByte(r), clampToByte(g), clampToByte(b), clampToByte(a)) {}

void Color::SetNormalized(float r, float g, float b, float a)
{
    SetNormalizedRed(r);
    SetNormalizedGreen(g);
    SetNormalizedBlue(b);
    SetNormalizedAlpha(a);
}

void Color::SetHSV(float hue, float saturation, float value)
{
    float const h = hue * 6.0f;
    if (!(saturation > 0.0f) || !(h >= 0.0f && h < 6.0f)) {
        SetNormalized(value, value, value, 1.0f);
        return;
    }

    int const i = static_cast<int>(h);
    float const f = h - static_cast<float>(i);
    float const p = value * (1.0f - saturation);
    float const q = value * (1.0f - f * saturation);
    float const t = value * (1.0f - saturation * (1.0f - f));
    float const sectors[6][3] = {{value, t, p}, {q, value, p}, {p, value, t},
                                 {p, q, value}, {t, p, value}, {value, p, q}};
    SetNormalized(sectors[i][0], sectors[i][1], sectors[i][2], 1.0f);
}

Color const & Color::operator*=(float factor)
{
    for (unsigned char & channel : m_channels) {
        channel = toByte(static_cast<float>(channel) * factor);
    }
    return *this;
}

Color const & Color::operator/=(float divisor)
{
    for (unsigned char & channel : m_channels) {
        channel = toByte(static_cast<float>(channel) / divisor);
    }
    return *this;
}

Color const & Color::operator+=(Color const & other)
{
    for (unsigned int i = 0; i < 4; ++i) {
        m_channels[i] = clampToByte(m_channels[i] + other.m_channels[i]);
    }
    return *this;
}

Color const & Color::operator-=(Color const & other)
{
    for (unsigned int i = 0; i < 4; ++i) {
        m_channels[i] = clampToByte(m_channels[i] - other.m_channels[i]);
    }
    return *this;
}

std::istream & operator>>(std::istream & stream, Color & color)
{
    int r = 0;
    int g = 0;
    int b = 0;
    int a = 0;
    std::ios_base::fmtflags const flags = stream.flags();
    stream >> std::dec >> eatable("(") >> r >> eatable(";") >> g >> eatable(";") >> b >> eatable(";") >> a >>
        eatable(")");
    stream.flags(flags);

    if (std::min({r, g, b, a}) < 0 || std::max({r, g, b, a}) > 255) {
        stream.setstate(std::ios_base::failbit);
    } else if (!stream.fail()) {
        color = Color(r, g, b, a);
    }
    return stream;
}

std::ostream & operator<<(std::ostream & stream, Color const & color)
{
    return stream << "(" << std::to_string(color.GetRed()) << ";" << std::to_string(color.GetGreen()) << ";"
                  << std::to_string(color.GetBlue()) << ";" << std::to_string(color.GetAlpha()) << ")";
}
} // namespace tesseralis
