#pragma once

#include "object/Export.h"

#include <list>
#include <map>
#include <string>

namespace tesseralis {
class Controller;
class Displayable;

/// What a compositor module implements: how the drawing of the displayables reaches the surface. Everything does
/// nothing at first.
class TESSERALIS_API Compositor
{
public:
    virtual ~Compositor() = default;
    /// Called again and again while the plug-in is enabled.
    virtual void idle() {}
    /// A displayable has come to the surface, or goes from it. It stays the caller's.
    virtual void addDisplayable(Displayable *) {}
    virtual void removeDisplayable(Displayable *) {}
    /// Brings the displayables, which are in order, to the surface. The map holds those that have changed since the
    /// last call, each with its flags. False asks for another call, at once and with the same arguments.
    virtual bool display(std::list<Displayable *> const &, std::map<Displayable *, unsigned int> const &)
    {
        return true;
    }
    /// Tells the size of the surface in pixels.
    virtual void reshape(unsigned int, unsigned int) {}
    /// The active button or the active cursor of the controller has changed. The result tells whether the plug-in made
    /// use of it.
    virtual bool button(Controller const &) { return false; }
    virtual bool cursor(Controller const &) { return false; }
    /// What the button or cursor of an index is for, as a name for display; empty if it isn't used.
    virtual std::string GetButtonRole(unsigned int) const { return {}; }
    virtual std::string GetCursorRole(unsigned int) const { return {}; }
};
} // namespace tesseralis
