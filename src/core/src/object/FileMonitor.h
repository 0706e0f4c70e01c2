#pragma once

#include "object/Dispatchable.h"
#include "object/Observable.h"

#include <map>
#include <string>
#include <unordered_set>

namespace tesseralis {
class FileMonitorDirectoryListener;

/// The base of the events about watched files.
class TESSERALIS_API FileMonitorEvent : public ObservableEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// What the events about one file have in common: its absolute path.
class TESSERALIS_API FileMonitorFileEvent : public FileMonitorEvent
{
public:
    explicit FileMonitorFileEvent(std::string const & filename) : m_filename(filename) {}

    std::string const & GetFilename() const { return m_filename; }

    ObservableEvent * GetCloned() const override;
    bool IsEqual(ObservableEvent const & event) const override;

private:
    std::string m_filename;
};

/// A file has come into being or into its directory.
class TESSERALIS_API FileMonitorAdditionEvent : public FileMonitorFileEvent
{
public:
    using FileMonitorFileEvent::FileMonitorFileEvent;
    ObservableEvent * GetCloned() const override;
};

/// A file has gone or left its directory.
class TESSERALIS_API FileMonitorRemovalEvent : public FileMonitorFileEvent
{
public:
    using FileMonitorFileEvent::FileMonitorFileEvent;
    ObservableEvent * GetCloned() const override;
};

/// A file has been written or replaced.
class TESSERALIS_API FileMonitorChangeEvent : public FileMonitorFileEvent
{
public:
    using FileMonitorFileEvent::FileMonitorFileEvent;
    ObservableEvent * GetCloned() const override;
};

/// A file has got another name in its directory. The previous name stays the one that is watched.
class TESSERALIS_API FileMonitorRenameEvent : public FileMonitorEvent
{
public:
    FileMonitorRenameEvent(std::string const & currentFilename, std::string const & previousFilename);

    std::string const & GetCurrentFilename() const { return m_currentFilename; }
    std::string const & GetPreviousFilename() const { return m_previousFilename; }

    ObservableEvent * GetCloned() const override;
    bool IsEqual(ObservableEvent const & event) const override;

private:
    std::string m_currentFilename;
    std::string m_previousFilename;
};

/// Tells its observers what happens to files. What a worker thread notices waits here until the dispatcher is pumped,
/// so observers are called on the thread that pumps; the monitor needs a dispatcher in the registry before anything
/// happens. Monitors are made, changed and destroyed on that thread too.
///
/// An observer must not add or remove files from inside an event, nor destroy a monitor that has files: the worker may
/// hold the lock that this needs while it waits for the monitor that is delivering.
///
/// A class that derives from it and overrides the protected operations calls clearFiles() in its own destructor.
class TESSERALIS_API FileMonitor : public Observable, public Dispatchable
{
public:
    FileMonitor() = default;
    FileMonitor(FileMonitor const &) = delete;
    FileMonitor & operator=(FileMonitor const &) = delete;
    ~FileMonitor() override;

    bool HasFile(std::string const & filename) const;

    /// Watches a file, which need not exist; its directory must. A relative name is taken from the current directory.
    /// Throws Exception if the directory can't be watched; the file counts as added all the same, so it has to be
    /// removed before it can be added with more success.
    void addFile(std::string const & filename);
    /// What happened to the file before is still told.
    void removeFile(std::string const & filename);
    void clearFiles();

    /// Tells the observers what has happened since the last call.
    void dispatch() override;

protected:
    friend class FileMonitorDirectoryListener;

    /// Called on a worker thread, under a lock that addFile() and removeFile() take. They queue an event.
    virtual void fileAdded(std::string const & filename);
    virtual void fileRemoved(std::string const & filename);
    virtual void fileChanged(std::string const & filename);
    virtual void fileRenamed(std::string const & currentFilename, std::string const & previousFilename);

    /// Makes a file name absolute and takes it apart. The directory keeps its trailing separator, so that the two
    /// parts put together are the path.
    void split(std::string & path, std::string & directory, std::string & name, std::string const & filename) const;

private:
    static std::map<std::string, FileMonitorDirectoryListener *> & GetDirectoryListeners();

    void queue(FileMonitorEvent const * event);

    std::unordered_set<std::string> m_files; // absolute paths
};
} // namespace tesseralis
