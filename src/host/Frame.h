#pragma once

#include "Input.h"
#include "Picture.h"
#include "Surface.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace tesseralis::host {
/// The command line's wishes for a frame.
struct FrameOptions
{
    std::optional<std::string> filename; // of the picture; without one there is no frame
    std::string size = "640x480";
    std::string viewer;
    std::string input;
};

void declareFrameOptions(CLI::App & application, FrameOptions & options);

/// One frame of a document's viewer, drawn off-screen. It has to be made before the document is loaded, whose plug-ins
/// then find a context; its end takes all objects along.
class Frame
{
public:
    /// Throws Exception for an option that is wrong in itself, and where there is no GL.
    explicit Frame(FrameOptions const & options);
    ~Frame();

    /// Has the viewer take all input and draw. Throws Exception if there is no such viewer.
    void draw();
    /// Throws Exception if the picture can't be written.
    void write() const;

private:
    FrameOptions m_options;
    unsigned int m_width = 0;
    unsigned int m_height = 0;
    std::optional<Input> m_input;
    std::optional<Surface> m_surface;
    Picture m_picture;
};
} // namespace tesseralis::host
