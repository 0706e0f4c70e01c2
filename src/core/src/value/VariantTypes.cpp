// The types of values: their numbers and names, and how variants of each are made.

#include "value/Variant.h"

#include "value/VariantArrayValue.h"
#include "value/VariantBooleanValue.h"
#include "value/VariantCustomValue.h"
#include "value/VariantFilenameValue.h"
#include "value/VariantMapValue.h"
#include "value/VariantNumberValue.h"
#include "value/VariantOptionValue.h"
#include "value/VariantStringValue.h"

#include <algorithm>
#include <iterator>

namespace tesseralis {
namespace {
// By the number of the type.
constexpr char const * s_typeNames[] = {"undefined", "array",   "map",   "option", "string",
                                        "boolean",   "integer", "float", "vector", "quaternion",
                                        "box",       "matrix",  "color", "handle", "filename"};
} // namespace

std::unique_ptr<VariantValue> Variant::makeValue(Type type)
{
    switch (type) {
    case Type::Array:
        return std::make_unique<VariantArrayValue>();
    case Type::Map:
        return std::make_unique<VariantMapValue>();
    case Type::Option:
        return std::make_unique<VariantOptionValue>();
    case Type::String:
        return std::make_unique<VariantStringValue>();
    case Type::Boolean:
        return std::make_unique<VariantBooleanValue>();
    case Type::Integer:
        return std::make_unique<VariantIntegerValue>();
    case Type::Float:
        return std::make_unique<VariantFloatValue>();
    case Type::Vector:
        return std::make_unique<VariantCustomValue<Vector>>();
    case Type::Quaternion:
        return std::make_unique<VariantCustomValue<Quaternion>>();
    case Type::Box:
        return std::make_unique<VariantCustomValue<Box>>();
    case Type::Matrix:
        return std::make_unique<VariantCustomValue<Matrix>>();
    case Type::Color:
        return std::make_unique<VariantCustomValue<Color>>();
    case Type::Filename:
        return std::make_unique<VariantFilenameValue>();
    default:
        return nullptr;
    }
}

Variant::Variant(std::string const & value) : Variant(std::make_unique<VariantStringValue>(value)) {}
Variant::Variant(char const * value) : Variant(std::string(value == nullptr ? "" : value)) {}
Variant::Variant(bool value) : Variant(std::make_unique<VariantBooleanValue>(value)) {}
Variant::Variant(int value) : Variant(std::make_unique<VariantIntegerValue>(value)) {}
Variant::Variant(float value) : Variant(std::make_unique<VariantFloatValue>(value)) {}
Variant::Variant(Vector const & value) : Variant(std::make_unique<VariantCustomValue<Vector>>(value)) {}
Variant::Variant(Quaternion const & value) : Variant(std::make_unique<VariantCustomValue<Quaternion>>(value)) {}
Variant::Variant(Box const & value) : Variant(std::make_unique<VariantCustomValue<Box>>(value)) {}
Variant::Variant(Matrix const & value) : Variant(std::make_unique<VariantCustomValue<Matrix>>(value)) {}
Variant::Variant(Color const & value) : Variant(std::make_unique<VariantCustomValue<Color>>(value)) {}
Variant::Variant(Type type) : Variant(makeValue(type)) {}

Variant::Variant(int value, int minimum, int maximum)
    : Variant(std::make_unique<VariantIntegerValue>(value, minimum, maximum))
{
}

Variant::Variant(float value, float minimum, float maximum)
    : Variant(std::make_unique<VariantFloatValue>(value, minimum, maximum))
{
}

Variant Variant::TypeFilename(std::string const & value)
{
    return Variant(std::make_unique<VariantFilenameValue>(value));
}

Variant Variant::TypeFilename(std::string const & value, std::string const & filter)
{
    return Variant(std::make_unique<VariantFilenameValue>(value, filter));
}

Variant::Type Variant::GetTypeFromName(std::string const & name)
{
    auto const found = std::find(std::begin(s_typeNames), std::end(s_typeNames), name);
    return found == std::end(s_typeNames) ? Type::Undefined : Type(found - std::begin(s_typeNames));
}

std::string Variant::GetNameFromType(Type type)
{
    auto const number = static_cast<std::size_t>(type);
    return number < std::size(s_typeNames) ? s_typeNames[number] : std::string();
}
} // namespace tesseralis
