#include "HostProgram.h"

#include <filesystem>
#include <string>
#include <vector>

using namespace tesseralis::test;

namespace {
class Refusals : public HostProgram
{
protected:
    void expectRefusal(std::vector<std::string> const & arguments, std::string const & message) const
    {
        Result const result = run(arguments);
        EXPECT_EQ(result.status, 1) << message;
        EXPECT_PRED2(contains, result.error, message);
        EXPECT_EQ(result.error.find('\n'), result.error.size() - 1) << result.error;
        EXPECT_EQ(result.out, "");
    }
};
} // namespace

TEST_F(HostProgram, ChangesAValueSavesItAndFindsItAgain)
{
    std::string const saved = pathOf("saved.xml");
    Result const changed = run({session, "--set", "study.Slice thickness=2.5", "--set", "view.front.Quality=best",
                                "--set", "study.Files=a.nii;b.nii", "--watch", "--save", saved});
    EXPECT_EQ(changed.status, 0);
    EXPECT_EQ(changed.error, "");
    EXPECT_EQ(changed.out, "registry: changed 'study'\nstudy: changed property 'Slice thickness' = 2.5\n"
                           "registry: changed 'view.front'\nview.front: changed property 'Quality' = best\n"
                           "registry: changed 'study'\nstudy: changed property 'Files' = a.nii;b.nii\n");
    EXPECT_EQ(run({saved, "--get", "study.Slice thickness"}).out, "2.5\n");
    EXPECT_EQ(run({saved, "--get", "view.front.Frame", "--json"}).out,
              "{\"_type\":\"integer\",\"_minimum\":-2147483648,\"_maximum\":2147483647,\"_value\":0}\n");
    for (char const * line : {"session 'view.front'\n", "  Slice thickness  float      2.5 ", "from 0.1 to 10\n",
                              "of fast, balanced, best", "hidden\n", "1. shell, 80 kV\\n"}) {
        EXPECT_PRED2(contains, run({saved, "--list"}).out, line);
    }
}

TEST_F(HostProgram, SavesWhatItLoadsToTheByte)
{
    std::string const saved = pathOf("saved.xml");
    EXPECT_EQ(run({session, "--save", saved}).status, 0);
    EXPECT_EQ(contentOf(saved), contentOf(session));
}

TEST_F(Refusals, TellWrongInputInOneLineAndWriteNothing)
{
    write(pathOf("broken.xml"), "<tesseralis>\n  <session name=\"a\">\n</tesseralis>");
    write(pathOf("other.xml"), "<document/>");
    std::pair<std::vector<std::string>, std::string> const cases[] = {
        {{pathOf("none.xml")},
         "Error loading from '" + pathOf("none.xml") + "' (line 0, column 0: Failed to open file)!"},
        {{pathOf("broken.xml")}, "(line 3, column 1: Error reading end tag.)!"},
        {{pathOf("other.xml")}, "its root tag is 'document'"},
        {{session, "--set", "nobody.x=1"}, "There is no object for 'nobody.x'."},
        {{session, "--set", "view.front.x=1"}, "The object 'view.front' has no property 'x'."},
        {{session, "--set", "study"}, "is not of the form OBJECT.PROPERTY=TEXT."},
        {{session, "--set", "study.Slice thickness=11"},
         "Unable to assign a float value of '11.000000' to this variant!"},
        {{session, "--set", "study.Calibrated=perhaps"},
         "Unable to assign a string value of 'perhaps' to this variant!"},
        {{session, "--set", "view.front.Quality=none"}, "Unable to assign a string value of 'none' to this variant!"},
        {{session, "--set", "appearance.Labels=a"}, "can't be set by one text."},
        {{session, "--get", "study.x"}, "has no property 'x'."},
        {{session, "--json"}, "--json requires --get"},
        {{"--follow"}, "--follow requires session"},
        {{pathOf(""), "--follow"}, "can't be followed, since it is no plain file"},
        {{session, "--frobnicate"}, "--frobnicate"},
        {{}, "session is required"}};
    for (auto [arguments, message] : cases) {
        arguments.insert(arguments.end(), {"--save", pathOf("saved.xml")});
        expectRefusal(arguments, message);
        EXPECT_FALSE(std::filesystem::exists(pathOf("saved.xml"))) << message;
    }
    expectRefusal({session, "--save", pathOf("no such folder") + "/x.xml"}, "Error saving to");
}

TEST_F(HostProgram, NamesObjectsOfUnknownTypesAndKeepsThemInTheDocument)
{
    write(pathOf("unknown.xml"),
          "<tesseralis><nobody name=\"x&#x1B;[31m\"><property name=\"p\"/></nobody>"
          "<session name=\"s\"><property name=\"a\" type=\"integer\">1</property></session></tesseralis>");
    Result const result = run({pathOf("unknown.xml"), "--get", "s.a", "--save", pathOf("saved.xml")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "1\n");
    EXPECT_EQ(result.error, "tesseralis: warning: 'x\\x1b[31m' is skipped, with links and expressions to it: its type "
                            "'nobody' is not known.\n");
    EXPECT_PRED2(contains, contentOf(pathOf("saved.xml")), "<property name=\"p\">");
}

TEST_F(HostProgram, EvaluatesWithModulesOfItsFoldersOnly)
{
    EXPECT_EQ(run({"--evaluate", "return 6 * 7"}).out, "42\n");
    EXPECT_PRED2(contains, run({"--list-modules"}).out, "Host 'Lua' ");
    std::string const linked = std::string(DATA) + "/linked.xml";
    EXPECT_EQ(run({linked, "--set", "view.Slab thickness=2", "--get", "scan.Depth", "--save", pathOf("saved.xml")}).out,
              "320\n");
    EXPECT_EQ(run({pathOf("saved.xml"), "--set", "scan.Slices=10", "--get", "scan.Depth"}).out, "20\n");
    EXPECT_EQ(run({linked, "--no-modules", "--set", "scan.Slices=10", "--get", "scan.Depth"}).out, "200\n");

    std::filesystem::copy_file(LUA_MODULE, pathOf("libplugin_elsewhere.so"));
    std::string document = contentOf(linked);
    document.replace(document.find("libplugin_lua.so"), 16, pathOf("libplugin_elsewhere.so"));
    write(pathOf("elsewhere.xml"), document);
    Result const untrusted = run({pathOf("elsewhere.xml"), "--set", "scan.Slices=10", "--get", "scan.Depth"});
    EXPECT_EQ(untrusted.out, "200\n");
    EXPECT_PRED2(contains, untrusted.error, "is not loaded, since it isn't in a module folder (--trust allows it).");
    EXPECT_EQ(run({pathOf("elsewhere.xml"), "--trust", "--set", "scan.Slices=10", "--get", "scan.Depth"}).out,
              "12.5\n");
}

TEST_F(HostProgram, TellsWhyAModuleCanNotBeUsedAndFindsForeignNames)
{
    std::string const folder = pathOf("modules/");
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(LUA_MODULE, folder + "libplugin_own.so");
    std::filesystem::create_symlink(LUA_MODULE, folder + "libplugin_link.so");
    write(folder + "libplugin_text.so", "no module");
    Result const listed = run({"--modules", folder, "--list-modules"});
    EXPECT_PRED2(contains, listed.out, folder + "libplugin_own.so");
    EXPECT_PRED2(contains, listed.error, "libplugin_link.so' is left out: it lies outside the module folders");
    EXPECT_PRED2(contains, listed.error, "libplugin_text.so' is left out: it can't be loaded (");

    std::string document = contentOf(std::string(DATA) + "/linked.xml");
    document.replace(document.find("libplugin_lua.so"), 16, folder + "plugin_own.dll");
    write(pathOf("foreign.xml"), document);
    Result const foreign = run({pathOf("foreign.xml"), "--modules", folder, "--set", "scan.Slices=10", "--get",
                                "scan.Depth", "--save", pathOf("saved.xml")});
    EXPECT_EQ(foreign.out + foreign.error, "12.5\n");
    EXPECT_PRED2(contains, contentOf(pathOf("saved.xml")), "filename=\"libplugin_own.so\"");
}

TEST_F(HostProgram, HelpAndVersionAreNoErrors)
{
    EXPECT_EQ(run({"--version"}).out, "tesseralis 0.8.0-3801 (20121004)\n");
    Result const help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_PRED2(contains, help.out, "--set");
}

TEST_F(Refusals, AreDueToAFrameThatCanNotBe)
{
    std::string const viewer = std::string(DATA) + "/viewer.xml";
    std::string const frame = pathOf("frame.png");
    expectRefusal({viewer, "--size", "8x8"}, "--size requires --frame");
    expectRefusal({viewer, "--frame", pathOf("frame.jpg")}, "its name has to end in .png or .ppm.");
    for (std::string const name : {"", "none.txt"}) {
        expectRefusal({viewer, "--frame", frame, "--input", pathOf(name)},
                      "Error loading from '" + pathOf(name) + "' (it can't");
    }
    for (char const * size : {"640", "x480", "640x", "0x480", "640x-1", "8193x1", "99999999999x1", "1x1x1", " 1x1"}) {
        expectRefusal({viewer, "--frame", frame, "--size", size},
                      "is no size of a frame: that is WIDTHxHEIGHT, each from 1 to");
    }
    for (std::string const line : {"cursor mouse0.cursor 1", "cursor mouse0.cursor 1 2 3", "cursor mouse0.cursor 1 nan",
                                   "button mouse0.leftbutton yes", "button 1", "frame 2", "Frame", "key a"}) {
        write(pathOf("input.txt"), "# comment\r\n\r\n" + line + "\nframe\n");
        expectRefusal({viewer, "--frame", frame, "--input", pathOf("input.txt")},
                      "(line 3: '" + line + "' is none of 'cursor");
    }
    setenv("__EGL_VENDOR_LIBRARY_FILENAMES", "/none", 1);
    expectRefusal({viewer, "--frame", frame}, "There is no GL context to draw a frame with: ");
    unsetenv("__EGL_VENDOR_LIBRARY_FILENAMES");
    EXPECT_FALSE(std::filesystem::exists(frame));
    EXPECT_EQ(run({viewer, "--get", "Cube.Azimuth"}).out, "-30\n") << "which needs none";
}
