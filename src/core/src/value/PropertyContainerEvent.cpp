#include "value/PropertyContainerEvent.h"

namespace tesseralis {
ObservableEvent * PropertyContainerEvent::GetCloned() const
{
    return new PropertyContainerEvent(*this);
}

ObservableEvent * PropertyContainerPropertyEvent::GetCloned() const
{
    return new PropertyContainerPropertyEvent(*this);
}

bool PropertyContainerPropertyEvent::IsEqual(ObservableEvent const & event) const
{
    return PropertyContainerEvent::IsEqual(event) && m_name == castEvent<PropertyContainerPropertyEvent>(event).m_name;
}

ObservableEvent * PropertyContainerAdditionEvent::GetCloned() const
{
    return new PropertyContainerAdditionEvent(*this);
}

ObservableEvent * PropertyContainerRemovalEvent::GetCloned() const
{
    return new PropertyContainerRemovalEvent(*this);
}

ObservableEvent * PropertyContainerChangeEvent::GetCloned() const
{
    return new PropertyContainerChangeEvent(*this);
}

PropertyContainerRenameEvent::PropertyContainerRenameEvent(std::string const & currentName,
                                                           std::string const & previousName)
    : m_currentName(currentName), m_previousName(previousName)
{
}

ObservableEvent * PropertyContainerRenameEvent::GetCloned() const
{
    return new PropertyContainerRenameEvent(*this);
}

bool PropertyContainerRenameEvent::IsEqual(ObservableEvent const & event) const
{
    if (!PropertyContainerEvent::IsEqual(event)) {
        return false;
    }
    auto const & other = castEvent<PropertyContainerRenameEvent>(event);
    return m_currentName == other.m_currentName && m_previousName == other.m_previousName;
}
} // namespace tesseralis
