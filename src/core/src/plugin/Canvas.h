#pragma once

#include "object/Export.h"

namespace tesseralis {
/// What a compositor gives a displayable to draw on: drawing goes to it between bind() and release(). The library only
/// passes it on; compositor modules implement it.
class TESSERALIS_API Canvas
{
public:
    virtual void bind() = 0;
    virtual void release() = 0;

protected:
    ~Canvas() = default;
};
} // namespace tesseralis
