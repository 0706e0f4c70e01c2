#pragma once

#include <algorithm>
#include <memory>
#include <vector>

namespace tesseralis::detail {
/// The plug-ins of one kind in a viewer, in their order and none owned. A change replaces the whole list, so that what
/// is called during a walk may change the order: the walk goes on along the old one, without those that have left.
template <class P>
class PluginStack
{
public:
    using List = std::vector<P *>;

    List const & Get() const { return *m_plugins; }
    bool Has(P const * plugin) const
    {
        return std::find(m_plugins->begin(), m_plugins->end(), plugin) != m_plugins->end();
    }
    /// The neighbour; null at the end and for a plug-in that isn't here.
    P * GetPrevious(P const * plugin) const { return GetNeighbour(m_plugins->rbegin(), m_plugins->rend(), plugin); }
    P * GetNext(P const * plugin) const { return GetNeighbour(m_plugins->begin(), m_plugins->end(), plugin); }
    /// Null if there is none.
    P * GetFirst() const { return m_plugins->empty() ? nullptr : m_plugins->front(); }
    P * GetLast() const { return m_plugins->empty() ? nullptr : m_plugins->back(); }

    /// At the end, if there is no such plug-in to stand before.
    void insert(P * plugin, P const * before = nullptr)
    {
        List plugins = *m_plugins;
        plugins.insert(std::find(plugins.begin(), plugins.end(), before), plugin);
        assign(std::move(plugins));
    }
    /// Every occurrence.
    void remove(P const * plugin)
    {
        List plugins = *m_plugins;
        std::erase(plugins, plugin);
        assign(std::move(plugins));
    }
    void assign(List plugins) { m_plugins = std::make_shared<List>(std::move(plugins)); }

    /// Calls for each plug-in, from front to back.
    template <class Call>
    void forEach(Call const & call) const
    {
        std::shared_ptr<List const> const plugins = m_plugins;
        for (P * const plugin : *plugins) {
            if (plugins == m_plugins || Has(plugin)) {
                call(*plugin);
            }
        }
    }
    /// Calls for each plug-in, from back to front, until a call returns true, and returns whether one did.
    template <class Call>
    bool FindFromBack(Call const & call) const
    {
        std::shared_ptr<List const> const plugins = m_plugins;
        return std::any_of(plugins->rbegin(), plugins->rend(),
                           [&](P * plugin) { return (plugins == m_plugins || Has(plugin)) && call(*plugin); });
    }

private:
    template <class Position>
    static P * GetNeighbour(Position begin, Position end, P const * plugin)
    {
        Position const found = std::find(begin, end, plugin);
        return found == end || found + 1 == end ? nullptr : *(found + 1);
    }

    std::shared_ptr<List const> m_plugins = std::make_shared<List>();
};
} // namespace tesseralis::detail
