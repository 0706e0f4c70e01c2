#include "object/Exception.h"
#include "object/Filename.h"
#include "object/Library.h"
#include "object/Logger.h"
#include "object/Mutex.h"
#include "object/Timer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <thread>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tesseralis;

namespace {
// What a callable writes where standard output is a terminal.
template <class Callable>
std::string onTerminal(Callable && callable)
{
    int terminal = -1;
    pid_t const child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        callable();
        std::cout.flush();
        _exit(0);
    }

    std::string output;
    char buffer[256];
    for (ssize_t count; (count = read(terminal, buffer, sizeof(buffer))) > 0;) {
        output.append(buffer, static_cast<std::size_t>(count));
    }
    close(terminal);
    waitpid(child, nullptr, 0);
    return output;
}

// What a callable writes where standard output is a file.
template <class Callable>
std::string intoFile(Callable && callable)
{
    testing::internal::CaptureStdout();
    callable();
    std::cout.flush();
    return testing::internal::GetCapturedStdout();
}

bool isFree(Mutex & mutex)
{
    bool taken = false;
    std::thread([&] {
        taken = mutex.tryLock();
        if (taken) {
            mutex.unlock();
        }
    }).join();
    return taken;
}
} // namespace

TEST(MutexLockerLife, HoldsTheLockExceptInItsGaps)
{
    Mutex mutex;
    {
        MutexLocker locker(mutex);
        MutexLocker again(locker.GetMutex());
        again.lock(); // already held, so not counted
        again.unlock();
        EXPECT_FALSE(isFree(mutex));
        Mutex copy(mutex);
        EXPECT_TRUE(isFree(copy));
        mutex = copy;
        EXPECT_FALSE(isFree(mutex));
        locker.unlock();
        locker.unlock();
        EXPECT_TRUE(isFree(mutex));
        locker.lock();
        EXPECT_FALSE(isFree(mutex));
    }
    EXPECT_TRUE(isFree(mutex));
}

TEST(LoggerOutput, IsColouredOnATerminalAndPlainInAFile)
{
    auto const speak = [] {
        Logger & logger = Logger::Get();
        logger.error() << "e";
        logger.warning() << "w";
        logger.information() << "i";
        logger.debug() << "d";
        for (bool const bright : {true, false}) {
            logger.red(bright) << "r";
            logger.green(bright) << "g";
            logger.blue(bright) << "b";
            logger.yellow(bright) << "y";
            logger.magenta(bright) << "m";
            logger.cyan(bright) << "c";
            logger.white(bright) << "w";
        }
    };
    EXPECT_EQ(intoFile(speak), "ewidrgbymcwrgbymcw");
    EXPECT_EQ(onTerminal(speak), "\x1b[91me\x1b[93mw\x1b[97mi\x1b[37md"
                                 "\x1b[91mr\x1b[92mg\x1b[94mb\x1b[93my\x1b[95mm\x1b[96mc\x1b[97mw"
                                 "\x1b[31mr\x1b[32mg\x1b[34mb\x1b[33my\x1b[35mm\x1b[36mc\x1b[37mw");
    EXPECT_EQ(onTerminal([] { delete &Logger::Get(); }), "\x1b[0m");
}

TEST(LoggerException, NamesTheSourceTheFunctionAndTheMessage)
{
    Logger & logger = Logger::Get();
    char const * const head = "[plugin_a] Renderer::display(): \n";
    EXPECT_EQ(intoFile([&] { logger.exception("plugin_a", "Renderer", "display", "No context."); }),
              std::string(head) + "No context.\n\n");
    EXPECT_EQ(intoFile([&] { logger.exception("plugin_a", "Renderer", "display", Exception("Failed.")); }),
              std::string(head) + "Failed.\n\n");
    EXPECT_EQ(intoFile([&] { logger.exception("plugin_a", "Renderer", "display"); }),
              std::string(head) + "Unknown error.\n\n");
    EXPECT_EQ(onTerminal([&] { logger.exception("", "", "", ""); }), "\x1b[91m[] ::(): \r\n\r\n\r\n");
}

TEST(TimerReading, RisesWhileRunningAndStandsWhenStopped)
{
    Timer timer;
    EXPECT_TRUE(timer.IsRunning());
    double const first = timer;
    EXPECT_GE(first, 0.0);
    while (double(timer) <= first) {
    }

    timer.stop();
    EXPECT_FALSE(timer.IsRunning());
    double const stopped = timer;
    EXPECT_GT(stopped, first);
    EXPECT_LT(stopped, 60.0);
    for (Timer other; double(other) <= 0.0;) {
    }
    EXPECT_EQ(double(timer), stopped);
    EXPECT_EQ(float(timer), float(stopped));

    timer.start();
    timer.stop();
    EXPECT_LT(double(timer), stopped + 60.0);
}

TEST(LibraryReference, KeepsTheModuleLoadedUntilTheLastCopyGoes)
{
    bool gone = false;
    Library copy;
    {
        Library const library(RUNTIME_MODULE);
        ASSERT_TRUE(library.IsInitialized());
        auto const tellWhenGone = reinterpret_cast<void (*)(bool *)>(library.GetProcedure("tellWhenGone"));
        ASSERT_NE(tellWhenGone, nullptr);
        tellWhenGone(&gone);
        Library const brief(library);
        copy = brief;
        copy = *&copy;
    }
    EXPECT_FALSE(gone);
    auto const answer = reinterpret_cast<int (*)()>(copy.GetProcedure("answer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);

    copy = Library();
    EXPECT_TRUE(gone);
    EXPECT_FALSE(copy.IsInitialized());
}

TEST(LibraryPath, IsWhereTheSystemFoundTheModule)
{
    std::string const relative = std::filesystem::relative(RUNTIME_MODULE).string();
    Library library(relative.find('/') != std::string::npos ? relative : "./" + relative);
    Filename const expected(RUNTIME_MODULE);
    EXPECT_EQ(library.GetPath(), expected.GetPath());
    EXPECT_EQ(library.GetDirectory(), expected.GetDriveDirectory());
    EXPECT_EQ(library.GetFilename(), expected.GetNameExtension());
    EXPECT_EQ(library.GetProcedure("malloc"), nullptr); // of a library below it
    library.uninitialize();
    EXPECT_EQ(library.GetPath() + library.GetDirectory() + library.GetFilename(), "");
}

TEST(LibraryLoading, OfSomethingElseLeavesItEmpty)
{
    for (char const * name : {"", "/nowhere/plugin.so", "no_such_plugin.so", "/", "/proc/self/status"}) {
        Library const library(name);
        EXPECT_FALSE(library.IsInitialized()) << name;
        EXPECT_EQ(library.GetProcedure("answer"), nullptr) << name;
        EXPECT_FALSE(Library(library).IsInitialized()) << name;
    }
}
