#include "Snapshot.h"

#include "Text.h"

#include "object/Tesseralis.h"
#include "value/PropertyContainer.h"

#include <ostream>

namespace tesseralis::host {
namespace {
/// The value, and whatever else is different.
std::string describe(PropertyRow const & now, PropertyRow const & former)
{
    std::string text = "changed property '" + now[0] + "' = " + now[2];
    for (std::size_t const cell : {1, 3, 4}) {
        text += now[cell] == former[cell] ? "" : ", " + (now[cell].empty() ? "no longer " + former[cell] : now[cell]);
    }
    return text;
}
} // namespace

Snapshot::Snapshot()
{
    for (TesseralisIterator i(Tesseralis::Get()); !i.IsAtEnd(); ++i) {
        Properties & properties = m_objects[onOneLine(i.GetName())];
        if (auto * const container = dynamic_cast<PropertyContainer *>(i.GetObject())) {
            for (PropertyRow const & row : describeProperties(*container)) {
                properties.emplace(row[0], row);
            }
        }
    }
}

void Snapshot::printDifferences(std::ostream & stream) const
{
    Snapshot const now;
    for (auto const & [object, properties] : m_objects) {
        if (!now.m_objects.contains(object)) {
            stream << object << ": removed\n";
        }
    }
    for (auto const & [object, properties] : now.m_objects) {
        auto const former = m_objects.find(object);
        bool const isNew = former == m_objects.end();
        stream << (isNew ? object + ": added\n" : "");
        printDifferences(stream, object, properties, isNew ? Properties() : former->second);
    }
}

void Snapshot::printDifferences(std::ostream & stream, std::string const & object, Properties const & now,
                                Properties const & former)
{
    for (auto const & [name, row] : former) {
        if (!now.contains(name)) {
            stream << object << ": removed property '" << name << "'\n";
        }
    }
    for (auto const & [name, row] : now) {
        auto const other = former.find(name);
        if (other == former.end()) {
            stream << object << ": added property '" << name << "' = " << row[2] << '\n';
        } else if (row != other->second) {
            stream << object << ": " << describe(row, other->second) << '\n';
        }
    }
}
} // namespace tesseralis::host
