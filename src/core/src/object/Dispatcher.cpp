#include "object/Dispatcher.h"

#include "object/Dispatchable.h"

#include <vector>

namespace tesseralis {
Dispatcher::Dispatcher(unsigned int attributes) : Dispatcher(GetTypeName(), attributes) {}

Dispatcher::Dispatcher(std::string const & name, unsigned int attributes) : Object(static_cast<Object *>(nullptr))
{
    constructDispatcher(name, attributes);
}

Dispatcher::~Dispatcher()
{
    destroyDispatcher();
}

std::string Dispatcher::GetTypeName()
{
    return "dispatcher";
}

Object * Dispatcher::createObject(std::string const & name, unsigned int attributes)
{
    return new Dispatcher(name, attributes);
}

std::string Dispatcher::GetObjectTypeName() const
{
    return GetTypeName();
}

bool Dispatcher::HasDispatchable(Dispatchable * dispatchable) const
{
    MutexLocker locker(m_dispatchablesMutex);
    return m_dispatchables.contains(dispatchable);
}

void Dispatcher::addDispatchable(Dispatchable * dispatchable)
{
    MutexLocker locker(m_dispatchablesMutex);
    if (dispatchable != nullptr) {
        m_dispatchables.insert(dispatchable);
        m_count = static_cast<unsigned int>(m_dispatchables.size());
    }
}

void Dispatcher::removeDispatchable(Dispatchable * dispatchable)
{
    MutexLocker locker(m_dispatchablesMutex);
    m_dispatchables.erase(dispatchable);
    m_count = static_cast<unsigned int>(m_dispatchables.size());
}

void Dispatcher::dispatch(Dispatchable * dispatchable)
{
    if (dispatchable != nullptr) {
        dispatchable->dispatch();
    }
}

void Dispatcher::dispatch()
{
    // A host that pumps without pause must not keep others from adding.
    if (m_count == 0) {
        return;
    }
    MutexLocker locker(m_dispatchablesMutex);
    std::vector<Dispatchable *> const pending(m_dispatchables.begin(), m_dispatchables.end());
    locker.unlock();

    for (Dispatchable * const dispatchable : pending) {
        dispatchable->dispatch();
    }
}

void Dispatcher::constructDispatcher(std::string const & name, unsigned int attributes)
{
    constructObject(name, attributes);
}

void Dispatcher::destroyDispatcher()
{
    destroyObject();
}
} // namespace tesseralis
