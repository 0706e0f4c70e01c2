#pragma once

#include "plugin/BasicPlugin.h"

#include <string>

namespace tesseralis {
class Controller;

/// A plug-in for a viewer. Its property "Enabled", false at first, tells the viewer whether to call it. T is
/// Renderer, Interactor or Compositor.
template <class T>
class TESSERALIS_API ViewPlugin : public BasicPlugin<T>
{
public:
    void idle() override;
    void reshape(unsigned int width, unsigned int height) override;
    bool button(Controller const & controller) override;
    bool cursor(Controller const & controller) override;
    std::string GetButtonRole(unsigned int button) const override;
    std::string GetCursorRole(unsigned int cursor) const override;

protected:
    explicit ViewPlugin(ViewPlugin *);
    void constructViewPlugin(std::string const & name, unsigned int attributes);
    void destroyViewPlugin();
};
} // namespace tesseralis
