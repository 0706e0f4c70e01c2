#include "plugin/ExporterPlugin.h"

namespace tesseralis {
ExporterPlugin::ExporterPlugin(unsigned int attributes) : ExporterPlugin(GetTypeName(), attributes) {}

ExporterPlugin::ExporterPlugin(std::string const & name, unsigned int attributes)
    : ExporterPlugin(static_cast<ExporterPlugin *>(nullptr))
{
    constructExporterPlugin(name, attributes);
}

ExporterPlugin::ExporterPlugin(ExporterPlugin *) : BasicPlugin(static_cast<BasicPlugin *>(nullptr)) {}

ExporterPlugin::~ExporterPlugin()
{
    destroyExporterPlugin();
}

void ExporterPlugin::constructExporterPlugin(std::string const & name, unsigned int attributes)
{
    constructBasicPlugin(name, attributes);
}

void ExporterPlugin::destroyExporterPlugin()
{
    destroyBasicPlugin();
}

std::string ExporterPlugin::GetTypeName()
{
    return "exporter";
}

Object * ExporterPlugin::createObject(std::string const & name, unsigned int attributes)
{
    return new ExporterPlugin(name, attributes);
}

std::string ExporterPlugin::GetObjectTypeName() const
{
    return GetTypeName();
}

Saver * ExporterPlugin::save(Resource & resource)
{
    return forward("save", [&](Exporter & exporter) { return exporter.save(resource); });
}
} // namespace tesseralis
