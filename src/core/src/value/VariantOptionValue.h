#pragma once

#include "value/VariantContainerValue.h"

#include <string>

namespace tesseralis {
/// A choice among listed values, which behaves as the one that is selected: the first that came, until another one is
/// set by its value. Setting a value that isn't listed throws Exception.
class TESSERALIS_API VariantOptionValue : public VariantIndexedValue
{
public:
    VariantOptionValue() = default;
    VariantOptionValue(VariantOptionValue const & source);

    Variant::Type GetType() const override { return Variant::Type::Option; }
    bool IsEqual(VariantValue const & other) const override;
    VariantValue * GetCloned() const override;

    void Set(Color const & value) override;
    void Set(Matrix const & value) override;
    void Set(Box const & value) override;
    void Set(Quaternion const & value) override;
    void Set(Vector const & value) override;
    void Set(float const & value) override;
    void Set(int const & value) override;
    void Set(bool const & value) override;
    void Set(std::string const & value) override;
    /// Takes options and selection of another option, of a map ("options", "selection") or of an array (selection and
    /// options in this order); selects what is equal to anything else.
    void Set(VariantValue const & source) override;
    void Get(Color & value) const override;
    void Get(Matrix & value) const override;
    void Get(Box & value) const override;
    void Get(Quaternion & value) const override;
    void Get(Vector & value) const override;
    void Get(float & value) const override;
    void Get(int & value) const override;
    void Get(bool & value) const override;
    void Get(std::string & value) const override;
    void Get(VariantValue & target) const override;
    void clear() override;

    using VariantIndexedValue::Get;
    using VariantIndexedValue::GetElement;
    using VariantIndexedValue::Set;
    Variant const & GetElement(unsigned int index) const override;
    /// Up to the index, options that are missing come into being undefined. While none is selected, the last one is.
    Variant & GetElement(unsigned int index) override;

    /// Selects the first option that has the text. The selection stays where there is none; options without a text are
    /// passed over.
    void selectText(std::string const & text);
    /// Assigns selection and options to elements of a map or an array, and may be left without them. Throws Exception
    /// if nothing is selected or an element doesn't take its part; half of it may be done then.
    template <class Keys>
    void moveParts(VariantValue & target, detail::Origin origin);

protected:
    bool take(VariantValue & source, detail::Origin origin) override;

private:
    static constexpr int c_none = -1;

    template <class T>
    void selectEqual(T const & value);
    template <class T>
    void GetSelected(T & value) const;
    void select(int selection);
    void replaceOptions(VariantOptionValue const & source);
    template <class Keys>
    void takeParts(VariantValue & parts, detail::Origin origin);

    int m_selection = c_none; // the only option that is observed
};
} // namespace tesseralis
