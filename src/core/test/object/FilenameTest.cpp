#include "object/Filename.h"
#include "object/Path.h"
#include "object/Text.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <vector>

using namespace tesseralis;

namespace {
struct PathCase
{
    char const * path;
    char const * drive;
    char const * directory;
    char const * name;
    char const * extension;
};
} // namespace

TEST(SplitPath, TakesEachKindOfPathApart)
{
    PathCase const cases[] = {
        {"", "", "", "", ""},
        {"head", "", "", "head", ""},
        {"head.tar.gz", "", "", "head.tar", ".gz"},
        {".profile", "", "", ".profile", ""},
        {"..", "", "", ".", "."},
        {"C:\\data\\ct\\head.raw", "C:", "\\data\\ct\\", "head", ".raw"},
        {"C:\\head.raw", "C:", "", "\\head", ".raw"},
        {"C:\\data\\", "C:", "\\data\\", "", ""},
        {"data\\ct\\a/b.raw", "data", "\\ct\\", "a/b", ".raw"},
        {"\\head", "", "", "\\head", ""},
        {"/data/ct/head.raw", "/data", "/ct/", "head", ".raw"},
        {"/data/a\\b.raw", "/data", "", "/a\\b", ".raw"},
        {"/data/c.t/.profile", "/data", "/c.t/", ".profile", ""},
        {"/data/.profile", "/data", "", "/", ".profile"},
        {"/head.raw", "/head.raw", "", "", ""},
        {"/", "/", "", "", ""},
        {"//head", "/", "", "/head", ""},
        {"ct/head.raw", "", "", "ct/head", ".raw"},
    };
    for (PathCase const & c : cases) {
        char drive[32];
        char directory[32];
        char name[32];
        char extension[32];
        splitPath(c.path, drive, directory, name, extension);
        EXPECT_STREQ(drive, c.drive) << c.path;
        EXPECT_STREQ(directory, c.directory) << c.path;
        EXPECT_STREQ(name, c.name) << c.path;
        EXPECT_STREQ(extension, c.extension) << c.path;

        char only[32];
        splitPath(c.path, nullptr, nullptr, only, nullptr);
        EXPECT_STREQ(only, c.name) << c.path;
    }
    char drive[] = "old";
    splitPath(nullptr, drive, nullptr, nullptr, nullptr);
    EXPECT_STREQ(drive, "");
}

TEST(MakePath, AddsWhatLacksAndCollapsesRuns)
{
    PathCase const cases[] = {
        {"C:\\data\\head.raw", "C:", "data", "head", "raw"},
        {"C:\\data\\ct\\head.raw", "C:\\\\", "\\\\data\\\\ct\\\\", "head", ".raw"},
        {"C:\\a/b//\\h.e.a.d.raw", "C:", "a/b//", "h..e...a.d.", "..raw"},
        {"/data/ct/head.tar.gz", "//data//", "ct", "head", ".tar..gz"},
        {"/data/\\ct\\\\/head", "/data", "\\ct\\\\", "head", ""},
        {"/data//head.raw", "/data", nullptr, "/head", ".raw"},
        {"/data/.profile", "/data", "", "", "profile"},
        {"\\ct\\head.", nullptr, "ct", "head...", ""},
        {"\\", "", "\\\\", "", ""},
        {"ct/head", "", "", "ct/head", nullptr},
        {"/data/head", "/data", "", "head..", nullptr},
        {".", nullptr, nullptr, "...", nullptr},
        {"", nullptr, nullptr, nullptr, nullptr},
    };
    for (PathCase const & c : cases) {
        char path[64] = "old";
        makePath(path, c.drive, c.directory, c.name, c.extension);
        EXPECT_STREQ(path, c.path);
    }
    makePath(nullptr, "C:", "data", "head", "raw");
}

TEST(FilenameSet, MakesPathsAbsoluteAndKeepsTheirPartsWhole)
{
    std::string const current = std::filesystem::current_path().string();
    struct
    {
        std::string given;
        std::string path;
    } const cases[] = {
        {"/tmp/x.txt", "/tmp/x.txt"},
        {"/data/ct/../mr//./head.tar.gz", "/data/mr/head.tar.gz"},
        {"head.raw", current + "/head.raw"},
        {"./ct/head.raw", current + "/ct/head.raw"},
        {"/data/" + std::string(5000, 'x') + ".raw", "/data/" + std::string(5000, 'x') + ".raw"},
        {"", ""},
    };
    for (auto const & [given, path] : cases) {
        Filename const filename(given);
        EXPECT_EQ(filename.GetPath(), path);
        EXPECT_EQ(filename.GetDriveDirectory() + filename.GetNameExtension(), path);
        EXPECT_EQ(Filename(filename.GetDrive(), filename.GetDirectory(), filename.GetName(), filename.GetExtension()),
                  filename);
    }

    Filename filename("/data/ct/head.tar.gz");
    EXPECT_EQ(filename.GetDriveDirectory(), "/data/ct/");
    EXPECT_EQ(filename.GetName(), "head.tar");
    EXPECT_EQ(filename.GetExtension(), ".gz");
    EXPECT_EQ(Filename("/..//head").GetDrive(), "/head");
    EXPECT_EQ(Filename("///"), Filename("/"));
    filename = std::string();
    EXPECT_EQ(filename, Filename());
    EXPECT_EQ(filename.GetDriveDirectory() + filename.GetNameExtension(), "");
}

TEST(FilenameSet, TakesADirectoryWithoutADriveFromTheCurrentOne)
{
    std::string const current = std::filesystem::current_path().string();
    EXPECT_EQ(Filename("", "ct/mr", "head", "raw").GetPath(), current + "/ct/mr/head.raw");
    EXPECT_EQ(Filename("", "/ct/mr/", "head", ".raw").GetPath(), "/ct/mr/head.raw");
    EXPECT_EQ(Filename("", "", "head", ".raw").GetPath(), current + "/head.raw");
}

TEST(FilenameSibling, KeepsWhatIsNotReplaced)
{
    Filename const filename("/data/ct/head.raw");
    EXPECT_EQ(filename.GetSibling("mr/old", "foot", "txt").GetPath(), "/data/mr/old/foot.txt");
    EXPECT_EQ(filename.GetSibling("foot", "").GetPath(), "/data/ct/foot");
    EXPECT_EQ(filename.GetSibling(".txt").GetPath(), "/data/ct/head.txt");
    Filename const shallow("/data/head.raw");
    EXPECT_EQ(shallow.GetSibling("foot", ".txt").GetPath(), "/data/foot.txt");
    EXPECT_EQ(shallow.GetSibling(".txt").GetPath(), "/data/head.txt");
}

TEST(FilenameStream, WritesThePathAndReadsAWord)
{
    std::stringstream stream;
    stream << Filename("/data/head.raw") << " /data/foot.raw rest";
    Filename filename;
    stream >> filename >> filename;
    EXPECT_EQ(std::string(filename), "/data/foot.raw");
    std::istringstream blank("  ");
    EXPECT_FALSE(blank >> filename);
    EXPECT_FALSE(filename == Filename("/data/FOOT.raw"));
    EXPECT_EQ(filename, Filename("/data/foot.raw"));
}

TEST(FindFiles, MatchesTheLastComponentAndGivesBareNames)
{
    test::TemporaryDirectory const directory;
    for (char const * name : {"libplugin_a.so", "libplugin_b.so", "libplugin_.so.bak", ".hidden", "a*b", "a[1]"}) {
        std::ofstream(directory.GetPath(name)).put('x');
    }
    std::filesystem::create_directory(directory.GetPath("plugins"));

    using Names = std::set<std::string>;
    struct
    {
        char const * pattern;
        Names names;
    } const cases[] = {
        {"libplugin_*.so", {"libplugin_a.so", "libplugin_b.so"}},
        {"*_?.s*o", {"libplugin_a.so", "libplugin_b.so"}},
        {"*", {"libplugin_a.so", "libplugin_b.so", "libplugin_.so.bak", ".hidden", "a*b", "a[1]", "plugins"}},
        {"???", {"a*b"}},
        {"a[1]", {"a[1]"}},
        {".*", {".hidden"}},
        {"plug**ins*", {"plugins"}},
        {"", {}},
        {"LIB*", {}},
        {"nowhere/*", {}},
    };
    for (auto const & [pattern, names] : cases) {
        std::list<std::string> const found = findFiles(directory.GetPath(pattern));
        EXPECT_EQ(Names(found.begin(), found.end()), names) << pattern;
        EXPECT_EQ(found.size(), names.size()) << pattern;
    }
    EXPECT_FALSE(findFiles("*").empty());
}

TEST(TrimmedText, LosesItsEndsButKeepsAllWhereTheRightSideTakesEverything)
{
    EXPECT_EQ(trimLeft(" \t a b ", " \t"), "a b ");
    EXPECT_EQ(trimRight(" a b\t ", " \t"), " a b");
    EXPECT_EQ(trim("--a-b--", "-"), "a-b");
    EXPECT_EQ(trimLeft("   ", " "), "");
    EXPECT_EQ(trimRight("   ", " "), "   ");
    EXPECT_EQ(trim("   ", " "), "");
    EXPECT_EQ(trim(" a ", ""), " a ");
}
