#include "object/Observer.h"

#include "object/Observable.h"

#include <algorithm>
#include <functional>

namespace tesseralis {
Observer::Observer(Observer const & source)
{
    attachLike(source);
}

Observer & Observer::operator=(Observer const & source)
{
    if (this != &source) {
        clearObservables();
        attachLike(source);
    }
    return *this;
}

Observer::~Observer()
{
    clearObservables();
}

bool Observer::HasObservable(Observable const * observable) const
{
    return m_observables.Has(const_cast<Observable *>(observable));
}

unsigned int Observer::GetObservableCount() const
{
    return static_cast<unsigned int>(m_observables.GetSize());
}

void Observer::modified(Observable const &, ObservableEvent const &) {}

void Observer::addObservable(Observable * observable)
{
    m_observables.add(observable);
}

void Observer::removeObservable(Observable * observable)
{
    m_observables.remove(observable);
}

void Observer::clearObservables()
{
    while (Observable * const observable = m_observables.GetLast()) {
        observable->removeObserver(this);
    }
}

void Observer::attachLike(Observer const & source)
{
    for (Observable * const observable : detail::PointerSnapshot<Observable>(source.m_observables)) {
        observable->addObserver(this);
    }
}

ObserverIterator::ObserverIterator(Observer & observer) : m_observer(&observer)
{
    for (Observable * const observable : detail::PointerSnapshot<Observable>(observer.m_observables)) {
        m_observables.push_back(observable);
    }
    std::sort(m_observables.begin(), m_observables.end(), std::less<>());
}

ObserverIterator & ObserverIterator::operator++()
{
    ++m_position;
    skipLeft();
    return *this;
}

void ObserverIterator::skipLeft()
{
    while (!IsAtEnd() && !m_observer->HasObservable(m_observables[m_position])) {
        ++m_position;
    }
}
} // namespace tesseralis
