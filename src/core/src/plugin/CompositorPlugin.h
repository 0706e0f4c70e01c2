#pragma once

#include "plugin/Compositor.h"
#include "plugin/ViewPlugin.h"

#include <string>

namespace tesseralis {
extern template class BasicPlugin<Compositor>;
extern template class ViewPlugin<Compositor>;

/// The plug-in of a compositor module.
class TESSERALIS_API CompositorPlugin : public ViewPlugin<Compositor>
{
public:
    explicit CompositorPlugin(unsigned int attributes = 0);
    CompositorPlugin(std::string const & name, unsigned int attributes);
    ~CompositorPlugin() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    void addDisplayable(Displayable * displayable) override;
    void removeDisplayable(Displayable * displayable) override;
    bool display(std::list<Displayable *> const & displayables,
                 std::map<Displayable *, unsigned int> const & updates) override;

    std::string GetObjectTypeName() const override;

protected:
    explicit CompositorPlugin(CompositorPlugin *);
    void constructCompositorPlugin(std::string const & name, unsigned int attributes);
    void destroyCompositorPlugin();
};
} // namespace tesseralis
