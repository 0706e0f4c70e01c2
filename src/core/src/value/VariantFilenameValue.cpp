#include "value/VariantFilenameValue.h"

#include "object/Exception.h"
#include "object/Guard.h"
#include "object/Tesseralis.h"
#include "value/detail/Modification.h"

#include <algorithm>

namespace tesseralis {
namespace {
std::vector<Variant> GetNames(std::string const & text)
{
    if (text.empty()) {
        return {Variant(text)};
    }

    std::vector<Variant> names;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t const end = std::min(text.find(';', begin), text.size());
        if (end > begin) {
            names.emplace_back(text.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    return names;
}

/// The file that an entry names; none, where a value without a text has been put into it.
std::string GetFile(Variant const & entry)
{
    try {
        return entry;
    } catch (Exception const &) {
        return std::string();
    }
}
} // namespace

VariantFilenameValue::VariantFilenameValue(std::string const & value, std::string const & filter) : m_filter(filter)
{
    VariantFilenameValue::Set(value);
}

VariantFilenameValue::VariantFilenameValue(VariantFilenameValue const & source)
    : VariantIndexedValue(), m_filter(source.m_filter)
{
    m_elements = GetClones(source.m_elements);
    observe(0);
    addReferences();
}

VariantFilenameValue::~VariantFilenameValue()
{
    detail::runGuarded([this] { removeReferences(); });
}

bool VariantFilenameValue::IsEqual(VariantValue const & other) const
{
    try {
        std::string text;
        std::string otherText;
        Get(text);
        other.Get(otherText);
        return text == otherText;
    } catch (Exception const &) {
        return false;
    }
}

VariantValue * VariantFilenameValue::GetCloned() const
{
    return new VariantFilenameValue(*this);
}

void VariantFilenameValue::Set(std::string const & value)
{
    std::vector<Variant> const names = GetNames(value);
    removeReferences();
    try {
        detail::modify(*this, [&] { replaceNames(names); });
    } catch (...) {
        addReferences();
        throw;
    }
    addReferences();
}

void VariantFilenameValue::Set(VariantValue const & source)
{
    std::string text;
    source.Get(text);
    Set(text);
}

void VariantFilenameValue::Get(std::string & value) const
{
    std::string text;
    for (auto const & element : m_elements) {
        if (element != m_elements.front()) {
            text += ';';
        }
        text += element->operator std::string();
    }
    value = text;
}

void VariantFilenameValue::Get(VariantValue & target) const
{
    std::string text;
    Get(text);
    target.Set(text);
}

void VariantFilenameValue::clear()
{
    removeReferences();
    VariantIndexedValue::clear();
}

Variant & VariantFilenameValue::GetElement(unsigned int index)
{
    unsigned int const size = GetSize();
    grow(index);
    for (unsigned int i = size; i < GetSize(); ++i) {
        *m_elements[i] = Variant(std::string());
    }
    observe(size);
    return *m_elements[index];
}

void VariantFilenameValue::SetFilter(Variant const & filter)
{
    m_filter = filter.operator std::string();
}

Variant VariantFilenameValue::GetFilter() const
{
    return m_filter;
}

void VariantFilenameValue::replaceNames(std::vector<Variant> const & names)
{
    shrink(std::min(GetSize(), static_cast<unsigned int>(names.size())));
    unsigned int const kept = GetSize();
    for (unsigned int i = 0; i < kept; ++i) {
        if (*m_elements[i] != names[i]) {
            *m_elements[i] = names[i];
        }
    }
    for (unsigned int i = kept; i < names.size(); ++i) {
        m_elements.push_back(std::make_unique<Variant>(names[i]));
    }
    observe(kept);
}

void VariantFilenameValue::addReferences() const
{
    for (auto const & element : m_elements) {
        Tesseralis::Get().addFileReference(GetFile(*element));
    }
}

void VariantFilenameValue::removeReferences() const
{
    for (auto const & element : m_elements) {
        Tesseralis::Get().removeFileReference(GetFile(*element));
    }
}
} // namespace tesseralis
