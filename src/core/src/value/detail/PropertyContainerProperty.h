#pragma once

#include "value/PropertyContainerExpression.h"
#include "value/PropertyContainerLink.h"
#include "value/Variant.h"

#include <memory>
#include <string>
#include <vector>

namespace tesseralis {
class PropertyContainer;

/// One property of a container, which owns it.
class PropertyContainerProperty
{
public:
    PropertyContainerProperty(PropertyContainer & container, std::string const & name, Variant const & value);
    PropertyContainerProperty(PropertyContainerProperty const &) = delete;
    PropertyContainerProperty & operator=(PropertyContainerProperty const &) = delete;
    virtual ~PropertyContainerProperty();

    /// The container of a property's value; null if it isn't one.
    static PropertyContainer * GetPropertyContainer(Variant const * value);

    PropertyContainer & GetContainer() const { return m_container; }

    std::string const & GetName() const { return m_name; }
    void SetName(std::string const & name) { m_name = name; }

    Variant & GetValue() { return m_value; }
    Variant const & GetValue() const { return m_value; }

    unsigned int GetFlags() const { return m_flags; }
    bool HasFlags(unsigned int mask) const { return (m_flags & mask) == mask; }
    void SetFlags(unsigned int mask, bool on) { m_flags = on ? m_flags | mask : m_flags & ~mask; }

    /// The first description along the chain of links; empty if there is none.
    std::string const & GetDescription() const;
    void SetDescription(std::string const & description) { m_description = description; }

    bool HasLink() const { return m_link != nullptr; }
    PropertyContainerLink GetLink() const;
    /// Makes another property the link of this one.
    void join(PropertyContainerProperty & target);
    /// Drops this property's link; those of others to it stay.
    void unlink();
    /// Assigns the value to every property that a link joins with this one, in either direction.
    void spread();

    bool HasExpression() const { return m_expression != nullptr; }
    /// A copy that isn't connected to this property; invalid if there is none.
    PropertyContainerExpression GetExpression() const;
    void SetExpression(PropertyContainerExpression const & expression);

    /// Computes the value by the expression.
    virtual void triggerModified(Observable const & observable, ObservableEvent const & event);

private:
    void assignTo(PropertyContainerProperty & peer);

    PropertyContainer & m_container;
    std::string m_name;
    Variant m_value;
    std::string m_description;
    unsigned int m_flags = 0;
    PropertyContainerProperty * m_link = nullptr;
    std::shared_ptr<PropertyContainerExpression> m_expression;
    std::vector<PropertyContainerProperty *> m_peers; // in order of linking
    int m_spreading = 0;                              // how often a change of the value is on its way
    int m_returns = 0;                                // how often one has come back meanwhile, in a walk
    unsigned int m_walk = 0;                          // the number of that walk
};
} // namespace tesseralis
