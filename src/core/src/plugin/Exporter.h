#pragma once

#include "object/Export.h"

namespace tesseralis {
class Resource;
class Saver;

/// What an exporter module implements: how the data of a resource goes out.
class TESSERALIS_API Exporter
{
public:
    virtual ~Exporter() = default;
    /// What does the work for a resource, as the caller's; null if the module can't.
    virtual Saver * save(Resource &) { return nullptr; }
};
} // namespace tesseralis
