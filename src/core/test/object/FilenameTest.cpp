#include "object/Filename.h"
#include "object/Path.h"
#include "object/Text.h"
#include "support/TemporaryDirectory.h"
#include "support/Testing.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <set>

using PathCase = std::array<char const *, 5>; // the path, its drive, directory, name and extension

TEST(SplitPath, TakesEachKindOfPathApart)
{
    PathCase const cases[] = {
        {"head", "", "", "head", ""},
        {"head.tar.gz", "", "", "head.tar", ".gz"},
        {".profile", "", "", ".profile", ""},
        {"C:\\data\\ct\\head.raw", "C:", "\\data\\ct\\", "head", ".raw"},
        {"C:\\head.raw", "C:", "", "\\head", ".raw"},
        {"data\\ct\\a/b.raw", "data", "\\ct\\", "a/b", ".raw"},
        {"/data/ct/head.raw", "/data", "/ct/", "head", ".raw"},
        {"/data/a\\b.raw", "/data", "", "/a\\b", ".raw"},
        {"/data/c.t/", "/data", "/c.t/", "", ""},
        {"/data/.profile", "/data", "", "/", ".profile"},
        {"/head.raw", "/head.raw", "", "", ""},
        {"ct/head.raw", "", "", "ct/head", ".raw"},
        {nullptr, "", "", "", ""},
    };
    for (auto const & [path, drive, directory, name, extension] : cases) {
        char parts[4][32];
        splitPath(path, parts[0], parts[1], parts[2], parts[3]);
        EXPECT_EQ(std::to_array<std::string>({parts[0], parts[1], parts[2], parts[3]}),
                  std::to_array<std::string>({drive, directory, name, extension}));
        splitPath(path, nullptr, nullptr, parts[0], nullptr);
        EXPECT_STREQ(parts[0], name);
    }
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
        {"\\ct\\head.", nullptr, "ct", "head...", ""},
        {"\\", "", "\\\\", "", ""},
        {"/data/head", "/data", "", "head..", nullptr},
        {".", nullptr, nullptr, "...", nullptr},
    };
    for (auto const & [expected, drive, directory, name, extension] : cases) {
        char path[64] = "old";
        makePath(path, drive, directory, name, extension);
        EXPECT_STREQ(path, expected);
    }
    makePath(nullptr, "C:", "data", "head", "raw");
}

TEST(FilenameSet, MakesPathsAbsoluteAndKeepsTheirPartsWhole)
{
    std::string const current = std::filesystem::current_path().string();
    std::pair<std::string, std::string> const cases[] = {
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

    std::stringstream stream;
    Filename filename;
    stream << Filename("/data/ct/head.tar.gz") << " rest";
    stream >> filename;
    EXPECT_EQ(filename.GetNameExtension(), "head.tar.gz");
    EXPECT_FALSE(filename == Filename("/data/ct/HEAD.tar.gz"));
    EXPECT_EQ(Filename("", "ct/mr", "head", "raw").GetPath(), current + "/ct/mr/head.raw");
    EXPECT_EQ(Filename("", "/ct/mr/", "head", ".raw").GetPath(), "/ct/mr/head.raw");
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

TEST(FindFiles, MatchesTheLastComponentAndGivesBareNames)
{
    test::TemporaryDirectory const directory;
    for (char const * name : {"libplugin_a.so", "libplugin_b.so", "libplugin_.so.bak", ".hidden", "a[1]"}) {
        std::ofstream(directory.GetPath(name)).put('x');
    }
    std::filesystem::create_directory(directory.GetPath("plugins"));

    using Names = std::set<std::string>;
    std::pair<char const *, Names> const cases[] = {
        {"libplugin_*.so", {"libplugin_a.so", "libplugin_b.so"}},
        {"*_?.s*o", {"libplugin_a.so", "libplugin_b.so"}},
        {"*", {"libplugin_a.so", "libplugin_b.so", "libplugin_.so.bak", ".hidden", "a[1]", "plugins"}},
        {"a[1]", {"a[1]"}},
        {"?hid*den*", {".hidden"}},
        {"", {}},
        {"LIB*", {}},
        {"nowhere/*", {}},
    };
    for (auto const & [pattern, names] : cases) {
        std::list<std::string> const found = findFiles(directory.GetPath(pattern));
        EXPECT_EQ(Names(found.begin(), found.end()), names) << pattern;
    }
}

TEST(TrimmedText, LosesItsEndsButKeepsAllWhereTheRightSideTakesEverything)
{
    EXPECT_EQ(trim(" \t a b\t ", " \t"), "a b");
    EXPECT_EQ(trimLeft("   ", " "), "");
    EXPECT_EQ(trimRight("   ", " "), "   ");
    EXPECT_EQ(trim("   ", " "), "");
}
