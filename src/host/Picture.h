#pragma once

#include <string>
#include <vector>

namespace tesseralis::host {
/// The opaque picture of a surface: rows of red, green and blue bytes, the lowest row first.
class Picture
{
public:
    Picture() = default;
    Picture(unsigned int width, unsigned int height);

    unsigned char * GetPixels() { return m_pixels.data(); }

    /// Throws Exception unless the name of the file ends in .png or .ppm.
    static void checkFilename(std::string const & filename);
    /// Writes the file in the form that its name tells, the topmost row first. Throws Exception if it can't be written;
    /// a file that was there is then what it was.
    void write(std::string const & filename) const;

private:
    std::string GetPng() const;
    std::string GetPpm() const;

    unsigned int m_width = 0;
    unsigned int m_height = 0;
    std::vector<unsigned char> m_pixels;
};
} // namespace tesseralis::host
