#pragma once

#include "math/Box.h"
#include "math/Color.h"
#include "math/Matrix.h"
#include "math/Quaternion.h"
#include "math/Vector.h"
#include "value/VariantValue.h"

#include <iterator>
#include <string>

namespace tesseralis::detail {
/// How an array names a field: by its position.
struct TESSERALIS_API IndexKeys
{
    static constexpr Variant::Type c_counterpart = Variant::Type::Map;

    static unsigned int GetKey(unsigned int index, char const *) { return index; }
    /// Where an element of a map goes: to the number that its name is, else to its position.
    /// Throws Exception where a document asks for one that is too far.
    static unsigned int GetKey(VariantValue const & map, unsigned int index, Origin origin);
};

/// How a map names a field.
struct TESSERALIS_API NameKeys
{
    static constexpr Variant::Type c_counterpart = Variant::Type::Array;

    static std::string GetKey(unsigned int, char const * name) { return name; }
    static std::string GetKey(VariantValue const & array, unsigned int index, Origin)
    {
        return array.GetElementName(index);
    }
};

/// The names of a value's fields and access to them by position.
template <class T>
struct Fields;

template <>
struct Fields<Vector>
{
    static constexpr char const * c_names[] = {"x", "y", "z"};
    static Variant Get(Vector const & value, unsigned int i) { return value[i]; }
    static void Set(Vector & value, unsigned int i, Variant const & field) { value.Set(i, field); }
};

template <>
struct Fields<Quaternion>
{
    static constexpr char const * c_names[] = {"vector", "scalar"};
    static Variant Get(Quaternion const & value, unsigned int i)
    {
        return i == 0 ? Variant(value.GetVector()) : Variant(value.GetScalar());
    }
    static void Set(Quaternion & value, unsigned int i, Variant const & field)
    {
        if (i == 0) {
            value.SetVector(field);
        } else {
            value.SetScalar(field);
        }
    }
};

template <>
struct Fields<Box>
{
    static constexpr char const * c_names[] = {"minimum", "maximum"};
    static Variant Get(Box const & value, unsigned int i) { return i == 0 ? value.GetMinimum() : value.GetMaximum(); }
    static void Set(Box & value, unsigned int i, Variant const & field)
    {
        if (i == 0) {
            value.SetMinimum(field);
        } else {
            value.SetMaximum(field);
        }
    }
};

template <>
struct Fields<Color>
{
    static constexpr char const * c_names[] = {"r", "g", "b", "a"};
    static Variant Get(Color const & value, unsigned int i) { return Variant::TypeInteger(value.Get()[i], 0, 255); }
    /// A channel beyond the range of a byte becomes the nearest one.
    static void Set(Color & value, unsigned int i, Variant const & field)
    {
        int channels[] = {value.GetRed(), value.GetGreen(), value.GetBlue(), value.GetAlpha()};
        channels[i] = field.operator int();
        value = Color(channels[0], channels[1], channels[2], channels[3]);
    }
};

/// The columns of a matrix are containers of numbers.
template <>
struct Fields<Matrix>
{
    static constexpr char const * c_names[] = {"0", "1", "2", "3"};
};

template <class Keys, class T>
void writeField(Variant & element, unsigned int i, T const & value)
{
    element.assign(Fields<T>::Get(value, i));
}

template <class Keys>
void writeField(Variant & element, unsigned int i, Matrix const & value)
{
    for (unsigned int j = 0; j < 4; ++j) {
        element.GetElement(Keys::GetKey(j, Fields<Matrix>::c_names[j])).assign(value.Get(i, j));
    }
}

/// Throws Exception where an element of an array or a map would refuse its field. Nothing is changed.
template <class Keys, class T>
void tryFields(VariantValue const & target, T const & value)
{
    for (unsigned int i = 0; i < std::size(Fields<T>::c_names); ++i) {
        auto const key = Keys::GetKey(i, Fields<T>::c_names[i]);
        if (target.HasElement(key)) {
            Variant trial(target.GetElement(key));
            writeField<Keys>(trial, i, value);
        }
    }
}

/// Assigns the fields of a value to the elements of an array or a map, making those that are missing.
template <class Keys, class T>
void writeFields(VariantValue & target, T const & value)
{
    for (unsigned int i = 0; i < std::size(Fields<T>::c_names); ++i) {
        writeField<Keys>(target.GetElement(Keys::GetKey(i, Fields<T>::c_names[i])), i, value);
    }
}

/// Sets those fields of a value that an array or a map has elements for.
template <class Keys, class T>
void readFields(VariantValue const & source, T & value)
{
    for (unsigned int i = 0; i < std::size(Fields<T>::c_names); ++i) {
        auto const key = Keys::GetKey(i, Fields<T>::c_names[i]);
        if (source.HasElement(key)) {
            Fields<T>::Set(value, i, source.GetElement(key));
        }
    }
}

template <class Keys>
void readFields(VariantValue const & source, Matrix & value)
{
    for (unsigned int i = 0; i < 4; ++i) {
        auto const key = Keys::GetKey(i, Fields<Matrix>::c_names[i]);
        if (!source.HasElement(key)) {
            continue;
        }
        Variant const & column = source.GetElement(key);
        for (unsigned int j = 0; j < 4; ++j) {
            auto const row = Keys::GetKey(j, Fields<Matrix>::c_names[j]);
            if (column.HasElement(row)) {
                value.Set(i, j, column.GetElement(row));
            }
        }
    }
}

/// Calls the callable with a default value of the class that a type stands for; false where it stands for none.
template <class Callable>
bool withClassType(Variant::Type type, Callable const & callable)
{
    switch (type) {
    case Variant::Type::Vector:
        callable(Vector());
        return true;
    case Variant::Type::Quaternion:
        callable(Quaternion());
        return true;
    case Variant::Type::Box:
        callable(Box());
        return true;
    case Variant::Type::Matrix:
        callable(Matrix());
        return true;
    case Variant::Type::Color:
        callable(Color());
        return true;
    default:
        return false;
    }
}
} // namespace tesseralis::detail
