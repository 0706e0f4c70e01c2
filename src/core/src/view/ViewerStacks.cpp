// What a viewer does with the plug-ins of each of its three kinds, and the order of all of them.

#include "object/Tesseralis.h"
#include "view/Viewer.h"
#include "view/detail/PluginKind.h"

#include <type_traits>

namespace tesseralis {
template <class P>
void Viewer::addTyped(P * plugin, P * before)
{
    if (plugin == nullptr) {
        return;
    }
    GetStack<P>().insert(plugin, before);
    try {
        Container::add(plugin);
    } catch (...) {
        if (!HasPlugin(plugin)) {
            GetStack<P>().remove(plugin);
        }
        throw;
    }
}

template <class P>
void Viewer::insertTyped(P * plugin, P * before)
{
    if (!HasPlugin(plugin)) {
        addTyped(plugin, HasPlugin(before) ? before : nullptr);
    }
}

template <class P>
void Viewer::removeTyped(P * plugin)
{
    if (!HasPlugin(plugin)) {
        return;
    }
    Container::remove(plugin);
    GetStack<P>().remove(plugin);
    if constexpr (std::is_base_of_v<Displayable, P>) {
        ++m_departures;
        for (auto & [compositor, updates] : m_updates) {
            updates.erase(plugin);
        }
    } else {
        m_updates.erase(plugin);
    }
    leaveGroup(plugin);
}

/// An observer of a plug-in that throws doesn't keep it from coming: what it throws is for the end.
std::exception_ptr Viewer::initializeModule(Plugin * plugin)
{
    try {
        Container::initialize(plugin);
    } catch (...) {
        return std::current_exception();
    }
    return nullptr;
}

template <class P>
void Viewer::initializeDisplayable(P * displayable)
{
    bindContext();
    std::exception_ptr const failure = initializeModule(displayable);
    enterController(displayable);
    GetStack<CompositorPlugin>().forEach([&](CompositorPlugin & compositor) {
        if (HasPlugin(displayable)) {
            compositor.addDisplayable(displayable);
        }
    });
    if (HasPlugin(displayable)) {
        displayable->reshape(m_width, m_height);
    }
    finishInitialization(displayable, failure);
}

void Viewer::initialize(CompositorPlugin * compositor)
{
    bindContext();
    std::exception_ptr const failure = initializeModule(compositor);
    if (HasPlugin(compositor)) {
        compositor->reshape(m_width, m_height);
    }
    enterController(compositor);
    introduceDisplayables(compositor);
    finishInitialization(compositor, failure);
}

// What was called may have ended the plug-in.
void Viewer::finishInitialization(Plugin * plugin, std::exception_ptr const & failure)
{
    if (HasPlugin(plugin)) {
        plugin->addObserver(&m_pluginObserver);
    }
    releaseContext();
    updateIfHere(plugin);
    if (failure) {
        std::rethrow_exception(failure);
    }
}

template <class P>
void Viewer::uninitializeTyped(P * plugin)
{
    bindContext();
    Container::uninitialize(plugin);
    plugin->removeObserver(&m_pluginObserver);
    m_controllers.erase(plugin);
    if constexpr (std::is_base_of_v<Displayable, P>) {
        GetStack<CompositorPlugin>().forEach([&](CompositorPlugin & compositor) {
            if (HasPlugin(plugin)) {
                compositor.removeDisplayable(plugin);
            }
        });
    }
    releaseContext();
}

template <class P>
void Viewer::addGroup(std::list<P *> const & plugins)
{
    addToGroups(Group(plugins.begin(), plugins.end()));
    for (P * const plugin : plugins) {
        add(plugin);
    }
}

template <class P>
void Viewer::movedTyped()
{
    Tesseralis & registry = Tesseralis::Get();
    std::vector<P *> plugins;
    for (TesseralisIterator i(registry); !i.IsAtEnd(); ++i) {
        auto * const plugin = dynamic_cast<P *>(i.GetObject());
        if (HasPlugin(plugin)) {
            plugins.push_back(plugin);
        }
    }
    // Those that the registry doesn't know come last.
    for (P * const plugin : GetStack<P>().Get()) {
        if (!registry.HasObject(plugin)) {
            plugins.push_back(plugin);
        }
    }
    if (plugins != GetStack<P>().Get()) {
        GetStack<P>().assign(std::move(plugins));
        repaint();
    }
}

template <class P>
void Viewer::activatedTyped(P * plugin)
{
    if (plugin->IsEnabled()) {
        bindContext();
        plugin->reshape(m_width, m_height);
        releaseContext();
    }
    repaint();
}

// The operations for one kind that are the same for all three.
// NOLINTBEGIN(bugprone-macro-parentheses)
#define TESSERALIS_VIEWER_KIND(P)                                                                                      \
    void Viewer::uninitialize(P * plugin)                                                                              \
    {                                                                                                                  \
        uninitializeTyped(plugin);                                                                                     \
    }                                                                                                                  \
    void Viewer::add(std::list<P *> const & plugins)                                                                   \
    {                                                                                                                  \
        addGroup(plugins);                                                                                             \
    }                                                                                                                  \
    void Viewer::add(P * plugin)                                                                                       \
    {                                                                                                                  \
        addTyped<P>(plugin, nullptr);                                                                                  \
    }                                                                                                                  \
    void Viewer::remove(std::list<P *> const & plugins)                                                                \
    {                                                                                                                  \
        for (P * const plugin : plugins) {                                                                             \
            remove(plugin);                                                                                            \
        }                                                                                                              \
    }                                                                                                                  \
    void Viewer::remove(P * plugin)                                                                                    \
    {                                                                                                                  \
        removeTyped(plugin);                                                                                           \
    }                                                                                                                  \
    void Viewer::insert(P * plugin, P * before)                                                                        \
    {                                                                                                                  \
        insertTyped(plugin, before);                                                                                   \
    }                                                                                                                  \
    P * Viewer::GetPrevious(P * plugin) const                                                                          \
    {                                                                                                                  \
        return GetStack<P>().GetPrevious(plugin);                                                                      \
    }                                                                                                                  \
    P * Viewer::GetNext(P * plugin) const                                                                              \
    {                                                                                                                  \
        return GetStack<P>().GetNext(plugin);                                                                          \
    }                                                                                                                  \
    void Viewer::moved(P *)                                                                                            \
    {                                                                                                                  \
        movedTyped<P>();                                                                                               \
    }                                                                                                                  \
    void Viewer::activated(P * plugin)                                                                                 \
    {                                                                                                                  \
        activatedTyped(plugin);                                                                                        \
    }

// NOLINTEND(bugprone-macro-parentheses)

TESSERALIS_VIEWER_KIND(CompositorPlugin)
TESSERALIS_VIEWER_KIND(InteractorPlugin)
TESSERALIS_VIEWER_KIND(RendererPlugin)

void Viewer::initialize(InteractorPlugin * interactor)
{
    initializeDisplayable(interactor);
}

void Viewer::initialize(RendererPlugin * renderer)
{
    initializeDisplayable(renderer);
}

void Viewer::objectMoved(Tesseralis const & registry, TesseralisMoveEvent const & event)
{
    // One that has been moved in a bracket of the registry may be gone.
    Object * const object = const_cast<Object *>(event.GetObject());
    auto * const plugin = registry.HasObject(object) ? dynamic_cast<Plugin *>(object) : nullptr;
    if (HasPlugin(plugin)) {
        moved(plugin);
    }
}

void Viewer::moved(Plugin * plugin)
{
    detail::callAsKind(plugin, [this](auto * typed) { moved(typed); });
}

void Viewer::insert(Plugin * plugin, Plugin * before)
{
    detail::callAsKind(plugin, [&](auto * typed) {
        auto * const typedBefore = dynamic_cast<decltype(typed)>(before);
        if (before == nullptr || typedBefore != nullptr) {
            insert(typed, typedBefore);
        }
    });
}

Plugin * Viewer::GetPrevious(Plugin * plugin) const
{
    if (!HasPlugin(plugin)) {
        return nullptr;
    }
    if (auto * const compositor = dynamic_cast<CompositorPlugin *>(plugin)) {
        return GetPrevious(compositor);
    }
    if (auto * const interactor = dynamic_cast<InteractorPlugin *>(plugin)) {
        Plugin * const previous = GetPrevious(interactor);
        return previous != nullptr ? previous : GetStack<CompositorPlugin>().GetLast();
    }
    if (auto * const renderer = dynamic_cast<RendererPlugin *>(plugin)) {
        Plugin * const previous = GetPrevious(renderer);
        return previous != nullptr ? previous : GetStack<InteractorPlugin>().GetLast();
    }
    return nullptr;
}

Plugin * Viewer::GetNext(Plugin * plugin) const
{
    if (!HasPlugin(plugin)) {
        return nullptr;
    }
    if (auto * const compositor = dynamic_cast<CompositorPlugin *>(plugin)) {
        Plugin * const next = GetNext(compositor);
        return next != nullptr ? next : GetStack<InteractorPlugin>().GetFirst();
    }
    if (auto * const interactor = dynamic_cast<InteractorPlugin *>(plugin)) {
        Plugin * const next = GetNext(interactor);
        return next != nullptr ? next : GetStack<RendererPlugin>().GetFirst();
    }
    if (auto * const renderer = dynamic_cast<RendererPlugin *>(plugin)) {
        return GetNext(renderer);
    }
    return nullptr;
}
} // namespace tesseralis
