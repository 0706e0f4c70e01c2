#include "object/Tesseralis.h"

#include "object/CoreVersion.h"
#include "object/Dispatcher.h"
#include "object/Exception.h"
#include "object/Guard.h"
#include "object/Version.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace tesseralis {
ObservableEvent * TesseralisEvent::GetCloned() const
{
    return new TesseralisEvent(*this);
}

ObservableEvent * TesseralisObjectEvent::GetCloned() const
{
    return new TesseralisObjectEvent(*this);
}

bool TesseralisObjectEvent::IsEqual(ObservableEvent const & event) const
{
    if (!TesseralisEvent::IsEqual(event)) {
        return false;
    }
    TesseralisObjectEvent const & other = castEvent<TesseralisObjectEvent>(event);
    return m_object == other.m_object && m_name == other.m_name;
}

ObservableEvent * TesseralisAdditionEvent::GetCloned() const
{
    return new TesseralisAdditionEvent(*this);
}

ObservableEvent * TesseralisRemovalEvent::GetCloned() const
{
    return new TesseralisRemovalEvent(*this);
}

ObservableEvent * TesseralisChangeEvent::GetCloned() const
{
    return new TesseralisChangeEvent(*this);
}

ObservableEvent * TesseralisMoveEvent::GetCloned() const
{
    return new TesseralisMoveEvent(*this);
}

TesseralisRenameEvent::TesseralisRenameEvent(Object * object, std::string const & currentName,
                                             std::string const & previousName)
    : m_object(object), m_currentName(currentName), m_previousName(previousName)
{
}

ObservableEvent * TesseralisRenameEvent::GetCloned() const
{
    return new TesseralisRenameEvent(*this);
}

bool TesseralisRenameEvent::IsEqual(ObservableEvent const & event) const
{
    if (!TesseralisEvent::IsEqual(event)) {
        return false;
    }
    TesseralisRenameEvent const & other = castEvent<TesseralisRenameEvent>(event);
    return m_object == other.m_object && m_currentName == other.m_currentName && m_previousName == other.m_previousName;
}

Tesseralis::Tesseralis() = default;
Tesseralis::~Tesseralis() = default;

Tesseralis & Tesseralis::Get()
{
    static Tesseralis * const s_instance = new Tesseralis;
    return *s_instance;
}

Version Tesseralis::GetVersion() const
{
    return Version(c_coreVersion);
}

void Tesseralis::registerObjectType(std::string const & type, Factory factory)
{
    MutexLocker locker(m_registryMutex);
    m_objectTypes[type] = factory;
}

bool Tesseralis::HasObjectType(std::string const & type) const
{
    MutexLocker locker(m_registryMutex);
    return m_objectTypes.contains(type);
}

Object * Tesseralis::createObject(std::string const & type, unsigned int attributes)
{
    return createObject(type, type, attributes);
}

Object * Tesseralis::createObject(std::string const & type, std::string const & name, unsigned int attributes)
{
    MutexLocker locker(m_registryMutex);
    auto const found = m_objectTypes.find(type);
    bool const isKnown = found != m_objectTypes.end() && found->second != nullptr;
    return isKnown ? found->second(m_namespaces.back() + name, attributes) : nullptr;
}

void Tesseralis::destroyObject(std::string const & name)
{
    MutexLocker locker(m_registryMutex);
    destroyEntry(FindEntry(name));
}

void Tesseralis::destroyObject(Object * object)
{
    MutexLocker locker(m_registryMutex);
    auto const found = m_objectIndex.find(object);
    destroyEntry(found == m_objectIndex.end() ? nullptr : &*found->second);
}

Tesseralis::Entry const * Tesseralis::FindEntry(std::string const & name) const
{
    std::string const & prefix = m_namespaces.back();
    auto const found = m_nameIndex.find(prefix.empty() ? name : prefix + name);
    return found == m_nameIndex.end() ? nullptr : &*found->second;
}

Tesseralis::Entry const * Tesseralis::FindEntry(std::string const & type, std::string const & name) const
{
    Entry const * const entry = FindEntry(name);
    return entry != nullptr && entry->object->GetObjectTypeName() == type ? entry : nullptr;
}

bool Tesseralis::IsDestroyable(Object const & object)
{
    return object.HasAttribute(ObjectAttribute::Registered | ObjectAttribute::Destroyable) && !object.IsDestroyed();
}

void Tesseralis::destroyEntry(Entry const * entry)
{
    if (entry != nullptr && IsDestroyable(*entry->object)) {
        delete entry->object;
    }
}

void Tesseralis::clearObjects()
{
    MutexLocker locker(m_registryMutex);
    Object const * kept = nullptr; // the oldest one that was passed over; all newer ones stay as well
    unsigned int reorderings = m_reorderings;
    while (true) {
        auto const found = m_objectIndex.find(kept);
        bool const isStillGood = found != m_objectIndex.end() && reorderings == m_reorderings;
        auto entry = isStillGood ? std::make_reverse_iterator(found->second) : m_objects.rbegin();
        reorderings = m_reorderings;
        while (entry != m_objects.rend() && !IsDestroyable(*entry->object)) {
            kept = entry->object;
            ++entry;
        }
        if (entry == m_objects.rend()) {
            return;
        }
        Object * const object = entry->object;
        locker.unlock();
        delete object;
        locker.lock();
    }
}

Object * Tesseralis::GetObject(std::string const & name) const
{
    MutexLocker locker(m_registryMutex);
    Entry const * const entry = FindEntry(name);
    return entry == nullptr ? nullptr : entry->object;
}

Object * Tesseralis::GetObject(std::string const & type, std::string const & name) const
{
    MutexLocker locker(m_registryMutex);
    Entry const * const entry = FindEntry(type, name);
    return entry == nullptr ? nullptr : entry->object;
}

bool Tesseralis::HasObject(Object const * object) const
{
    MutexLocker locker(m_registryMutex);
    return m_objectIndex.contains(object);
}

bool Tesseralis::HasObject(std::string const & name) const
{
    return GetObject(name) != nullptr;
}

bool Tesseralis::HasObject(std::string const & type, std::string const & name) const
{
    return GetObject(type, name) != nullptr;
}

std::string const & Tesseralis::GetObjectName(Object const * object) const
{
    MutexLocker locker(m_registryMutex);
    auto const found = m_objectIndex.find(object);
    if (found == m_objectIndex.end()) {
        throw Exception("The specified object does not exist!");
    }
    return found->second->name;
}

void Tesseralis::SetObjectName(Object * object, std::string const & name)
{
    MutexLocker locker(m_registryMutex);
    auto const found = m_objectIndex.find(object);
    if (m_nameIndex.contains(name) || found == m_objectIndex.end()) {
        return;
    }

    EntryList::iterator const entry = found->second;
    beginModification(new TesseralisRenameEvent(object, name, entry->name));
    m_nameIndex.erase(entry->name);
    releaseName(entry->name);
    entry->name = name;
    m_nameIndex.emplace(entry->name, entry);
    endModification();
}

Object * Tesseralis::GetNextObject(Object const * object) const
{
    MutexLocker locker(m_registryMutex);
    if (object == nullptr) {
        return m_objects.empty() ? nullptr : m_objects.front().object;
    }
    auto const found = m_objectIndex.find(object);
    if (found == m_objectIndex.end() || std::next(found->second) == m_objects.end()) {
        return nullptr;
    }
    return std::next(found->second)->object;
}

Object * Tesseralis::GetPreviousObject(Object const * object) const
{
    MutexLocker locker(m_registryMutex);
    if (object == nullptr) {
        return m_objects.empty() ? nullptr : m_objects.back().object;
    }
    auto const found = m_objectIndex.find(object);
    if (found == m_objectIndex.end() || found->second == m_objects.begin()) {
        return nullptr;
    }
    return std::prev(found->second)->object;
}

std::list<Object *> Tesseralis::GetObjects() const
{
    return GetObjects(nullptr);
}

std::list<Object *> Tesseralis::GetObjects(std::string const & type) const
{
    return GetObjects(&type);
}

std::list<Object *> Tesseralis::GetObjects(std::string const * type) const
{
    MutexLocker locker(m_registryMutex);
    std::list<Object *> objects;
    for (Entry const & entry : m_objects) {
        if (entry.name.starts_with(m_namespaces.back()) &&
            (type == nullptr || entry.object->GetObjectTypeName() == *type)) {
            objects.push_back(entry.object);
        }
    }
    return objects;
}

void Tesseralis::moveObjectBefore(Object * object, Object * other)
{
    moveObject(object, other, false);
}

void Tesseralis::moveObjectAfter(Object * object, Object * other)
{
    moveObject(object, other, true);
}

void Tesseralis::moveObject(Object * object, Object * other, bool after)
{
    MutexLocker locker(m_registryMutex);
    auto const moved = m_objectIndex.find(object);
    auto const target = m_objectIndex.find(other);
    if (object == other || moved == m_objectIndex.end() || target == m_objectIndex.end()) {
        return;
    }
    if ((after ? GetPreviousObject(object) : GetNextObject(object)) == other) {
        return;
    }

    beginModification(new TesseralisMoveEvent(object, moved->second->name));
    // The entry itself moves, so that its place in the indexes stays right.
    ++m_reorderings;
    m_objects.splice(after ? std::next(target->second) : target->second, m_objects, moved->second);
    orderDispatchers();
    endModification();
}

std::string Tesseralis::GetNamespace() const
{
    MutexLocker locker(m_registryMutex);
    return m_namespaces.back();
}

void Tesseralis::SetNamespace(std::string const & name)
{
    MutexLocker locker(m_registryMutex);
    m_namespaces.back() = name;
}

void Tesseralis::saveNamespace()
{
    MutexLocker locker(m_registryMutex);
    m_namespaces.push_back(std::string(m_namespaces.back()));
}

void Tesseralis::restoreNamespace()
{
    MutexLocker locker(m_registryMutex);
    if (m_namespaces.size() > 1) {
        m_namespaces.pop_back();
    }
}

void Tesseralis::addFileReference(std::string const & filename)
{
    MutexLocker locker(m_registryMutex);
    if (!filename.empty()) {
        ++m_fileReferences[filename];
    }
}

void Tesseralis::removeFileReference(std::string const & filename)
{
    MutexLocker locker(m_registryMutex);
    auto const found = m_fileReferences.find(filename);
    if (found != m_fileReferences.end() && --found->second == 0) {
        m_fileReferences.erase(found);
    }
}

std::set<std::string> Tesseralis::GetFileReferences() const
{
    MutexLocker locker(m_registryMutex);
    std::set<std::string> filenames;
    for (auto const & [filename, count] : m_fileReferences) {
        filenames.insert(filename);
    }
    return filenames;
}

void Tesseralis::modified(Observable const & observable, ObservableEvent const & event)
{
    MutexLocker locker(m_registryMutex);
    auto const found = m_objectIndex.find(dynamic_cast<Object const *>(&observable));
    if (found == m_objectIndex.end()) {
        return;
    }

    Object * const object = found->second->object;
    if (dynamic_cast<ObservableDestructionEvent const *>(&event) != nullptr) {
        object->removeObserver(this); // here, since what the registry observes changes under its own lock only
    }
    beginModification(new TesseralisChangeEvent(object, found->second->name));
    endModification();
}

void Tesseralis::addObject(Object * object, std::string const & name)
{
    MutexLocker locker(m_registryMutex);
    if (m_objectIndex.contains(object)) {
        return;
    }

    EntryList::iterator const entry = m_objects.insert(m_objects.end(), {GetUniqueObjectName(object, name), object});
    ++m_reorderings;
    object->addObserver(this);
    beginModification(new TesseralisAdditionEvent(object, entry->name));
    m_nameIndex.emplace(entry->name, entry);
    m_objectIndex.emplace(object, entry);
    enterDispatcher(object);
    endModification();
}

void Tesseralis::removeObject(Object * object)
{
    MutexLocker locker(m_registryMutex);
    if (!m_objectIndex.contains(object)) {
        return;
    }

    object->removeObserver(this);
    // Called by destructors only, so what an observer throws goes no further.
    detail::runGuarded([&] {
        beginModification(new TesseralisRemovalEvent(object, GetObjectName(object)));
        endModification();
    });

    // Looked up anew, since an observer may have renamed or moved it.
    auto const found = m_objectIndex.find(object);
    if (found == m_objectIndex.end()) {
        return;
    }
    EntryList::iterator const entry = found->second;
    m_objectIndex.erase(found);
    m_nameIndex.erase(entry->name);
    releaseName(entry->name);
    m_objects.erase(entry);
    leaveDispatcher(object);
}

std::string Tesseralis::GetUniqueObjectName(Object *, std::string const & name) const
{
    MutexLocker locker(m_registryMutex);
    if (!m_nameIndex.contains(name)) {
        return name;
    }

    unsigned int & number = m_freeNumbers.try_emplace(name, 1).first->second;
    std::string unique = name + std::to_string(number);
    while (m_nameIndex.contains(unique)) {
        ++number;
        unique = name + std::to_string(number);
    }
    return unique;
}

void Tesseralis::releaseName(std::string const & name)
{
    // Each way to read the name as another one with a number lowers that one's free number.
    constexpr std::size_t c_mostDigits = 9;
    for (std::size_t digits = 1; digits <= c_mostDigits && digits <= name.size(); ++digits) {
        char const * const first = name.data() + name.size() - digits;
        if (*first < '0' || *first > '9') {
            return;
        }
        auto const found = m_freeNumbers.find(name.substr(0, name.size() - digits));
        if (*first == '0' || found == m_freeNumbers.end()) {
            continue;
        }
        unsigned int number = 0;
        std::from_chars(first, first + digits, number);
        if (number == 1) {
            m_freeNumbers.erase(found);
        } else if (number < found->second) {
            found->second = number;
        }
    }
}

void Tesseralis::enterDispatcher(Object * object)
{
    if (auto * const dispatcher = dynamic_cast<Dispatcher *>(object)) {
        MutexLocker locker(m_dispatcherMutex);
        m_dispatchers.push_back(dispatcher);
    }
}

void Tesseralis::leaveDispatcher(Object const * object)
{
    auto const found = std::find(m_dispatchers.begin(), m_dispatchers.end(), object);
    if (found != m_dispatchers.end()) {
        MutexLocker locker(m_dispatcherMutex);
        m_dispatchers.erase(found);
    }
}

void Tesseralis::orderDispatchers()
{
    if (m_dispatchers.size() < 2) {
        return;
    }
    std::vector<Dispatcher *> ordered;
    for (Entry const & entry : m_objects) {
        auto const found = std::find(m_dispatchers.begin(), m_dispatchers.end(), entry.object);
        if (found != m_dispatchers.end()) {
            ordered.push_back(*found);
        }
    }

    MutexLocker locker(m_dispatcherMutex);
    m_dispatchers = std::move(ordered);
}

TesseralisIterator::TesseralisIterator(Tesseralis & registry)
    : m_position(registry.m_objects.begin()), m_end(registry.m_objects.end())
{
}

TesseralisIterator::TesseralisIterator(Tesseralis & registry, Object const * object)
    : m_position(registry.m_objects.end()), m_end(registry.m_objects.end())
{
    auto const found = registry.m_objectIndex.find(object);
    if (found != registry.m_objectIndex.end()) {
        m_position = found->second;
    }
}

TesseralisIterator & TesseralisIterator::operator++()
{
    ++m_position;
    return *this;
}
} // namespace tesseralis
