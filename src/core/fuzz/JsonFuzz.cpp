// Reads a text as JSON, and what came of it once more from its own typed text: that must be the same but for floats,
// whose text is shorter than they are, and for what an option holds. Nothing but Exception may come out of it.

#include "object/Exception.h"
#include "value/Variant.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

using namespace tesseralis;

namespace {
bool HasSameText(Variant const & left, Variant const & right)
{
    return left.operator std::string() == right.operator std::string();
}

bool HasSameElements(Variant const & left, Variant const & right);

bool IsSame(Variant const & left, Variant const & right)
{
    if (left.GetType() != right.GetType() || left.GetSize() != right.GetSize()) {
        return false;
    }
    switch (left.GetType()) {
    case Variant::Type::Array:
    case Variant::Type::Map:
        return HasSameElements(left, right);
    case Variant::Type::Integer:
        return HasSameText(left, right) && HasSameText(left.GetMinimum(), right.GetMinimum()) &&
               HasSameText(left.GetMaximum(), right.GetMaximum());
    case Variant::Type::Filename:
        return HasSameText(left, right) && HasSameText(left.GetFilter(), right.GetFilter());
    case Variant::Type::String:
    case Variant::Type::Boolean:
    case Variant::Type::Color:
        return HasSameText(left, right);
    default:
        return true;
    }
}

bool HasSameElements(Variant const & left, Variant const & right)
{
    for (unsigned int i = 0; i < left.GetSize(); ++i) {
        if (left.GetElementName(i) != right.GetElementName(i) || !IsSame(left.GetElement(i), right.GetElement(i))) {
            return false;
        }
    }
    return true;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    if (size > 2048) {
        return 0;
    }

    try {
        Variant const value = Variant::fromJSON(std::string(reinterpret_cast<char const *>(data), size));
        if (!IsSame(value, Variant::fromJSON(value.GetJSON(false)))) {
            std::abort();
        }
    } catch (Exception const &) {
        // A typed value that doesn't fit its type or its limits, or one without a text.
    }
    return 0;
}
