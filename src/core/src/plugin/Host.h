#pragma once

#include "object/Export.h"

#include <string>

namespace tesseralis {
class Object;
class Variant;

/// Evaluates texts in a language of its own.
class TESSERALIS_API Host
{
public:
    virtual ~Host() = default;
    /// The result of a text; undefined if there is none. The object, which may be null, is what the text is evaluated
    /// for.
    virtual Variant evaluate(std::string const & text, Object * object) const;
};
} // namespace tesseralis
