#include "support/TemporaryDirectory.h"
#include "support/Testing.h"
#include "value/Archive.h"
#include "value/Serializer.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {
constexpr int c_count = 2000;

/// Every element of a generation holds its number, so that a mixture shows.
void saveGeneration(std::string const & filename, int generation)
{
    Archive archive;
    ArchiveElement root = ArchiveElement(archive).store("root");
    for (int i = 0; i < c_count; ++i) {
        root.store("e").SetValue(std::to_string(generation));
    }
    Serializer(filename).save(archive);
}

/// -1 if the document isn't whole.
int loadGeneration(std::string const & filename)
{
    Archive archive;
    Serializer(filename).load(archive);
    ArchiveElement root(archive);
    std::string const value = root.retrieve().GetValue();
    int count = 1;
    while (root.IsRetrievable()) {
        count += root.retrieve().GetValue() == value ? 1 : 0;
    }
    return count == c_count ? std::stoi(value) : -1;
}

pid_t startChild(std::function<bool()> const & work)
{
    pid_t const child = fork();
    if (child == 0) {
        _exit(work() ? 0 : 1);
    }
    return child;
}

/// Whether the work, done by a process of its own, came out true.
bool inChild(std::function<bool()> const & work)
{
    int status = -1;
    waitpid(startChild(work), &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

class SafeSave : public testing::Test
{
protected:
    std::ptrdiff_t GetFileCount() const { return std::distance(fs::directory_iterator(directory.GetPath("")), {}); }

    bool IsRefused(std::string const & name, std::string const & cause) const
    {
        return messageOf([&] { saveGeneration(name, 2); }) ==
               "Error saving to '" + name + "' (line 0, column 0: " + cause + ")!";
    }

    TemporaryDirectory directory;
    std::string const filename = directory.GetPath("document.xml");
};
} // namespace

TEST_F(SafeSave, LinksModesAndAttributesStay)
{
    fs::create_directory(directory.GetPath("folder"));
    fs::create_symlink("folder/second", filename);
    fs::create_symlink("third", directory.GetPath("folder/second"));
    std::string const target = directory.GetPath("folder/third");

    mode_t const mask = umask(027);
    saveGeneration(filename, 1); // through links that lead to nothing yet
    umask(mask);
    EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));
    fs::permissions(target, fs::perms(0604));
    bool const hasNote = setxattr(target.c_str(), "user.note", "text", 4, 0) == 0; // not every file system takes it
    saveGeneration(filename, 2);
    EXPECT_EQ(getxattr(target.c_str(), "user.note", nullptr, 0), hasNote ? 4 : -1);
    EXPECT_EQ(fs::status(target).permissions(), fs::perms(0604));
    EXPECT_EQ(loadGeneration(target), 2);
    EXPECT_TRUE(fs::is_symlink(filename) && fs::is_symlink(directory.GetPath("folder/second")));
}

TEST_F(SafeSave, AFailureLeavesTheOldDocumentAndNothingElse)
{
    saveGeneration(filename, 1);
    EXPECT_TRUE(inChild([&] {
        rlimit const limit{1000, 1000};
        setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, SIG_IGN);
        return IsRefused(filename, "File too large");
    }));
    for (auto const & [folderMode, mode] : {std::pair(0777, 0444), std::pair(0555, 0666)}) {
        fs::permissions(filename, fs::perms(mode));
        fs::permissions(directory.GetPath(""), fs::perms(folderMode));
        EXPECT_TRUE(inChild([&] {
            constexpr uid_t c_nobody = 65534;
            return (geteuid() != 0 || setuid(c_nobody) == 0) && IsRefused(filename, "Permission denied");
        }));
    }
    fs::permissions(directory.GetPath(""), fs::perms(0700));
    EXPECT_TRUE(IsRefused("/dev/full", "No space left on device"));
    EXPECT_TRUE(IsRefused(directory.GetPath(""), "Is a directory"));
    EXPECT_TRUE(IsRefused(directory.GetPath("missing/x"), "No such file or directory"));
    EXPECT_EQ(loadGeneration(filename), 1);
    EXPECT_EQ(GetFileCount(), 1);
}

TEST_F(SafeSave, APipeIsWrittenToDirectly)
{
    ASSERT_EQ(mkfifo(filename.c_str(), 0600), 0);
    std::jthread const writer([&] { saveGeneration(filename, 7); });
    EXPECT_EQ(loadGeneration(filename), 7);
    EXPECT_TRUE(fs::is_fifo(filename));
}

TEST_F(SafeSave, AKilledProcessLeavesTheOldOrTheNewDocumentWhole)
{
    std::mt19937 random(3);
    saveGeneration(filename, 0);
    for (int i = 0; i < 200; ++i) {
        int const before = loadGeneration(filename);
        pid_t const child = startChild([&]() -> bool {
            for (int generation = before + 1;; ++generation) {
                saveGeneration(filename, generation);
            }
        });
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 15000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        ASSERT_GE(loadGeneration(filename), before);
    }
    saveGeneration(filename, 1);
    EXPECT_EQ(GetFileCount(), 1) << "what was left behind is gone";
}

TEST_F(SafeSave, WritersOfTheSameFileDoNotMeet)
{
    std::string const longest = directory.GetPath(std::string(255, 'x'));
    std::vector<std::jthread> writers;
    for (int i = 0; i < 4; ++i) {
        writers.emplace_back([&, i] {
            for (int generation = 0; generation < 10; ++generation) {
                saveGeneration(longest, i * 10 + generation);
            }
        });
    }
    writers.clear();
    EXPECT_EQ(loadGeneration(longest) % 10, 9);
    EXPECT_EQ(GetFileCount(), 1);
}
