#pragma once

#include "plugin/Renderer.h"
#include "plugin/ViewPlugin.h"

#include <string>

namespace tesseralis {
extern template class BasicPlugin<Renderer>;
extern template class ViewPlugin<Renderer>;

/// The plug-in of a renderer module.
class TESSERALIS_API RendererPlugin : public ViewPlugin<Renderer>
{
public:
    explicit RendererPlugin(unsigned int attributes = 0);
    RendererPlugin(std::string const & name, unsigned int attributes);
    ~RendererPlugin() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    void display(Canvas & canvas) override;
    void overlay(Canvas & canvas) override;

    std::string GetObjectTypeName() const override;

protected:
    explicit RendererPlugin(RendererPlugin *);
    void constructRendererPlugin(std::string const & name, unsigned int attributes);
    void destroyRendererPlugin();
};
} // namespace tesseralis
