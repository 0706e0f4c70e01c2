#pragma once

#include "object/Observable.h"
#include "object/Observer.h"

#include <functional>
#include <memory>
#include <vector>

namespace tesseralis::test {
/// An observer that keeps a copy of each event it gets, in order, and can react to it.
class Recorder : public Observer
{
public:
    using Reaction = std::function<void(Observable const &, ObservableEvent const &)>;

    Recorder() = default;
    explicit Recorder(Observable & observable) { observable.addObserver(this); }

    std::size_t GetCount() const { return m_events.size(); }
    ObservableEvent const & Get(std::size_t i) const { return *m_events.at(i); }
    void clear() { m_events.clear(); }
    void SetReaction(Reaction reaction) { m_reaction = std::move(reaction); }

    /// The i-th event if it is of exactly this type, else null.
    template <class T>
    T const * GetAs(std::size_t i) const
    {
        if (i >= m_events.size()) {
            return nullptr;
        }
        ObservableEvent const & event = *m_events[i];
        return typeid(event) == typeid(T) ? static_cast<T const *>(&event) : nullptr;
    }

    /// How many events of exactly this type came.
    template <class T>
    std::size_t GetCountOf() const
    {
        std::size_t count = 0;
        for (auto const & event : m_events) {
            ObservableEvent const & base = *event;
            count += typeid(base) == typeid(T) ? 1 : 0;
        }
        return count;
    }

protected:
    void modified(Observable const & observable, ObservableEvent const & event) override
    {
        m_events.emplace_back(event.GetCloned());
        if (Reaction const reaction = m_reaction) { // a copy, since it may set another one
            reaction(observable, event);
        }
    }

private:
    std::vector<std::unique_ptr<ObservableEvent const>> m_events;
    Reaction m_reaction;
};
} // namespace tesseralis::test
