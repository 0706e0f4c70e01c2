#pragma once

#include "object/Export.h"

namespace tesseralis {
class Canvas;

/// Something that draws on a surface.
class TESSERALIS_API Displayable
{
public:
    /// Draws what belongs to the scene.
    virtual void display(Canvas & canvas) = 0;
    /// Draws what comes on top of everything.
    virtual void overlay(Canvas & canvas) = 0;
    /// Tells the size of the surface in pixels.
    virtual void reshape(unsigned int width, unsigned int height) = 0;

protected:
    ~Displayable() = default;
};
} // namespace tesseralis
