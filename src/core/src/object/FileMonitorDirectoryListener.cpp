#include "object/FileMonitorDirectoryListener.h"

#include "object/Exception.h"
#include "object/FileMonitor.h"
#include "object/Guard.h"
#include "object/platform/DirectoryWatch.h"

#include <chrono>
#include <filesystem>
#include <system_error>

namespace tesseralis {
namespace {
using detail::DirectoryAction;
using detail::DirectoryRecord;

constexpr std::chrono::milliseconds c_pause(250);
constexpr char const * c_failure = "Cannot create change notification handle!";

bool isPresent(std::string const & path)
{
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(path, error));
}
} // namespace

FileMonitorDirectoryListener::FileMonitorDirectoryListener(std::string const & directory)
    : m_directory(directory), m_watch(detail::DirectoryWatch::open(directory))
{
    if (!m_watch) {
        throw Exception(std::string(c_failure));
    }
    startThread();
}

FileMonitorDirectoryListener::~FileMonitorDirectoryListener()
{
    stopThread();
}

bool FileMonitorDirectoryListener::HasFile(std::string const & path, FileMonitor * monitor) const
{
    MutexLocker locker(m_mutex);
    auto const found = m_files.find(path);
    return found != m_files.end() && found->second.monitors.contains(monitor);
}

bool FileMonitorDirectoryListener::IsEmpty() const
{
    MutexLocker locker(m_mutex);
    return m_files.empty();
}

void FileMonitorDirectoryListener::addFile(std::string const & path, FileMonitor * monitor)
{
    MutexLocker locker(m_mutex);
    auto const [file, created] = m_files.try_emplace(path);
    if (created && isPresent(path)) {
        file->second.presence = Presence::Present;
    }
    file->second.monitors.insert(monitor);
}

void FileMonitorDirectoryListener::removeFile(std::string const & path, FileMonitor * monitor)
{
    MutexLocker locker(m_mutex);
    auto const found = m_files.find(path);
    if (found == m_files.end()) {
        return;
    }
    found->second.monitors.erase(monitor);
    if (found->second.monitors.empty()) {
        m_files.erase(found);
    }
}

bool FileMonitorDirectoryListener::listen()
{
    if (!m_watch->wait() || !m_watch->pause(c_pause)) {
        return false;
    }
    detail::DirectoryBatch const batch = m_watch->read();

    MutexLocker locker(m_mutex);
    tellRecords(batch.records);
    if (batch.incomplete) {
        lookAtFiles();
    }
    return true;
}

void FileMonitorDirectoryListener::startThread()
{
    m_running = true;
    try {
        m_thread = detail::startThread(&threadFunction, this);
    } catch (std::system_error const &) {
        m_running = false;
        throw Exception(std::string(c_failure));
    }
}

void FileMonitorDirectoryListener::stopThread()
{
    m_running = false;
    m_watch->wake();
    m_thread.join();
}

unsigned int FileMonitorDirectoryListener::threadFunction(void * argument)
{
    auto * const listener = static_cast<FileMonitorDirectoryListener *>(argument);
    while (listener->m_running) {
        detail::runGuarded([&] { listener->listen(); });
    }
    return 0;
}

void FileMonitorDirectoryListener::tellRecords(std::vector<DirectoryRecord> const & records)
{
    for (auto record = records.begin(); record != records.end(); ++record) {
        std::string const path = m_directory + record->name;
        switch (record->action) {
        case DirectoryAction::Added:
            fileArrived(path);
            break;
        case DirectoryAction::Removed:
            fileRemoved(path);
            break;
        case DirectoryAction::Modified:
            fileChanged(path);
            break;
        case DirectoryAction::OldName:
            if (++record == records.end()) {
                return;
            }
            if (record->action == DirectoryAction::NewName) {
                fileRenamed(m_directory + record->name, path);
            }
            break;
        case DirectoryAction::NewName:
            break;
        }
    }
}

/// Tells of every file what must have happened to it.
void FileMonitorDirectoryListener::lookAtFiles()
{
    for (auto const & [path, file] : m_files) {
        bool const present = isPresent(path);
        if (present && file.presence == Presence::Present) {
            fileChanged(path);
        } else if (present) {
            fileAdded(path);
        } else if (file.presence == Presence::Present) {
            fileRemoved(path);
        }
    }
}

void FileMonitorDirectoryListener::fileAdded(std::string const & path)
{
    tell(path, Presence::Present, &FileMonitor::fileAdded);
}

void FileMonitorDirectoryListener::fileRemoved(std::string const & path)
{
    tell(path, Presence::Gone, &FileMonitor::fileRemoved);
}

void FileMonitorDirectoryListener::fileChanged(std::string const & path)
{
    tell(path, Presence::Present, &FileMonitor::fileChanged);
}

void FileMonitorDirectoryListener::tell(std::string const & path, Presence presence,
                                        void (FileMonitor::*message)(std::string const &))
{
    auto const found = m_files.find(path);
    if (found == m_files.end()) {
        return;
    }
    found->second.presence = presence;
    for (FileMonitor * const monitor : found->second.monitors) {
        detail::runGuarded([&] { (monitor->*message)(path); });
    }
}

void FileMonitorDirectoryListener::fileRenamed(std::string const & currentPath, std::string const & previousPath)
{
    auto const previous = m_files.find(previousPath);
    if (previous != m_files.end()) {
        previous->second.presence = Presence::Gone;
        for (FileMonitor * const monitor : previous->second.monitors) {
            detail::runGuarded([&] { monitor->fileRenamed(currentPath, previousPath); });
        }
    }

    // A name that never had a file gets none by the renaming of one that isn't watched.
    auto const current = m_files.find(currentPath);
    if (current != m_files.end() && current->second.presence != Presence::Unseen) {
        fileArrived(currentPath);
    } else if (current != m_files.end()) {
        current->second.presence = Presence::Present;
    }
}

/// Whoever knew a file of this name hears that there is another one now.
void FileMonitorDirectoryListener::fileArrived(std::string const & path)
{
    auto const found = m_files.find(path);
    if (found != m_files.end() && found->second.presence == Presence::Present) {
        fileChanged(path);
    } else {
        fileAdded(path);
    }
}
} // namespace tesseralis
