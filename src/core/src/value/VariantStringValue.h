#pragma once

#include "value/VariantTypedValue.h"

#include <string>

namespace tesseralis {
/// A text, which takes the text of any single value and gives every value that it is the text of.
class TESSERALIS_API VariantStringValue : public VariantTypedValue<std::string>
{
public:
    using VariantTypedValue::VariantTypedValue;

    VariantValue * GetCloned() const override;

    using VariantTypedValue::Get;
    using VariantTypedValue::Set;
    void Set(Color const & value) override;
    void Set(Matrix const & value) override;
    void Set(Box const & value) override;
    void Set(Quaternion const & value) override;
    void Set(Vector const & value) override;
    void Set(float const & value) override;
    void Set(int const & value) override;
    void Set(bool const & value) override;
    void Set(std::string const & value) override;
    void Set(VariantValue const & source) override;
    void Get(Color & value) const override;
    void Get(Matrix & value) const override;
    void Get(Box & value) const override;
    void Get(Quaternion & value) const override;
    void Get(Vector & value) const override;
    void Get(float & value) const override;
    void Get(int & value) const override;
    void Get(bool & value) const override;
    void clear() override;
};
} // namespace tesseralis
