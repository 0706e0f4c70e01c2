#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tesseralis::host {
class HostViewer;

/// Device events that are read from a text file, one a line:
///
///     cursor mouse0.cursor 320 240   a cursor is at a place: in pixels, from the lower left corner of the surface
///     button mouse0.leftbutton 1     a button is down: 1 or true; up: 0 or false; or pressed in part: 0.5
///     frame                          plug-ins idle, and what they changed is drawn
///
/// White space may be more than one blank; what follows a '#' is a comment.
class Input
{
public:
    /// Throws Exception for a file that can't be read, and for a line of any other form.
    explicit Input(std::string const & filename);

    /// Hands all events to a viewer, in order.
    void replay(HostViewer & viewer) const;

private:
    std::vector<std::function<void(HostViewer &)>> m_events;
};
} // namespace tesseralis::host
