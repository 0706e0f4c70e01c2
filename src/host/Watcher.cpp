#include "Watcher.h"

#include "Text.h"

#include "object/FileMonitor.h"
#include "object/Tesseralis.h"
#include "value/PropertyContainer.h"
#include "value/Variant.h"

#include <ostream>
#include <string>

namespace tesseralis::host {
namespace {
template <class T>
bool Is(ObservableEvent const & event)
{
    return dynamic_cast<T const *>(&event) != nullptr;
}

std::string fromTo(std::string const & previous, std::string const & current)
{
    return "'" + onOneLine(previous) + "' to '" + onOneLine(current) + "'";
}

std::string describeForRegistry(ObservableEvent const & event)
{
    if (auto const * const renamed = dynamic_cast<TesseralisRenameEvent const *>(&event)) {
        return "renamed " + fromTo(renamed->GetPreviousName(), renamed->GetCurrentName());
    }
    auto const * const about = dynamic_cast<TesseralisObjectEvent const *>(&event);
    if (about == nullptr) {
        return "modified";
    }
    char const * const what = Is<TesseralisAdditionEvent>(event)  ? "added"
                              : Is<TesseralisRemovalEvent>(event) ? "removed"
                              : Is<TesseralisMoveEvent>(event)    ? "moved"
                                                                  : "changed";
    return std::string(what) + " '" + onOneLine(about->GetName()) + "'";
}

std::string describeForObject(Object const & object, ObservableEvent const & event)
{
    if (auto const * const renamed = dynamic_cast<ObjectRenameEvent const *>(&event)) {
        return "renamed " + fromTo(renamed->GetPreviousName(), renamed->GetCurrentName());
    }
    if (auto const * const renamed = dynamic_cast<PropertyContainerRenameEvent const *>(&event)) {
        return "renamed property " + fromTo(renamed->GetPreviousName(), renamed->GetCurrentName());
    }
    auto const * const about = dynamic_cast<PropertyContainerPropertyEvent const *>(&event);
    if (about == nullptr) {
        return Is<ObservableDestructionEvent>(event) ? "destroyed" : "modified";
    }
    std::string const name = "'" + onOneLine(about->GetName()) + "'";
    if (Is<PropertyContainerRemovalEvent>(event)) {
        return "removed property " + name;
    }
    auto const & container = dynamic_cast<PropertyContainer const &>(object);
    std::string const value = toLine(container.GetProperty(about->GetName(), Variant()));
    return (Is<PropertyContainerAdditionEvent>(event) ? "added property " : "changed property ") + name + " = " + value;
}

std::string describeForFile(ObservableEvent const & event)
{
    if (auto const * const renamed = dynamic_cast<FileMonitorRenameEvent const *>(&event)) {
        return "renamed " + fromTo(renamed->GetPreviousFilename(), renamed->GetCurrentFilename());
    }
    auto const & about = dynamic_cast<FileMonitorFileEvent const &>(event);
    char const * const what = Is<FileMonitorAdditionEvent>(event)  ? "added"
                              : Is<FileMonitorRemovalEvent>(event) ? "removed"
                                                                   : "changed";
    return std::string(what) + " '" + onOneLine(about.GetFilename()) + "'";
}
} // namespace

Watcher::Watcher(std::ostream & stream, Scope scope) : m_stream(stream), m_scope(scope)
{
    Tesseralis::Get().addObserver(this);
    for (TesseralisIterator i(Tesseralis::Get()); m_scope == Scope::Objects && !i.IsAtEnd(); ++i) {
        i->addObserver(this);
    }
}

void Watcher::modified(Observable const & observable, ObservableEvent const & event)
{
    if (auto const * const object = dynamic_cast<Object const *>(&observable)) {
        print(onOneLine(object->GetObjectName()) + ": " + describeForObject(*object, event));
    } else if (Is<FileMonitorEvent>(event)) {
        print("file: " + describeForFile(event));
    } else {
        print("registry: " + describeForRegistry(event));
    }
    auto const * const added = dynamic_cast<TesseralisAdditionEvent const *>(&event);
    if (added != nullptr && m_scope == Scope::Objects) {
        const_cast<Object *>(added->GetObject())->addObserver(this);
    }
}

void Watcher::print(std::string const & line)
{
    if (m_scope == Scope::Objects || line != m_lastLine) {
        m_stream << line << '\n';
    }
    m_lastLine = line;
}
} // namespace tesseralis::host
