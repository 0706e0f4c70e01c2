#include "value/VariantNumberValue.h"

#include "value/detail/NumberText.h"

#include <algorithm>
#include <type_traits>

namespace tesseralis {
namespace {
[[noreturn]] void throwOutOfRange(int value)
{
    throw Exception("Unable to assign an integer value of %d to this variant!", value);
}

[[noreturn]] void throwOutOfRange(float value)
{
    throw Exception("Unable to assign a float value of '%f' to this variant!", static_cast<double>(value));
}

/// What remains of the largest float in its text.
constexpr float c_largestText = 3.40282e+38f;

template <class T>
T readLimit(Variant const & limit)
{
    if constexpr (std::is_same_v<T, float>) {
        float number = 0.0f;
        if (limit.GetType() == Variant::Type::String && detail::parseNonFinite(limit, number)) {
            return number;
        }
    }
    return limit;
}
} // namespace

template <class T>
VariantNumberValue<T>::VariantNumberValue(T value, T minimum, T maximum) : m_minimum(minimum), m_maximum(maximum)
{
    SetChecked(value);
}

template <class T>
void VariantNumberValue<T>::Set(float const & value)
{
    if constexpr (std::is_same_v<T, float>) {
        SetChecked(value);
    } else {
        int whole = 0;
        if (!detail::IsWhole(value, whole)) {
            throwOutOfRange(value);
        }
        SetChecked(whole);
    }
}

template <class T>
void VariantNumberValue<T>::Set(int const & value)
{
    SetChecked(static_cast<T>(value));
}

template <class T>
void VariantNumberValue<T>::Set(bool const & value)
{
    SetChecked(value ? T(1) : T(0));
}

template <class T>
void VariantNumberValue<T>::Set(std::string const & value)
{
    if constexpr (std::is_same_v<T, float>) {
        // A float can be constructed with such a value, which is then to come back from its text.
        float number = 0.0f;
        bool const isUnlimited = m_minimum <= -c_largestText && m_maximum >= c_largestText;
        if (detail::parseNonFinite(value, number) && (isUnlimited || (m_minimum <= number && number <= m_maximum))) {
            this->m_value = number;
            return;
        }
    }
    SetChecked(detail::readText<T>(value));
}

template <class T>
void VariantNumberValue<T>::Set(VariantValue const & source)
{
    T value = 0;
    source.Get(value);
    SetChecked(value);
}

template <class T>
void VariantNumberValue<T>::Get(float & value) const
{
    value = static_cast<float>(this->m_value);
}

template <class T>
void VariantNumberValue<T>::Get(int & value) const
{
    if constexpr (std::is_same_v<T, int>) {
        value = this->m_value;
    } else if (!detail::IsWhole(this->m_value, value)) {
        VariantValue::Get(value);
    }
}

template <class T>
void VariantNumberValue<T>::Get(bool & value) const
{
    if (this->m_value != T(0) && this->m_value != T(1)) {
        VariantValue::Get(value);
    }
    value = this->m_value != T(0);
}

template <class T>
void VariantNumberValue<T>::Get(std::string & value) const
{
    value = detail::toText(this->m_value);
}

template <class T>
void VariantNumberValue<T>::clear()
{
    SetChecked(0);
}

template <class T>
void VariantNumberValue<T>::SetMinimum(Variant const & minimum)
{
    SetLimit(m_minimum, minimum);
}

template <class T>
Variant VariantNumberValue<T>::GetMinimum() const
{
    return m_minimum;
}

template <class T>
void VariantNumberValue<T>::SetMaximum(Variant const & maximum)
{
    SetLimit(m_maximum, maximum);
}

template <class T>
Variant VariantNumberValue<T>::GetMaximum() const
{
    return m_maximum;
}

template <class T>
void VariantNumberValue<T>::SetChecked(T value)
{
    // In this form it also refuses what is not a number.
    if (!(m_minimum <= value && value <= m_maximum)) {
        throwOutOfRange(value);
    }
    this->m_value = value;
}

template <class T>
void VariantNumberValue<T>::SetLimit(T & limit, Variant const & value)
{
    try {
        // Nothing lies between limits that are not numbers.
        T const number = readLimit<T>(value);
        if (number == number) {
            limit = number;
            this->m_value = std::max(m_minimum, std::min(this->m_value, m_maximum));
        }
    } catch (Exception const &) {
        // A value of another kind is no limit.
    }
}

template class VariantNumberValue<int>;
template class VariantNumberValue<float>;

VariantValue * VariantIntegerValue::GetCloned() const
{
    return new VariantIntegerValue(*this);
}

VariantValue * VariantFloatValue::GetCloned() const
{
    return new VariantFloatValue(*this);
}
} // namespace tesseralis
