#pragma once

#include "value/VariantTypedValue.h"

#include <limits>
#include <string>

namespace tesseralis {
/// What integers and floats have in common: a value between two limits. An integer takes whole floats; a
/// float takes any integer, rounded beyond 2^24.
template <class T>
class TESSERALIS_API VariantNumberValue : public VariantTypedValue<T>
{
public:
    explicit VariantNumberValue(T value = 0) : VariantTypedValue<T>(value) {}
    /// Throws Exception if the value is out of the limits.
    VariantNumberValue(T value, T minimum, T maximum);

    using VariantTypedValue<T>::Get;
    using VariantTypedValue<T>::Set;
    void Set(float const & value) override;
    void Set(int const & value) override;
    void Set(bool const & value) override;
    /// A float without limits takes the texts of infinities and of what is no number too.
    void Set(std::string const & value) override;
    void Set(VariantValue const & source) override;
    void Get(float & value) const override;
    void Get(int & value) const override;
    void Get(bool & value) const override;
    void Get(std::string & value) const override;
    void clear() override;

    /// Always defined. A minimum above the maximum isn't refused; it is the value then.
    void SetMinimum(Variant const & minimum) override;
    Variant GetMinimum() const override;
    void SetMaximum(Variant const & maximum) override;
    Variant GetMaximum() const override;

private:
    void SetChecked(T value);
    void SetLimit(T & limit, Variant const & value);

    T m_minimum = std::numeric_limits<T>::lowest();
    T m_maximum = std::numeric_limits<T>::max();
};

extern template class VariantNumberValue<int>;
extern template class VariantNumberValue<float>;

class TESSERALIS_API VariantIntegerValue : public VariantNumberValue<int>
{
public:
    using VariantNumberValue::VariantNumberValue;
    VariantValue * GetCloned() const override;
};

class TESSERALIS_API VariantFloatValue : public VariantNumberValue<float>
{
public:
    using VariantNumberValue::VariantNumberValue;
    VariantValue * GetCloned() const override;
};
} // namespace tesseralis
