#pragma once

#include "object/Export.h"

#include <algorithm>
#include <iosfwd>

namespace tesseralis {
/// Four bytes: red, green, blue and alpha. Arithmetic works on all four channels and saturates at 0 and 255. Normalised
/// values run from 0 to 1; what lies outside is clamped, what lies between two bytes is cut to the lower one, and what
/// is not a number counts as 0.
class TESSERALIS_API Color
{
public:
    Color(unsigned char r = 0, unsigned char g = 0, unsigned char b = 0, unsigned char a = 255) : m_channels{r, g, b, a}
    {
    }
    /// Copies four bytes.
    explicit Color(unsigned char const * channels) : Color(channels[0], channels[1], channels[2], channels[3]) {}
    /// Clamps each to 0 to 255.
    Color(int r, int g, int b, int a);
    /// Takes normalised values.
    Color(float r, float g, float b, float a) { SetNormalized(r, g, b, a); }

    /// The four bytes; good as long as the colour.
    unsigned char const * Get() const { return m_channels; }
    unsigned char GetRed() const { return m_channels[0]; }
    unsigned char GetGreen() const { return m_channels[1]; }
    unsigned char GetBlue() const { return m_channels[2]; }
    unsigned char GetAlpha() const { return m_channels[3]; }
    float GetNormalizedRed() const { return GetNormalized(0); }
    float GetNormalizedGreen() const { return GetNormalized(1); }
    float GetNormalizedBlue() const { return GetNormalized(2); }
    float GetNormalizedAlpha() const { return GetNormalized(3); }

    void Set(unsigned char r, unsigned char g, unsigned char b, unsigned char a) { *this = Color(r, g, b, a); }
    void SetRed(unsigned char r) { m_channels[0] = r; }
    void SetGreen(unsigned char g) { m_channels[1] = g; }
    void SetBlue(unsigned char b) { m_channels[2] = b; }
    void SetAlpha(unsigned char a) { m_channels[3] = a; }
    void SetNormalized(float r, float g, float b, float a);
    void SetNormalizedRed(float r) { m_channels[0] = toByte(r * 255.0f); }
    void SetNormalizedGreen(float g) { m_channels[1] = toByte(g * 255.0f); }
    void SetNormalizedBlue(float b) { m_channels[2] = toByte(b * 255.0f); }
    void SetNormalizedAlpha(float a) { m_channels[3] = toByte(a * 255.0f); }
    /// Sets an opaque colour from normalised values. The hue is a fraction of the circle, from 0 to below 1; any other
    /// hue gives the grey of the value.
    void SetHSV(float hue, float saturation, float value);

    bool operator==(Color const & other) const = default;

    Color const & operator*=(float factor);
    Color const & operator/=(float divisor);
    Color const & operator+=(Color const & other);
    Color const & operator-=(Color const & other);
    Color operator*(float factor) const { return Color(*this) *= factor; }
    Color operator/(float divisor) const { return Color(*this) /= divisor; }
    Color operator+(Color const & other) const { return Color(*this) += other; }
    Color operator-(Color const & other) const { return Color(*this) -= other; }

private:
    /// Clamps and truncates, with 0 for what is not a number.
    static unsigned char toByte(float value)
    {
        return value > 0.0f ? static_cast<unsigned char>(std::min(value, 255.0f)) : 0;
    }
    float GetNormalized(unsigned int i) const { return static_cast<float>(m_channels[i]) / 255.0f; }

    unsigned char m_channels[4];
};

/// The text form is `(r;g;b;a)`, in decimal numbers from 0 to 255 whatever the stream's format. The reader takes white
/// space round each sign; where it fails, as it does on a number above 255, the colour keeps its value.
TESSERALIS_API std::istream & operator>>(std::istream & stream, Color & color);
TESSERALIS_API std::ostream & operator<<(std::ostream & stream, Color const & color);
} // namespace tesseralis
