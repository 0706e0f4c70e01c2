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
    observer->addObservable(this);
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
    std::unique_ptr<ObservableEvent const> owned(event);
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
    --m_modificationCount;
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

    beginModification(new ObservableDestructionEvent);
    m_destroyed = true;
    deliver();
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
    while (HasEvents()) {
        std::unique_ptr<ObservableEvent const> const event = takeEvent();
        if (!HasEvents() || !event->IsEqual(*m_events[m_firstEvent])) {
            notify(*event);
        }
    }
}

void Observable::notify(ObservableEvent const & event)
{
    // A snapshot, since observers may come and go while they are called. Only where one went must the rest be looked
    // up.
    unsigned int const removals = m_removals;
    for (Observer * const observer : detail::PointerSnapshot<Observer>(m_observers)) {
        if (m_removals == removals || m_observers.Has(observer)) {
            notifyObserver(*observer, event);
        }
    }
}

void Observable::notifyObserver(Observer & observer, ObservableEvent const & event)
{
    if (!m_destroyed) {
        observer.modified(*this, event);
        return;
    }

    // A dying observable has nobody to throw to, and every observer must hear of it.
    detail::runGuarded([&] { observer.modified(*this, event); });
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
