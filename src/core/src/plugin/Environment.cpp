#include "plugin/Environment.h"

namespace tesseralis {
Environment::Environment(unsigned int attributes) : Environment(GetTypeName(), attributes) {}

Environment::Environment(std::string const & name, unsigned int attributes)
    : Environment(static_cast<Environment *>(nullptr))
{
    constructEnvironment(name, attributes);
}

Environment::Environment(Environment *) : Container(static_cast<Container *>(nullptr)) {}

Environment::~Environment()
{
    destroyEnvironment();
}

void Environment::constructEnvironment(std::string const & name, unsigned int attributes)
{
    constructContainer(name, attributes);
}

void Environment::destroyEnvironment()
{
    destroyContainer();
}

std::string Environment::GetTypeName()
{
    return "environment";
}

Object * Environment::createObject(std::string const & name, unsigned int attributes)
{
    return new Environment(name, attributes);
}

std::string Environment::GetObjectTypeName() const
{
    return GetTypeName();
}
} // namespace tesseralis
