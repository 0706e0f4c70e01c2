#include "object/Dispatcher.h"
#include "object/Tesseralis.h"
#include "plugin/Session.h"

namespace tesseralis {
void registerObjectTypes()
{
    Tesseralis & registry = Tesseralis::Get();
    registry.registerObjectType<Dispatcher>();
    registry.registerObjectType<Session>();
}
} // namespace tesseralis
