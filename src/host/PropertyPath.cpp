#include "PropertyPath.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "value/PropertyContainer.h"
#include "value/Variant.h"

namespace tesseralis::host {
namespace {
bool exists(std::string const & path)
{
    try {
        PropertyPath const found(path);
        return true;
    } catch (Exception const &) {
        return false;
    }
}
} // namespace

PropertyPath::PropertyPath(std::string const & text)
{
    for (std::size_t point = text.rfind('.'); point != std::string::npos; point = text.rfind('.', point - 1)) {
        Object * const object = Tesseralis::Get().GetObject(text.substr(0, point));
        if (object != nullptr) {
            m_container = dynamic_cast<PropertyContainer *>(object);
            m_name = text.substr(point + 1);
            break;
        }
        if (point == 0) {
            break;
        }
    }
    if (m_container == nullptr) {
        throw Exception("There is no object for '%s'.", text.c_str());
    }
    if (!m_container->HasProperty(m_name)) {
        throw Exception("The object '%s' has no property '%s'.", m_container->GetObjectName().c_str(), m_name.c_str());
    }
}

Variant & PropertyPath::GetValue() const
{
    return m_container->GetProperty(m_name);
}

void setProperty(std::string const & assignment)
{
    // Names may hold the sign as well: the first cut that leads to a property holds, else the first one of all is told.
    std::size_t const first = assignment.find('=');
    if (first == std::string::npos) {
        throw Exception("'%s' is not of the form OBJECT.PROPERTY=TEXT.", assignment.c_str());
    }
    std::size_t equals = first;
    while (equals != std::string::npos && !exists(assignment.substr(0, equals))) {
        equals = assignment.find('=', equals + 1);
    }
    equals = equals == std::string::npos ? first : equals;

    std::string const name = assignment.substr(0, equals);
    Variant & value = PropertyPath(name).GetValue();
    if (value.GetType() == Variant::Type::Array || value.GetType() == Variant::Type::Map) {
        throw Exception("'%s' holds several values and can't be set by one text.", name.c_str());
    }
    value = assignment.substr(equals + 1);
}
} // namespace tesseralis::host
