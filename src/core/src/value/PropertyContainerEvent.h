#pragma once

#include "object/Observable.h"

#include <string>

namespace tesseralis {
/// The base of the events of property containers.
class TESSERALIS_API PropertyContainerEvent : public ObservableEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// What the events about one property have in common: its name.
class TESSERALIS_API PropertyContainerPropertyEvent : public PropertyContainerEvent
{
public:
    explicit PropertyContainerPropertyEvent(std::string const & name) : m_name(name) {}

    std::string const & GetName() const { return m_name; }

    ObservableEvent * GetCloned() const override;
    bool IsEqual(ObservableEvent const & event) const override;

private:
    std::string m_name;
};

class TESSERALIS_API PropertyContainerAdditionEvent : public PropertyContainerPropertyEvent
{
public:
    using PropertyContainerPropertyEvent::PropertyContainerPropertyEvent;
    ObservableEvent * GetCloned() const override;
};

/// A property is about to go; its value can still be read.
class TESSERALIS_API PropertyContainerRemovalEvent : public PropertyContainerPropertyEvent
{
public:
    using PropertyContainerPropertyEvent::PropertyContainerPropertyEvent;
    ObservableEvent * GetCloned() const override;
};

/// The value, flags, description, link or expression of a property has changed.
class TESSERALIS_API PropertyContainerChangeEvent : public PropertyContainerPropertyEvent
{
public:
    using PropertyContainerPropertyEvent::PropertyContainerPropertyEvent;
    ObservableEvent * GetCloned() const override;
};

class TESSERALIS_API PropertyContainerRenameEvent : public PropertyContainerEvent
{
public:
    PropertyContainerRenameEvent(std::string const & currentName, std::string const & previousName);

    std::string const & GetCurrentName() const { return m_currentName; }
    std::string const & GetPreviousName() const { return m_previousName; }

    ObservableEvent * GetCloned() const override;
    bool IsEqual(ObservableEvent const & event) const override;

private:
    std::string m_currentName;
    std::string m_previousName;
};
} // namespace tesseralis
