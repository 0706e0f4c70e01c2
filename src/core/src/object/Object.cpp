#include "object/Object.h"

#include "object/Guard.h"
#include "object/Tesseralis.h"

namespace tesseralis {
ObservableEvent * ObjectEvent::GetCloned() const
{
    return new ObjectEvent(*this);
}

ObjectRenameEvent::ObjectRenameEvent(std::string const & currentName, std::string const & previousName)
    : m_currentName(currentName), m_previousName(previousName)
{
}

ObservableEvent * ObjectRenameEvent::GetCloned() const
{
    return new ObjectRenameEvent(*this);
}

bool ObjectRenameEvent::IsEqual(ObservableEvent const & event) const
{
    if (!ObjectEvent::IsEqual(event)) {
        return false;
    }
    ObjectRenameEvent const & other = castEvent<ObjectRenameEvent>(event);
    return m_currentName == other.m_currentName && m_previousName == other.m_previousName;
}

Object::Object(unsigned int attributes) : Object(GetTypeName(), attributes) {}

Object::Object(std::string const & name, unsigned int attributes) : Object(static_cast<Object *>(nullptr))
{
    constructObject(name, attributes);
}

Object::Object(Object const & source) : Observable(source), m_attributes(source.m_attributes) {}

Object & Object::operator=(Object const & source)
{
    m_attributes = source.m_attributes;
    return *this;
}

Object::~Object()
{
    destroyObject();
}

std::string Object::GetTypeName()
{
    return "object";
}

Object * Object::createObject(std::string const &, unsigned int)
{
    return nullptr;
}

std::string const & Object::GetObjectName() const
{
    static std::string const s_noName;
    return HasAttribute(ObjectAttribute::Registered) ? Tesseralis::Get().GetObjectName(this) : s_noName;
}

void Object::SetObjectName(std::string const & name)
{
    if (!HasAttribute(ObjectAttribute::Registered)) {
        return;
    }

    beginModification(new ObjectRenameEvent(name, GetObjectName()));
    try {
        Tesseralis::Get().SetObjectName(this, name);
    } catch (...) {
        detail::runGuarded([&] { endModification(); });
        throw;
    }
    endModification();
}

std::string Object::GetObjectTypeName() const
{
    return GetTypeName();
}

void Object::store(ArchiveElement &) {}

void Object::retrieve(ArchiveElement &) {}

bool Object::IsRetrievable(ArchiveElement &) const
{
    return true;
}

void Object::constructObject(std::string const & name, unsigned int attributes)
{
    m_attributes = attributes;
    m_isRegistered = HasAttribute(ObjectAttribute::Registered);
    if (m_isRegistered) {
        Tesseralis::Get().addObject(this, name);
    }
}

void Object::destroyObject()
{
    destroyObservable();
    if (m_isRegistered) {
        Tesseralis::Get().removeObject(this);
        m_isRegistered = false;
    }
}
} // namespace tesseralis
