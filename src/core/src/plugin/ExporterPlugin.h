#pragma once

#include "plugin/BasicPlugin.h"
#include "plugin/Exporter.h"

#include <string>

namespace tesseralis {
extern template class BasicPlugin<Exporter>;

/// The plug-in of an exporter module.
class TESSERALIS_API ExporterPlugin : public BasicPlugin<Exporter>
{
public:
    explicit ExporterPlugin(unsigned int attributes = 0);
    ExporterPlugin(std::string const & name, unsigned int attributes);
    ~ExporterPlugin() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    Saver * save(Resource & resource) override;

    std::string GetObjectTypeName() const override;

protected:
    explicit ExporterPlugin(ExporterPlugin *);
    void constructExporterPlugin(std::string const & name, unsigned int attributes);
    void destroyExporterPlugin();
};
} // namespace tesseralis
