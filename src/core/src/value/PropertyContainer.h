#pragma once

#include "object/ModifiedObserver.h"
#include "object/Object.h"
#include "value/PropertyContainerEvent.h"
#include "value/PropertyContainerExpression.h"
#include "value/PropertyContainerLink.h"

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tesseralis {
class PropertyContainerProperty;
class Variant;

/// The bits of a property's flag word that have a meaning here; the others are free for the users of a container.
namespace PropertyFlag {
constexpr unsigned int Hidden = 1; ///< not for display; kept in archives
}

/// An object with named properties, in the order of their creation. Each has a value, a description, a word of flags,
/// perhaps a link to another property, of any container, with which it is kept equal, and perhaps an expression that
/// computes it. Every change of a value, also deep inside an array or a map, is sent on as a
/// PropertyContainerChangeEvent.
///
/// A reference to a value stays good until its property is removed. All operations take the object's lock; iterators
/// and references work without it. Properties come and go on one thread.
class TESSERALIS_API PropertyContainer : public Object
{
public:
    explicit PropertyContainer(unsigned int attributes);
    PropertyContainer(std::string const & name, unsigned int attributes);
    PropertyContainer(PropertyContainer const &) = delete;
    PropertyContainer & operator=(PropertyContainer const &) = delete;
    ~PropertyContainer() override;

    static std::string GetTypeName();
    /// Null: only derived classes are made through the registry.
    static Object * createObject(std::string const & name, unsigned int attributes);
    /// The container of a property's value, found by its address; null if it isn't the value of a property.
    static PropertyContainer * GetPropertyContainer(Variant const * value);

    unsigned int GetPropertyCount() const;
    bool HasProperty(std::string const & name) const;
    bool HasProperty(Variant const * value) const;
    /// The name of the property with this value, found by its address; empty if there is none.
    std::string GetPropertyName(Variant const * value) const;

    /// Throws Exception for a missing name.
    Variant const & GetProperty(std::string const & name) const;
    /// The fallback itself for a missing name.
    Variant const & GetProperty(std::string const & name, Variant const & fallback) const;
    /// Creates a missing property, with an undefined value.
    Variant & GetProperty(std::string const & name);

    /// Adds a property as the newest. One of that name is removed first, with all that belongs to it.
    void addProperty(std::string const & name, Variant const & value);
    /// Not from within the delivery of an event of the property's value itself.
    void removeProperty(std::string const & name);
    /// Gives a property a new name; nothing happens if that is taken or there is no property of the previous name.
    void renameProperty(std::string const & currentName, std::string const & previousName);
    void clearProperties();
    /// Takes over the values of another container with their types and limits, and nothing else of the properties.
    void copyProperties(PropertyContainer const & other);

    /// Whether all bits of the mask are set; false for a missing name.
    bool HasPropertyFlags(std::string const & name, unsigned int mask) const;
    unsigned int GetPropertyFlags(std::string const & name) const;
    void SetPropertyFlags(std::string const & name, unsigned int mask, bool on);

    bool HasPropertyDescription(std::string const & name) const;
    /// The property's own description or the first along the chain of links from it; empty if there is none.
    std::string const & GetPropertyDescription(std::string const & name) const;
    void SetPropertyDescription(std::string const & name, std::string const & description);

    bool HasPropertyLink(std::string const & name) const;
    PropertyContainerLink GetPropertyLink(std::string const & name) const;
    /// Links a property to another one; both are created where they are missing, and the target's value wins. From then
    /// on a change of either reaches the other. An empty link removes the link. Values that don't fit are logged.
    void SetPropertyLink(std::string const & name, PropertyContainerLink const & link);

    bool HasPropertyExpression(std::string const & name) const;
    /// A copy with the same host, command and triggers that updates nothing; invalid if there is no expression.
    PropertyContainerExpression GetPropertyExpression(std::string const & name) const;
    /// Has the property computed by a copy of the expression each time that one of its triggers changes. An expression
    /// that fails is logged and does nothing any more. An invalid one removes the expression.
    void SetPropertyExpression(std::string const & name, PropertyContainerExpression const & expression);

    std::string GetObjectTypeName() const override;
    void store(ArchiveElement & element) override;
    void retrieve(ArchiveElement & element) override;

protected:
    explicit PropertyContainer(PropertyContainer *);
    void constructPropertyContainer(std::string const & name, unsigned int attributes);
    void destroyPropertyContainer();

    PropertyContainerProperty * GetPropertyByName(std::string const & name);
    PropertyContainerProperty const * GetPropertyByName(std::string const & name) const;
    PropertyContainerProperty * GetPropertyByValue(Variant const * value);
    PropertyContainerProperty const * GetPropertyByValue(Variant const * value) const;

    void propertyModified(Variant const & value, ObservableEvent const & event);

    /// Changes whenever a property comes, goes or gets another name. While it is the same, what was found by name is
    /// still right: for those who read a property very often.
    unsigned int GetPropertyLayout() const { return m_layout; }

private:
    friend class PropertyContainerIterator;

    using PropertyList = std::list<std::unique_ptr<PropertyContainerProperty>>;

    bool joinValues(std::string const & name, PropertyContainerLink const & link);
    void removeLink(std::string const & name);
    void retrieveProperty(ArchiveElement & element);
    void retrieveLink(ArchiveElement & element);
    void retrieveExpression(ArchiveElement & element);

    ModifiedObserver m_observer;
    PropertyList m_properties;                                             // oldest first
    std::unordered_map<std::string_view, PropertyList::iterator> m_byName; // the keys are the names in the properties
    std::unordered_map<Variant const *, PropertyList::iterator> m_byValue;
    unsigned int m_layout = 0; // counts, modulo 2^32
};

/// Walks the properties of a container in the order of their creation. Takes no lock; the container must not change
/// meanwhile.
class TESSERALIS_API PropertyContainerIterator
{
public:
    explicit PropertyContainerIterator(PropertyContainer & container);

    bool IsAtEnd() const { return m_position == m_end; }
    PropertyContainerIterator & operator++();
    Variant & operator*() const;
    Variant * operator->() const;

    std::string const & GetName() const;
    unsigned int GetFlags() const;
    bool HasFlags(unsigned int mask) const;
    bool HasDescription() const;
    std::string const & GetDescription() const;
    bool HasLink() const;
    PropertyContainerLink GetLink() const;
    bool HasExpression() const;
    PropertyContainerExpression GetExpression() const;

private:
    PropertyContainer::PropertyList::iterator m_position;
    PropertyContainer::PropertyList::iterator m_end;
};
} // namespace tesseralis
