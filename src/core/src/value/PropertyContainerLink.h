#pragma once

#include "object/Export.h"

#include <string>

namespace tesseralis {
class PropertyContainer;
class Variant;

/// Names a property of a container as the target of a link. It doesn't watch the container, which must outlive its use.
class TESSERALIS_API PropertyContainerLink
{
public:
    /// An empty link.
    PropertyContainerLink() = default;
    PropertyContainerLink(PropertyContainer * container, std::string const & propertyName)
        : m_container(container), m_propertyName(propertyName)
    {
    }

    bool IsValid() const { return m_container != nullptr; }
    PropertyContainer * GetPropertyContainer() const { return m_container; }
    std::string const & GetPropertyName() const { return m_propertyName; }
    bool HasProperty() const;
    /// The property's value; a missing property is created. Throws Exception for an empty link.
    Variant & GetProperty() const;

    bool operator==(PropertyContainerLink const & link) const = default;

private:
    PropertyContainer * m_container = nullptr;
    std::string m_propertyName;
};
} // namespace tesseralis
