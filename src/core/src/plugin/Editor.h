#pragma once

#include "object/Export.h"

#include <list>

namespace tesseralis {
/// A thing of the host's graphical user interface, of which the library knows nothing.
class TESSERALIS_API Widget
{
public:
    virtual ~Widget() = default;
};

/// Something that the user can have done, such as an entry of a menu; the host's like Widget.
class TESSERALIS_API Action
{
public:
    virtual ~Action() = default;
};

/// What an editor module implements: a part of the graphical user interface. What it gives out stays the module's.
class TESSERALIS_API Editor
{
public:
    virtual ~Editor() = default;
    /// The editor itself; null if it has none.
    virtual Widget * GetWidget() { return nullptr; }
    /// What belongs to the tool bars and beside the editor.
    virtual std::list<Widget *> GetToolWidgets() { return {}; }
    virtual std::list<Widget *> GetDockWidgets() { return {}; }
    /// What belongs to the menus, and what is to be reached in one step.
    virtual std::list<Action *> GetMainActions() { return {}; }
    virtual std::list<Action *> GetQuickActions() { return {}; }
    /// The host has put everything in its place.
    virtual void onInitialized() {}
};
} // namespace tesseralis
