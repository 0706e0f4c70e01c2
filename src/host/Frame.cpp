#include "Frame.h"

#include "HostViewer.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"

#include <CLI/CLI.hpp>

#include <charconv>

namespace tesseralis::host {
namespace {
constexpr unsigned int c_largest = 8192;

[[noreturn]] void refuseSize(std::string const & size)
{
    throw Exception("'%s' is no size of a frame: that is WIDTHxHEIGHT, each from 1 to %u.", size.c_str(), c_largest);
}

unsigned int lengthOf(std::string const & text, std::string const & size)
{
    unsigned int length = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    if (error != std::errc() || end != text.data() + text.size() || length < 1 || length > c_largest) {
        refuseSize(size);
    }
    return length;
}
} // namespace

void declareFrameOptions(CLI::App & application, FrameOptions & options)
{
    CLI::Option * const frame = application.add_option(
        "--frame", options.filename, "Draw a frame of the document's viewer, on no screen, and write it as a picture");
    frame->type_name("OUT.png|OUT.ppm");
    application.add_option("--size", options.size, "The size of the frame in pixels, 640x480 if not given")
        ->type_name("WIDTHxHEIGHT")
        ->needs(frame);
    application.add_option("--viewer", options.viewer, "The viewer of the frame, where there are several")
        ->type_name("NAME")
        ->needs(frame);
    application
        .add_option("--input", options.input,
                    "Replay device events before the frame: lines such as 'cursor mouse0.cursor 320 240' (pixels from "
                    "the lower left), 'button mouse0.leftbutton 1' and 'frame'")
        ->type_name("FILE")
        ->needs(frame);
}

Frame::Frame(FrameOptions const & options) : m_options(options)
{
    Picture::checkFilename(*options.filename);
    std::size_t const cross = options.size.find('x');
    if (cross == std::string::npos) {
        refuseSize(options.size);
    }
    m_width = lengthOf(options.size.substr(0, cross), options.size);
    m_height = lengthOf(options.size.substr(cross + 1), options.size);
    if (!options.input.empty()) {
        m_input.emplace(options.input);
    }
    m_surface.emplace(m_width, m_height);
    HostViewer::SetSurface(&*m_surface);
}

Frame::~Frame()
{
    Tesseralis::Get().clearObjects(); // while plug-ins can free what they have in the context
    HostViewer::SetSurface(nullptr);
}

void Frame::draw()
{
    HostViewer & viewer = HostViewer::find(m_options.viewer);
    viewer.reshape(m_width, m_height);
    if (m_input) {
        m_input->replay(viewer);
    }
    viewer.display();
    m_picture = viewer.GetPicture();
}

void Frame::write() const
{
    m_picture.write(*m_options.filename);
}
} // namespace tesseralis::host
