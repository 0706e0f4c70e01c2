#pragma once

#include "value/VariantStructuredValue.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace tesseralis {
/// Variants by name, in the order in which their names first came.
class TESSERALIS_API VariantMapValue : public VariantStructuredValue<VariantContainerValue, detail::NameKeys>
{
public:
    VariantMapValue() = default;
    VariantMapValue(VariantMapValue const & source);
    ~VariantMapValue() override;

    Variant::Type GetType() const override { return Variant::Type::Map; }
    /// Only to a map with the same names and equal elements, in any order.
    bool IsEqual(VariantValue const & other) const override;
    VariantValue * GetCloned() const override;
    void clear() override;

    Variant const & GetElement(std::string const & name) const override;
    /// An element that is missing comes into being undefined and without an event.
    Variant & GetElement(std::string const & name) override;
    Variant const & GetElement(unsigned int index) const override;
    Variant & GetElement(unsigned int index) override;
    bool HasElement(std::string const & name) const override;
    bool HasElement(unsigned int index) const override { return index < GetSize(); }
    std::string GetElementName(unsigned int index) const override;
    unsigned int GetSize() const override { return static_cast<unsigned int>(m_order.size()); }

protected:
    bool replaceElements(VariantValue const & source) override;

private:
    using Elements = std::unordered_map<std::string, Variant>;
    using Order = std::vector<Elements::value_type *>;

    static void append(Elements & elements, Order & order, std::string const & name, Variant const & element);

    Elements m_elements;
    Order m_order; // the entries of m_elements, oldest first
};
} // namespace tesseralis
