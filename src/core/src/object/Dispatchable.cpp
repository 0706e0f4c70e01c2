#include "object/Dispatchable.h"

#include "object/Dispatcher.h"
#include "object/Tesseralis.h"

namespace tesseralis {
void Dispatchable::addDispatchable()
{
    Tesseralis & registry = Tesseralis::Get();
    // Held over the call, so that the dispatcher can't go away meanwhile.
    MutexLocker locker(registry.m_dispatcherMutex);
    if (!registry.m_dispatchers.empty()) {
        registry.m_dispatchers.front()->addDispatchable(this);
    }
}

void Dispatchable::removeDispatchable()
{
    Tesseralis & registry = Tesseralis::Get();
    MutexLocker locker(registry.m_dispatcherMutex);
    for (Dispatcher * const dispatcher : registry.m_dispatchers) {
        dispatcher->removeDispatchable(this);
    }
}
} // namespace tesseralis
