#include "value/VariantMapValue.h"

#include <algorithm>
#include <utility>

namespace tesseralis {
VariantMapValue::VariantMapValue(VariantMapValue const & source) : VariantStructuredValue()
{
    VariantMapValue::replaceElements(source);
}

VariantMapValue::~VariantMapValue()
{
    VariantMapValue::clear();
}

bool VariantMapValue::IsEqual(VariantValue const & other) const
{
    auto const * const map = dynamic_cast<VariantMapValue const *>(&other);
    return map != nullptr && GetSize() == map->GetSize() &&
           std::all_of(m_order.begin(), m_order.end(), [&](auto const * entry) {
               auto const found = map->m_elements.find(entry->first);
               return found != map->m_elements.end() && entry->second == found->second;
           });
}

VariantValue * VariantMapValue::GetCloned() const
{
    return new VariantMapValue(*this);
}

void VariantMapValue::clear()
{
    // The elements must not announce their end to this payload. From the newest on, which is the fastest to find.
    for (auto entry = m_order.rbegin(); entry != m_order.rend(); ++entry) {
        (*entry)->second.removeObserver(this);
    }
    m_order.clear();
    m_elements.clear();
}

Variant const & VariantMapValue::GetElement(std::string const & name) const
{
    auto const found = m_elements.find(name);
    if (found == m_elements.end()) {
        throwNoElement(name);
    }
    return found->second;
}

Variant & VariantMapValue::GetElement(std::string const & name)
{
    auto const found = m_elements.find(name);
    if (found != m_elements.end()) {
        return found->second;
    }
    append(m_elements, m_order, name, Variant());
    m_order.back()->second.addObserver(this);
    return m_order.back()->second;
}

Variant const & VariantMapValue::GetElement(unsigned int index) const
{
    if (!HasElement(index)) {
        throwNoElement(index);
    }
    return m_order[index]->second;
}

Variant & VariantMapValue::GetElement(unsigned int index)
{
    return const_cast<Variant &>(std::as_const(*this).GetElement(index));
}

bool VariantMapValue::HasElement(std::string const & name) const
{
    return m_elements.find(name) != m_elements.end();
}

std::string VariantMapValue::GetElementName(unsigned int index) const
{
    return HasElement(index) ? m_order[index]->first : std::string();
}

bool VariantMapValue::replaceElements(VariantValue const & source)
{
    auto const * const map = dynamic_cast<VariantMapValue const *>(&source);
    if (map == nullptr) {
        return false;
    }

    // Before anything goes, since the source may be inside this payload.
    Elements elements;
    Order order;
    for (auto const * const entry : map->m_order) {
        append(elements, order, entry->first, entry->second);
    }
    VariantMapValue::clear();
    m_elements.swap(elements);
    m_order.swap(order);
    for (auto * const entry : m_order) {
        entry->second.addObserver(this);
    }
    return true;
}

void VariantMapValue::append(Elements & elements, Order & order, std::string const & name, Variant const & element)
{
    order.push_back(nullptr);
    try {
        order.back() = &*elements.emplace(name, element).first;
    } catch (...) {
        order.pop_back();
        throw;
    }
}
} // namespace tesseralis
