// How a viewer is stored in a document and comes back from it.

#include "object/Tesseralis.h"
#include "value/Archive.h"
#include "view/Viewer.h"
#include "view/Viewport.h"
#include "view/detail/PluginKind.h"

namespace tesseralis {
namespace {
/// The registered object of that name if it is a T, else null.
template <class T>
T * findNamed(std::string const & name)
{
    return name.empty() ? nullptr : dynamic_cast<T *>(Tesseralis::Get().GetObject(name));
}
} // namespace

void Viewer::store(ArchiveElement & element)
{
    if (m_viewport != nullptr) {
        element.SetAttribute("viewport", m_viewport->GetObjectName());
    }
    PluginContainer::store(element);
    auto const storeTranslator = [&](auto & plugin) {
        auto const found = m_translators.find(&plugin);
        if (found != m_translators.end()) {
            ArchiveElement child = element.store("translator");
            child.SetAttribute("plugin", plugin.GetObjectName());
            found->second.store(child);
        }
    };
    GetStack<CompositorPlugin>().forEach(storeTranslator);
    forEachDisplayable(storeTranslator);
    storeGroups(element);
}

void Viewer::storeGroups(ArchiveElement & element) const
{
    std::set<std::set<std::string>> groups; // by name, so that the order is the same each time
    for (Group const & group : m_groups) {
        std::set<std::string> names;
        for (Plugin * const member : group) {
            names.insert(member->GetObjectName());
        }
        groups.insert(std::move(names));
    }
    for (std::set<std::string> const & names : groups) {
        if (names.size() < 2) {
            continue;
        }
        ArchiveElement child = element.store("group");
        for (std::string const & name : names) {
            child.store("item").SetAttribute("plugin", name);
        }
    }
}

void Viewer::retrieve(ArchiveElement & element)
{
    PluginContainer::retrieve(element);
    for (ArchiveElement child = element.retrieve("translator"); !child.IsEmpty();
         child = element.retrieve("translator")) {
        retrieveTranslator(child);
    }
    for (ArchiveElement child = element.retrieve("group"); !child.IsEmpty(); child = element.retrieve("group")) {
        retrieveGroup(child);
    }
    SetViewport(findNamed<Viewport>(element.GetAttribute("viewport")));
}

void Viewer::retrieveTranslator(ArchiveElement & element)
{
    Translator translator;
    translator.retrieve(element);
    if (auto * const plugin = findNamed<Plugin>(element.GetAttribute("plugin"))) {
        SetTranslator(plugin, translator);
    }
}

void Viewer::retrieveGroup(ArchiveElement & element)
{
    Group members;
    for (ArchiveElement item = element.retrieve("item"); !item.IsEmpty(); item = element.retrieve("item")) {
        if (auto * const plugin = findNamed<Plugin>(item.GetAttribute("plugin"))) {
            members.insert(plugin);
        }
    }
    if (!members.empty()) {
        group(members);
    }
}

bool Viewer::IsRetrievable(ArchiveElement & element) const
{
    std::string const viewport = element.GetAttribute("viewport");
    bool const isViewportUnread = !viewport.empty() && element.GetParent().IsRetrievable("name", viewport);
    return !isViewportUnread && Container::IsRetrievable(element);
}
} // namespace tesseralis
