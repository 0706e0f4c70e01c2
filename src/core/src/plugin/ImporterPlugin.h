#pragma once

#include "plugin/BasicPlugin.h"
#include "plugin/Importer.h"

#include <string>

namespace tesseralis {
extern template class BasicPlugin<Importer>;

/// The plug-in of an importer module.
class TESSERALIS_API ImporterPlugin : public BasicPlugin<Importer>
{
public:
    explicit ImporterPlugin(unsigned int attributes = 0);
    ImporterPlugin(std::string const & name, unsigned int attributes);
    ~ImporterPlugin() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    Loader * load(Resource & resource) override;

    std::string GetObjectTypeName() const override;

protected:
    explicit ImporterPlugin(ImporterPlugin *);
    void constructImporterPlugin(std::string const & name, unsigned int attributes);
    void destroyImporterPlugin();
};
} // namespace tesseralis
