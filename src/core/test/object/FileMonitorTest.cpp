#include "object/FileMonitor.h"
#include "object/Dispatcher.h"
#include "object/FileMonitorDirectoryListener.h"
#include "support/TemporaryDirectory.h"
#include "support/Testing.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <list>
#include <set>
#include <thread>

using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {
using Path = std::string;
using Clock = std::chrono::steady_clock;

/// One place for all tests of the process, since its listeners live as long.
Path at(std::string const & name)
{
    static TemporaryDirectory s_directory;
    return s_directory.GetPath(name);
}

void write(Path const & path, char const * text = "text", std::ios::openmode mode = std::ios::out)
{
    std::ofstream(path, mode) << text;
}

void writeInPlace(Path const & path, char const * text = "TEXT")
{
    write(path, text, std::ios::in | std::ios::out);
}

bool eventually(std::function<bool()> const & condition)
{
    auto const end = Clock::now() + 60s;
    while (!condition()) {
        if (Clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(1ms);
    }
    return true;
}

std::ptrdiff_t entriesOf(char const * directory)
{
    return std::distance(fs::directory_iterator(directory), fs::directory_iterator());
}

/// Watches a file and tells what happens to it, with "f" for its own path.
class Watcher : public Recorder
{
public:
    explicit Watcher(Path const & file) : path(file)
    {
        monitor.addObserver(this);
        monitor.addFile(path);
    }

    std::string dispatch()
    {
        clear();
        monitor.dispatch();
        std::string text;
        for (std::size_t i = 0; i < GetCount(); ++i) {
            auto const * const file = dynamic_cast<FileMonitorFileEvent const *>(&Get(i));
            auto const * const renamed = GetAs<FileMonitorRenameEvent>(i);
            text += GetAs<FileMonitorAdditionEvent>(i) ? "added " : GetAs<FileMonitorRemovalEvent>(i) ? "removed " : "";
            text += GetAs<FileMonitorChangeEvent>(i) ? "changed " : renamed ? "renamed to " : "";
            Path const name = renamed ? renamed->GetCurrentFilename() : file->GetFilename();
            text += name.starts_with(path) ? "f" + name.substr(path.size()) : fs::path(name).filename().string();
            text += ' ';
        }
        return text;
    }
    /// What the next dispatch brings that doesn't only repeat the last one.
    std::string next()
    {
        std::string const last = m_text;
        return eventually([&] { return (m_text = dispatch()) != "" && m_text != last; }) ? m_text : "nothing";
    }

    FileMonitor monitor;
    Path const path;

private:
    std::string m_text;
};

/// Returns when the monitors have all that has happened in a directory so far.
void settle(Path const & directory = at(""))
{
    static int s_count = 0;
    Watcher watcher(directory + "settled" + std::to_string(++s_count));
    write(watcher.path);
    EXPECT_NE(watcher.next(), "nothing");
}
} // namespace

TEST(FileMonitors, TellEachWayOfSavingAsWhatItIs)
{
    using Action = std::function<void(Path const &)>;
    Action const create = [](Path const & f) { write(f); };
    Action const inPlace = [](Path const & f) { writeInPlace(f); };
    Action const open = [](Path const & f) { writeInPlace(f, ""); }; // who maps a file does no more
    Action const touch = [](Path const & f) { fs::last_write_time(f, fs::file_time_type::clock::now()); };
    Action const protect = [](Path const & f) { fs::permissions(f, fs::perms::owner_all); };
    Action const backUp = [](Path const & f) { fs::rename(f, f + "~"); };
    Action const replace = [](Path const & f) { write(f + ".new"), fs::rename(f + ".new", f); };
    Action const remove = [](Path const & f) { fs::remove(f); };
    Action const makeDirectory = [](Path const & f) { fs::create_directory(f); };
    Action const moveOut = [](Path const & f) { fs::rename(f, at("elsewhere/f")); };
    Action const moveIn = [](Path const & f) { fs::rename(at("elsewhere/f"), f); };
    Action const moveOver = [](Path const & f) { write(at("elsewhere/f")), fs::rename(at("elsewhere/f"), f); };
    std::pair<std::vector<Action>, char const *> const cases[] = {
        {{inPlace}, "changed f "},
        {{create}, "changed f "},
        {{create, inPlace, create}, "changed f "},
        {{open}, "changed f "},
        {{touch}, "changed f "},
        {{protect}, ""},
        {{replace, replace}, "changed f "},
        {{replace, remove}, "changed f removed f "},
        {{backUp, create}, "renamed to f~ added f changed f "},
        {{backUp, replace}, "renamed to f~ added f "},
        {{remove, create}, "removed f added f changed f "},
        {{moveOut, moveIn}, "removed f added f "},
        {{moveOver}, "changed f "},
        {{remove, makeDirectory, remove}, "removed f "},
    };
    // Some of them in the same directory by another name.
    char const * const names[] = {"plain", " with blanks ", "with\nnew line", "\xc3\xa4\xff\x80", "self/plain"};
    auto const pathOf = [&](std::size_t i) { return at(names[i % 5] + std::to_string(i)); };

    fs::create_directory(at("elsewhere"));
    fs::remove(at("self"));
    fs::create_directory_symlink(".", at("self"));
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        write(pathOf(i));
    }
    settle();
    settle(at("self/"));
    std::list<Watcher> watchers;
    for (auto const & [actions, text] : cases) {
        Watcher const & watcher = watchers.emplace_back(pathOf(watchers.size()));
        for (Action const & action : actions) {
            action(watcher.path);
        }
    }
    settle();
    settle(at("self/"));
    for (auto const & [actions, text] : cases) {
        EXPECT_EQ(watchers.front().dispatch(), text) << watchers.front().path;
        watchers.pop_front();
    }
}

TEST(FileMonitors, ShareAListenerAndHearOfTheirOwnFiles)
{
    Dispatcher dispatcher(ObjectAttribute::Registered);
    std::ptrdiff_t const threads = entriesOf("/proc/self/task");
    fs::create_directory(at("shared"));
    Watcher one(at("shared/a"));
    Watcher two(at("shared/a"));
    Path const relative = fs::relative(at("shared/b")).string();
    for (Path const & path : {relative, at("shared/b"), at("shared/../shared/b"), at("shared/c")}) {
        two.monitor.addFile(path);
    }
    EXPECT_LE(entriesOf("/proc/self/task"), threads + 1);

    write(at("shared/a"));
    write(at("shared/b"));
    fs::rename(at("shared/b"), at("shared/c")); // of no concern to who watches the new name
    settle(at("shared/"));
    EXPECT_TRUE(dispatcher.HasDispatchable(&one.monitor) && dispatcher.HasDispatchable(&two.monitor));
    one.monitor.clearFiles();
    two.monitor.removeFile(relative);
    EXPECT_TRUE(two.monitor.HasFile(at("shared/a")) && !two.monitor.HasFile(at("shared/b")));
    fs::remove(at("shared/a"));
    write(at("shared/b"));
    settle(at("shared/"));
    EXPECT_EQ(one.dispatch(), "added f changed f ") << "what was queued is still told";
    EXPECT_EQ(two.dispatch(), "added f changed f added b changed b renamed to c removed f ");
    EXPECT_EQ(dispatcher.GetDispatchableCount(), 0u);
    fs::remove(at("shared/b"));
    fs::remove(at("shared/c"));
}

TEST(FileMonitors, FollowThePathWhenDirectoriesComeAndGo)
{
    for (char const * directory : {"up/d/", "up/new/", "up/newest/"}) {
        fs::create_directories(at(directory));
        write(at(directory) + "f");
    }
    fs::create_directory_symlink("up/new", at("link"));
    fs::create_directory_symlink("up/moved", at("link.new"));
    fs::create_directory(at("none"));
    fs::create_directory_symlink("./none/../link", at("chain"));
    for (char const * directory : {"up/d/", "link/", "chain/"}) {
        settle(at(directory)); // listeners that have lost them before have found them again
    }
    Watcher watcher(at("up/d/f"));
    Watcher linked(at("link/f"));
    Watcher chained(at("chain/f"));

    auto const move = [](char const * from, char const * to) { return [=] { fs::rename(at(from), at(to)); }; };
    fs::directory_iterator user; // for whom the system keeps a removed directory
    std::tuple<std::function<void()>, Watcher &, char const *> const steps[] = {
        {move("up/d", "up/moved"), watcher, "removed f "},
        // A change where the file is now is of no concern to the watcher.
        {[] { write(at("up/moved/f")), fs::rename(at("link.new"), at("link")); }, linked, "changed f "},
        {[] {}, chained, "changed f "},
        {move("none", "some"), chained, "removed f "},
        {move("some", "none"), chained, "added f "},
        {move("up/new", "up/d"), watcher, "added f "},
        {[&] { write(watcher.path); }, watcher, "changed f "},
        {move("up", "away"), watcher, "removed f "},
        {move("away", "up"), watcher, "added f "},
        {[&] { user = fs::directory_iterator(at("up/d")), fs::remove_all(at("up/d")); }, watcher, "removed f "},
        {move("up/newest", "up/d"), watcher, "added f "},
        {[] { fs::remove_all(at("up")); }, watcher, "removed f "},
    };
    for (auto const & [step, observer, text] : steps) {
        step();
        EXPECT_EQ(observer.next(), text);
    }
    for (char const * name : {"link", "chain", "none"}) {
        fs::remove(at(name));
    }
}

TEST(FileMonitors, WatchInEveryDirectoryThereIs)
{
    Watcher const inRoot("/tesseralis");
    Watcher inFirstDirectory(at("").substr(0, at("").size() - 1) + ".beside");
    write(inFirstDirectory.path);
    EXPECT_TRUE(inFirstDirectory.next().starts_with("added f ")); // others use this directory, and end pauses
    fs::remove(inFirstDirectory.path);

    static bool s_isWatched = false; // since an earlier run in this process
    Path const late = at("late/");
    FileMonitor monitor;
    auto const add = [&] { monitor.addFile(late + "f"); };
    EXPECT_EQ(messageOf(add), s_isWatched ? "nothing was thrown" : "Cannot create change notification handle!");
    fs::create_directory(late);
    EXPECT_EQ(messageOf(add), "nothing was thrown") << "it counts as added";
    EXPECT_TRUE(monitor.HasFile(late + "f"));
    monitor.clearFiles();
    add();
    settle(late);
    fs::remove_all(late);
    s_isWatched = true;
}

TEST(FileMonitors, LoseNoFinalStateOfThousandsOfFilesWhileOthersComeAndGo)
{
    constexpr int c_files = 10000;
    auto const pathOf = [](int i) { return at("many/" + std::to_string(i)); };
    std::set<Path> finished;
    FileMonitor monitor;
    Recorder recorder(monitor);
    recorder.SetReaction([&](Observable const &, ObservableEvent const & event) {
        auto const * const change = dynamic_cast<FileMonitorFileEvent const *>(&event);
        if (change != nullptr && std::ifstream(change->GetFilename()).get() == '9') {
            finished.insert(change->GetFilename());
        }
    });
    fs::create_directory(at("many"));
    for (int i = 0; i < c_files; ++i) {
        write(pathOf(i));
        monitor.addFile(pathOf(i));
    }
    std::thread writer([&] {
        for (int i = 0; i < 10 * c_files; ++i) {
            writeInPlace(pathOf(i % c_files), std::to_string(i / c_files).c_str());
        }
    });
    EXPECT_TRUE(eventually([&] {
        FileMonitor shortLived;
        shortLived.addFile(pathOf(static_cast<int>(finished.size())));
        monitor.dispatch();
        return finished.size() == c_files;
    }));
    writer.join();
}

TEST(FileMonitorListeners, LeaveNothingBehind)
{
    FileMonitor monitor;
    std::ptrdiff_t const threads = entriesOf("/proc/self/task");
    std::ptrdiff_t const descriptors = entriesOf("/proc/self/fd");
    auto const start = Clock::now();
    for (int i = 0; i < 20; ++i) {
        std::list<FileMonitorDirectoryListener> listeners;
        for (int j = 0; j < 5; ++j) {
            EXPECT_TRUE(listeners.emplace_back(at("")).IsEmpty());
        }
        listeners.front().addFile(at("f"), &monitor);
        EXPECT_TRUE(listeners.front().HasFile(at("f"), &monitor));
        write(at("f")); // has them pause
    }
    EXPECT_LT(Clock::now() - start, 20s) << "their pauses alone would take longer";
    EXPECT_TRUE(eventually([&] { return entriesOf("/proc/self/task") == threads; }));
    EXPECT_EQ(entriesOf("/proc/self/fd"), descriptors);
}

TEST(FileMonitorListenersDeathTest, EndWithTheProcess)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    auto const run = [] {
        static Watcher s_watcher(at("last"));
        write(s_watcher.path);
        std::exit(0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}
