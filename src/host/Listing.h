#pragma once

#include <array>
#include <iosfwd>
#include <string>
#include <vector>

namespace tesseralis {
class PropertyContainer;
}

namespace tesseralis::host {
/// A property in words: name, type, value, limits, and whether it is hidden, linked or computed.
using PropertyRow = std::array<std::string, 5>;
std::vector<PropertyRow> describeProperties(PropertyContainer & container);

/// Prints every registered object with its type and, as a table below it, its properties.
void printObjects(std::ostream & stream);
} // namespace tesseralis::host
