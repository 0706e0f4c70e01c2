// What variants write to archives and read from them.

#include "value/Variant.h"

#include "object/Exception.h"
#include "value/Archive.h"
#include "value/VariantOptionValue.h"
#include "value/detail/NumberText.h"

#include <utility>
#include <vector>

namespace tesseralis {
namespace {
void storeLimit(ArchiveElement & element, char const * name, Variant const & limit)
{
    if (limit.IsDefined()) {
        element.SetAttribute(name, limit);
    }
}

void retrieveElements(VariantValue & value, ArchiveElement & element)
{
    std::vector<ArchiveElement> children;
    for (ArchiveElement child = element.retrieve("value"); !child.IsEmpty(); child = element.retrieve("value")) {
        children.push_back(child);
    }

    bool const numbered = value.GetType() != Variant::Type::Map;
    auto const count = static_cast<unsigned int>(children.size());
    for (ArchiveElement & child : children) {
        std::string const name = child.GetAttribute("index");
        unsigned int index = 0;
        if (numbered && detail::parseIndex(name, index) && !detail::IsNear(index, count)) {
            throw Exception("Unable to retrieve a Variant with index '%s' from this variant!", name.c_str());
        }
        value.GetElement(name).retrieve(child);
    }
}

/// What stands for the value in the text of an element: nothing for one without a text, such as an empty option.
std::string GetStoredText(Variant const & variant)
{
    try {
        return variant;
    } catch (Exception const &) {
        return std::string();
    }
}

void retrieveText(VariantValue & value, std::string const & text)
{
    if (auto * const option = dynamic_cast<VariantOptionValue *>(&value)) {
        option->selectText(text);
        return;
    }
    try {
        value.Set(text);
    } catch (Exception const &) {
        // A number whose minimum is above its maximum is the minimum, and can't be assigned even that.
        std::string present;
        value.Get(present);
        if (present != text) {
            throw;
        }
    }
}
} // namespace

void Variant::store(ArchiveElement & element)
{
    if (!m_value) {
        return;
    }

    element.SetAttribute("type", GetTypeName());
    storeLimit(element, "minimum", GetMinimum());
    storeLimit(element, "maximum", GetMaximum());
    storeLimit(element, "filter", GetFilter());
    element.SetValue(GetStoredText(*this));
    for (unsigned int i = 0; i < GetSize(); ++i) {
        ArchiveElement child = element.store("value");
        child.SetAttribute("index", GetElementName(i));
        GetElement(i).store(child);
    }
}

void Variant::retrieve(ArchiveElement & element)
{
    auto value = makeValue(GetTypeFromName(element.GetAttribute("type")));
    if (value) {
        retrieveElements(*value, element);
        value->SetMinimum(element.GetAttribute("minimum"));
        value->SetMaximum(element.GetAttribute("maximum"));
        value->SetFilter(element.GetAttribute("filter"));
        retrieveText(*value, element.GetValue());
    }
    replace(std::move(value));
}
} // namespace tesseralis
