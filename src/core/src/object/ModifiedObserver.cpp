#include "object/ModifiedObserver.h"

namespace tesseralis {
ModifiedObserver::ModifiedObserver() = default;

ModifiedObserver::ModifiedObserver(ModifiedObserver const & source) : Observer(source), m_enabled(source.m_enabled)
{
    for (std::shared_ptr<Connector> const & connector : source.m_connectors) {
        m_connectors.emplace_back(connector->GetCloned());
    }
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

ModifiedObserver::~ModifiedObserver() = default;

void ModifiedObserver::modified(Observable const & observable, ObservableEvent const & event)
{
    // Connectors may come and go while one is called: one that went makes its successor move up to its place.
    std::size_t position = 0;
    for (std::size_t calls = m_connectors.size(); m_enabled && calls > 0 && position < m_connectors.size(); --calls) {
        std::shared_ptr<Connector> const connector = m_connectors[position];
        connector->modified(observable, event);
        if (position < m_connectors.size() && m_connectors[position] == connector) {
            ++position;
        }
    }
}
} // namespace tesseralis
