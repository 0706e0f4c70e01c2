#pragma once

#include "object/Export.h"
#include "object/PointerSequence.h"

#include <vector>

namespace tesseralis {
class Observable;
class ObservableEvent;

/// Something that watches observables. It detaches itself from all of them when it is destroyed. The set of what it
/// watches has no lock of its own: it changes under the lock of the observable concerned.
class TESSERALIS_API Observer
{
public:
    Observer() = default;
    /// Watches whatever the source watches.
    Observer(Observer const & source);
    /// Leaves everything it watches and watches what the source watches.
    Observer & operator=(Observer const & source);
    virtual ~Observer();

    bool HasObservable(Observable const * observable) const;
    unsigned int GetObservableCount() const;

protected:
    /// Called for each event of each observable, under the observable's lock.
    virtual void modified(Observable const & observable, ObservableEvent const & event);

    void addObservable(Observable * observable);
    void removeObservable(Observable * observable);
    /// Detaches from everything.
    void clearObservables();

private:
    friend class Observable;
    friend class ObserverIterator;

    void attachLike(Observer const & source);

    detail::PointerSequence<Observable> m_observables;
};

/// Walks what an observer watches, as far as it did so at the iterator's construction, in the order of the pointers.
/// Takes no lock.
class TESSERALIS_API ObserverIterator
{
public:
    explicit ObserverIterator(Observer & observer);

    bool IsAtEnd() const { return m_position == m_observables.size(); }
    ObserverIterator & operator++();
    Observable & operator*() const { return *m_observables[m_position]; }
    Observable * operator->() const { return m_observables[m_position]; }

private:
    void skipLeft();

    Observer * m_observer;
    std::vector<Observable *> m_observables;
    std::size_t m_position = 0;
};
} // namespace tesseralis
