#include "value/VariantFilenameValue.h"

#include "object/Exception.h"
#include "object/Guard.h"
#include "object/Tesseralis.h"
#include "value/detail/Modification.h"

#include <algorithm>

namespace tesseralis {
namespace {
constexpr std::size_t c_mostNames = 65536;

/// The names in a text, as parts of it.
std::vector<std::string_view> GetNames(std::string_view text)
{
    if (text.empty()) {
        return {text};
    }

    std::vector<std::string_view> names;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t const end = std::min(text.find(';', begin), text.size());
        if (end > begin) {
            names.push_back(text.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    if (names.size() > c_mostNames) {
        throw Exception("Unable to assign more than %u names to this variant!", static_cast<unsigned int>(c_mostNames));
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
    std::vector<std::string_view> const names = GetNames(value);
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

void VariantFilenameValue::replaceNames(std::vector<std::string_view> const & names)
{
    shrink(std::min(GetSize(), static_cast<unsigned int>(names.size())));
    unsigned int const kept = GetSize();
    for (unsigned int i = 0; i < kept; ++i) {
        Variant const name = std::string(names[i]);
        if (*m_elements[i] != name) {
            *m_elements[i] = name;
        }
    }
    for (unsigned int i = kept; i < names.size(); ++i) {
        m_elements.push_back(std::make_unique<Variant>(std::string(names[i])));
    }
    observe(kept);
}

void VariantFilenameValue::addReferences()
{
    for (auto const & element : m_elements) {
        m_references.push_back(GetFile(*element));
        Tesseralis::Get().addFileReference(m_references.back());
    }
}

void VariantFilenameValue::removeReferences()
{
    for (std::string const & file : m_references) {
        Tesseralis::Get().removeFileReference(file);
    }
    m_references.clear();
}
} // namespace tesseralis
