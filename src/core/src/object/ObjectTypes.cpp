#include "object/Tesseralis.h"
#include "plugin/Session.h"

namespace tesseralis {
void registerObjectTypes()
{
    Tesseralis & registry = Tesseralis::Get();
    registry.registerObjectType<Session>();
}
} // namespace tesseralis
