#pragma once

#include "object/ModifiedObserver.h"
#include "object/PointerIterator.h"
#include "plugin/Container.h"
#include "view/PluginStack.h"
#include "view/Translator.h"

#include <cstdint>
#include <exception>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace tesseralis {
class Color;
class CompositorPlugin;
class Controller;
class Displayable;
template <class T, unsigned int N>
class Image;
class InteractorPlugin;
class RendererPlugin;
class Tesseralis;
class TesseralisMoveEvent;
class Viewport;

/// What the pointer looks like. The library passes it on to the host.
enum class CursorShape
{
    Arrow,
    Cross,
    Hand,
    Move,
    Rotate,
    Zoom,
    Text,
    Wait,
    Forbidden
};

/// The base of the events of viewers.
class TESSERALIS_API ViewerEvent : public ObservableEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// A viewer has come to a viewport.
class TESSERALIS_API ViewerInitializeEvent : public ViewerEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// A viewer has gone from its viewport.
class TESSERALIS_API ViewerUninitializeEvent : public ViewerEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// A surface that is drawn on, with the plug-ins that draw and react to input. Compositors, interactors and renderers
/// stand in a stack for each kind, which follows the registry's order; that of all of them is compositors, interactors,
/// renderers. Other plug-ins are kept without being called. A plug-in can be in groups, of which one member at most is
/// enabled: enabling it disables the others.
///
/// A host derives from it and overrides what reaches its window: repaint(), swapBuffers(), bindContext(),
/// releaseContext(), the shapes of the pointer and GetWindowIdentifier(). Its destructor calls destroyViewer() first,
/// so that plug-ins go while the overrides are still there. It drives the viewer with display(), idle(), reshape(),
/// cursor() and button(), and asks for nothing else: plug-ins come by add() or from a document.
///
/// Everything runs on the thread of the GL context and takes no lock of its own. What is called, plug-ins as well as
/// overrides, may add, remove, enable, move and end plug-ins, also themselves; those that have left are not called any
/// more.
class TESSERALIS_API Viewer : public Container
{
public:
    using CursorShape = tesseralis::CursorShape;

    /// The flags of update() that say that everything has changed.
    static constexpr unsigned int c_fullUpdate = 3;

    explicit Viewer(unsigned int attributes);
    Viewer(std::string const & name, unsigned int attributes);
    ~Viewer() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    /// The viewport that the viewer belongs to; null if there is none.
    Viewport * GetViewport() const { return m_viewport; }
    /// Moves the viewer to another viewport. With null it is taken out and becomes the caller's.
    void SetViewport(Viewport * viewport);

protected:
    using Container::initialize;
    using Container::uninitialize;
    virtual void initialize(CompositorPlugin * compositor);
    virtual void initialize(RendererPlugin * renderer);
    virtual void initialize(InteractorPlugin * interactor);

public:
    /// For the viewport, which calls it when the viewer comes. Plug-ins are initialised on their own.
    virtual void initialize();

protected:
    virtual void uninitialize(CompositorPlugin * compositor);
    virtual void uninitialize(RendererPlugin * renderer);
    virtual void uninitialize(InteractorPlugin * interactor);

public:
    virtual void uninitialize();
    virtual bool IsInitialized() const { return m_initialized; }

    /// Asks the host to call display() soon. Does nothing here.
    virtual void repaint() {}
    /// Notes for every compositor that a displayable has changed, and asks for a frame if the plug-in is enabled. The
    /// compositors say what the flags mean; they are collected until the next frame.
    virtual void update(Plugin * plugin, unsigned int flags);

    using Container::add;
    void add(Plugin * plugin) override;
    /// Adds each of them and makes them a group.
    virtual void add(std::list<CompositorPlugin *> const & compositors);
    virtual void add(std::list<RendererPlugin *> const & renderers);
    virtual void add(std::list<InteractorPlugin *> const & interactors);
    /// Adds a plug-in at the end of its stack. One that is here already stands in the stack twice.
    virtual void add(CompositorPlugin * compositor);
    virtual void add(RendererPlugin * renderer);
    virtual void add(InteractorPlugin * interactor);

    using Container::remove;
    void remove(Plugin * plugin) override;
    virtual void remove(std::list<CompositorPlugin *> const & compositors);
    virtual void remove(std::list<RendererPlugin *> const & renderers);
    virtual void remove(std::list<InteractorPlugin *> const & interactors);
    virtual void remove(CompositorPlugin * compositor);
    virtual void remove(RendererPlugin * renderer);
    virtual void remove(InteractorPlugin * interactor);

    /// Adds a plug-in before another one of its kind, or at the end of the stack if that isn't here. The place lasts
    /// until the registry moves a plug-in of the stack. Nothing happens if the plug-in is here already.
    virtual void insert(CompositorPlugin * compositor, CompositorPlugin * before);
    virtual void insert(InteractorPlugin * interactor, InteractorPlugin * before);
    virtual void insert(RendererPlugin * renderer, RendererPlugin * before);
    virtual void insert(Plugin * plugin, Plugin * before);

    /// The neighbour in the stack, or in the order of all three; null at its ends, next to an empty stack, and for a
    /// plug-in that isn't here.
    virtual CompositorPlugin * GetPrevious(CompositorPlugin * compositor) const;
    virtual InteractorPlugin * GetPrevious(InteractorPlugin * interactor) const;
    virtual RendererPlugin * GetPrevious(RendererPlugin * renderer) const;
    virtual Plugin * GetPrevious(Plugin * plugin) const;
    virtual CompositorPlugin * GetNext(CompositorPlugin * compositor) const;
    virtual InteractorPlugin * GetNext(InteractorPlugin * interactor) const;
    virtual RendererPlugin * GetNext(RendererPlugin * renderer) const;
    virtual Plugin * GetNext(Plugin * plugin) const;

    /// Makes plug-ins a group, out of the groups that they are in.
    virtual void group(std::set<Plugin *> const & plugins);
    /// Makes one group of those of two plug-ins.
    virtual void group(Plugin * first, Plugin * second);
    /// Takes a plug-in out of all groups.
    virtual void ungroup(Plugin * plugin);
    /// The members of the group of a plug-in, which is one by itself if it is in none; empty if it isn't here.
    virtual std::set<Plugin *> GetGroup(Plugin * plugin) const;

    /// Lets every enabled plug-in do what it does when there is time.
    virtual void idle();
    /// Draws a frame: the background colour, and what the enabled compositors make of the enabled displayables.
    virtual void display();
    /// Sets the size of the surface in pixels and tells every plug-in.
    virtual void reshape(unsigned int width, unsigned int height);
    /// Offers the event of an input device to the enabled plug-ins to which the device is mapped: compositors,
    /// interactors, renderers, each stack from its back to its front, until one that is to consume the event has
    /// handled it.
    virtual void cursor(std::string const & device, Vector const & position, float horizontalTilt, float verticalTilt);
    virtual void button(std::string const & device, float pressure);
    virtual void button(std::string const & device, bool state);

    /// Sets what input devices are to a plug-in, which need not be here yet.
    virtual void SetTranslator(Plugin * plugin, Translator const & translator);
    /// The default one, if none was set.
    virtual Translator GetTranslator(Plugin * plugin) const;

    /// The size of the surface in pixels; 1 until the first reshape().
    virtual unsigned int GetWidth() const { return m_width; }
    virtual unsigned int GetHeight() const { return m_height; }
    /// The picture with straight alpha, its first row the bottom one of the surface.
    Image<unsigned char, 4> GetImage() const;
    /// Prepares GL for drawing on the surface; undone by releaseContext(). Pairs nest. A host makes its context current
    /// and calls this one. Keeps all attributes and the two matrices, but no client state.
    virtual void bindContext();
    virtual void releaseContext();
    /// Shows what has been drawn. Does nothing here.
    virtual void swapBuffers() {}
    /// Changes the shape of the pointer, and goes back to the former one. Do nothing here.
    virtual void requestCursorShape(CursorShape) {}
    virtual void restoreCursorShape() {}
    /// What the window system knows the window by; 0 here.
    virtual std::uintptr_t GetWindowIdentifier() const { return 0; }

protected:
    /// A plug-in has another place in the registry.
    virtual void moved(CompositorPlugin * compositor);
    virtual void moved(RendererPlugin * renderer);
    virtual void moved(InteractorPlugin * interactor);
    virtual void moved(Plugin * plugin);
    /// The property "Enabled" of a plug-in has been set, to whatever value.
    virtual void activated(CompositorPlugin * compositor);
    virtual void activated(RendererPlugin * renderer);
    virtual void activated(InteractorPlugin * interactor);
    virtual void activated(Plugin * plugin);

public:
    /// The rows of the picture that is on the surface now, from the bottom up, as red, green, blue and alpha of each
    /// pixel. The background colour is taken out: where it shines through, alpha is below 255 and the other channels
    /// are those of what was drawn alone.
    std::vector<unsigned char> readPixels() const;

    std::string GetObjectTypeName() const override;
    void store(ArchiveElement & element) override;
    void retrieve(ArchiveElement & element) override;
    /// Not before the element of the viewport has been read.
    bool IsRetrievable(ArchiveElement & element) const override;

protected:
    void initialize(Plugin * plugin) override;
    void uninitialize(Plugin * plugin) override;
    void suspend(Plugin * plugin) override;
    void resume(Plugin * plugin) override;

    explicit Viewer(Viewer *);
    void constructViewer(std::string const & name, unsigned int attributes);
    void destroyViewer();

private:
    friend class Viewport; // which sets itself as the viewport
    friend class ViewerCompositorIterator;
    friend class ViewerInteractorIterator;
    friend class ViewerRendererIterator;

    using Stacks = std::tuple<detail::PluginStack<CompositorPlugin>, detail::PluginStack<InteractorPlugin>,
                              detail::PluginStack<RendererPlugin>>;
    using Group = std::set<Plugin *>;
    using Updates = std::map<Displayable *, unsigned int>;

    template <class P>
    detail::PluginStack<P> & GetStack()
    {
        return std::get<detail::PluginStack<P>>(m_stacks);
    }
    template <class P>
    detail::PluginStack<P> const & GetStack() const
    {
        return std::get<detail::PluginStack<P>>(m_stacks);
    }
    /// Calls for each interactor, then for each renderer.
    template <class Call>
    void forEachDisplayable(Call const & call) const
    {
        GetStack<InteractorPlugin>().forEach(call);
        GetStack<RendererPlugin>().forEach(call);
    }
    bool HasDisplayable(Displayable const * displayable) const;

    // What the operations for each kind have in common.
    template <class P>
    void addTyped(P * plugin, P * before);
    template <class P>
    void addGroup(std::list<P *> const & plugins);
    template <class P>
    void insertTyped(P * plugin, P * before);
    template <class P>
    void removeTyped(P * plugin);
    template <class P>
    void uninitializeTyped(P * plugin);
    template <class P>
    void movedTyped();
    template <class P>
    void activatedTyped(P * plugin);
    template <class P>
    void initializeDisplayable(P * displayable);
    std::exception_ptr initializeModule(Plugin * plugin);
    void enterController(Plugin * plugin);
    void introduceDisplayables(CompositorPlugin * compositor);
    void finishInitialization(Plugin * plugin, std::exception_ptr const & failure);
    void updateIfHere(Plugin * plugin);

    Color GetBackgroundColor();
    std::list<Displayable *> GetEnabledDisplayables() const;
    void displayWith(CompositorPlugin & compositor, std::list<Displayable *> & displayables);
    Translator const & FindTranslator(Plugin * plugin) const;
    template <class Translate, class Call>
    void dispatchInput(Translate const & translate, Call const & call);

    std::set<Group>::const_iterator FindGroup(Plugin * plugin) const;
    void addToGroups(Group const & plugins);
    void leaveGroup(Plugin * plugin);
    void leaveGroups(Plugin * plugin);
    void disableOthers(Plugin * plugin);

    void storeGroups(ArchiveElement & element) const;
    void retrieveTranslator(ArchiveElement & element);
    void retrieveGroup(ArchiveElement & element);

    void viewerPropertyChanged(Variant const & value, ObservableEvent const & event);
    void objectMoved(Tesseralis const & registry, TesseralisMoveEvent const & event);
    void pluginPropertyChanged(Plugin const & plugin, PropertyContainerChangeEvent const & event);
    void pluginDestroyed(Plugin const & plugin, ObservableDestructionEvent const & event);

    Viewport * m_viewport = nullptr;
    bool m_initialized = false;
    unsigned int m_width = 1;
    unsigned int m_height = 1;
    ModifiedObserver m_propertyObserver; // of the background colour
    ModifiedObserver m_moveObserver;     // of the registry
    ModifiedObserver m_pluginObserver;   // of the plug-ins in the stacks
    Stacks m_stacks;
    std::map<CompositorPlugin *, Updates> m_updates;
    std::set<Group> m_groups;
    std::unordered_map<Plugin *, std::shared_ptr<Controller>> m_controllers; // shared with the event that is offered
    std::unordered_map<Plugin *, Translator> m_translators;
    // Of the plug-ins in groups and with a translator, which need not be in the viewer.
    ModifiedObserver m_destructionObserver;
    unsigned int m_departures = 0; // how often a displayable has left, modulo 2^32
};

/// Walk one stack of a viewer from front to back. Good as long as the stack doesn't change.
class TESSERALIS_API ViewerInteractorIterator : public detail::PointerIterator<std::vector<InteractorPlugin *>>
{
public:
    explicit ViewerInteractorIterator(Viewer & viewer) : PointerIterator(viewer.GetStack<InteractorPlugin>().Get()) {}
};

class TESSERALIS_API ViewerRendererIterator : public detail::PointerIterator<std::vector<RendererPlugin *>>
{
public:
    explicit ViewerRendererIterator(Viewer & viewer) : PointerIterator(viewer.GetStack<RendererPlugin>().Get()) {}
};

class TESSERALIS_API ViewerCompositorIterator : public detail::PointerIterator<std::vector<CompositorPlugin *>>
{
public:
    explicit ViewerCompositorIterator(Viewer & viewer) : PointerIterator(viewer.GetStack<CompositorPlugin>().Get()) {}
};
} // namespace tesseralis
