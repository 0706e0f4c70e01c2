#include "HostViewer.h"

#include "Surface.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"

namespace tesseralis::host {
namespace {
Surface * s_surface = nullptr;

HostViewer & findOnly()
{
    std::list<Object *> const viewers = Tesseralis::Get().GetObjects(Viewer::GetTypeName());
    if (viewers.empty()) {
        throw Exception("There is no viewer to draw a frame.");
    }
    if (viewers.size() > 1) {
        throw Exception("There are %zu viewers, and --viewer has to name one: '%s', '%s' ...", viewers.size(),
                        viewers.front()->GetObjectName().c_str(), (*++viewers.begin())->GetObjectName().c_str());
    }
    return dynamic_cast<HostViewer &>(*viewers.front());
}
} // namespace

HostViewer::HostViewer(std::string const & name, unsigned int attributes) : Viewer(static_cast<Viewer *>(nullptr))
{
    constructViewer(name, attributes);
}

HostViewer::~HostViewer()
{
    destroyViewer();
}

Object * HostViewer::createObject(std::string const & name, unsigned int attributes)
{
    return new HostViewer(name, attributes);
}

HostViewer & HostViewer::find(std::string const & name)
{
    if (name.empty()) {
        return findOnly();
    }
    auto * const viewer = dynamic_cast<HostViewer *>(Tesseralis::Get().GetObject(name));
    if (viewer == nullptr) {
        throw Exception("There is no viewer '%s'.", name.c_str());
    }
    return *viewer;
}

void HostViewer::SetSurface(Surface * surface)
{
    s_surface = surface;
}

void HostViewer::advance()
{
    idle();
    if (m_isStale) {
        m_isStale = false;
        display();
    }
}

void HostViewer::repaint()
{
    m_isStale = true;
}

void HostViewer::bindContext()
{
    if (s_surface != nullptr) {
        s_surface->makeCurrent();
        Viewer::bindContext();
    }
}

void HostViewer::releaseContext()
{
    if (s_surface != nullptr) {
        Viewer::releaseContext();
    }
}

void HostViewer::swapBuffers()
{
    if (s_surface != nullptr) {
        m_picture = s_surface->GetPicture();
    }
}
} // namespace tesseralis::host
