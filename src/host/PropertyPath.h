#pragma once

#include <string>

namespace tesseralis {
class PropertyContainer;
class Variant;
} // namespace tesseralis

namespace tesseralis::host {
/// A property named as OBJECT.PROPERTY. Of several ways to cut such a text the one with the longest object name that
/// exists holds.
class PropertyPath
{
public:
    /// Throws Exception if there is no such object or property.
    explicit PropertyPath(std::string const & text);

    PropertyContainer & GetContainer() const { return *m_container; }
    std::string const & GetName() const { return m_name; }
    Variant & GetValue() const;

private:
    PropertyContainer * m_container = nullptr;
    std::string m_name;
};

/// Sets a property from a text of the form OBJECT.PROPERTY=TEXT, by the text conversion of the value that is there.
/// Throws Exception if there is no such property or its value refuses the text.
void setProperty(std::string const & assignment);
} // namespace tesseralis::host
