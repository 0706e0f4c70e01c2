#pragma once

#include "object/Export.h"
#include "object/Mutex.h"

#include <atomic>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace tesseralis {
class FileMonitor;

namespace detail {
class DirectoryWatch;
struct DirectoryRecord;
} // namespace detail

/// Watches one directory for any number of monitors, with a thread that tells them what happens to their files. File
/// monitors share one listener for each directory, which lives to the end of the process; one that somebody else makes
/// is shut down when it is destroyed.
///
/// While a path doesn't lead to a directory, nothing is told; when it does so again, the watch goes on. A file replaced
/// by another one that takes its name has changed.
class TESSERALIS_API FileMonitorDirectoryListener
{
public:
    /// Starts to watch a directory, a path with its trailing separator. Throws Exception if that isn't possible.
    explicit FileMonitorDirectoryListener(std::string const & directory);
    /// Waits for the thread to end, which it does at once unless a monitor keeps it.
    ~FileMonitorDirectoryListener();
    FileMonitorDirectoryListener(FileMonitorDirectoryListener const &) = delete;
    FileMonitorDirectoryListener & operator=(FileMonitorDirectoryListener const &) = delete;

    bool HasFile(std::string const & path, FileMonitor * monitor) const;
    /// Whether no monitor wants to hear of any file.
    bool IsEmpty() const;

    void addFile(std::string const & path, FileMonitor * monitor);
    /// The monitor isn't called for the file after this.
    void removeFile(std::string const & path, FileMonitor * monitor);

    /// Blocks until something happens in the directory, waits a little for more, and calls the monitors. False if it
    /// was interrupted, since the listener is being shut down. The thread does nothing else.
    bool listen();

protected:
    void startThread();
    /// Ends the thread for good.
    void stopThread();
    static unsigned int threadFunction(void * listener);

    /// Call the monitors of the file.
    void fileAdded(std::string const & path);
    void fileRemoved(std::string const & path);
    void fileChanged(std::string const & path);
    void fileRenamed(std::string const & currentPath, std::string const & previousPath);

private:
    /// What the monitors of a file know of it.
    enum class Presence
    {
        Unseen,
        Present,
        Gone
    };

    struct File
    {
        std::set<FileMonitor *> monitors;
        Presence presence = Presence::Unseen;
    };

    void tell(std::string const & path, Presence presence, void (FileMonitor::*message)(std::string const &));
    void tellRecords(std::vector<detail::DirectoryRecord> const & records);
    void lookAtFiles();
    void fileArrived(std::string const & path);

    mutable Mutex m_mutex; // comes before those of the monitors
    std::string m_directory;
    std::atomic<bool> m_running = false;
    std::thread m_thread;
    std::unique_ptr<detail::DirectoryWatch> m_watch;
    std::unordered_map<std::string, File> m_files; // by absolute path
};
} // namespace tesseralis
