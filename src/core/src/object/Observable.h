#pragma once

#include "object/Mutex.h"
#include "object/PointerSequence.h"

#include <exception>
#include <memory>
#include <vector>

namespace tesseralis {
class Observer;

/// What happened to an observable; the base of every event, and an event without data itself. An event with data
/// overrides GetCloned() and IsEqual(), the latter by asking the base class first and castEvent() next.
class TESSERALIS_API ObservableEvent
{
public:
    ObservableEvent() = default;
    ObservableEvent(ObservableEvent const &) = default;
    ObservableEvent & operator=(ObservableEvent const &) = default;
    virtual ~ObservableEvent() = default;

    /// A new copy of the event's own dynamic type, which is the caller's.
    virtual ObservableEvent * GetCloned() const;
    /// Whether both have exactly the same dynamic type and equal data.
    virtual bool IsEqual(ObservableEvent const & event) const;
    bool operator==(ObservableEvent const & event) const { return IsEqual(event); }

protected:
    [[noreturn]] static void throwCastFailed();

    /// The other event of a comparison as one of the own class; throws Exception if it isn't one.
    template <class T>
    static T const & castEvent(ObservableEvent const & event)
    {
        T const * const cast = dynamic_cast<T const *>(&event);
        if (cast == nullptr) {
            throwCastFailed();
        }
        return *cast;
    }
};

/// The last event that an observable sends. Its observers are detached after it.
class TESSERALIS_API ObservableDestructionEvent : public ObservableEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// Something that can be watched. A change is bracketed by beginModification(), which queues an event, and
/// endModification(); when the outermost bracket closes, the queue goes to the observers in the order of their
/// addition, on the calling thread. Of adjacent equal events only the last is delivered. The lock is recursive and held
/// meanwhile, so observers may call back, open brackets, come and go. What an observer throws comes out when all
/// events have reached all observers. An observable must not be destroyed by an observer while it delivers.
class TESSERALIS_API Observable
{
public:
    Observable() = default;
    /// A fresh observable: observers and events are not copied.
    Observable(Observable const &) : Observable() {}
    /// Leaves both as they are.
    Observable & operator=(Observable const &) { return *this; }
    virtual ~Observable();

    /// Appends an observer, which stays the caller's. Adding it twice, or to a destroyed observable, does nothing.
    void addObserver(Observer * observer);
    /// Detaches an observer; works on a destroyed observable too.
    void removeObserver(Observer * observer);
    /// Detaches all observers, the newest first.
    void clearObservers();
    bool HasObserver(Observer * observer) const;
    unsigned int GetObserverCount() const;
    /// Whether the destruction event is being or has been delivered.
    bool IsDestroyed() const;

    /// Opens a bracket with a plain event.
    void beginModification();
    /// Opens a bracket with an event that the observable owns from here on, also if it is destroyed and ignores it.
    /// Null stands for a plain event.
    void beginModification(ObservableEvent const * event);
    /// Closes a bracket; the outermost close delivers.
    void endModification();
    /// Closes all brackets at once and delivers.
    void flushModification();
    /// Closes a bracket, drops the event that was queued last, and delivers nothing.
    void abortModification();

protected:
    /// Called when beginModification(event) opens the outermost bracket.
    virtual void modificationStarted() {}
    /// Called before the outermost bracket closes.
    virtual void modificationFinished() {}

    /// Delivers what is queued and an ObservableDestructionEvent, and detaches everyone; without observers it does
    /// nothing. Classes whose observers need them whole call it at the beginning of their destructor. Throws nothing:
    /// what an observer throws is logged.
    void destroyObservable();

    /// The lock of the observable's and its subclasses' data.
    mutable Mutex m_mutex;

private:
    friend class ObservableIterator;

    void queueEvent(std::unique_ptr<ObservableEvent const> event);
    std::unique_ptr<ObservableEvent const> takeEvent();
    bool HasEvents() const { return m_firstEvent < m_events.size(); }
    void deliver();
    void notify(ObservableEvent const & event, std::exception_ptr & failure);
    bool IsRepeated(ObservableEvent const & event, std::exception_ptr & failure) const;

    detail::PointerSequence<Observer> m_observers;
    std::vector<std::unique_ptr<ObservableEvent const>> m_events; // oldest first, from m_firstEvent on
    unsigned int m_firstEvent = 0;
    unsigned int m_removals = 0; // how often an observer was removed, modulo 2^32
    int m_modificationCount = 0;
    bool m_destroyed = false;
};

/// Walks the observers of an observable in the order of their addition. Takes no lock; an observer that comes or goes
/// invalidates it.
class TESSERALIS_API ObservableIterator
{
public:
    explicit ObservableIterator(Observable & observable);

    bool IsAtEnd() const { return m_slot >= m_observable->m_observers.GetSlotCount(); }
    ObservableIterator & operator++();
    Observer & operator*() const { return *m_observable->m_observers.GetSlot(m_slot); }
    Observer * operator->() const { return m_observable->m_observers.GetSlot(m_slot); }

private:
    void skipHoles();

    Observable * m_observable;
    std::size_t m_slot = 0;
};
} // namespace tesseralis
