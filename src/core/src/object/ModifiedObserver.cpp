#include "object/ModifiedObserver.h"

#include <algorithm>

namespace tesseralis {
/// A walk along the connectors, one of which may end the observer itself.
class ModifiedObserver::Call
{
public:
    explicit Call(ModifiedObserver & observer) : m_observer(&observer), m_outer(observer.m_call)
    {
        observer.m_call = this;
    }
    ~Call()
    {
        if (m_observer != nullptr) {
            m_observer->m_call = m_outer;
        }
    }
    Call(Call const &) = delete;
    Call & operator=(Call const &) = delete;

    bool HasObserver() const { return m_observer != nullptr; }
    void forgetObserver()
    {
        for (Call * call = this; call != nullptr; call = call->m_outer) {
            call->m_observer = nullptr;
        }
    }

private:
    ModifiedObserver * m_observer;
    Call * m_outer;
};

ModifiedObserver::ModifiedObserver() = default;

ModifiedObserver::ModifiedObserver(ModifiedObserver const & source) : Observer(source), m_enabled(source.m_enabled)
{
    if (source.m_connectors == nullptr) {
        return;
    }
    auto connectors = std::make_shared<ConnectorList>();
    for (std::shared_ptr<Connector> const & connector : *source.m_connectors) {
        connectors->emplace_back(connector->GetCloned());
    }
    m_connectors = std::move(connectors);
}

ModifiedObserver & ModifiedObserver::operator=(ModifiedObserver const & source)
{
    if (this != &source) {
        ModifiedObserver copy(source);
        Observer::operator=(source);
        m_connectors.swap(copy.m_connectors);
        m_enabled = copy.m_enabled;
    }
    return *this;
}

ModifiedObserver::~ModifiedObserver()
{
    if (m_call != nullptr) {
        m_call->forgetObserver();
    }
}

void ModifiedObserver::modified(Observable const & observable, ObservableEvent const & event)
{
    std::shared_ptr<ConnectorList const> const connectors = m_connectors;
    if (!m_enabled || connectors == nullptr) {
        return;
    }

    Call const call(*this);
    for (std::shared_ptr<Connector> const & connector : *connectors) {
        if (connectors == m_connectors || HasConnector(connector)) {
            connector->modified(observable, event);
        }
        if (!call.HasObserver()) {
            return;
        }
    }
}

void ModifiedObserver::addConnector(std::shared_ptr<Connector> connector)
{
    auto connectors =
        m_connectors == nullptr ? std::make_shared<ConnectorList>() : std::make_shared<ConnectorList>(*m_connectors);
    connectors->push_back(std::move(connector));
    m_connectors = std::move(connectors);
}

void ModifiedObserver::removeConnectors(std::function<bool(Connector const &)> const & isMeant)
{
    if (m_connectors == nullptr) {
        return;
    }
    auto connectors = std::make_shared<ConnectorList>(*m_connectors);
    std::erase_if(*connectors, [&](std::shared_ptr<Connector> const & connector) { return isMeant(*connector); });
    if (connectors->size() < m_connectors->size()) {
        m_connectors = std::move(connectors);
    }
}

bool ModifiedObserver::HasConnector(std::shared_ptr<Connector> const & connector) const
{
    return m_connectors != nullptr &&
           std::find(m_connectors->begin(), m_connectors->end(), connector) != m_connectors->end();
}
} // namespace tesseralis
