#pragma once

#include "Listing.h"

#include <iosfwd>
#include <map>
#include <string>

namespace tesseralis::host {
/// What all objects were at some moment, in words.
class Snapshot
{
public:
    /// Of the objects that are registered now.
    Snapshot();
    /// Prints what the objects of now have that these had not, and the reverse: a line for each object that came or
    /// went, and for each property of the others.
    void printDifferences(std::ostream & stream) const;

private:
    using Properties = std::map<std::string, PropertyRow>;

    static void printDifferences(std::ostream & stream, std::string const & object, Properties const & now,
                                 Properties const & former);

    std::map<std::string, Properties> m_objects;
};
} // namespace tesseralis::host
