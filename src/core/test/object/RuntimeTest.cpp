#include "object/Filename.h"
#include "object/Library.h"
#include "object/Logger.h"
#include "object/Mutex.h"
#include "object/Timer.h"
#include "support/TemporaryDirectory.h"
#include "support/Testing.h"

#include <filesystem>
#include <future>
#include <iostream>

#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
// What a callable writes where standard output is a terminal.
template <class Callable>
std::string onTerminal(Callable && callable)
{
    std::cout.flush();
    int terminal = -1;
    pid_t const child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        callable();
        std::cout.flush();
        _exit(0);
    }

    std::string output;
    for (char character; read(terminal, &character, 1) == 1;) {
        output += character;
    }
    close(terminal);
    waitpid(child, nullptr, 0);
    return output;
}

bool isFree(Mutex & mutex)
{
    auto const tryIt = [&mutex] { return mutex.tryLock() && (mutex.unlock(), true); };
    return std::async(std::launch::async, tryIt).get();
}
} // namespace

TEST(MutexLockerLife, HoldsTheLockExceptInItsGaps)
{
    Mutex mutex;
    {
        MutexLocker locker(mutex);
        locker.lock(); // held already, so not counted
        {
            MutexLocker const again(locker.GetMutex());
        }
        Mutex copy(mutex);
        EXPECT_TRUE(isFree(copy));
        EXPECT_FALSE(isFree(mutex = copy));
        locker.unlock();
        EXPECT_TRUE(isFree(mutex));
        locker.lock();
        EXPECT_FALSE(isFree(mutex));
    }
    EXPECT_TRUE(isFree(mutex));
}

TEST(LoggerOutput, IsColouredOnATerminalOnly)
{
    auto const speak = [] {
        Logger & logger = Logger::Get();
        for (auto const level : {&Logger::error, &Logger::warning, &Logger::information, &Logger::debug}) {
            (logger.*level)() << "x";
        }
        for (auto const color : {&Logger::red, &Logger::green, &Logger::blue, &Logger::yellow, &Logger::magenta,
                                 &Logger::cyan, &Logger::white}) {
            (logger.*color)(true) << "+";
            (logger.*color)(false) << "-";
        }
    };
    EXPECT_EQ(onTerminal(speak), "\x1b[91mx\x1b[93mx\x1b[97mx\x1b[37mx"
                                 "\x1b[91m+\x1b[31m-\x1b[92m+\x1b[32m-\x1b[94m+\x1b[34m-\x1b[93m+\x1b[33m-"
                                 "\x1b[95m+\x1b[35m-\x1b[96m+\x1b[36m-\x1b[97m+\x1b[37m-");
    EXPECT_EQ(onTerminal([] { delete &Logger::Get(); }), "\x1b[0m");
    EXPECT_EQ(logOf(speak), "xxxx+-+-+-+-+-+-+-");
}

TEST(LoggerException, NamesTheSourceTheFunctionAndTheMessage)
{
    Logger & logger = Logger::Get();
    EXPECT_EQ(logOf([&] { logger.exception("plugin_a", "Renderer", "display", Exception("Failed.")); }),
              "[plugin_a] Renderer::display(): \nFailed.\n\n");
    EXPECT_EQ(logOf([&] { logger.exception("plugin_a", "Renderer", "display"); }),
              "[plugin_a] Renderer::display(): \nUnknown error.\n\n");
}

TEST(TimerReading, RisesWhileRunningAndStandsWhenStopped)
{
    Timer timer;
    while (double(timer) <= 0.001) {
    }
    timer.stop();
    double const stopped = timer;
    for (Timer other; double(other) <= 0.001;) {
    }
    EXPECT_EQ(double(timer), stopped);
    EXPECT_EQ(float(timer), float(stopped));
}

TEST(LibraryReference, KeepsTheModuleLoadedUntilTheLastCopyGoes)
{
    bool gone = false;
    Library copy;
    {
        Library const library(RUNTIME_MODULE);
        ASSERT_TRUE(library.IsInitialized());
        reinterpret_cast<void (*)(bool *)>(library.GetProcedure("tellWhenGone"))(&gone);
        copy = library;
        copy = *&copy;
        copy = Library(std::move(copy));
    }
    EXPECT_FALSE(gone);
    EXPECT_NE(copy.GetProcedure("tellWhenGone"), nullptr);
    EXPECT_EQ(copy.GetProcedure("malloc"), nullptr); // of a library below it
    copy = Library();
    EXPECT_TRUE(gone);
}

TEST(LibraryPath, IsWhereTheSystemFoundTheModule)
{
    Library library("./" + std::filesystem::relative(RUNTIME_MODULE).string());
    Filename const expected(RUNTIME_MODULE);
    EXPECT_EQ(library.GetPath(), expected.GetPath());
    EXPECT_EQ(library.GetDirectory(), expected.GetDriveDirectory());
    EXPECT_EQ(library.GetFilename(), expected.GetNameExtension());
    for (char const * name : {"", "no_such_plugin.so", "/", "/proc/self/status"}) {
        library = Library(name);
        EXPECT_FALSE(library.IsInitialized()) << name;
        EXPECT_EQ(library.GetProcedure("tellWhenGone"), nullptr) << name;
        EXPECT_EQ(library.GetPath() + library.GetDirectory() + library.GetFilename(), "") << name;
    }
}

TEST(LibraryLoading, OfAFileThatIsCutShortOrAPipeFails)
{
    TemporaryDirectory directory;
    std::string const cut = directory.GetPath("cut.so");
    std::filesystem::copy_file(RUNTIME_MODULE, cut);
    for (std::uintmax_t const size : {5000, 1000, 70, 10, 0}) {
        std::filesystem::resize_file(cut, size);
        EXPECT_FALSE(Library(cut).IsInitialized()) << size;
    }
    std::string const pipe = directory.GetPath("pipe.so");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(Library(pipe).IsInitialized());
}
