#pragma once

#include "object/Observable.h"

#include <string>

namespace tesseralis {
class ArchiveElement;

/// The bits of an object's attribute word.
namespace ObjectAttribute {
constexpr unsigned int Registered = 1;  ///< in the registry from construction to destruction; its name lives there
constexpr unsigned int Destroyable = 2; ///< the registry may delete it
constexpr unsigned int Persistent = 4;  ///< goes into archives, if it has the other two bits as well
constexpr unsigned int All = Registered | Destroyable | Persistent;
} // namespace ObjectAttribute

class TESSERALIS_API ObjectEvent : public ObservableEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// Somebody asked for a new name. The registry may have refused it, since the name was taken.
class TESSERALIS_API ObjectRenameEvent : public ObjectEvent
{
public:
    ObjectRenameEvent(std::string const & currentName, std::string const & previousName);

    std::string const & GetCurrentName() const { return m_currentName; }
    std::string const & GetPreviousName() const { return m_previousName; }

    ObservableEvent * GetCloned() const override;
    bool IsEqual(ObservableEvent const & event) const override;

private:
    std::string m_currentName;
    std::string m_previousName;
};

/// A thing with a type and an attribute word and, if the word says so, a place and a unique name in the registry.
///
/// Objects are built in two steps, so that the registry and its observers see the final dynamic type: a public
/// constructor runs its base class's constructor that takes a pointer, which only sets up members, and then the
/// construct step of its own class, which calls that of its base class first. Destructors call their own destroy step
/// first of all, so that observers of the destruction event see the object whole. With C derived from B:
///
///     C::C(std::string const & name, unsigned int attributes) : B(static_cast<B *>(nullptr)) { constructC(name,
///     attributes); } C::~C() { destroyC(); }
class TESSERALIS_API Object : public Observable
{
public:
    explicit Object(unsigned int attributes = 0);
    Object(std::string const & name, unsigned int attributes);
    /// Copies the attribute word only: a copy isn't registered.
    Object(Object const & source);
    Object & operator=(Object const & source);
    ~Object() override;

    static std::string GetTypeName();
    /// Null: a bare object isn't made through the registry.
    static Object * createObject(std::string const & name, unsigned int attributes);

    /// The full name, which is good until the object is renamed or removed; empty for an object that isn't to be
    /// registered. Throws Exception for a copy of a registered object.
    std::string const & GetObjectName() const;
    /// Renames a registered object. A name that is taken leaves it as it is.
    void SetObjectName(std::string const & name);
    /// Whether all of the bits are set.
    bool HasAttribute(unsigned int attributes) const { return (m_attributes & attributes) == attributes; }

    virtual std::string GetObjectTypeName() const;
    /// Writes the object's state into an element that already has its type and name.
    virtual void store(ArchiveElement & element);
    /// Reads the state back, consuming the element.
    virtual void retrieve(ArchiveElement & element);
    /// Whether what the element needs to be read is there; asked again after others have been read.
    virtual bool IsRetrievable(ArchiveElement & element) const;

protected:
    /// Leaves registering to constructObject().
    explicit Object(Object *) {}
    void constructObject(std::string const & name, unsigned int attributes);
    void destroyObject();

private:
    unsigned int m_attributes = 0;
    bool m_isRegistered = false; // whatever the attributes, which can be copied
};
} // namespace tesseralis
