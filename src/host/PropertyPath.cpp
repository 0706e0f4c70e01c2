#include "PropertyPath.h"

#include "Text.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "value/PropertyContainer.h"
#include "value/Variant.h"

namespace tesseralis::host {
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
        throw Exception("There is no object for '%s'.", onOneLine(text).c_str());
    }
    if (!m_container->HasProperty(m_name)) {
        throw Exception("The object '%s' has no property '%s'.", onOneLine(m_container->GetObjectName()).c_str(),
                        onOneLine(m_name).c_str());
    }
}

Variant & PropertyPath::GetValue() const
{
    return m_container->GetProperty(m_name);
}

void setProperty(std::string const & assignment)
{
    std::size_t const equals = assignment.find('=');
    if (equals == std::string::npos) {
        throw Exception("'%s' is not of the form OBJECT.PROPERTY=TEXT.", onOneLine(assignment).c_str());
    }

    std::string const name = assignment.substr(0, equals);
    Variant & value = PropertyPath(name).GetValue();
    if (value.GetType() == Variant::Type::Array || value.GetType() == Variant::Type::Map) {
        throw Exception("'%s' holds several values and can't be set by one text.", onOneLine(name).c_str());
    }
    value = assignment.substr(equals + 1);
}
} // namespace tesseralis::host
