#pragma once

#include "value/PropertyContainer.h"

namespace tesseralis {
/// The state of a host that belongs to no other object, as properties. What saving, restoring, updating and applying a
/// session means is the host's to say: it overrides the four operations, which do nothing here.
class TESSERALIS_API Session : public PropertyContainer
{
public:
    explicit Session(unsigned int attributes);
    Session(std::string const & name, unsigned int attributes);
    ~Session() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    virtual void save() {}
    virtual void restore() {}
    virtual void update() {}
    virtual void apply() {}

    std::string GetObjectTypeName() const override;

protected:
    explicit Session(Session *);
    void constructSession(std::string const & name, unsigned int attributes);
    void destroySession();
};
} // namespace tesseralis
