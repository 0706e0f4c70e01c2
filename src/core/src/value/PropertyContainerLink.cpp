#include "value/PropertyContainerLink.h"

#include "object/Exception.h"
#include "value/PropertyContainer.h"

namespace tesseralis {
bool PropertyContainerLink::HasProperty() const
{
    return m_container != nullptr && m_container->HasProperty(m_propertyName);
}

Variant & PropertyContainerLink::GetProperty() const
{
    if (m_container == nullptr) {
        throw Exception("An empty link has no property!");
    }
    return m_container->GetProperty(m_propertyName);
}
} // namespace tesseralis
