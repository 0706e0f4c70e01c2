#pragma once

#include "plugin/CompositorPlugin.h"
#include "plugin/InteractorPlugin.h"
#include "plugin/RendererPlugin.h"
#include "value/Variant.h"

namespace tesseralis::detail {
/// Calls with a plug-in as the one of the three kinds of a viewer that it is. False, and no call, if it is of none.
template <class Call>
bool callAsKind(Plugin * plugin, Call const & call)
{
    if (auto * const interactor = dynamic_cast<InteractorPlugin *>(plugin)) {
        call(interactor);
    } else if (auto * const renderer = dynamic_cast<RendererPlugin *>(plugin)) {
        call(renderer);
    } else if (auto * const compositor = dynamic_cast<CompositorPlugin *>(plugin)) {
        call(compositor);
    } else {
        return false;
    }
    return true;
}

/// Whether the property "Enabled" of a plug-in of any kind is true.
inline bool IsEnabled(Plugin const & plugin)
{
    return Variant(true) == plugin.GetProperty("Enabled", Variant(false));
}
} // namespace tesseralis::detail
