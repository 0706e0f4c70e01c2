#pragma once

#include "object/Observable.h"
#include "object/Observer.h"

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace tesseralis {
/// An observer that a class holds as a member and that calls the class's own methods back. What it watches is told by
/// addObserver() calls with it; which method gets which kind of event is told by connect().
class TESSERALIS_API ModifiedObserver : public Observer
{
public:
    /// One callback. Overridden by TypeConnector.
    class TESSERALIS_API Connector
    {
    public:
        /// A new connector with the same receiver and method, which is the caller's.
        virtual Connector * GetCloned() const = 0;
        virtual void modified(Observable const & observable, ObservableEvent const & event) = 0;
        virtual ~Connector() = default;
    };

    /// Calls a method of a receiver, which stays the caller's, for events of one type from observables of one type.
    template <class TReceiver, class TObservable, class TEvent>
    class TypeConnector : public Connector
    {
    public:
        using Method = void (TReceiver::*)(TObservable const &, TEvent const &);

        TypeConnector(TReceiver * receiver, Method method) : m_receiver(receiver), m_method(method) {}

        Connector * GetCloned() const override { return new TypeConnector(*this); }
        bool IsConnecting(TReceiver const * receiver, Method method) const
        {
            return m_receiver == receiver && m_method == method;
        }

        void modified(Observable const & observable, ObservableEvent const & event) override
        {
            TObservable const * const source = cast<TObservable>(&observable);
            TEvent const * const change = source != nullptr ? cast<TEvent>(&event) : nullptr;
            if (change != nullptr) {
                (m_receiver->*m_method)(*source, *change);
            }
        }

    private:
        template <class T, class TBase>
        static T const * cast(TBase const * pointer)
        {
            if constexpr (std::is_same_v<T, TBase>) {
                return pointer;
            } else {
                return dynamic_cast<T const *>(pointer);
            }
        }

        TReceiver * m_receiver;
        Method m_method;
    };

    ModifiedObserver();
    /// Watches what the source watches, with copies of its connectors; they still name the source's receivers.
    ModifiedObserver(ModifiedObserver const & source);
    ModifiedObserver & operator=(ModifiedObserver const & source);
    ~ModifiedObserver() override;

    /// A disabled observer stays attached and calls nothing.
    void SetEnabled(bool enabled) { m_enabled = enabled; }
    bool IsEnabled() const { return m_enabled; }

    /// Has a method called for each event of its type from an observable of its type. Connecting twice leaves one; a
    /// null receiver is ignored.
    template <class TReceiver, class TOwner, class TObservable, class TEvent>
    void connect(TReceiver * receiver, void (TOwner::*method)(TObservable const &, TEvent const &))
    {
        disconnect(receiver, method);
        if (receiver != nullptr) {
            addConnector(std::make_shared<TypeConnector<TOwner, TObservable, TEvent>>(receiver, method));
        }
    }

    template <class TReceiver, class TOwner, class TObservable, class TEvent>
    void disconnect(TReceiver * receiver, void (TOwner::*method)(TObservable const &, TEvent const &))
    {
        removeConnectors([&](Connector const & connector) {
            auto const * const typed = dynamic_cast<TypeConnector<TOwner, TObservable, TEvent> const *>(&connector);
            return typed != nullptr && typed->IsConnecting(receiver, method);
        });
    }

protected:
    void modified(Observable const & observable, ObservableEvent const & event) override;

private:
    class Call;
    using ConnectorList = std::vector<std::shared_ptr<Connector>>;

    void addConnector(std::shared_ptr<Connector> connector);
    void removeConnectors(std::function<bool(Connector const &)> const & isMeant);
    bool HasConnector(std::shared_ptr<Connector> const & connector) const;

    // Replaced as a whole, so that a call in progress keeps the list that it walks. Null if there are none.
    std::shared_ptr<ConnectorList const> m_connectors;
    Call * m_call = nullptr; // the innermost one in progress
    bool m_enabled = true;
};
} // namespace tesseralis
