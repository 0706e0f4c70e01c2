#include "object/Dispatcher.h"
#include "object/Tesseralis.h"
#include "plugin/CompositorPlugin.h"
#include "plugin/Console.h"
#include "plugin/EditorPlugin.h"
#include "plugin/Environment.h"
#include "plugin/ExporterPlugin.h"
#include "plugin/HostPlugin.h"
#include "plugin/ImporterPlugin.h"
#include "plugin/InteractorPlugin.h"
#include "plugin/RendererPlugin.h"
#include "plugin/Session.h"
#include "view/Viewer.h"
#include "view/Viewport.h"

namespace tesseralis {
void registerObjectTypes()
{
    Tesseralis & registry = Tesseralis::Get();
    registry.registerObjectType<CompositorPlugin>();
    registry.registerObjectType<Console>();
    registry.registerObjectType<Container>();
    registry.registerObjectType<Dispatcher>();
    registry.registerObjectType<EditorPlugin>();
    registry.registerObjectType<Environment>();
    registry.registerObjectType<ExporterPlugin>();
    registry.registerObjectType<HostPlugin>();
    registry.registerObjectType<ImporterPlugin>();
    registry.registerObjectType<InteractorPlugin>();
    registry.registerObjectType<PluginContainer>();
    registry.registerObjectType<RendererPlugin>();
    registry.registerObjectType<Session>();
    registry.registerObjectType<Viewer>();
    registry.registerObjectType<Viewport>();
}
} // namespace tesseralis
