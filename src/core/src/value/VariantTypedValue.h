#pragma once

#include "object/Exception.h"
#include "value/VariantValue.h"

#include <string>

namespace tesseralis {
/// The variant type that holds a T.
template <class T>
inline constexpr Variant::Type c_variantType = Variant::Type::Undefined;
template <>
inline constexpr Variant::Type c_variantType<std::string> = Variant::Type::String;
template <>
inline constexpr Variant::Type c_variantType<bool> = Variant::Type::Boolean;
template <>
inline constexpr Variant::Type c_variantType<int> = Variant::Type::Integer;
template <>
inline constexpr Variant::Type c_variantType<float> = Variant::Type::Float;
template <>
inline constexpr Variant::Type c_variantType<Vector> = Variant::Type::Vector;
template <>
inline constexpr Variant::Type c_variantType<Quaternion> = Variant::Type::Quaternion;
template <>
inline constexpr Variant::Type c_variantType<Box> = Variant::Type::Box;
template <>
inline constexpr Variant::Type c_variantType<Matrix> = Variant::Type::Matrix;
template <>
inline constexpr Variant::Type c_variantType<Color> = Variant::Type::Color;

/// What the payloads that hold a single T have in common.
template <class T>
class TESSERALIS_API VariantTypedValue : public VariantValue
{
public:
    explicit VariantTypedValue(T const & value = T()) : m_value(value) {}

    Variant::Type GetType() const override { return c_variantType<T>; }
    bool IsEqual(VariantValue const & other) const override
    {
        try {
            T value = T();
            other.Get(value);
            return m_value == value;
        } catch (Exception const &) {
            return false;
        }
    }

    using VariantValue::Get;
    void Get(T & value) const override { value = m_value; }
    void Get(VariantValue & target) const override { target.Set(m_value); }

protected:
    T m_value;
};
} // namespace tesseralis
