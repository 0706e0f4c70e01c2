#include "HostConsole.h"

#include "Modules.h"
#include "Output.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "plugin/HostPlugin.h"

#include <algorithm>
#include <cctype>
#include <iostream>

namespace tesseralis::host {
namespace {
constexpr unsigned int c_unsaved = ObjectAttribute::Registered | ObjectAttribute::Destroyable;

bool IsHostModule(std::string const & file)
{
    std::string type = Plugin::GetPluginType(file);
    std::transform(type.begin(), type.end(), type.begin(), [](unsigned char c) { return std::tolower(c); });
    return type == HostPlugin::GetTypeName();
}
} // namespace

HostConsole::HostConsole(std::string const & name, unsigned int attributes) : Console(static_cast<Console *>(nullptr))
{
    constructConsole(name, attributes);
}

HostConsole::~HostConsole()
{
    destroyConsole();
}

Object * HostConsole::createObject(std::string const & name, unsigned int attributes)
{
    return new HostConsole(name, attributes);
}

Console & HostConsole::find(Modules const & modules)
{
    for (Object * const object : Tesseralis::Get().GetObjects(GetTypeName())) {
        auto & console = dynamic_cast<Console &>(*object);
        if (!ConsoleHostIterator(console).IsAtEnd()) {
            return console;
        }
    }

    auto * const console = new HostConsole(GetTypeName(), c_unsaved);
    for (std::string const & file : modules.GetFiles()) {
        if (modules.IsTrusted(file) && IsHostModule(file)) {
            auto * const plugin = new HostPlugin(Plugin::GetPluginName(file), c_unsaved);
            plugin->SetFilename(file);
            console->add(static_cast<Plugin *>(plugin));
            modules.check(file, plugin->GetObjectName());
        }
    }
    if (ConsoleHostIterator(*console).IsAtEnd()) {
        throw Exception("There is no host to evaluate with in %s.", modules.GetDescription().c_str());
    }
    return *console;
}

void HostConsole::message(Plugin *, std::string const & text)
{
    GetOutput() << text << std::endl;
}

void HostConsole::information(Plugin * plugin, std::string const & text)
{
    GetOutput() << "information from " << plugin->GetObjectName() << ": " << text << std::endl;
}

void HostConsole::warning(Plugin * plugin, std::string const & text)
{
    std::cerr << "warning from " << plugin->GetObjectName() << ": " << text << std::endl;
}

void HostConsole::error(Plugin * plugin, std::string const & text)
{
    std::cerr << "error from " << plugin->GetObjectName() << ": " << text << std::endl;
}
} // namespace tesseralis::host
