#pragma once

#include "object/Export.h"

namespace tesseralis {
class Loader;
class Resource;

/// What an importer module implements: how data comes into a resource.
class TESSERALIS_API Importer
{
public:
    virtual ~Importer() = default;
    /// What does the work for a resource, as the caller's; null if the module can't.
    virtual Loader * load(Resource &) { return nullptr; }
};
} // namespace tesseralis
