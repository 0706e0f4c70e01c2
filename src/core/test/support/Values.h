#pragma once

#include "math/Box.h"
#include "math/Color.h"
#include "math/Matrix.h"
#include "math/Quaternion.h"
#include "math/Vector.h"
#include "support/Testing.h"
#include "value/Variant.h"

namespace tesseralis::test {
inline Variant appended(Variant compound, std::vector<Variant> const & elements)
{
    for (Variant const & element : elements) {
        compound, element;
    }
    return compound;
}

inline Variant array(std::vector<Variant> const & elements)
{
    return appended(Variant::TypeArray(), elements);
}

inline Variant option(std::vector<Variant> const & elements)
{
    return appended(Variant::TypeOption(), elements);
}

// What values throw.

inline std::string notAssigned(std::string const & what)
{
    return "Unable to assign " + what + " to this variant!";
}

inline std::string notRetrieved(std::string const & what)
{
    return "Unable to retrieve " + what + " from this variant!";
}

inline std::string noElement(std::string const & index)
{
    return notRetrieved("a Variant with index '" + index + "'");
}
} // namespace tesseralis::test
