#pragma once

#include "plugin/Container.h"

#include <string>

namespace tesseralis {
/// A container for the plug-ins of a host that belong to no other object, with no behaviour of its own.
class TESSERALIS_API Environment : public Container
{
public:
    explicit Environment(unsigned int attributes);
    Environment(std::string const & name, unsigned int attributes);
    ~Environment() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    std::string GetObjectTypeName() const override;

protected:
    explicit Environment(Environment *);
    void constructEnvironment(std::string const & name, unsigned int attributes);
    void destroyEnvironment();
};
} // namespace tesseralis
