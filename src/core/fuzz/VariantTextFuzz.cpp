// Assigns a text to a value of any type: what is accepted must come back from its own text, and a refusal must leave
// the value as it was. The first byte chooses the type, the rest is the text.

#include "object/Exception.h"
#include "value/Variant.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

using namespace tesseralis;

namespace {
std::string GetText(Variant const & variant)
{
    return variant;
}

Variant makeVariant(unsigned int choice)
{
    switch (choice) {
    case 1:
        return Variant::TypeInteger(3, -100, 100);
    case 2:
        return Variant::TypeFloat(0.5f, 0.0f, 1e10f);
    case 3: {
        Variant option = Variant::TypeOption();
        option[0] = Variant("first");
        option[1] = Variant(2);
        option[2] = Variant(0.5f);
        return option;
    }
    default:
        return Variant(Variant::Type(choice));
    }
}

void check(bool condition)
{
    if (!condition) {
        std::abort();
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    if (size == 0 || size > 256) {
        return 0;
    }

    Variant variant = makeVariant(data[0] % 15);
    if (!variant.IsDefined()) {
        return 0;
    }
    std::string const before = GetText(variant);
    std::string const text(reinterpret_cast<char const *>(data) + 1, size - 1);
    try {
        variant = text;
    } catch (Exception const &) {
        check(GetText(variant) == before);
        return 0;
    }

    std::string const after = GetText(variant);
    Variant again = makeVariant(data[0] % 15);
    again = after;
    check(GetText(again) == after);
    check(variant.GetType() == again.GetType());
    return 0;
}
