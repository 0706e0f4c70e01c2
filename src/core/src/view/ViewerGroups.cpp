// Which plug-ins of a viewer exclude one another.

#include "value/Variant.h"
#include "view/Viewer.h"
#include "view/detail/PluginKind.h"

#include <algorithm>

namespace tesseralis {
void Viewer::group(std::set<Plugin *> const & plugins)
{
    for (Plugin * const plugin : plugins) {
        ungroup(plugin);
    }
    addToGroups(plugins);
}

void Viewer::group(Plugin * first, Plugin * second)
{
    Group members = GetGroup(first);
    members.merge(GetGroup(second));
    ungroup(first);
    ungroup(second);
    // What is left of the former groups says nothing beside the new one, and must not be found in its place.
    std::erase_if(m_groups, [&](Group const & former) {
        return std::includes(members.begin(), members.end(), former.begin(), former.end());
    });
    addToGroups(members);
}

void Viewer::ungroup(Plugin * plugin)
{
    if (HasPlugin(plugin)) {
        leaveGroups(plugin);
    }
}

std::set<Plugin *> Viewer::GetGroup(Plugin * plugin) const
{
    if (!HasPlugin(plugin)) {
        return {};
    }
    auto const found = FindGroup(plugin);
    return found != m_groups.end() ? *found : Group{plugin};
}

std::set<Viewer::Group>::const_iterator Viewer::FindGroup(Plugin * plugin) const
{
    return std::find_if(m_groups.begin(), m_groups.end(), [&](Group const & group) { return group.contains(plugin); });
}

void Viewer::addToGroups(Group const & plugins)
{
    Group members = plugins;
    members.erase(nullptr);
    for (Plugin * const member : members) {
        member->addObserver(&m_destructionObserver);
    }
    m_groups.insert(std::move(members));
}

/// Out of the first group that holds it.
void Viewer::leaveGroup(Plugin * plugin)
{
    auto const found = FindGroup(plugin);
    if (found != m_groups.end()) {
        Group members = *found;
        members.erase(plugin);
        m_groups.erase(found);
        m_groups.insert(std::move(members));
    }
}

void Viewer::leaveGroups(Plugin * plugin)
{
    while (FindGroup(plugin) != m_groups.end()) {
        leaveGroup(plugin);
    }
}

void Viewer::pluginDestroyed(Plugin const & dying, ObservableDestructionEvent const &)
{
    auto * const plugin = const_cast<Plugin *>(&dying);
    m_translators.erase(plugin);
    leaveGroups(plugin);
}

void Viewer::pluginPropertyChanged(Plugin const & plugin, PropertyContainerChangeEvent const & event)
{
    if (event.GetName() == "Enabled") {
        activated(const_cast<Plugin *>(&plugin));
    }
}

void Viewer::activated(Plugin * plugin)
{
    if (plugin != nullptr && detail::IsEnabled(*plugin)) {
        disableOthers(plugin);
    }
    detail::callAsKind(plugin, [this](auto * typed) { activated(typed); });
}

void Viewer::disableOthers(Plugin * plugin)
{
    auto const found = FindGroup(plugin);
    if (m_groups.contains({plugin}) || found == m_groups.end()) {
        return;
    }
    // A copy, since those who hear of it may change the groups, or end a member.
    Group const members = *found; // NOLINT(performance-unnecessary-copy-initialization)
    for (Plugin * const member : members) {
        if (member != plugin && FindGroup(member) != m_groups.end()) {
            member->GetProperty("Enabled") = false;
        }
    }
}
} // namespace tesseralis
