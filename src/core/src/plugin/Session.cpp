#include "plugin/Session.h"

namespace tesseralis {
Session::Session(unsigned int attributes) : Session(GetTypeName(), attributes) {}

Session::Session(std::string const & name, unsigned int attributes) : Session(static_cast<Session *>(nullptr))
{
    constructSession(name, attributes);
}

Session::Session(Session *) : PropertyContainer(static_cast<PropertyContainer *>(nullptr)) {}

Session::~Session()
{
    destroySession();
}

void Session::constructSession(std::string const & name, unsigned int attributes)
{
    constructPropertyContainer(name, attributes);
}

void Session::destroySession()
{
    destroyPropertyContainer();
}

std::string Session::GetTypeName()
{
    return "session";
}

Object * Session::createObject(std::string const & name, unsigned int attributes)
{
    return new Session(name, attributes);
}

std::string Session::GetObjectTypeName() const
{
    return GetTypeName();
}
} // namespace tesseralis
