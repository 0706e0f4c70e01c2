#include "plugin/Container.h"

#include "plugin/EditorPlugin.h"

namespace tesseralis {
Container::Container(unsigned int attributes) : Container(GetTypeName(), attributes) {}

Container::Container(std::string const & name, unsigned int attributes) : Container(static_cast<Container *>(nullptr))
{
    constructContainer(name, attributes);
}

Container::Container(Container *) : PluginContainer(static_cast<PluginContainer *>(nullptr)) {}

Container::~Container()
{
    destroyContainer();
}

void Container::constructContainer(std::string const & name, unsigned int attributes)
{
    constructPluginContainer(name, attributes);
}

void Container::destroyContainer()
{
    destroyPluginContainer();
}

std::string Container::GetTypeName()
{
    return "container";
}

Object * Container::createObject(std::string const & name, unsigned int attributes)
{
    return new Container(name, attributes);
}

std::string Container::GetObjectTypeName() const
{
    return GetTypeName();
}

void Container::add(Plugin * plugin)
{
    if (auto * const editor = dynamic_cast<EditorPlugin *>(plugin)) {
        add(editor);
    } else {
        PluginContainer::add(plugin);
    }
}

void Container::remove(Plugin * plugin)
{
    if (auto * const editor = dynamic_cast<EditorPlugin *>(plugin)) {
        remove(editor);
    } else {
        PluginContainer::remove(plugin);
    }
}

void Container::add(EditorPlugin * editor)
{
    MutexLocker locker(m_mutex);
    if (editor != nullptr) {
        m_editors.push_back(editor);
        PluginContainer::add(editor);
    }
}

void Container::remove(EditorPlugin * editor)
{
    MutexLocker locker(m_mutex);
    if (HasPlugin(editor)) {
        PluginContainer::remove(editor);
        m_editors.remove(editor);
    }
}

void Container::initialize(Plugin * plugin)
{
    if (auto * const editor = dynamic_cast<EditorPlugin *>(plugin)) {
        initialize(editor);
    } else {
        PluginContainer::initialize(plugin);
    }
}

void Container::uninitialize(Plugin * plugin)
{
    if (auto * const editor = dynamic_cast<EditorPlugin *>(plugin)) {
        uninitialize(editor);
    } else {
        PluginContainer::uninitialize(plugin);
    }
}

void Container::initialize(EditorPlugin * editor)
{
    PluginContainer::initialize(editor);
}

void Container::uninitialize(EditorPlugin * editor)
{
    PluginContainer::uninitialize(editor);
}
} // namespace tesseralis
