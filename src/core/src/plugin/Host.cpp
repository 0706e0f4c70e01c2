#include "plugin/Host.h"

#include "value/Variant.h"

namespace tesseralis {
Variant Host::evaluate(std::string const &, Object *) const
{
    return Variant();
}
} // namespace tesseralis
