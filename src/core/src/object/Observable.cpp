#include "object/Observable.h"

#include "object/Exception.h"
#include "object/Guard.h"
#include "object/Observer.h"

#include <typeinfo>
#include <utility>

namespace tesseralis {
ObservableEvent * ObservableEvent::GetCloned() const
{
    return new ObservableEvent(*this);
}

bool ObservableEvent::IsEqual(ObservableEvent const & event) const
{
    return this == &event || typeid(*this) == typeid(event);
}

void ObservableEvent::throwCastFailed()
{
    throw Exception("Unable to cast modification data!");
}

ObservableEvent * ObservableDestructionEvent::GetCloned() const
{
    return new ObservableDestructionEvent(*this);
}

Observable::~Observable()
{
    destroyObservable();
}

void Observable::addObserver(Observer * observer)
{
    MutexLocker locker(m_mutex);
    m_observers.prepareSearch();
    if (observer == nullptr || m_destroyed || m_observers.Has(observer)) {
        return;
    }
    m_observers.add(observer);
    try {
        observer->addObservable(this);
    } catch (...) {
        m_observers.remove(observer);
        throw;
    }
}

void Observable::removeObserver(Observer * observer)
{
    MutexLocker locker(m_mutex);
    if (m_observers.Has(observer)) {
        observer->removeObservable(this);
        m_observers.remove(observer);
        ++m_removals;
    }
}

void Observable::clearObservers()
{
    MutexLocker locker(m_mutex);
    while (Observer * const observer = m_observers.GetLast()) {
        removeObserver(observer);
    }
}

bool Observable::HasObserver(Observer * observer) const
{
    MutexLocker locker(m_mutex);
    return m_observers.Has(observer);
}

unsigned int Observable::GetObserverCount() const
{
    MutexLocker locker(m_mutex);
    return static_cast<unsigned int>(m_observers.GetSize());
}

bool Observable::IsDestroyed() const
{
    MutexLocker locker(m_mutex);
    return m_destroyed;
}

void Observable::beginModification()
{
    MutexLocker locker(m_mutex);
    if (!m_destroyed) {
        queueEvent(std::make_unique<ObservableEvent>());
    }
}

void Observable::beginModification(ObservableEvent const * event)
{
    std::unique_ptr<ObservableEvent const> owned(event != nullptr ? event : new ObservableEvent);
    MutexLocker locker(m_mutex);
    if (m_destroyed) {
        return;
    }

    queueEvent(std::move(owned));
    if (m_modificationCount == 1) {
        modificationStarted();
    }
}

void Observable::endModification()
{
    MutexLocker locker(m_mutex);
    if (m_destroyed) {
        return;
    }
    if (m_modificationCount > 1) {
        --m_modificationCount;
        return;
    }

    modificationFinished();
    m_modificationCount = 0; // also where there was no bracket to close
    deliver();
}

void Observable::flushModification()
{
    MutexLocker locker(m_mutex);
    if (m_destroyed) {
        return;
    }

    modificationFinished();
    m_modificationCount = 0;
    deliver();
}

void Observable::abortModification()
{
    MutexLocker locker(m_mutex);
    if (m_destroyed || m_modificationCount <= 0) {
        return;
    }

    --m_modificationCount;
    if (HasEvents()) {
        m_events.pop_back();
    }
}

void Observable::destroyObservable()
{
    MutexLocker locker(m_mutex);
    if (m_observers.GetSize() == 0) {
        return;
    }

    // There is nobody to throw to.
    detail::runGuarded([&] { beginModification(new ObservableDestructionEvent); });
    m_destroyed = true;
    detail::runGuarded([&] { deliver(); });
    clearObservers();
}

void Observable::queueEvent(std::unique_ptr<ObservableEvent const> event)
{
    m_events.push_back(std::move(event));
    ++m_modificationCount;
}

std::unique_ptr<ObservableEvent const> Observable::takeEvent()
{
    std::unique_ptr<ObservableEvent const> event = std::move(m_events[m_firstEvent]);
    ++m_firstEvent;
    if (!HasEvents()) {
        m_events.clear();
        m_firstEvent = 0;
    }
    return event;
}

void Observable::deliver()
{
    std::exception_ptr failure;
    while (HasEvents()) {
        std::unique_ptr<ObservableEvent const> const event = takeEvent();
        if (!IsRepeated(*event, failure)) {
            notify(*event, failure);
        }
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}

bool Observable::IsRepeated(ObservableEvent const & event, std::exception_ptr & failure) const
{
    try {
        return HasEvents() && event.IsEqual(*m_events[m_firstEvent]);
    } catch (...) {
        failure = failure ? failure : std::current_exception();
        return false;
    }
}

void Observable::notify(ObservableEvent const & event, std::exception_ptr & failure)
{
    // A snapshot, since observers may come and go while they are called. Only where one went must the rest be looked
    // up.
    unsigned int const removals = m_removals;
    for (Observer * const observer : detail::PointerSnapshot<Observer>(m_observers)) {
        if (m_removals != removals && !m_observers.Has(observer)) {
            continue;
        }
        try {
            observer->modified(*this, event);
        } catch (...) {
            failure = failure ? failure : std::current_exception();
        }
    }
}

ObservableIterator::ObservableIterator(Observable & observable) : m_observable(&observable)
{
    skipHoles();
}

ObservableIterator & ObservableIterator::operator++()
{
    ++m_slot;
    skipHoles();
    return *this;
}

void ObservableIterator::skipHoles()
{
    while (!IsAtEnd() && m_observable->m_observers.GetSlot(m_slot) == nullptr) {
        ++m_slot;
    }
}
} // namespace tesseralis
