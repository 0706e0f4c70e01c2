#include "Snapshot.h"

#include "Text.h"

#include "object/Tesseralis.h"
#include "value/PropertyContainer.h"

#include <algorithm>
#include <ostream>

namespace tesseralis::host {
namespace {
using Rows = std::vector<PropertyRow>;

PropertyRow const * find(Rows const & rows, std::string const & name)
{
    auto const found = std::find_if(rows.begin(), rows.end(), [&](PropertyRow const & row) { return row[0] == name; });
    return found == rows.end() ? nullptr : &*found;
}

/// The value, and whatever else is different.
std::string describe(PropertyRow const & now, PropertyRow const & former)
{
    std::string text = "changed property '" + now[0] + "' = " + now[2];
    for (std::size_t const cell : {1, 3, 4}) {
        text += now[cell] == former[cell] ? "" : ", " + (now[cell].empty() ? "no longer " + former[cell] : now[cell]);
    }
    return text;
}

void printDifferences(std::ostream & stream, std::string const & object, Rows const & now, Rows const & former)
{
    for (PropertyRow const & row : former) {
        if (find(now, row[0]) == nullptr) {
            stream << object << ": removed property '" << row[0] << "'\n";
        }
    }
    for (PropertyRow const & row : now) {
        PropertyRow const * const other = find(former, row[0]);
        if (other == nullptr) {
            stream << object << ": added property '" << row[0] << "' = " << row[2] << '\n';
        } else if (row != *other) {
            stream << object << ": " << describe(row, *other) << '\n';
        }
    }
}
} // namespace

Snapshot::Snapshot()
{
    for (TesseralisIterator i(Tesseralis::Get()); !i.IsAtEnd(); ++i) {
        auto * const container = dynamic_cast<PropertyContainer *>(i.GetObject());
        m_objects[onOneLine(i.GetName())] = container == nullptr ? Rows() : describeProperties(*container);
    }
}

void Snapshot::printDifferences(std::ostream & stream) const
{
    Snapshot const now;
    for (auto const & [object, rows] : m_objects) {
        if (!now.m_objects.contains(object)) {
            stream << object << ": removed\n";
        }
    }
    for (auto const & [object, rows] : now.m_objects) {
        auto const former = m_objects.find(object);
        stream << (former == m_objects.end() ? object + ": added\n" : "");
        host::printDifferences(stream, object, rows, former == m_objects.end() ? Rows() : former->second);
    }
}
} // namespace tesseralis::host
