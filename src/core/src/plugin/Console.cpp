#include "plugin/Console.h"

#include "plugin/HostPlugin.h"
#include "value/Variant.h"

namespace tesseralis {
Console::Console(unsigned int attributes) : Console(GetTypeName(), attributes) {}

Console::Console(std::string const & name, unsigned int attributes) : Console(static_cast<Console *>(nullptr))
{
    constructConsole(name, attributes);
}

Console::Console(Console *) : Container(static_cast<Container *>(nullptr)) {}

Console::~Console()
{
    destroyConsole();
}

void Console::constructConsole(std::string const & name, unsigned int attributes)
{
    constructContainer(name, attributes);
}

void Console::destroyConsole()
{
    destroyContainer();
}

std::string Console::GetTypeName()
{
    return "console";
}

Object * Console::createObject(std::string const & name, unsigned int attributes)
{
    return new Console(name, attributes);
}

std::string Console::GetObjectTypeName() const
{
    return GetTypeName();
}

void Console::add(Plugin * plugin)
{
    if (auto * const host = dynamic_cast<HostPlugin *>(plugin)) {
        add(host);
    } else {
        Container::add(plugin);
    }
}

void Console::remove(Plugin * plugin)
{
    if (auto * const host = dynamic_cast<HostPlugin *>(plugin)) {
        remove(host);
    } else {
        Container::remove(plugin);
    }
}

void Console::add(HostPlugin * host)
{
    MutexLocker locker(m_mutex);
    if (host != nullptr) {
        m_hosts.push_back(host);
        Container::add(static_cast<Plugin *>(host));
    }
}

void Console::remove(HostPlugin * host)
{
    MutexLocker locker(m_mutex);
    if (HasPlugin(host)) {
        Container::remove(static_cast<Plugin *>(host));
        m_hosts.remove(host);
    }
}

Variant Console::evaluate(std::string const & text) const
{
    return m_hosts.empty() ? Variant() : m_hosts.front()->evaluate(text, nullptr);
}

void Console::initialize(Plugin * plugin)
{
    if (auto * const host = dynamic_cast<HostPlugin *>(plugin)) {
        initialize(host);
    } else {
        Container::initialize(plugin);
    }
}

void Console::uninitialize(Plugin * plugin)
{
    if (auto * const host = dynamic_cast<HostPlugin *>(plugin)) {
        uninitialize(host);
    } else {
        Container::uninitialize(plugin);
    }
}

void Console::initialize(HostPlugin * host)
{
    Container::initialize(static_cast<Plugin *>(host));
}

void Console::uninitialize(HostPlugin * host)
{
    Container::uninitialize(static_cast<Plugin *>(host));
}
} // namespace tesseralis
