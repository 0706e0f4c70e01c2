#include "view/Viewport.h"

#include "object/Guard.h"
#include "view/Viewer.h"

namespace tesseralis {
ObservableEvent * ViewportEvent::GetCloned() const
{
    return new ViewportEvent(*this);
}

ObservableEvent * ViewportViewerEvent::GetCloned() const
{
    return new ViewportViewerEvent(*this);
}

bool ViewportViewerEvent::IsEqual(ObservableEvent const & event) const
{
    return ViewportEvent::IsEqual(event) && m_viewer == castEvent<ViewportViewerEvent>(event).m_viewer;
}

ObservableEvent * ViewportAdditionEvent::GetCloned() const
{
    return new ViewportAdditionEvent(*this);
}

ObservableEvent * ViewportRemovalEvent::GetCloned() const
{
    return new ViewportRemovalEvent(*this);
}

Viewport::Viewport(unsigned int attributes) : Viewport(GetTypeName(), attributes) {}

Viewport::Viewport(std::string const & name, unsigned int attributes) : Viewport(static_cast<Viewport *>(nullptr))
{
    constructViewport(name, attributes);
}

Viewport::Viewport(Viewport *) : PropertyContainer(static_cast<PropertyContainer *>(nullptr)) {}

Viewport::~Viewport()
{
    destroyViewport();
}

void Viewport::constructViewport(std::string const & name, unsigned int attributes)
{
    constructPropertyContainer(name, attributes);
}

void Viewport::destroyViewport()
{
    destroyPropertyContainer();
    detail::runGuarded([this] { clearViewers(); });
}

std::string Viewport::GetTypeName()
{
    return "viewport";
}

Object * Viewport::createObject(std::string const & name, unsigned int attributes)
{
    return new Viewport(name, attributes);
}

std::string Viewport::GetObjectTypeName() const
{
    return GetTypeName();
}

void Viewport::add(Viewer * viewer)
{
    if (viewer == nullptr || HasViewer(viewer)) {
        return;
    }

    beginModification(new ViewportAdditionEvent(viewer));
    try {
        // Again if somebody who heard of it has put the viewer elsewhere.
        while (Viewport * const owner = viewer->GetViewport()) {
            owner->remove(viewer);
        }
        m_viewers.insert(viewer);
        viewer->m_viewport = this;
        initialize(viewer);
    } catch (...) {
        // An observer of the viewer that throws doesn't keep it from coming.
        HasViewer(viewer) ? endModification() : abortModification();
        throw;
    }
    endModification();
}

void Viewport::remove(Viewer * viewer)
{
    if (!HasViewer(viewer)) {
        return;
    }

    // No observer can keep a viewer that may be dying, but one may have removed it itself.
    beginModification(new ViewportRemovalEvent(viewer));
    detail::runGuarded([this] { endModification(); });
    if (!HasViewer(viewer)) {
        return;
    }

    detail::runGuarded([&] { uninitialize(viewer); });
    if (m_viewers.erase(viewer) > 0) {
        viewer->m_viewport = nullptr;
    }
}

bool Viewport::HasViewer(Viewer * viewer) const
{
    return m_viewers.contains(viewer);
}

void Viewport::clearViewers()
{
    while (!m_viewers.empty()) {
        Viewer * const viewer = *m_viewers.begin();
        remove(viewer);
        delete viewer;
    }
}

void Viewport::store(ArchiveElement & element)
{
    PropertyContainer::store(element);
}

void Viewport::retrieve(ArchiveElement & element)
{
    PropertyContainer::retrieve(element);
}

void Viewport::initialize(Viewer * viewer)
{
    viewer->initialize();
}

void Viewport::uninitialize(Viewer * viewer)
{
    viewer->uninitialize();
}
} // namespace tesseralis
