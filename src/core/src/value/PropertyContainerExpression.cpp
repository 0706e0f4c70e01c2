#include "value/PropertyContainerExpression.h"

#include "plugin/Host.h"
#include "value/Variant.h"

namespace tesseralis {
PropertyContainerExpression::PropertyContainerExpression() = default;

PropertyContainerExpression::PropertyContainerExpression(Host * host, std::string const & command)
    : m_host(host), m_command(command)
{
    if (auto * const observable = dynamic_cast<Observable *>(host)) {
        m_hostObservable = observable;
        observable->addObserver(this);
    }
}

PropertyContainerExpression::PropertyContainerExpression(PropertyContainerExpression const & source) = default;
PropertyContainerExpression &
PropertyContainerExpression::operator=(PropertyContainerExpression const & source) = default;
PropertyContainerExpression::~PropertyContainerExpression() = default;

Variant PropertyContainerExpression::evaluate(Object * object) const
{
    return m_host == nullptr ? Variant() : m_host->evaluate(m_command, object);
}

bool PropertyContainerExpression::operator==(PropertyContainerExpression const & expression) const
{
    return m_host == expression.m_host && m_command == expression.m_command;
}

void PropertyContainerExpression::modified(Observable const & observable, ObservableEvent const & event)
{
    // Whoever is called may replace the expression of the property, and with it this object.
    std::shared_ptr<PropertyContainerExpression> const self = weak_from_this().lock();
    if (&observable == m_hostObservable && dynamic_cast<ObservableDestructionEvent const *>(&event) != nullptr) {
        m_host = nullptr;
        m_hostObservable = nullptr;
    }
    ModifiedObserver::modified(observable, event);
}
} // namespace tesseralis
