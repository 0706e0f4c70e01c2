#include "value/PropertyContainer.h"

#include "object/Exception.h"
#include "object/Logger.h"
#include "value/Variant.h"
#include "value/detail/PropertyContainerProperty.h"

#include <ostream>
#include <utility>

namespace tesseralis {
PropertyContainer::PropertyContainer(unsigned int attributes) : PropertyContainer(GetTypeName(), attributes) {}

PropertyContainer::PropertyContainer(std::string const & name, unsigned int attributes)
    : PropertyContainer(static_cast<PropertyContainer *>(nullptr))
{
    constructPropertyContainer(name, attributes);
}

PropertyContainer::PropertyContainer(PropertyContainer *) : Object(static_cast<Object *>(nullptr)) {}

PropertyContainer::~PropertyContainer()
{
    destroyPropertyContainer();
}

void PropertyContainer::constructPropertyContainer(std::string const & name, unsigned int attributes)
{
    constructObject(name, attributes);
    m_observer.connect(this, &PropertyContainer::propertyModified);
}

void PropertyContainer::destroyPropertyContainer()
{
    destroyObject();
    // Before the values, which would fire them once more as they go.
    for (auto const & property : m_properties) {
        property->SetExpression(PropertyContainerExpression());
    }
    clearProperties();
}

std::string PropertyContainer::GetTypeName()
{
    return "propertycontainer";
}

Object * PropertyContainer::createObject(std::string const &, unsigned int)
{
    return nullptr;
}

std::string PropertyContainer::GetObjectTypeName() const
{
    return GetTypeName();
}

PropertyContainer * PropertyContainer::GetPropertyContainer(Variant const * value)
{
    return PropertyContainerProperty::GetPropertyContainer(value);
}

unsigned int PropertyContainer::GetPropertyCount() const
{
    MutexLocker locker(m_mutex);
    return static_cast<unsigned int>(m_properties.size());
}

bool PropertyContainer::HasProperty(std::string const & name) const
{
    return GetPropertyByName(name) != nullptr;
}

bool PropertyContainer::HasProperty(Variant const * value) const
{
    return GetPropertyByValue(value) != nullptr;
}

std::string PropertyContainer::GetPropertyName(Variant const * value) const
{
    MutexLocker locker(m_mutex);
    PropertyContainerProperty const * const property = GetPropertyByValue(value);
    return property == nullptr ? std::string() : property->GetName();
}

Variant const & PropertyContainer::GetProperty(std::string const & name) const
{
    MutexLocker locker(m_mutex);
    PropertyContainerProperty const * const property = GetPropertyByName(name);
    if (property == nullptr) {
        throw Exception("A property named '%s' does not exist!", name.c_str());
    }
    return property->GetValue();
}

Variant const & PropertyContainer::GetProperty(std::string const & name, Variant const & fallback) const
{
    MutexLocker locker(m_mutex);
    PropertyContainerProperty const * const property = GetPropertyByName(name);
    return property == nullptr ? fallback : property->GetValue();
}

Variant & PropertyContainer::GetProperty(std::string const & name)
{
    MutexLocker locker(m_mutex);
    if (!HasProperty(name)) {
        addProperty(name, Variant());
    }
    return const_cast<Variant &>(std::as_const(*this).GetProperty(name));
}

void PropertyContainer::addProperty(std::string const & givenName, Variant const & givenValue)
{
    MutexLocker locker(m_mutex);
    // Copies, since both may belong to the property that is removed.
    std::string const name = givenName;
    auto property = std::make_unique<PropertyContainerProperty>(*this, name, givenValue);
    if (HasProperty(name)) {
        removeProperty(name);
    }
    if (PropertyContainerProperty * const again = GetPropertyByName(name)) {
        again->GetValue() = property->GetValue(); // made meanwhile by somebody who heard of the removal
        return;
    }

    beginModification(new PropertyContainerAdditionEvent(name));
    auto const position = m_properties.insert(m_properties.end(), std::move(property));
    PropertyContainerProperty & added = **position;
    added.GetValue().addObserver(&m_observer);
    m_byName.emplace(added.GetName(), position);
    m_byValue.emplace(&added.GetValue(), position);
    ++m_layout;
    endModification();
}

void PropertyContainer::removeProperty(std::string const & givenName)
{
    MutexLocker locker(m_mutex);
    std::string const name = givenName; // it may belong to the property
    beginModification(new PropertyContainerRemovalEvent(name));
    endModification();
    auto const found = m_byName.find(name);
    if (found == m_byName.end()) {
        return;
    }

    PropertyList::iterator const position = found->second;
    PropertyContainerProperty & property = **position;
    property.GetValue().removeObserver(&m_observer);
    m_byName.erase(found);
    m_byValue.erase(&property.GetValue());
    m_properties.erase(position);
    ++m_layout;
}

void PropertyContainer::renameProperty(std::string const & currentName, std::string const & previousName)
{
    MutexLocker locker(m_mutex);
    auto const found = m_byName.find(previousName);
    if (found == m_byName.end() || m_byName.contains(currentName)) {
        return;
    }

    beginModification(new PropertyContainerRenameEvent(currentName, previousName));
    PropertyList::iterator const position = found->second;
    m_byName.erase(found);
    (*position)->SetName(currentName);
    m_byName.emplace((*position)->GetName(), position);
    ++m_layout;
    endModification();
}

void PropertyContainer::clearProperties()
{
    MutexLocker locker(m_mutex);
    while (!m_properties.empty()) {
        removeProperty(m_properties.front()->GetName());
    }
}

void PropertyContainer::copyProperties(PropertyContainer const & other)
{
    MutexLocker locker(m_mutex);
    if (this == &other) {
        return;
    }
    MutexLocker otherLocker(other.m_mutex);
    for (auto position = other.m_properties.rbegin(); position != other.m_properties.rend(); ++position) {
        GetProperty((*position)->GetName()) = (*position)->GetValue();
    }
}

bool PropertyContainer::HasPropertyFlags(std::string const & name, unsigned int mask) const
{
    MutexLocker locker(m_mutex);
    PropertyContainerProperty const * const property = GetPropertyByName(name);
    return property != nullptr && property->HasFlags(mask);
}

unsigned int PropertyContainer::GetPropertyFlags(std::string const & name) const
{
    MutexLocker locker(m_mutex);
    PropertyContainerProperty const * const property = GetPropertyByName(name);
    return property == nullptr ? 0 : property->GetFlags();
}

void PropertyContainer::SetPropertyFlags(std::string const & name, unsigned int mask, bool on)
{
    MutexLocker locker(m_mutex);
    if (PropertyContainerProperty * const property = GetPropertyByName(name)) {
        beginModification(new PropertyContainerChangeEvent(name));
        property->SetFlags(mask, on);
        endModification();
    }
}

bool PropertyContainer::HasPropertyDescription(std::string const & name) const
{
    return !GetPropertyDescription(name).empty();
}

std::string const & PropertyContainer::GetPropertyDescription(std::string const & name) const
{
    static std::string const s_noDescription;
    MutexLocker locker(m_mutex);
    PropertyContainerProperty const * const property = GetPropertyByName(name);
    return property == nullptr ? s_noDescription : property->GetDescription();
}

void PropertyContainer::SetPropertyDescription(std::string const & name, std::string const & description)
{
    MutexLocker locker(m_mutex);
    if (PropertyContainerProperty * const property = GetPropertyByName(name)) {
        beginModification(new PropertyContainerChangeEvent(name));
        property->SetDescription(description);
        endModification();
    }
}

bool PropertyContainer::HasPropertyLink(std::string const & name) const
{
    MutexLocker locker(m_mutex);
    PropertyContainerProperty const * const property = GetPropertyByName(name);
    return property != nullptr && property->HasLink();
}

PropertyContainerLink PropertyContainer::GetPropertyLink(std::string const & name) const
{
    MutexLocker locker(m_mutex);
    PropertyContainerProperty const * const property = GetPropertyByName(name);
    return property == nullptr ? PropertyContainerLink() : property->GetLink();
}

void PropertyContainer::SetPropertyLink(std::string const & name, PropertyContainerLink const & link)
{
    MutexLocker locker(m_mutex);
    if (!link.IsValid()) {
        removeLink(name);
        return;
    }
    if (HasPropertyLink(name)) {
        removeLink(name);
    }
    if (!joinValues(name, link)) {
        return;
    }

    PropertyContainerProperty * const property = GetPropertyByName(name);
    if (property == nullptr) {
        return;
    }
    beginModification(new PropertyContainerChangeEvent(name));
    if (auto * const target = link.GetPropertyContainer()->GetPropertyByName(link.GetPropertyName())) {
        property->join(*target);
    }
    endModification();
}

void PropertyContainer::removeLink(std::string const & name)
{
    if (PropertyContainerProperty * const property = GetPropertyByName(name)) {
        beginModification(new PropertyContainerChangeEvent(name));
        property->unlink();
        endModification();
    }
}

bool PropertyContainer::joinValues(std::string const & name, PropertyContainerLink const & link)
{
    std::string message = "Unknown error.";
    try {
        bool const isTargetsValue = link.HasProperty() || !HasProperty(name);
        // Both are there before either is used, as far as those who hear of a new one leave it.
        GetProperty(name);
        link.GetProperty();
        if (isTargetsValue) {
            GetProperty(name).assign(link.GetProperty());
        } else {
            link.GetProperty().assign(GetProperty(name));
        }
        return true;
    } catch (Exception const & exception) {
        message = exception.GetMessage();
    } catch (...) {
    }

    std::string const & ownName = GetObjectName();
    Logger::Get().error() << "[" << ownName << "] Unable to link '" << ownName << "." << name << "' to '"
                          << link.GetPropertyContainer()->GetObjectName() << "." << link.GetPropertyName() << ": "
                          << std::endl
                          << message << std::endl
                          << std::endl;
    return false;
}

bool PropertyContainer::HasPropertyExpression(std::string const & name) const
{
    MutexLocker locker(m_mutex);
    PropertyContainerProperty const * const property = GetPropertyByName(name);
    return property != nullptr && property->HasExpression();
}

PropertyContainerExpression PropertyContainer::GetPropertyExpression(std::string const & name) const
{
    MutexLocker locker(m_mutex);
    PropertyContainerProperty const * const property = GetPropertyByName(name);
    return property == nullptr ? PropertyContainerExpression() : property->GetExpression();
}

void PropertyContainer::SetPropertyExpression(std::string const & name, PropertyContainerExpression const & expression)
{
    MutexLocker locker(m_mutex);
    if (PropertyContainerProperty * const property = GetPropertyByName(name)) {
        beginModification(new PropertyContainerChangeEvent(name));
        property->SetExpression(expression);
        endModification();
    }
}

PropertyContainerProperty * PropertyContainer::GetPropertyByName(std::string const & name)
{
    return const_cast<PropertyContainerProperty *>(std::as_const(*this).GetPropertyByName(name));
}

PropertyContainerProperty const * PropertyContainer::GetPropertyByName(std::string const & name) const
{
    MutexLocker locker(m_mutex);
    auto const found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : found->second->get();
}

PropertyContainerProperty * PropertyContainer::GetPropertyByValue(Variant const * value)
{
    return const_cast<PropertyContainerProperty *>(std::as_const(*this).GetPropertyByValue(value));
}

PropertyContainerProperty const * PropertyContainer::GetPropertyByValue(Variant const * value) const
{
    MutexLocker locker(m_mutex);
    auto const found = m_byValue.find(value);
    return found == m_byValue.end() ? nullptr : found->second->get();
}

void PropertyContainer::propertyModified(Variant const & value, ObservableEvent const &)
{
    MutexLocker locker(m_mutex);
    PropertyContainerProperty * const property = GetPropertyByValue(&value);
    if (property == nullptr) {
        return;
    }

    beginModification(new PropertyContainerChangeEvent(property->GetName()));
    endModification();
    // Looked up anew, since those who heard of the change may have removed it.
    if (PropertyContainerProperty * const remaining = GetPropertyByValue(&value)) {
        remaining->spread();
    }
}

PropertyContainerIterator::PropertyContainerIterator(PropertyContainer & container)
    : m_position(container.m_properties.begin()), m_end(container.m_properties.end())
{
}

PropertyContainerIterator & PropertyContainerIterator::operator++()
{
    ++m_position;
    return *this;
}

Variant & PropertyContainerIterator::operator*() const
{
    return (*m_position)->GetValue();
}

Variant * PropertyContainerIterator::operator->() const
{
    return &(*m_position)->GetValue();
}

std::string const & PropertyContainerIterator::GetName() const
{
    return (*m_position)->GetName();
}

unsigned int PropertyContainerIterator::GetFlags() const
{
    return (*m_position)->GetFlags();
}

bool PropertyContainerIterator::HasFlags(unsigned int mask) const
{
    return (*m_position)->HasFlags(mask);
}

bool PropertyContainerIterator::HasDescription() const
{
    return !GetDescription().empty();
}

std::string const & PropertyContainerIterator::GetDescription() const
{
    return (*m_position)->GetDescription();
}

bool PropertyContainerIterator::HasLink() const
{
    return (*m_position)->HasLink();
}

PropertyContainerLink PropertyContainerIterator::GetLink() const
{
    return (*m_position)->GetLink();
}

bool PropertyContainerIterator::HasExpression() const
{
    return (*m_position)->HasExpression();
}

PropertyContainerExpression PropertyContainerIterator::GetExpression() const
{
    return (*m_position)->GetExpression();
}
} // namespace tesseralis
