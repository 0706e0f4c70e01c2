#pragma once

#include "plugin/Displayable.h"

#include <string>

namespace tesseralis {
class Controller;

/// What an interactor module implements: something that reacts to input, and draws to show it. Everything does nothing
/// at first. It is asked for input before the renderers.
class TESSERALIS_API Interactor : public Displayable
{
public:
    void display(Canvas &) override {}
    void overlay(Canvas &) override {}
    void reshape(unsigned int, unsigned int) override {}

    virtual ~Interactor() = default;
    /// Called again and again while the plug-in is enabled.
    virtual void idle() {}
    /// The active button or the active cursor of the controller has changed. The result tells whether the plug-in made
    /// use of it.
    virtual bool button(Controller const &) { return false; }
    virtual bool cursor(Controller const &) { return false; }
    /// What the button or cursor of an index is for, as a name for display; empty if it isn't used.
    virtual std::string GetButtonRole(unsigned int) const { return {}; }
    virtual std::string GetCursorRole(unsigned int) const { return {}; }
};
} // namespace tesseralis
