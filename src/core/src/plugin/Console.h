#pragma once

#include "plugin/Container.h"

#include <list>
#include <string>

namespace tesseralis {
class HostPlugin;
class Variant;

/// A container of host plug-ins, of which the first one evaluates texts. What the hosts have to say meanwhile comes in
/// through four channels, which do nothing here: a front end derives from this class and shows them.
class TESSERALIS_API Console : public Container
{
public:
    explicit Console(unsigned int attributes);
    Console(std::string const & name, unsigned int attributes);
    ~Console() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    virtual void message(Plugin *, std::string const &) {}
    virtual void information(Plugin *, std::string const &) {}
    virtual void warning(Plugin *, std::string const &) {}
    virtual void error(Plugin *, std::string const &) {}

    using Container::add;
    using Container::remove;
    void add(Plugin * plugin) override;
    void remove(Plugin * plugin) override;
    virtual void add(HostPlugin * host);
    virtual void remove(HostPlugin * host);

    /// What the host that was added first makes of a text; undefined without any, and where that fails.
    virtual Variant evaluate(std::string const & text) const;

    std::string GetObjectTypeName() const override;

protected:
    using Container::initialize;
    using Container::uninitialize;
    void initialize(Plugin * plugin) override;
    void uninitialize(Plugin * plugin) override;
    virtual void initialize(HostPlugin * host);
    virtual void uninitialize(HostPlugin * host);

    explicit Console(Console *);
    void constructConsole(std::string const & name, unsigned int attributes);
    void destroyConsole();

private:
    friend class ConsoleHostIterator;

    std::list<HostPlugin *> m_hosts; // in order of addition
};

/// Walks the hosts of a console in the order of their addition. Takes no lock.
class TESSERALIS_API ConsoleHostIterator : public detail::PointerIterator<std::list<HostPlugin *>>
{
public:
    explicit ConsoleHostIterator(Console & console) : PointerIterator(console.m_hosts) {}
};
} // namespace tesseralis
