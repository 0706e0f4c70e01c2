#pragma once

#include "object/ModifiedObserver.h"

#include <memory>
#include <string>

namespace tesseralis {
class Host;
class Object;
class Variant;

/// A text that a host evaluates to get the value of a property. Its triggers are what it observes: the host, if that
/// can be observed, and the values that the caller attaches it to before handing it to
/// PropertyContainer::SetPropertyExpression():
///
///     PropertyContainerExpression expression(&host, "a + b");
///     container.GetProperty("a").addObserver(&expression);
///     container.GetProperty("b").addObserver(&expression);
///     container.SetPropertyExpression("sum", expression);
class TESSERALIS_API PropertyContainerExpression : public ModifiedObserver,
                                                   public std::enable_shared_from_this<PropertyContainerExpression>
{
public:
    /// An invalid expression.
    PropertyContainerExpression();
    /// The host stays the caller's. A host that can be observed may die before the expression, any other must not.
    PropertyContainerExpression(Host * host, std::string const & command);
    PropertyContainerExpression(PropertyContainerExpression const & source);
    PropertyContainerExpression & operator=(PropertyContainerExpression const & source);
    ~PropertyContainerExpression() override;

    /// Whether there is a host.
    bool IsValid() const { return m_host != nullptr; }
    Host * GetHost() const { return m_host; }
    std::string const & GetCommand() const { return m_command; }
    /// What the host makes of the command for an object; undefined without a host. What the host throws comes through.
    Variant evaluate(Object * object) const;

    /// Same host and same command.
    bool operator==(PropertyContainerExpression const & expression) const;

protected:
    void modified(Observable const & observable, ObservableEvent const & event) override;

private:
    Host * m_host = nullptr;
    Observable const * m_hostObservable = nullptr; // the host's side that can be observed, null if it has none
    std::string m_command;
};
} // namespace tesseralis
