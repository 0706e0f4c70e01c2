#pragma once

#include "value/VariantTypedValue.h"

#include <string>

namespace tesseralis {
/// True or false, which as a number are 1 and 0 and nothing else.
class TESSERALIS_API VariantBooleanValue : public VariantTypedValue<bool>
{
public:
    using VariantTypedValue::VariantTypedValue;

    VariantValue * GetCloned() const override;

    using VariantTypedValue::Get;
    using VariantTypedValue::Set;
    void Set(float const & value) override;
    void Set(int const & value) override;
    void Set(bool const & value) override;
    void Set(std::string const & value) override;
    void Set(VariantValue const & source) override;
    void Get(float & value) const override;
    void Get(int & value) const override;
    void Get(std::string & value) const override;
    void clear() override;
};
} // namespace tesseralis
