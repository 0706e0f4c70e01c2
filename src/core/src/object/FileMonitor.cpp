#include "object/FileMonitor.h"

#include "object/FileMonitorDirectoryListener.h"
#include "object/Filename.h"

#include <memory>

namespace tesseralis {
ObservableEvent * FileMonitorEvent::GetCloned() const
{
    return new FileMonitorEvent(*this);
}

ObservableEvent * FileMonitorFileEvent::GetCloned() const
{
    return new FileMonitorFileEvent(*this);
}

bool FileMonitorFileEvent::IsEqual(ObservableEvent const & event) const
{
    return FileMonitorEvent::IsEqual(event) && m_filename == castEvent<FileMonitorFileEvent>(event).m_filename;
}

ObservableEvent * FileMonitorAdditionEvent::GetCloned() const
{
    return new FileMonitorAdditionEvent(*this);
}

ObservableEvent * FileMonitorRemovalEvent::GetCloned() const
{
    return new FileMonitorRemovalEvent(*this);
}

ObservableEvent * FileMonitorChangeEvent::GetCloned() const
{
    return new FileMonitorChangeEvent(*this);
}

FileMonitorRenameEvent::FileMonitorRenameEvent(std::string const & currentFilename,
                                               std::string const & previousFilename)
    : m_currentFilename(currentFilename), m_previousFilename(previousFilename)
{
}

ObservableEvent * FileMonitorRenameEvent::GetCloned() const
{
    return new FileMonitorRenameEvent(*this);
}

bool FileMonitorRenameEvent::IsEqual(ObservableEvent const & event) const
{
    if (!FileMonitorEvent::IsEqual(event)) {
        return false;
    }
    FileMonitorRenameEvent const & other = castEvent<FileMonitorRenameEvent>(event);
    return m_currentFilename == other.m_currentFilename && m_previousFilename == other.m_previousFilename;
}

FileMonitor::~FileMonitor()
{
    // After this no listener reaches the monitor: each holds its lock while it calls monitors.
    clearFiles();
    removeDispatchable();
}

bool FileMonitor::HasFile(std::string const & filename) const
{
    return m_files.contains(Filename(filename).GetPath());
}

void FileMonitor::addFile(std::string const & filename)
{
    std::string path;
    std::string directory;
    std::string name;
    split(path, directory, name, filename);
    if (!m_files.insert(path).second) {
        return;
    }

    auto & listeners = GetDirectoryListeners();
    auto found = listeners.find(directory);
    if (found == listeners.end()) {
        auto listener = std::make_unique<FileMonitorDirectoryListener>(directory);
        found = listeners.emplace(directory, listener.get()).first;
        static_cast<void>(listener.release()); // for good: nothing deletes it
    }
    found->second->addFile(path, this);
}

void FileMonitor::removeFile(std::string const & filename)
{
    std::string path;
    std::string directory;
    std::string name;
    split(path, directory, name, filename);
    if (m_files.erase(path) == 0) {
        return;
    }

    auto const & listeners = GetDirectoryListeners();
    auto const found = listeners.find(directory);
    if (found != listeners.end()) {
        found->second->removeFile(path, this);
    }
}

void FileMonitor::clearFiles()
{
    std::unordered_set<std::string> const files = m_files;
    for (std::string const & file : files) {
        removeFile(file);
    }
}

void FileMonitor::dispatch()
{
    MutexLocker locker(m_mutex);
    flushModification();
    removeDispatchable();
}

void FileMonitor::fileAdded(std::string const & filename)
{
    queue(new FileMonitorAdditionEvent(filename));
}

void FileMonitor::fileRemoved(std::string const & filename)
{
    queue(new FileMonitorRemovalEvent(filename));
}

void FileMonitor::fileChanged(std::string const & filename)
{
    queue(new FileMonitorChangeEvent(filename));
}

void FileMonitor::fileRenamed(std::string const & currentFilename, std::string const & previousFilename)
{
    queue(new FileMonitorRenameEvent(currentFilename, previousFilename));
}

void FileMonitor::split(std::string & path, std::string & directory, std::string & name,
                        std::string const & filename) const
{
    // Not by the drive and the directory: of a file in a first-level directory these lack the trailing separator.
    path = Filename(filename).GetPath();
    std::size_t const nameStart = path.rfind('/') + 1;
    directory = path.substr(0, nameStart);
    name = path.substr(nameStart);
}

std::map<std::string, FileMonitorDirectoryListener *> & FileMonitor::GetDirectoryListeners()
{
    // Never deleted, like the listeners: monitors that live to the end of the process still find it.
    static auto & s_listeners = *new std::map<std::string, FileMonitorDirectoryListener *>;
    return s_listeners;
}

void FileMonitor::queue(FileMonitorEvent const * event)
{
    // The bracket stays open until dispatch().
    MutexLocker locker(m_mutex);
    beginModification(event);
    addDispatchable();
}
} // namespace tesseralis
