#include "plugin/InteractorPlugin.h"

namespace tesseralis {
InteractorPlugin::InteractorPlugin(unsigned int attributes) : InteractorPlugin(GetTypeName(), attributes) {}

InteractorPlugin::InteractorPlugin(std::string const & name, unsigned int attributes)
    : InteractorPlugin(static_cast<InteractorPlugin *>(nullptr))
{
    constructInteractorPlugin(name, attributes);
}

InteractorPlugin::InteractorPlugin(InteractorPlugin *) : ViewPlugin(static_cast<ViewPlugin *>(nullptr)) {}

InteractorPlugin::~InteractorPlugin()
{
    destroyInteractorPlugin();
}

void InteractorPlugin::constructInteractorPlugin(std::string const & name, unsigned int attributes)
{
    constructViewPlugin(name, attributes);
}

void InteractorPlugin::destroyInteractorPlugin()
{
    destroyViewPlugin();
}

std::string InteractorPlugin::GetTypeName()
{
    return "interactor";
}

Object * InteractorPlugin::createObject(std::string const & name, unsigned int attributes)
{
    return new InteractorPlugin(name, attributes);
}

std::string InteractorPlugin::GetObjectTypeName() const
{
    return GetTypeName();
}

void InteractorPlugin::display(Canvas & canvas)
{
    forward("display", [&](Interactor & interactor) { interactor.display(canvas); });
}

void InteractorPlugin::overlay(Canvas & canvas)
{
    forward("overlay", [&](Interactor & interactor) { interactor.overlay(canvas); });
}
} // namespace tesseralis
