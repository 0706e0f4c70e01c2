#include "view/Viewer.h"

#include "math/Color.h"
#include "object/Guard.h"
#include "object/Tesseralis.h"
#include "value/Variant.h"
#include "view/Controller.h"
#include "view/Viewport.h"
#include "view/detail/PluginKind.h"

#include <type_traits>

namespace tesseralis {
ObservableEvent * ViewerEvent::GetCloned() const
{
    return new ViewerEvent(*this);
}

ObservableEvent * ViewerInitializeEvent::GetCloned() const
{
    return new ViewerInitializeEvent(*this);
}

ObservableEvent * ViewerUninitializeEvent::GetCloned() const
{
    return new ViewerUninitializeEvent(*this);
}

Viewer::Viewer(unsigned int attributes) : Viewer(GetTypeName(), attributes) {}

Viewer::Viewer(std::string const & name, unsigned int attributes) : Viewer(static_cast<Viewer *>(nullptr))
{
    constructViewer(name, attributes);
}

Viewer::Viewer(Viewer *) : Container(static_cast<Container *>(nullptr)) {}

Viewer::~Viewer()
{
    destroyViewer();
}

void Viewer::constructViewer(std::string const & name, unsigned int attributes)
{
    constructContainer(name, attributes);
    m_propertyObserver.connect(this, &Viewer::viewerPropertyChanged);
    GetBackgroundColor();
    m_moveObserver.connect(this, &Viewer::objectMoved);
    Tesseralis::Get().addObserver(&m_moveObserver);
    m_pluginObserver.connect(this, &Viewer::pluginPropertyChanged);
    m_destructionObserver.connect(this, &Viewer::pluginDestroyed);
}

void Viewer::destroyViewer()
{
    m_propertyObserver.SetEnabled(false); // what is torn down is not painted again
    destroyContainer();
    if (m_viewport != nullptr) {
        detail::runGuarded([this] { m_viewport->remove(this); });
    }
}

std::string Viewer::GetTypeName()
{
    return "viewer";
}

Object * Viewer::createObject(std::string const & name, unsigned int attributes)
{
    return new Viewer(name, attributes);
}

std::string Viewer::GetObjectTypeName() const
{
    return GetTypeName();
}

void Viewer::SetViewport(Viewport * viewport)
{
    if (viewport == m_viewport) {
        return;
    }
    if (viewport != nullptr) {
        viewport->add(this);
    } else {
        m_viewport->remove(this);
    }
}

void Viewer::initialize()
{
    if (!m_initialized) {
        beginModification(new ViewerInitializeEvent);
        m_initialized = true;
        endModification();
    }
}

void Viewer::uninitialize()
{
    if (m_initialized) {
        beginModification(new ViewerUninitializeEvent);
        m_initialized = false;
        endModification();
    }
}

void Viewer::viewerPropertyChanged(Variant const &, ObservableEvent const &)
{
    repaint();
}

// Coming and going, whatever the kind.

void Viewer::add(Plugin * plugin)
{
    if (!detail::callAsKind(plugin, [this](auto * typed) { add(typed); })) {
        Container::add(plugin);
    }
}

void Viewer::remove(Plugin * plugin)
{
    if (!detail::callAsKind(plugin, [this](auto * typed) { remove(typed); })) {
        Container::remove(plugin);
    }
}

void Viewer::initialize(Plugin * plugin)
{
    bool const isTyped = detail::callAsKind(plugin, [this](auto * typed) {
        auto & stack = GetStack<std::remove_pointer_t<decltype(typed)>>();
        if (!stack.Has(typed)) { // an observer of where it came from has moved or taken out plug-ins meanwhile
            stack.insert(typed);
        }
        initialize(typed);
    });
    if (!isTyped) {
        Container::initialize(plugin);
    }
}

void Viewer::uninitialize(Plugin * plugin)
{
    if (!detail::callAsKind(plugin, [this](auto * typed) { uninitialize(typed); })) {
        Container::uninitialize(plugin);
    }
}

void Viewer::suspend(Plugin * plugin)
{
    bindContext();
    PluginContainer::suspend(plugin);
    releaseContext();
}

void Viewer::resume(Plugin * plugin)
{
    PluginContainer::resume(plugin);
    detail::callAsKind(plugin, [this](auto * typed) {
        bindContext();
        typed->reshape(m_width, m_height);
        if constexpr (std::is_convertible_v<decltype(typed), CompositorPlugin *>) {
            introduceDisplayables(typed);
        }
        releaseContext();
        updateIfHere(typed);
    });
}

void Viewer::enterController(Plugin * plugin)
{
    if (HasPlugin(plugin)) {
        m_controllers[plugin] = std::make_shared<Controller>();
    }
}

void Viewer::introduceDisplayables(CompositorPlugin * compositor)
{
    if (HasPlugin(compositor)) {
        m_updates[compositor];
    }
    forEachDisplayable([&](Displayable & displayable) {
        if (HasPlugin(compositor)) {
            m_updates[compositor][&displayable] |= c_fullUpdate;
            compositor->addDisplayable(&displayable);
        }
    });
}

void Viewer::updateIfHere(Plugin * plugin)
{
    if (HasPlugin(plugin)) {
        update(plugin, c_fullUpdate);
    }
}

bool Viewer::HasDisplayable(Displayable const * displayable) const
{
    bool isHere = false;
    forEachDisplayable([&](Displayable & other) { isHere = isHere || &other == displayable; });
    return isHere;
}

void Viewer::update(Plugin * plugin, unsigned int flags)
{
    if (plugin == nullptr) {
        return;
    }
    auto * const displayable = dynamic_cast<Displayable *>(plugin);
    if (displayable != nullptr && HasPlugin(plugin)) {
        for (CompositorPlugin * const compositor : GetStack<CompositorPlugin>().Get()) {
            m_updates[compositor][displayable] |= flags;
        }
    }
    if (detail::IsEnabled(*plugin)) {
        repaint();
    }
}
} // namespace tesseralis
