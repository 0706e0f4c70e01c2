#pragma once

#include "value/VariantStructuredValue.h"

#include <string>

namespace tesseralis {
/// Variants in a row. Its name for an element is the index as text.
class TESSERALIS_API VariantArrayValue : public VariantStructuredValue<VariantIndexedValue, detail::IndexKeys>
{
public:
    VariantArrayValue() = default;
    VariantArrayValue(VariantArrayValue const & source);

    Variant::Type GetType() const override { return Variant::Type::Array; }
    /// Only to an array of the same size with equal elements.
    bool IsEqual(VariantValue const & other) const override;
    VariantValue * GetCloned() const override;

    using VariantStructuredValue::GetElement;
    /// Up to the index, elements that are missing come into being undefined and without an event.
    Variant & GetElement(unsigned int index) override;

protected:
    bool replaceElements(VariantValue const & source) override;
};
} // namespace tesseralis
