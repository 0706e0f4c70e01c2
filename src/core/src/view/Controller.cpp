#include "view/Controller.h"

namespace tesseralis {
Vector Controller::GetCursorPosition(unsigned int cursor) const
{
    return cursor < m_cursors.size() ? m_cursors[cursor].position : Vector();
}

float Controller::GetCursorHorizontalTilt(unsigned int cursor) const
{
    return cursor < m_cursors.size() ? m_cursors[cursor].horizontalTilt : 0.0f;
}

float Controller::GetCursorVerticalTilt(unsigned int cursor) const
{
    return cursor < m_cursors.size() ? m_cursors[cursor].verticalTilt : 0.0f;
}

bool Controller::GetButtonState(unsigned int button) const
{
    return GetButtonPressure(button) != 0.0f;
}

float Controller::GetButtonPressure(unsigned int button) const
{
    return button < m_buttons.size() ? m_buttons[button] : 0.0f;
}

void Controller::SetCursorPosition(unsigned int cursor, Vector const & position)
{
    if (cursor < m_cursors.size()) {
        m_cursors[cursor].position = position;
    }
}

void Controller::SetCursorHorizontalTilt(unsigned int cursor, float tilt)
{
    if (cursor < m_cursors.size()) {
        m_cursors[cursor].horizontalTilt = tilt;
    }
}

void Controller::SetCursorVerticalTilt(unsigned int cursor, float tilt)
{
    if (cursor < m_cursors.size()) {
        m_cursors[cursor].verticalTilt = tilt;
    }
}

void Controller::SetButtonState(unsigned int button, bool state)
{
    SetButtonPressure(button, state ? 1.0f : 0.0f);
}

void Controller::SetButtonPressure(unsigned int button, float pressure)
{
    if (button < m_buttons.size()) {
        m_buttons[button] = pressure;
    }
}
} // namespace tesseralis
