#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tesseralis::detail {
/// What happened to a name in a directory. A rename makes two records, the old name directly before the new one; a file
/// that was moved in or out of the directory is added or removed.
enum class DirectoryAction
{
    Added = 1,
    Removed,
    Modified,
    OldName,
    NewName
};

struct DirectoryRecord
{
    DirectoryAction action;
    std::string name;
};

/// What happened in a directory, in order.
struct DirectoryBatch
{
    std::vector<DirectoryRecord> records;
    bool incomplete = false; ///< more happened than the records tell: the files themselves have to be looked at
};

/// Watches what is directly inside the directory that a path leads to. If the path stops leading there, since a part of
/// it or of a symbolic link in it is deleted, renamed or replaced, the watch goes on with what the path leads to next,
/// as soon as there is one. Directories inside are left out. One thread waits and reads; wake() is for any.
class DirectoryWatch
{
public:
    /// Null if the directory, a path with a trailing separator, can't be watched.
    static std::unique_ptr<DirectoryWatch> open(std::string const & directory);
    ~DirectoryWatch();
    DirectoryWatch(DirectoryWatch const &) = delete;
    DirectoryWatch & operator=(DirectoryWatch const &) = delete;

    /// Blocks until something happens; false at once and for ever when wake() has been called.
    bool wait();
    /// Blocks for a time of a millisecond at least; false at once and for ever when wake() has been called.
    bool pause(std::chrono::nanoseconds time);
    /// What has happened since the last call; doesn't block.
    DirectoryBatch read();

    void wake();

private:
    class Reader;

    explicit DirectoryWatch(std::string const & directory);
    bool IsOpen() const;
    int watch(std::string const & path, unsigned int events);
    void follow();
    bool watchPart(std::filesystem::path const & directory, std::string const & name);
    bool waitFor(int descriptor);

    std::string m_directory;
    int m_events = -1; // the queue of the system
    int m_wake = -1;   // readable from wake() on
    int m_timer = -1;
    int m_content = -1; // which watch in the queue is the directory's; -1 while there is no directory
    // The watches on the way to the directory, those of directories with the name of the entry that leads on.
    std::vector<std::pair<int, std::string>> m_way;
};

/// Starts a thread that no signal of the process interrupts: they go to the threads of the host. Throws
/// std::system_error if there are too many threads.
std::thread startThread(unsigned int (*function)(void *), void * argument);
} // namespace tesseralis::detail
