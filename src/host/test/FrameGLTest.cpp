#include "HostProgram.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

using namespace tesseralis::test;

namespace {
using Color = std::array<unsigned char, 3>;
constexpr Color c_background = {28, 32, 40};
constexpr Color c_green = {70, 180, 80}; // of the upright axis

struct Picture
{
    unsigned int width = 0;
    unsigned int height = 0;
    std::vector<Color> pixels; // topmost row first

    bool operator==(Picture const &) const = default;
    Color at(unsigned int x, unsigned int y) const { return pixels.at(y * width + x); }
    std::set<Color> GetColors() const { return {pixels.begin(), pixels.end()}; }
    std::string GetPpm() const
    {
        std::string text = "P6\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
        return text.append(reinterpret_cast<char const *>(pixels.data()), 3 * pixels.size());
    }
};

Picture read(std::string const & filename)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_file(&image, filename.c_str()), 0) << image.message;
    image.format = PNG_FORMAT_RGB;
    Picture picture = {image.width, image.height, std::vector<Color>(std::size_t{image.width} * image.height)};
    EXPECT_NE(png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr), 0) << image.message;
    return picture;
}

class Frame : public HostProgram
{
protected:
    void SetUp() override
    {
        static std::string const s_error =
            run({viewer, "--no-modules", "--frame", pathOf("probe.ppm"), "--size", "1x1"}).error;
        bool const hasContext = s_error.find("There is no GL context") == std::string::npos;
        if (!hasContext && std::getenv("TESSERALIS_REQUIRE_GL") == nullptr) {
            GTEST_SKIP() << s_error;
        }
        ASSERT_EQ(s_error, "");
    }

    /// The picture that the program draws of a document, which must come without a word.
    Picture draw(std::string const & document, std::vector<std::string> const & options = {}) const
    {
        std::string const filename = pathOf("frame.png");
        std::vector<std::string> arguments = {document, "--frame", filename};
        arguments.insert(arguments.end(), options.begin(), options.end());
        Result const result = run(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "");
        return read(filename);
    }

    std::string const viewer = std::string(DATA) + "/viewer.xml";
    std::string const drag = std::string(DATA) + "/drag.txt";
};
} // namespace

TEST_F(Frame, ShowsALitCubeUprightOnTheBackground)
{
    Picture const picture = draw(viewer, {"--size", "321x200", "--set", "Cube.Color=(200;100;0;255)"});
    ASSERT_EQ(picture.width, 321u);
    ASSERT_EQ(picture.height, 200u);
    EXPECT_EQ(picture.at(0, 0), c_background);
    EXPECT_EQ(picture.at(320, 199), c_background);
    Color const centre = picture.at(160, 100);
    EXPECT_TRUE(centre[0] > centre[1] && centre[1] > 0 && centre[2] == 0) << "light changes the colour's shade alone";
    EXPECT_GE(picture.GetColors().size(), 7u) << "background, three faces, three axes";
    auto const firstGreen = std::find(picture.pixels.begin(), picture.pixels.end(), c_green);
    auto const lastGreen = std::find(picture.pixels.rbegin(), picture.pixels.rend(), c_green).base();
    ASSERT_NE(firstGreen, picture.pixels.end());
    EXPECT_LT(lastGreen - picture.pixels.begin(), 321 * 100) << "the upright axis ends in the upper half";

    EXPECT_EQ(draw(viewer, {"--set", "Cube.Enabled=false"}).GetColors(), std::set<Color>{c_background});
    EXPECT_EQ(draw(viewer, {"--no-modules", "--input", drag}).GetColors(), std::set<Color>{c_background});
    EXPECT_EQ(draw(viewer, {"--set", "Cube.Axes=false"}).GetColors().count(c_green), 0u);
}

TEST_F(Frame, FollowsADragWhichTheSavedDocumentKeeps)
{
    std::string const saved = pathOf("saved.xml");
    Picture const before = draw(viewer);
    Picture const after = draw(viewer, {"--input", drag, "--save", saved});
    EXPECT_FALSE(after == before);
    ASSERT_EQ(run({viewer, "--frame", pathOf("frame.ppm")}).error, "");
    EXPECT_TRUE(contentOf(pathOf("frame.ppm")) == before.GetPpm());
    EXPECT_TRUE(draw(saved) == after);
    // 140 pixels to the right and 60 down with one button, 60 up with the other, of a height of 480.
    EXPECT_EQ(run({saved, "--get", "Cube.Azimuth"}).out, "22.5\n");
    EXPECT_EQ(run({saved, "--get", "Cube.Elevation"}).out, "47.5\n");
    EXPECT_EQ(run({saved, "--get", "Cube.Zoom"}).out.substr(0, 5), "1.189");

    std::string const document = contentOf(saved);
    EXPECT_NE(document.find("<viewer name=\"viewer\" viewport=\"viewport\">"), std::string::npos) << document;
    EXPECT_NE(document.find("filename=\"libplugin_cube.so\""), std::string::npos) << document;

    std::string other = contentOf(drag);
    other.replace(other.find("leftbutton 1"), 12, "leftbutton\t0.25 # pressed in part");
    write(pathOf("other.txt"), other);
    EXPECT_TRUE(draw(viewer, {"--input", pathOf("other.txt")}) == after);
}

TEST_F(Frame, IsOfTheViewerThatIsNamed)
{
    write(pathOf("several.xml"),
          "<tesseralis><viewer name=\"a\"/><viewer name=\"b\"><property name=\"Background Color\" "
          "type=\"color\">(1;2;3;255)</property></viewer><session name=\"s\"/></tesseralis>");
    EXPECT_EQ(draw(pathOf("several.xml"), {"--viewer", "b"}).GetColors(), (std::set<Color>{{1, 2, 3}}));

    std::string const nowhere = pathOf("no such folder") + "/frame.png";
    std::string const picture = pathOf("wrong.png");
    std::vector<std::pair<std::vector<std::string>, std::string>> const refusals = {
        {{pathOf("several.xml"), picture}, "There are 2 viewers, and --viewer has to name one: 'a', 'b' ..."},
        {{pathOf("several.xml"), picture, "--viewer", "c"}, "There is no viewer 'c'."},
        {{pathOf("several.xml"), picture, "--viewer", "s"}, "There is no viewer 's'."},
        {{session, picture}, "There is no viewer to draw a frame."},
        {{viewer, picture, "--get", "Cube.nothing"}, "The object 'Cube' has no property 'nothing'."},
        {{viewer, nowhere}, "Error saving to '" + nowhere + "' (No such file or directory)!"}};
    for (auto [arguments, message] : refusals) {
        arguments.insert(arguments.begin(), {"--save", pathOf("saved.xml")});
        arguments.insert(arguments.begin() + 3, "--frame");
        Result const result = run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.error, "tesseralis: " + message + "\n");
        EXPECT_FALSE(std::filesystem::exists(picture) || std::filesystem::exists(pathOf("saved.xml"))) << message;
    }
}
