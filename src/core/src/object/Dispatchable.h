#pragma once

#include "object/Export.h"

namespace tesseralis {
/// Something with work that is finished later, on the thread that pumps a dispatcher; a second base beside Observable
/// or Object. A class that derives from it calls removeDispatchable() in its own destruction, so that no dispatcher
/// keeps a pointer to a dead object.
class TESSERALIS_API Dispatchable
{
public:
    virtual ~Dispatchable() = default;

    /// Asks the first dispatcher in the registry's order to call dispatch() in its next pass. Where there is none,
    /// nothing happens. Any thread may call it, also under the lock of an object: the lock of the registry isn't taken.
    virtual void addDispatchable();
    /// Takes this out of every dispatcher in the registry. Any thread may call it, as above.
    virtual void removeDispatchable();
    /// Does the pending work.
    virtual void dispatch() {}
};
} // namespace tesseralis
