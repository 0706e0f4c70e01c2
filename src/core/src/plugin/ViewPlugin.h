#pragma once

#include "plugin/BasicPlugin.h"

#include <string>

namespace tesseralis {
class Controller;
class Variant;
enum class CursorShape;

/// A plug-in for a viewer. Its property "Enabled", false at first, tells the viewer whether to call it. T is
/// Renderer, Interactor or Compositor.
///
/// What reaches the viewer does nothing while the plug-in is in no viewer.
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

    /// Asks the viewer for a new picture. The flags say what has changed, in the terms of the compositors, which get
    /// them with the next frame; without any, everything has.
    virtual void update(unsigned int flags);
    virtual void update();
    /// Asks the viewer for another shape of the pointer, and for the former one.
    virtual void requestCursorShape(CursorShape shape);
    virtual void restoreCursorShape();

    /// Whether "Enabled" is true; false if there is no such property. As fast as reading a field, for the one thread
    /// of the viewer.
    bool IsEnabled() const;

protected:
    explicit ViewPlugin(ViewPlugin *);
    void constructViewPlugin(std::string const & name, unsigned int attributes);
    void destroyViewPlugin();

private:
    mutable Variant const * m_enabled = nullptr; // the value of "Enabled" in the layout; null if there is none
    mutable unsigned int m_layout = 0;
};
} // namespace tesseralis
