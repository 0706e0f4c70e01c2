#pragma once

#include "object/PointerIterator.h"
#include "value/PropertyContainer.h"

#include <set>
#include <string>

namespace tesseralis {
class Viewer;

/// The base of the events of viewports.
class TESSERALIS_API ViewportEvent : public ObservableEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// What the events about one viewer have in common.
class TESSERALIS_API ViewportViewerEvent : public ViewportEvent
{
public:
    explicit ViewportViewerEvent(Viewer * viewer) : m_viewer(viewer) {}

    Viewer * GetViewer() const { return m_viewer; }

    ObservableEvent * GetCloned() const override;
    bool IsEqual(ObservableEvent const & event) const override;

private:
    Viewer * m_viewer;
};

/// A viewer has come and is initialised.
class TESSERALIS_API ViewportAdditionEvent : public ViewportViewerEvent
{
public:
    using ViewportViewerEvent::ViewportViewerEvent;
    ObservableEvent * GetCloned() const override;
};

/// A viewer is about to go; it is still in the viewport and still initialised.
class TESSERALIS_API ViewportRemovalEvent : public ViewportViewerEvent
{
public:
    using ViewportViewerEvent::ViewportViewerEvent;
    ObservableEvent * GetCloned() const override;
};

/// Viewers that belong together. A viewer is initialised exactly while it is in a viewport, which owns it at its end:
/// one that somebody else owns has to be removed before. Takes no lock; for the thread of the viewers.
class TESSERALIS_API Viewport : public PropertyContainer
{
public:
    explicit Viewport(unsigned int attributes);
    Viewport(std::string const & name, unsigned int attributes);
    ~Viewport() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    /// Takes a viewer over, out of the viewport that has it. Nothing happens if it is here already.
    virtual void add(Viewer * viewer);
    /// Gives a viewer back to the caller. Nothing happens if it isn't here. What an observer throws is logged.
    virtual void remove(Viewer * viewer);
    virtual bool HasViewer(Viewer * viewer) const;
    /// Removes all viewers and deletes them.
    virtual void clearViewers();

    std::string GetObjectTypeName() const override;
    void store(ArchiveElement & element) override;
    void retrieve(ArchiveElement & element) override;

protected:
    virtual void initialize(Viewer * viewer);
    virtual void uninitialize(Viewer * viewer);

    explicit Viewport(Viewport *);
    void constructViewport(std::string const & name, unsigned int attributes);
    void destroyViewport();

private:
    friend class ViewportIterator;

    std::set<Viewer *> m_viewers;
};

/// Walks the viewers of a viewport in the order of their addresses.
class TESSERALIS_API ViewportIterator : public detail::PointerIterator<std::set<Viewer *>>
{
public:
    explicit ViewportIterator(Viewport & viewport) : PointerIterator(viewport.m_viewers) {}
};
} // namespace tesseralis
