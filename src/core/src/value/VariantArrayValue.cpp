#include "value/VariantArrayValue.h"

#include <algorithm>
#include <utility>

namespace tesseralis {
VariantArrayValue::VariantArrayValue(VariantArrayValue const & source) : VariantStructuredValue()
{
    VariantArrayValue::replaceElements(source);
}

bool VariantArrayValue::IsEqual(VariantValue const & other) const
{
    auto const * const array = dynamic_cast<VariantArrayValue const *>(&other);
    return array != nullptr &&
           std::equal(m_elements.begin(), m_elements.end(), array->m_elements.begin(), array->m_elements.end(),
                      [](auto const & left, auto const & right) { return *left == *right; });
}

VariantValue * VariantArrayValue::GetCloned() const
{
    return new VariantArrayValue(*this);
}

Variant & VariantArrayValue::GetElement(unsigned int index)
{
    unsigned int const size = GetSize();
    grow(index);
    observe(size);
    return *m_elements[index];
}

bool VariantArrayValue::replaceElements(VariantValue const & source)
{
    auto const * const array = dynamic_cast<VariantArrayValue const *>(&source);
    if (array == nullptr) {
        return false;
    }

    // Before anything goes, since the source may be inside this payload.
    Elements clones = GetClones(array->m_elements);
    shrink(0);
    m_elements = std::move(clones);
    observe(0);
    return true;
}
} // namespace tesseralis
