#include "Picture.h"

#include "object/Exception.h"
#include "object/platform/AtomicFile.h"

#include <png.h>

#include <filesystem>

namespace tesseralis::host {
namespace {
constexpr unsigned int c_pixelSize = 3;

std::string extensionOf(std::string const & filename)
{
    return std::filesystem::path(filename).extension().string();
}
} // namespace

Picture::Picture(unsigned int width, unsigned int height)
    : m_width(width), m_height(height), m_pixels(std::size_t{c_pixelSize} * width * height)
{
}

void Picture::checkFilename(std::string const & filename)
{
    std::string const extension = extensionOf(filename);
    if (extension != ".png" && extension != ".ppm") {
        throw Exception("The picture '%s' can't be written: its name has to end in .png or .ppm.", filename.c_str());
    }
}

void Picture::write(std::string const & filename) const
{
    checkFilename(filename);
    try {
        detail::replaceFile(filename, extensionOf(filename) == ".png" ? GetPng() : GetPpm());
    } catch (Exception const & exception) {
        throw Exception("Error saving to '%s' (%s)!", filename.c_str(), exception.GetMessage().c_str());
    }
}

std::string Picture::GetPng() const
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = m_width;
    image.height = m_height;
    image.format = PNG_FORMAT_RGB;
    auto const stride = -static_cast<png_int_32>(c_pixelSize * m_width); // the lowest row comes last
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::string text(size, '\0');
    if (png_image_write_to_memory(&image, text.data(), &size, 0, m_pixels.data(), stride, nullptr) == 0) {
        throw Exception(std::string(image.message));
    }
    text.resize(size);
    return text;
}

std::string Picture::GetPpm() const
{
    std::size_t const rowSize = std::size_t{c_pixelSize} * m_width;
    std::string text = "P6\n" + std::to_string(m_width) + " " + std::to_string(m_height) + "\n255\n";
    for (std::size_t row = m_height; row > 0; --row) {
        text.append(reinterpret_cast<char const *>(m_pixels.data()) + (row - 1) * rowSize, rowSize);
    }
    return text;
}
} // namespace tesseralis::host
