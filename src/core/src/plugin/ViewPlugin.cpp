#include "plugin/ViewPlugin.h"

#include "plugin/Compositor.h"
#include "plugin/Interactor.h"
#include "plugin/Renderer.h"
#include "value/Variant.h"
#include "view/Viewer.h"

namespace tesseralis {
template <class T>
ViewPlugin<T>::ViewPlugin(ViewPlugin *) : BasicPlugin<T>(static_cast<BasicPlugin<T> *>(nullptr))
{
}

template <class T>
void ViewPlugin<T>::constructViewPlugin(std::string const & name, unsigned int attributes)
{
    this->constructBasicPlugin(name, attributes);
    this->GetProperty("Enabled").require(Variant(false));
}

template <class T>
void ViewPlugin<T>::destroyViewPlugin()
{
    this->destroyBasicPlugin();
}

template <class T>
void ViewPlugin<T>::idle()
{
    this->forward("idle", [](T & instance) { instance.idle(); });
}

template <class T>
void ViewPlugin<T>::reshape(unsigned int width, unsigned int height)
{
    this->forward("reshape", [&](T & instance) { instance.reshape(width, height); });
}

template <class T>
bool ViewPlugin<T>::button(Controller const & controller)
{
    return this->forward("button", [&](T & instance) { return instance.button(controller); });
}

template <class T>
bool ViewPlugin<T>::cursor(Controller const & controller)
{
    return this->forward("cursor", [&](T & instance) { return instance.cursor(controller); });
}

template <class T>
std::string ViewPlugin<T>::GetButtonRole(unsigned int button) const
{
    return this->forward("GetButtonRole", [&](T const & instance) { return instance.GetButtonRole(button); });
}

template <class T>
std::string ViewPlugin<T>::GetCursorRole(unsigned int cursor) const
{
    return this->forward("GetCursorRole", [&](T const & instance) { return instance.GetCursorRole(cursor); });
}

template <class T>
void ViewPlugin<T>::update(unsigned int flags)
{
    if (auto * const viewer = dynamic_cast<Viewer *>(this->GetContainer())) {
        viewer->update(this, flags);
    }
}

template <class T>
void ViewPlugin<T>::update()
{
    update(Viewer::c_fullUpdate);
}

template <class T>
void ViewPlugin<T>::requestCursorShape(CursorShape shape)
{
    if (auto * const viewer = dynamic_cast<Viewer *>(this->GetContainer())) {
        viewer->requestCursorShape(shape);
    }
}

template <class T>
void ViewPlugin<T>::restoreCursorShape()
{
    if (auto * const viewer = dynamic_cast<Viewer *>(this->GetContainer())) {
        viewer->restoreCursorShape();
    }
}

template <class T>
bool ViewPlugin<T>::IsEnabled() const
{
    if (m_enabled == nullptr || m_layout != this->GetPropertyLayout()) {
        m_enabled = this->HasProperty("Enabled") ? &this->GetProperty("Enabled") : nullptr;
        m_layout = this->GetPropertyLayout();
    }
    if (m_enabled == nullptr) {
        return false;
    }
    bool const isBoolean = m_enabled->GetType() == Variant::Type::Boolean;
    return isBoolean ? static_cast<bool>(*m_enabled) : Variant(true) == *m_enabled;
}

template class ViewPlugin<Compositor>;
template class ViewPlugin<Interactor>;
template class ViewPlugin<Renderer>;
} // namespace tesseralis
