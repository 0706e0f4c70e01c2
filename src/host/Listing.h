#pragma once

#include <iosfwd>

namespace tesseralis::host {
/// Prints every registered object with its type and, as a table below it, its properties.
void printObjects(std::ostream & stream);
} // namespace tesseralis::host
