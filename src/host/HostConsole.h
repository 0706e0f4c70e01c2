#pragma once

#include "plugin/Console.h"

#include <string>

namespace tesseralis::host {
/// The console of this program: its channels go to the terminal. Messages and information go to standard output,
/// warnings and errors to standard error, each but the plain message with what it is.
class HostConsole : public Console
{
public:
    HostConsole(std::string const & name, unsigned int attributes);
    ~HostConsole() override;

    static Object * createObject(std::string const & name, unsigned int attributes);
    /// The first console in the registry that has a host, or a new one with those of the module folders' hosts; it and
    /// they don't go to documents. Throws Exception if there is no host.
    static Console & find(class Modules const & modules);

    void message(Plugin * plugin, std::string const & text) override;
    void information(Plugin * plugin, std::string const & text) override;
    void warning(Plugin * plugin, std::string const & text) override;
    void error(Plugin * plugin, std::string const & text) override;
};
} // namespace tesseralis::host
