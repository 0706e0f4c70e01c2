#include "plugin/ImporterPlugin.h"

namespace tesseralis {
ImporterPlugin::ImporterPlugin(unsigned int attributes) : ImporterPlugin(GetTypeName(), attributes) {}

ImporterPlugin::ImporterPlugin(std::string const & name, unsigned int attributes)
    : ImporterPlugin(static_cast<ImporterPlugin *>(nullptr))
{
    constructImporterPlugin(name, attributes);
}

ImporterPlugin::ImporterPlugin(ImporterPlugin *) : BasicPlugin(static_cast<BasicPlugin *>(nullptr)) {}

ImporterPlugin::~ImporterPlugin()
{
    destroyImporterPlugin();
}

void ImporterPlugin::constructImporterPlugin(std::string const & name, unsigned int attributes)
{
    constructBasicPlugin(name, attributes);
}

void ImporterPlugin::destroyImporterPlugin()
{
    destroyBasicPlugin();
}

std::string ImporterPlugin::GetTypeName()
{
    return "importer";
}

Object * ImporterPlugin::createObject(std::string const & name, unsigned int attributes)
{
    return new ImporterPlugin(name, attributes);
}

std::string ImporterPlugin::GetObjectTypeName() const
{
    return GetTypeName();
}

Loader * ImporterPlugin::load(Resource & resource)
{
    return forward("load", [&](Importer & importer) { return importer.load(resource); });
}
} // namespace tesseralis
