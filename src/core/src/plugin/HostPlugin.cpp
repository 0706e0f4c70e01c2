#include "plugin/HostPlugin.h"

#include "object/Exception.h"
#include "object/Guard.h"
#include "plugin/Console.h"
#include "value/Variant.h"

#include <iostream>

namespace tesseralis {
HostPlugin::HostPlugin(unsigned int attributes) : HostPlugin(GetTypeName(), attributes) {}

HostPlugin::HostPlugin(std::string const & name, unsigned int attributes)
    : HostPlugin(static_cast<HostPlugin *>(nullptr))
{
    constructHostPlugin(name, attributes);
}

HostPlugin::HostPlugin(HostPlugin *) : BasicPlugin(static_cast<BasicPlugin *>(nullptr)) {}

HostPlugin::~HostPlugin()
{
    destroyHostPlugin();
}

void HostPlugin::constructHostPlugin(std::string const & name, unsigned int attributes)
{
    constructBasicPlugin(name, attributes);
}

void HostPlugin::destroyHostPlugin()
{
    destroyBasicPlugin();
}

std::string HostPlugin::GetTypeName()
{
    return "host";
}

Object * HostPlugin::createObject(std::string const & name, unsigned int attributes)
{
    return new HostPlugin(name, attributes);
}

std::string HostPlugin::GetObjectTypeName() const
{
    return GetTypeName();
}

Variant HostPlugin::evaluate(std::string const & text, Object * object) const
{
    Host const * const host = GetInstance();
    if (host == nullptr) {
        return Variant();
    }
    detail::ModuleCall const running(*this);
    try {
        return host->evaluate(text, object);
    } catch (...) {
        running.HasPlugin() ? reportEvaluateException() : detail::logCaughtException();
        return Variant();
    }
}

void HostPlugin::reportEvaluateException() const noexcept
{
    detail::runGuarded([this] {
        std::cerr << GetObjectName() << " (" << GetFilename() << "): ";
        try {
            throw;
        } catch (Exception const & exception) {
            std::cerr << "Error in 'evaluate' - " << exception.GetMessage() << std::endl;
        } catch (...) {
            std::cerr << "Unknown error in 'evaluate'." << std::endl;
        }
    });
}

void HostPlugin::message(std::string const & text)
{
    if (auto * const console = dynamic_cast<Console *>(GetContainer())) {
        console->message(this, text);
    }
}

void HostPlugin::information(std::string const & text)
{
    if (auto * const console = dynamic_cast<Console *>(GetContainer())) {
        console->information(this, text);
    }
}

void HostPlugin::warning(std::string const & text)
{
    if (auto * const console = dynamic_cast<Console *>(GetContainer())) {
        console->warning(this, text);
    }
}

void HostPlugin::error(std::string const & text)
{
    if (auto * const console = dynamic_cast<Console *>(GetContainer())) {
        console->error(this, text);
    }
}
} // namespace tesseralis
