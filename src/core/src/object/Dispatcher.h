#pragma once

#include "object/Object.h"

#include <atomic>
#include <set>
#include <string>

namespace tesseralis {
class Dispatchable;

/// Brings work that began elsewhere to the thread of the host's main loop: the host calls dispatch() as often as it
/// wishes to see results. The first dispatcher in the registry gets all dispatchables, so a host creates one before the
/// objects that need it. Dispatchables stay their owners'; those that were waiting when a dispatcher went away wait
/// until they are added again.
class TESSERALIS_API Dispatcher : public Object
{
public:
    explicit Dispatcher(unsigned int attributes);
    Dispatcher(std::string const & name, unsigned int attributes);
    Dispatcher(Dispatcher const &) = delete;
    Dispatcher & operator=(Dispatcher const &) = delete;
    ~Dispatcher() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);
    std::string GetObjectTypeName() const override;

    unsigned int GetDispatchableCount() const { return m_count; }
    bool HasDispatchable(Dispatchable * dispatchable) const;

    /// Has the next pass call the dispatchable. Called on any thread, under a lock that every thread takes to reach the
    /// dispatchers: an override may wake the host's main loop, but must not wait for another thread nor ask the
    /// registry.
    virtual void addDispatchable(Dispatchable * dispatchable);
    /// Leaves the dispatchable out of later passes. Called as above.
    virtual void removeDispatchable(Dispatchable * dispatchable);
    /// Pumps a single dispatchable, whether it was added or not.
    virtual void dispatch(Dispatchable * dispatchable);
    /// Pumps, in the order of their pointers, all dispatchables that are there at the start of the pass. They may add
    /// and remove themselves and others meanwhile: who is added waits for the next pass, who is removed is still called
    /// in this one and has to outlive it. What one of them throws ends the pass.
    virtual void dispatch();

protected:
    explicit Dispatcher(Dispatcher *) : Object(static_cast<Object *>(nullptr)) {}
    void constructDispatcher(std::string const & name, unsigned int attributes);
    void destroyDispatcher();

private:
    std::set<Dispatchable *> m_dispatchables;
    std::atomic<unsigned int> m_count = 0; // of the dispatchables, to be read without the lock
    mutable Mutex m_dispatchablesMutex;    // taken last of all, under any other lock
};
} // namespace tesseralis
