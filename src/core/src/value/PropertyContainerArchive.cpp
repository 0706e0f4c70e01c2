// What property containers write to archives and read from them.

#include "value/PropertyContainer.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "plugin/Host.h"
#include "value/Archive.h"
#include "value/Variant.h"

#include <set>
#include <utility>

namespace tesseralis {
namespace {
void storeExpression(PropertyContainerExpression expression, std::string const & name, ArchiveElement & element)
{
    auto const * const host = dynamic_cast<Object const *>(expression.GetHost());
    if (host == nullptr) {
        return;
    }

    ArchiveElement child = element.store("expression");
    child.SetAttribute("name", name);
    child.SetAttribute("host", host->GetObjectName());
    child.SetValue(expression.GetCommand());
    std::set<std::pair<std::string, std::string>> triggers; // in an order that is the same each time
    for (ObserverIterator i(expression); !i.IsAtEnd(); ++i) {
        auto const * const value = dynamic_cast<Variant const *>(&*i);
        PropertyContainer const * const container = PropertyContainer::GetPropertyContainer(value);
        if (container != nullptr) {
            triggers.emplace(container->GetObjectName(), container->GetPropertyName(value));
        }
    }
    for (auto const & [container, property] : triggers) {
        ArchiveElement trigger = child.store("trigger");
        trigger.SetAttribute("container", container);
        trigger.SetAttribute("property", property);
    }
}

void storeProperty(PropertyContainerIterator const & property, ArchiveElement & element)
{
    if (!element.HasArchiveFlags(ArchiveFlag::WithoutValues)) {
        ArchiveElement child = element.store("property");
        child.SetAttribute("name", property.GetName());
        if (property.HasFlags(PropertyFlag::Hidden)) {
            child.SetAttribute("hidden", "true");
        }
        property->store(child);
    }
    if (property.HasLink()) {
        PropertyContainerLink const link = property.GetLink();
        ArchiveElement child = element.store("link");
        child.SetAttribute("name", property.GetName());
        child.SetAttribute("container", link.GetPropertyContainer()->GetObjectName());
        child.SetAttribute("property", link.GetPropertyName());
    }
    if (property.HasExpression()) {
        storeExpression(property.GetExpression(), property.GetName(), element);
    }
}
} // namespace

void PropertyContainer::store(ArchiveElement & element)
{
    MutexLocker locker(m_mutex);
    for (PropertyContainerIterator i(*this); !i.IsAtEnd(); ++i) {
        try {
            storeProperty(i, element);
        } catch (Exception const & exception) {
            throw Exception("Unable to store the property '%s' of '%s': %s", i.GetName().c_str(),
                            GetObjectName().c_str(), exception.GetMessage().c_str());
        }
    }
}

void PropertyContainer::retrieve(ArchiveElement & element)
{
    MutexLocker locker(m_mutex);
    for (ArchiveElement child = element.retrieve("property"); !child.IsEmpty(); child = element.retrieve("property")) {
        retrieveProperty(child);
    }
    for (ArchiveElement child = element.retrieve("link"); !child.IsEmpty(); child = element.retrieve("link")) {
        retrieveLink(child);
    }
    for (ArchiveElement child = element.retrieve("expression"); !child.IsEmpty();
         child = element.retrieve("expression")) {
        retrieveExpression(child);
    }
}

void PropertyContainer::retrieveProperty(ArchiveElement & element)
{
    std::string const name = element.GetAttribute("name");
    if (!HasProperty(name)) {
        addProperty(name, Variant());
    }
    if (element.GetAttribute("hidden") == "true") {
        SetPropertyFlags(name, PropertyFlag::Hidden, true);
    }
    GetProperty(name).retrieve(element);
}

void PropertyContainer::retrieveLink(ArchiveElement & element)
{
    Object * const object = Tesseralis::Get().GetObject(element.GetAttribute("container"));
    if (auto * const container = dynamic_cast<PropertyContainer *>(object)) {
        SetPropertyLink(element.GetAttribute("name"),
                        PropertyContainerLink(container, element.GetAttribute("property")));
    }
}

void PropertyContainer::retrieveExpression(ArchiveElement & element)
{
    auto * const host = dynamic_cast<Host *>(Tesseralis::Get().GetObject(element.GetAttribute("host")));
    if (host == nullptr) {
        return;
    }

    PropertyContainerExpression expression(host, element.GetValue());
    for (ArchiveElement trigger = element.retrieve("trigger"); !trigger.IsEmpty();
         trigger = element.retrieve("trigger")) {
        Object * const object = Tesseralis::Get().GetObject(trigger.GetAttribute("container"));
        if (auto * const container = dynamic_cast<PropertyContainer *>(object)) {
            container->GetProperty(trigger.GetAttribute("property")).addObserver(&expression);
        }
    }
    SetPropertyExpression(element.GetAttribute("name"), expression);
}
} // namespace tesseralis
