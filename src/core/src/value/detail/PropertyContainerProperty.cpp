#include "value/detail/PropertyContainerProperty.h"

#include "object/Exception.h"
#include "object/Logger.h"
#include "object/Mutex.h"
#include "object/Tesseralis.h"
#include "value/PropertyContainer.h"

#include <algorithm>
#include <ostream>
#include <unordered_map>

namespace tesseralis {
namespace {
/// Links in one chain that a change follows; what lies behind is left as it is, since each takes a part of the stack.
constexpr int c_longestChain = 1000;

/// How often, in all, a change may come back to a value while it is on its way: values that never become equal, such as
/// an array and a map or vectors with a part that is no number, would be passed on for ever.
constexpr int c_mostReturns = 16;

/// The walk of a change along links, from the first value on.
struct Walk
{
    int depth = 0;
    unsigned int number = 0;
    bool isCutShort = false; // which is logged once
};
thread_local Walk t_walk;

/// Raises a counter for its own life.
class Counting
{
public:
    explicit Counting(int & counter) : m_counter(counter) { ++m_counter; }
    ~Counting() { --m_counter; }
    Counting(Counting const &) = delete;
    Counting & operator=(Counting const &) = delete;

private:
    int & m_counter;
};

/// The name for the log; empty for an object that has left the registry.
std::string nameOf(PropertyContainer const & container)
{
    return Tesseralis::Get().HasObject(&container) ? container.GetObjectName() : std::string();
}

struct ContainerTable
{
    Mutex mutex;
    std::unordered_map<Variant const *, PropertyContainer *> containers;
};

ContainerTable & GetContainerTable()
{
    static ContainerTable * const s_table = new ContainerTable;
    return *s_table;
}

/// Runs a change; what it throws goes to the log, introduced by what a function writes to the stream. False if it
/// threw.
template <class Change, class WriteTask>
bool runLogged(Change && change, WriteTask && writeTask)
{
    std::string message = "Unknown error.";
    try {
        change();
        return true;
    } catch (Exception const & exception) {
        message = exception.GetMessage();
    } catch (...) {
    }
    std::ostream & stream = Logger::Get().error();
    writeTask(stream);
    stream << ": " << std::endl << message << std::endl << std::endl;
    return false;
}
} // namespace

PropertyContainerProperty::PropertyContainerProperty(PropertyContainer & container, std::string const & name,
                                                     Variant const & value)
    : m_container(container), m_name(name), m_value(value)
{
    ContainerTable & table = GetContainerTable();
    MutexLocker locker(table.mutex);
    table.containers.emplace(&m_value, &m_container);
}

PropertyContainerProperty::~PropertyContainerProperty()
{
    {
        ContainerTable & table = GetContainerTable();
        MutexLocker locker(table.mutex);
        table.containers.erase(&m_value);
    }
    for (PropertyContainerProperty * const peer : m_peers) {
        std::erase(peer->m_peers, this);
        if (peer->m_link == this) {
            peer->m_link = nullptr;
        }
    }
}

PropertyContainer * PropertyContainerProperty::GetPropertyContainer(Variant const * value)
{
    ContainerTable & table = GetContainerTable();
    MutexLocker locker(table.mutex);
    auto const found = table.containers.find(value);
    return found == table.containers.end() ? nullptr : found->second;
}

std::string const & PropertyContainerProperty::GetDescription() const
{
    // Links can form a ring: a second walker of half the speed is then caught up with.
    PropertyContainerProperty const * property = this;
    PropertyContainerProperty const * slow = this;
    for (bool even = false; property->m_description.empty() && property->m_link != nullptr; even = !even) {
        property = property->m_link;
        slow = even ? slow->m_link : slow;
        if (property == slow) {
            break;
        }
    }
    return property->m_description;
}

PropertyContainerLink PropertyContainerProperty::GetLink() const
{
    return m_link == nullptr ? PropertyContainerLink() : PropertyContainerLink(&m_link->m_container, m_link->m_name);
}

void PropertyContainerProperty::join(PropertyContainerProperty & target)
{
    if (&target == this || &target == m_link) {
        return;
    }

    unlink();
    m_link = &target;
    m_peers.push_back(&target);
    target.m_peers.push_back(this);
}

void PropertyContainerProperty::unlink()
{
    if (m_link == nullptr) {
        return;
    }

    // The two may be joined twice, once by the link of each.
    auto const dropOne = [](auto & peers, PropertyContainerProperty * property) {
        peers.erase(std::find(peers.begin(), peers.end(), property));
    };
    dropOne(m_peers, m_link);
    dropOne(m_link->m_peers, this);
    m_link = nullptr;
}

void PropertyContainerProperty::spread()
{
    if (m_peers.empty()) {
        return;
    }
    if (t_walk.depth == 0) {
        t_walk = {0, t_walk.number + 1, false};
    }
    m_returns = m_walk == t_walk.number ? m_returns : 0;
    m_walk = t_walk.number;
    if (m_spreading > 0 && ++m_returns > c_mostReturns) {
        return;
    }

    Counting const inWalk(t_walk.depth);
    Counting const here(m_spreading);
    for (PropertyContainerProperty * const peer : std::vector<PropertyContainerProperty *>(m_peers)) {
        // Whoever heard of the change before may have removed the link or the other property.
        if (std::find(m_peers.begin(), m_peers.end(), peer) != m_peers.end()) {
            assignTo(*peer);
        }
    }
}

void PropertyContainerProperty::assignTo(PropertyContainerProperty & peer)
{
    auto const change = [&] {
        if (m_value == peer.m_value || t_walk.isCutShort) {
            return;
        }
        if (t_walk.depth > c_longestChain) {
            t_walk.isCutShort = true;
            throw Exception("The chain of links is longer than %d!", c_longestChain);
        }
        peer.m_value.assign(m_value);
    };
    runLogged(change, [&](std::ostream & stream) {
        std::string const name = nameOf(m_container);
        stream << "[" << name << "] Unable to assign value of " << name << "." << m_name << " to "
               << nameOf(peer.m_container) << "." << peer.m_name;
    });
}

PropertyContainerExpression PropertyContainerProperty::GetExpression() const
{
    if (m_expression == nullptr) {
        return PropertyContainerExpression();
    }
    PropertyContainerExpression copy(*m_expression);
    copy.disconnect(const_cast<PropertyContainerProperty *>(this), &PropertyContainerProperty::triggerModified);
    return copy;
}

void PropertyContainerProperty::SetExpression(PropertyContainerExpression const & expression)
{
    if (!expression.IsValid()) {
        m_expression.reset();
        return;
    }
    auto const copy = std::make_shared<PropertyContainerExpression>(expression);
    m_expression = copy;
    copy->connect(this, &PropertyContainerProperty::triggerModified);
}

void PropertyContainerProperty::triggerModified(Observable const &, ObservableEvent const &)
{
    // Held, since the evaluation or those who hear of the new value may replace it.
    std::shared_ptr<PropertyContainerExpression> const expression = m_expression;
    if (expression == nullptr) {
        return;
    }

    expression->SetEnabled(false); // so that its own effects don't fire it again
    // The evaluation may remove this property. So nothing of it is touched behind that before it is found to be there.
    PropertyContainer & container = m_container;
    Variant & value = m_value;
    std::string const containerName = nameOf(container);
    std::string const name = m_name;
    auto const change = [&] {
        Variant const result = expression->evaluate(&container);
        if (GetPropertyContainer(&value) == &container && m_expression == expression) {
            value.assign(result);
        }
    };
    bool const done = runLogged(change, [&](std::ostream & stream) {
        stream << "[" << containerName << "] Unable to assign value of expression to " << containerName << "." << name;
    });
    expression->SetEnabled(done);
}
} // namespace tesseralis
