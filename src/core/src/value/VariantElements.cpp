// How variants reach and make elements.

#include "value/Variant.h"

#include "object/Exception.h"
#include "value/VariantArrayValue.h"
#include "value/VariantMapValue.h"

#include <utility>

namespace tesseralis {
namespace {
[[noreturn]] void throwNoElement(int index)
{
    throw Exception("Unable to retrieve a Variant with index '%d' from this variant!", index);
}

[[noreturn]] void throwNoElement(unsigned int index)
{
    throwNoElement(static_cast<int>(index));
}

[[noreturn]] void throwNoElement(std::string const & name)
{
    throw Exception("Unable to retrieve a Variant with index '%s' from this variant!", name.c_str());
}
} // namespace

unsigned int Variant::GetSize() const
{
    return m_value ? m_value->GetSize() : 0;
}

bool Variant::HasElement(unsigned int index) const
{
    return m_value && m_value->HasElement(index);
}

bool Variant::HasElement(std::string const & name) const
{
    return m_value && m_value->HasElement(name);
}

std::string Variant::GetElementName(unsigned int index) const
{
    return m_value ? m_value->GetElementName(index) : std::string();
}

template <class Payload, class Key>
Variant & Variant::makeElement(Key const & key)
{
    if (!m_value) {
        auto value = std::make_unique<Payload>();
        value->GetElement(key);
        replace(std::move(value));
    }
    if (!m_value) {
        // An observer has taken the value away again.
        throwNoElement(key);
    }
    return m_value->GetElement(key);
}

Variant & Variant::GetElement(unsigned int index)
{
    return makeElement<VariantArrayValue>(index);
}

Variant & Variant::GetElement(std::string const & name)
{
    return makeElement<VariantMapValue>(name);
}

Variant const & Variant::GetElement(unsigned int index) const
{
    if (!m_value) {
        throwNoElement(index);
    }
    return m_value->GetElement(index);
}

Variant const & Variant::GetElement(std::string const & name) const
{
    if (!m_value) {
        throwNoElement(name);
    }
    return m_value->GetElement(name);
}

Variant & Variant::operator[](int index)
{
    if (index < 0) {
        throwNoElement(index);
    }
    return GetElement(static_cast<unsigned int>(index));
}

Variant const & Variant::operator[](int index) const
{
    if (index < 0) {
        throwNoElement(index);
    }
    return GetElement(static_cast<unsigned int>(index));
}

Variant &Variant::operator,(Variant const &element)
{
    // A copy first, since the element may be this variant.
    Variant copy(element);
    GetElement(GetSize()).swap(copy);
    return *this;
}
} // namespace tesseralis
