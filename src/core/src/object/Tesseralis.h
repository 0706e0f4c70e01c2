#pragma once

#include "object/Object.h"
#include "object/Observable.h"
#include "object/Observer.h"

#include <list>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tesseralis {
class Dispatcher;
class Version;

/// The base of the registry's events.
class TESSERALIS_API TesseralisEvent : public ObservableEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// What the events about one object have in common: the object and its full name.
class TESSERALIS_API TesseralisObjectEvent : public TesseralisEvent
{
public:
    TesseralisObjectEvent(Object * object, std::string const & name) : m_object(object), m_name(name) {}

    Object const * GetObject() const { return m_object; }
    std::string const & GetName() const { return m_name; }

    ObservableEvent * GetCloned() const override;
    bool IsEqual(ObservableEvent const & event) const override;

private:
    Object * m_object;
    std::string m_name;
};

/// An object has been registered.
class TESSERALIS_API TesseralisAdditionEvent : public TesseralisObjectEvent
{
public:
    using TesseralisObjectEvent::TesseralisObjectEvent;
    ObservableEvent * GetCloned() const override;
};

/// An object is about to leave the registry; it can still be looked up.
class TESSERALIS_API TesseralisRemovalEvent : public TesseralisObjectEvent
{
public:
    using TesseralisObjectEvent::TesseralisObjectEvent;
    ObservableEvent * GetCloned() const override;
};

/// An object has sent an event of its own.
class TESSERALIS_API TesseralisChangeEvent : public TesseralisObjectEvent
{
public:
    using TesseralisObjectEvent::TesseralisObjectEvent;
    ObservableEvent * GetCloned() const override;
};

/// An object has changed its place in the order.
class TESSERALIS_API TesseralisMoveEvent : public TesseralisObjectEvent
{
public:
    using TesseralisObjectEvent::TesseralisObjectEvent;
    ObservableEvent * GetCloned() const override;
};

class TESSERALIS_API TesseralisRenameEvent : public TesseralisEvent
{
public:
    TesseralisRenameEvent(Object * object, std::string const & currentName, std::string const & previousName);

    Object const * GetObject() const { return m_object; }
    std::string const & GetCurrentName() const { return m_currentName; }
    std::string const & GetPreviousName() const { return m_previousName; }

    ObservableEvent * GetCloned() const override;
    bool IsEqual(ObservableEvent const & event) const override;

private:
    Object * m_object;
    std::string m_currentName;
    std::string m_previousName;
};

/// The process-wide registry: object types by name, all registered objects in an order that starts as that of their
/// addition, each with a unique name, and the files they refer to. It watches every object and announces each of their
/// changes as an event of its own.
///
/// A name space is a text put in front of names, without any separator: createObject(), GetObject(), HasObject() and
/// destroyObject() take names without it, all that is handed out are full names. Constructors take full names.
///
/// One recursive lock guards everything and is held while the registry's events are delivered. It comes before the
/// locks of the objects.
class TESSERALIS_API Tesseralis : public Observable, public Observer
{
public:
    using Factory = Object * (*)(std::string const &, unsigned int);

    Tesseralis(Tesseralis const &) = delete;
    Tesseralis & operator=(Tesseralis const &) = delete;

    /// The one registry, made at the first call and never deleted.
    static Tesseralis & Get();
    /// The version of the library.
    Version GetVersion() const;

    /// Lets createObject() make objects of a class, by its GetTypeName() and createObject().
    template <class T>
    void registerObjectType()
    {
        registerObjectType(T::GetTypeName(), &T::createObject);
    }
    /// The same with a factory, which takes a name and an attribute word; it replaces a former one.
    void registerObjectType(std::string const & type, Factory factory);
    bool HasObjectType(std::string const & type) const;

    /// A new object named after its type; null if the type is unknown or makes no objects. It belongs to the registry
    /// if its attributes say that it is destroyable, else to the caller.
    Object * createObject(std::string const & type, unsigned int attributes);
    Object * createObject(std::string const & type, std::string const & name, unsigned int attributes);
    /// Deletes an object that is registered and destroyable; others stay.
    void destroyObject(std::string const & name);
    void destroyObject(Object * object);
    /// Deletes all objects that are registered and destroyable, newest first.
    void clearObjects();

    /// The object of that name; null if there is none.
    Object * GetObject(std::string const & name) const;
    /// The same, and null unless its type is the given one.
    Object * GetObject(std::string const & type, std::string const & name) const;
    bool HasObject(Object const * object) const;
    bool HasObject(std::string const & name) const;
    bool HasObject(std::string const & type, std::string const & name) const;

    /// The full name, which is good until the object is renamed or removed. Throws Exception if it isn't registered.
    std::string const & GetObjectName(Object const * object) const;
    /// Renames an object; nothing happens if the name is taken or the object isn't registered.
    void SetObjectName(Object * object, std::string const & name);

    /// The next object in the order, for null the first one; null at the end and for an unknown object.
    Object * GetNextObject(Object const * object) const;
    /// The object before the given one, for null the last one; null at the start and for an unknown object.
    Object * GetPreviousObject(Object const * object) const;
    /// All objects in order whose full names begin with the name space.
    std::list<Object *> GetObjects() const;
    std::list<Object *> GetObjects(std::string const & type) const;
    /// Puts the first object directly before or behind the second.
    void moveObjectBefore(Object * object, Object * other);
    void moveObjectAfter(Object * object, Object * other);

    std::string GetNamespace() const;
    void SetNamespace(std::string const & name);
    /// Pushes a copy of the present name space, which restoreNamespace() goes back to.
    void saveNamespace();
    void restoreNamespace();

    /// Counts references to a file by its name; an empty name is ignored.
    void addFileReference(std::string const & filename);
    void removeFileReference(std::string const & filename);
    std::set<std::string> GetFileReferences() const;

protected:
    void modified(Observable const & observable, ObservableEvent const & event) override;

    void addObject(Object * object, std::string const & name);
    void removeObject(Object * object);
    /// The name, or with the lowest number from 1 on behind it that makes it unique.
    std::string GetUniqueObjectName(Object * object, std::string const & name) const;

private:
    friend class Dispatchable;
    friend class Object;
    friend class TesseralisIterator;

    struct Entry
    {
        std::string name;
        Object * object;
    };
    using EntryList = std::list<Entry>;

    Tesseralis();
    ~Tesseralis() override;

    Entry const * FindEntry(std::string const & name) const;
    Entry const * FindEntry(std::string const & type, std::string const & name) const;
    std::list<Object *> GetObjects(std::string const * type) const;
    static bool IsDestroyable(Object const & object);
    void destroyEntry(Entry const * entry);
    void moveObject(Object * object, Object * other, bool after);
    void releaseName(std::string const & name);
    void enterDispatcher(Object * object);
    void leaveDispatcher(Object const * object);
    void orderDispatchers();

    std::unordered_map<std::string, Factory> m_objectTypes;
    EntryList m_objects; // in order
    std::unordered_map<Object const *, EntryList::iterator> m_objectIndex;
    std::unordered_map<std::string_view, EntryList::iterator> m_nameIndex; // the keys are the names of the entries
    // For a name that has been made unique by a number: all lower numbers are taken.
    mutable std::unordered_map<std::string, unsigned int> m_freeNumbers;
    std::unordered_map<std::string, unsigned int> m_fileReferences;
    std::vector<std::string> m_namespaces{std::string()}; // a stack, never empty
    unsigned int m_reorderings = 0; // how often an object came to a place behind others, modulo 2^32
    mutable Mutex m_registryMutex;
    // The dispatchers among the objects, in order. They change under both locks and are reached under the second alone,
    // by threads that may hold any other lock: nothing but a dispatcher's own is taken under it.
    std::vector<Dispatcher *> m_dispatchers;
    Mutex m_dispatcherMutex;
};

/// Walks the registered objects in order. Takes no lock; the removal of the object it stands at invalidates it.
class TESSERALIS_API TesseralisIterator
{
public:
    explicit TesseralisIterator(Tesseralis & registry);
    /// Starts at an object; at the end at once if that isn't registered.
    TesseralisIterator(Tesseralis & registry, Object const * object);

    bool IsAtEnd() const { return m_position == m_end; }
    TesseralisIterator & operator++();
    Object & operator*() const { return *m_position->object; }
    Object * operator->() const { return m_position->object; }
    Object * GetObject() const { return m_position->object; }
    std::string const & GetName() const { return m_position->name; }

private:
    Tesseralis::EntryList::iterator m_position;
    Tesseralis::EntryList::iterator m_end;
};

/// Enters every object type of the library into the registry. A host that wants fewer enters those that it wants.
TESSERALIS_API void registerObjectTypes();
} // namespace tesseralis
