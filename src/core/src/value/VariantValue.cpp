#include "value/VariantValue.h"

#include "object/Exception.h"

namespace tesseralis {
std::string VariantValue::GetTypeName() const
{
    return Variant::GetNameFromType(GetType());
}

Variant::Type VariantValue::GetType() const
{
    return Variant::Type::Undefined;
}

#define TESSERALIS_REFUSE(T, name)                                                                                     \
    void VariantValue::Set(T const &)                                                                                  \
    {                                                                                                                  \
        throw Exception("Unable to assign a value of type " name " to this variant!");                                 \
    }                                                                                                                  \
    void VariantValue::Get(T &) const                                                                                  \
    {                                                                                                                  \
        throw Exception("Unable to retrieve a value of type " name " from this variant!");                             \
    }
TESSERALIS_REFUSE(Handle, "handle")
TESSERALIS_REFUSE(Color, "color")
TESSERALIS_REFUSE(Matrix, "matrix")
TESSERALIS_REFUSE(Box, "box")
TESSERALIS_REFUSE(Quaternion, "quaternion")
TESSERALIS_REFUSE(Vector, "vector")
TESSERALIS_REFUSE(float, "int") // as callers know it
TESSERALIS_REFUSE(int, "int")
TESSERALIS_REFUSE(bool, "bool")
TESSERALIS_REFUSE(std::string, "string")
#undef TESSERALIS_REFUSE

void VariantValue::clear()
{
    throw Exception("Unable to clear this variant!");
}

Variant const & VariantValue::GetElement(std::string const & name) const
{
    throwNoElement(name);
}

Variant & VariantValue::GetElement(std::string const & name)
{
    throwNoElement(name);
}

Variant const & VariantValue::GetElement(unsigned int index) const
{
    throwNoElement(index);
}

Variant & VariantValue::GetElement(unsigned int index)
{
    throwNoElement(index);
}

bool VariantValue::HasElement(std::string const &) const
{
    return false;
}

bool VariantValue::HasElement(unsigned int) const
{
    return false;
}

std::string VariantValue::GetElementName(unsigned int) const
{
    return std::string();
}

unsigned int VariantValue::GetSize() const
{
    return 0;
}

void VariantValue::SetMinimum(Variant const &) {}

Variant VariantValue::GetMinimum() const
{
    return Variant();
}

void VariantValue::SetMaximum(Variant const &) {}

Variant VariantValue::GetMaximum() const
{
    return Variant();
}

void VariantValue::SetFilter(Variant const &) {}

Variant VariantValue::GetFilter() const
{
    return Variant();
}

void VariantValue::SetValue(Variant & variant, VariantValue const * value)
{
    variant.SetValue(value);
}

VariantValue const * VariantValue::GetValue(Variant const & variant) const
{
    return variant.GetValue();
}

void VariantValue::throwNoElement(unsigned int index)
{
    throw Exception("Unable to retrieve a Variant with index '%d' from this variant!", static_cast<int>(index));
}

void VariantValue::throwNoElement(std::string const & name)
{
    throw Exception("Unable to retrieve a Variant with index '%s' from this variant!", name.c_str());
}
} // namespace tesseralis
