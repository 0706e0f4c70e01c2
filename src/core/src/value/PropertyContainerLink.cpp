#include "value/PropertyContainerLink.h"

#include "value/PropertyContainer.h"

namespace tesseralis {
bool PropertyContainerLink::HasProperty() const
{
    return m_container->HasProperty(m_propertyName);
}

Variant & PropertyContainerLink::GetProperty() const
{
    return m_container->GetProperty(m_propertyName);
}
} // namespace tesseralis
