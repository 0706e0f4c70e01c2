#pragma once

#include "value/VariantContainerValue.h"

#include <string>
#include <string_view>
#include <vector>

namespace tesseralis {
/// The names of one or several files, in a text with ";" between them. Names that come with a text are references that
/// the registry counts for as long as the payload has them; a name set through its element isn't. The filter is free
/// text for those who let a user choose.
class TESSERALIS_API VariantFilenameValue : public VariantIndexedValue
{
public:
    VariantFilenameValue() = default;
    explicit VariantFilenameValue(std::string const & value, std::string const & filter = std::string());
    VariantFilenameValue(VariantFilenameValue const & source);
    ~VariantFilenameValue() override;

    Variant::Type GetType() const override { return Variant::Type::Filename; }
    /// Whether the other has the same text.
    bool IsEqual(VariantValue const & other) const override;
    VariantValue * GetCloned() const override;

    using VariantIndexedValue::Get;
    using VariantIndexedValue::GetElement;
    using VariantIndexedValue::Set;
    /// An empty text is one empty name; else empty names are dropped. Throws Exception for more than 65,536 names.
    void Set(std::string const & value) override;
    void Set(VariantValue const & source) override;
    void Get(std::string & value) const override;
    void Get(VariantValue & target) const override;
    void clear() override;

    /// Up to the index, names that are missing come into being empty and without an event.
    Variant & GetElement(unsigned int index) override;

    void SetFilter(Variant const & filter) override;
    Variant GetFilter() const override;

private:
    void replaceNames(std::vector<std::string_view> const & names);
    void addReferences();
    void removeReferences();

    std::vector<std::string> m_references; // those that this payload has added; an entry may have changed since
    std::string m_filter;
};
} // namespace tesseralis
