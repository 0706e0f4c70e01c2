#include "value/Serializer.h"

#include "support/Messages.h"
#include "support/TemporaryDirectory.h"
#include "value/Archive.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tesseralis;
using namespace tesseralis::test;
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
    std::size_t GetFileCount() const
    {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(directory.GetPath("")), {}));
    }
    mode_t GetMode() const { return static_cast<mode_t>(fs::status(filename).permissions()); }
    std::string message(std::string const & cause) const
    {
        return "Error saving to '" + filename + "' (line 0, column 0: " + cause + ")!";
    }

    TemporaryDirectory directory;
    std::string filename = directory.GetPath("document.xml");
};
} // namespace

TEST_F(SafeSave, ANewFileGetsTheUsualModeAndAnOldOneKeepsIts)
{
    mode_t const mask = umask(027);
    saveGeneration(filename, 1);
    umask(mask);
    EXPECT_EQ(GetMode(), 0640u);
    fs::permissions(filename, fs::perms(0604));
    saveGeneration(filename, 2);
    EXPECT_EQ(GetMode(), 0604u);
    EXPECT_EQ(loadGeneration(filename), 2);
    EXPECT_EQ(GetFileCount(), 1u);
}

TEST_F(SafeSave, SymbolicLinksStay)
{
    fs::create_directory(directory.GetPath("folder"));
    fs::create_symlink("folder/second", filename);
    fs::create_symlink("third", directory.GetPath("folder/second"));
    for (int generation : {1, 2}) { // the first time they lead to nothing yet
        saveGeneration(filename, generation);
        EXPECT_EQ(loadGeneration(directory.GetPath("folder/third")), generation);
        EXPECT_TRUE(fs::is_symlink(filename) && fs::is_symlink(directory.GetPath("folder/second")));
    }
}

TEST_F(SafeSave, AFailureLeavesTheOldDocumentAndNothingElse)
{
    saveGeneration(filename, 1);
    EXPECT_TRUE(inChild([&] {
        rlimit const limit{1000, 1000};
        setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, SIG_IGN);
        return messageOf([&] { saveGeneration(filename, 2); }) == message("File too large");
    }));
    auto const refused = [&] {
        constexpr uid_t c_nobody = 65534;
        return (geteuid() != 0 || setuid(c_nobody) == 0) &&
               messageOf([&] { saveGeneration(filename, 2); }) == message("Permission denied");
    };
    fs::permissions(directory.GetPath(""), fs::perms(0777));
    fs::permissions(filename, fs::perms(0444));
    EXPECT_TRUE(inChild(refused)) << "a file that is read-only";
    fs::permissions(filename, fs::perms(0666));
    fs::permissions(directory.GetPath(""), fs::perms(0555));
    EXPECT_TRUE(inChild(refused)) << "a folder that is";
    fs::permissions(directory.GetPath(""), fs::perms(0777));
    EXPECT_EQ(loadGeneration(filename), 1);
    EXPECT_EQ(GetFileCount(), 1u);
}

TEST_F(SafeSave, TellsWhyAFileCannotBeWritten)
{
    fs::create_directory(filename);
    EXPECT_EQ(messageOf([&] { saveGeneration(filename, 1); }), message("Is a directory"));
    for (auto const & [name, cause] : std::vector<std::pair<std::string, std::string>>{
             {"/dev/full", "No space left on device"},
             {directory.GetPath("missing/x"), "No such file or directory"},
             {directory.GetPath(std::string(300, 'x')), "File name too long"},
             {"", "No such file or directory"}}) {
        filename = name;
        EXPECT_EQ(messageOf([&] { saveGeneration(filename, 1); }), message(cause));
    }
    EXPECT_EQ(GetFileCount(), 1u);

    filename = directory.GetPath(std::string(255, 'x'));
    saveGeneration(filename, 1);
    EXPECT_EQ(loadGeneration(filename), 1) << "a name as long as can be";
}

TEST_F(SafeSave, APipeIsWrittenToDirectly)
{
    ASSERT_EQ(mkfifo(filename.c_str(), 0600), 0);
    std::thread writer([&] { saveGeneration(filename, 7); });
    EXPECT_EQ(loadGeneration(filename), 7);
    writer.join();
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
    EXPECT_EQ(GetFileCount(), 1u) << "what was left behind is gone";
}

TEST_F(SafeSave, WritersOfTheSameFileDoNotMeet)
{
    std::vector<std::thread> writers;
    for (int i = 0; i < 4; ++i) {
        writers.emplace_back([&, i] {
            for (int generation = 0; generation < 10; ++generation) {
                saveGeneration(filename, i * 10 + generation);
            }
        });
    }
    for (std::thread & writer : writers) {
        writer.join();
    }
    EXPECT_EQ(loadGeneration(filename) % 10, 9);
    EXPECT_EQ(GetFileCount(), 1u);
}
