#pragma once

#include "math/Vector.h"

#include <limits>
#include <vector>

namespace tesseralis {
/// The state of input as one plug-in sees it: 256 cursors and 256 buttons, under the plug-in's own numbers, and which
/// of each was touched last. A cursor that has never moved stands at the largest float in all components. An index of
/// 256 or more reads as zero, and nothing is written there.
class TESSERALIS_API Controller
{
public:
    Vector GetCursorPosition(unsigned int cursor) const;
    float GetCursorHorizontalTilt(unsigned int cursor) const;
    float GetCursorVerticalTilt(unsigned int cursor) const;
    /// Whether there is any pressure.
    bool GetButtonState(unsigned int button) const;
    float GetButtonPressure(unsigned int button) const;

    void SetCursorPosition(unsigned int cursor, Vector const & position);
    void SetCursorHorizontalTilt(unsigned int cursor, float tilt);
    void SetCursorVerticalTilt(unsigned int cursor, float tilt);
    /// Sets the pressure to 1 or 0.
    void SetButtonState(unsigned int button, bool state);
    void SetButtonPressure(unsigned int button, float pressure);

    unsigned int GetActiveCursor() const { return m_activeCursor; }
    unsigned int GetActiveButton() const { return m_activeButton; }
    /// Unchecked: what follows works on the index as above.
    void SetActiveCursor(unsigned int cursor) { m_activeCursor = cursor; }
    void SetActiveButton(unsigned int button) { m_activeButton = button; }

    Vector GetActiveCursorPosition() const { return GetCursorPosition(m_activeCursor); }
    float GetActiveCursorHorizontalTilt() const { return GetCursorHorizontalTilt(m_activeCursor); }
    float GetActiveCursorVerticalTilt() const { return GetCursorVerticalTilt(m_activeCursor); }
    bool GetActiveButtonState() const { return GetButtonState(m_activeButton); }
    float GetActiveButtonPressure() const { return GetButtonPressure(m_activeButton); }

    void SetActiveCursorPosition(Vector const & position) { SetCursorPosition(m_activeCursor, position); }
    void SetActiveCursorHorizontalTilt(float tilt) { SetCursorHorizontalTilt(m_activeCursor, tilt); }
    void SetActiveCursorVerticalTilt(float tilt) { SetCursorVerticalTilt(m_activeCursor, tilt); }
    void SetActiveButtonState(bool state) { SetButtonState(m_activeButton, state); }
    void SetActiveButtonPressure(float pressure) { SetButtonPressure(m_activeButton, pressure); }

private:
    static constexpr unsigned int c_count = 256;
    static constexpr float c_nowhere = std::numeric_limits<float>::max();

    struct Cursor
    {
        Vector position = Vector(c_nowhere, c_nowhere, c_nowhere);
        float horizontalTilt = 0.0f;
        float verticalTilt = 0.0f;
    };

    std::vector<Cursor> m_cursors = std::vector<Cursor>(c_count);
    std::vector<float> m_buttons = std::vector<float>(c_count); // pressures
    unsigned int m_activeCursor = 0;
    unsigned int m_activeButton = 0;
};
} // namespace tesseralis
