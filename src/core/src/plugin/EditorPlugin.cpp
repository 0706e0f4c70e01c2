#include "plugin/EditorPlugin.h"

#include "value/Variant.h"

namespace tesseralis {
EditorPlugin::EditorPlugin(unsigned int attributes) : EditorPlugin(GetTypeName(), attributes) {}

EditorPlugin::EditorPlugin(std::string const & name, unsigned int attributes)
    : EditorPlugin(static_cast<EditorPlugin *>(nullptr))
{
    constructEditorPlugin(name, attributes);
}

EditorPlugin::EditorPlugin(EditorPlugin *) : BasicPlugin(static_cast<BasicPlugin *>(nullptr)) {}

EditorPlugin::~EditorPlugin()
{
    destroyEditorPlugin();
}

void EditorPlugin::constructEditorPlugin(std::string const & name, unsigned int attributes)
{
    constructBasicPlugin(name, attributes);
    GetProperty("Enabled").require(Variant(false));
}

void EditorPlugin::destroyEditorPlugin()
{
    destroyBasicPlugin();
}

std::string EditorPlugin::GetTypeName()
{
    return "editor";
}

Object * EditorPlugin::createObject(std::string const & name, unsigned int attributes)
{
    return new EditorPlugin(name, attributes);
}

std::string EditorPlugin::GetObjectTypeName() const
{
    return GetTypeName();
}

Widget * EditorPlugin::GetWidget()
{
    return forward("GetWidget", [](Editor & editor) { return editor.GetWidget(); });
}

std::list<Widget *> EditorPlugin::GetToolWidgets()
{
    return forward("GetToolWidgets", [](Editor & editor) { return editor.GetToolWidgets(); });
}

std::list<Widget *> EditorPlugin::GetDockWidgets()
{
    return forward("GetDockWidgets", [](Editor & editor) { return editor.GetDockWidgets(); });
}

std::list<Action *> EditorPlugin::GetMainActions()
{
    return forward("GetMainActions", [](Editor & editor) { return editor.GetMainActions(); });
}

std::list<Action *> EditorPlugin::GetQuickActions()
{
    return forward("GetQuickActions", [](Editor & editor) { return editor.GetQuickActions(); });
}

void EditorPlugin::onInitialized()
{
    forward("onInitialized", [](Editor & editor) { editor.onInitialized(); });
}
} // namespace tesseralis
