#pragma once

#include "Sleeper.h"
#include "Watcher.h"

#include "object/Observer.h"

#include <functional>
#include <optional>
#include <string>

namespace tesseralis {
class FileMonitor;
}

namespace tesseralis::host {
class Document;

/// Keeps the program running after its commands, until the user ends it: pumps what other threads bring, prints the
/// events of the registry and of the document's file, and loads the document again when its file has changed. A
/// document that can't be loaded leaves the objects as they are. A file that is gone is awaited.
class Follower : public Observer
{
public:
    /// Notes what is in the file, so it comes before the loading. Throws Exception if there is something else than a
    /// plain file of that name.
    Follower(std::string const & filename, Watcher::Scope scope);

    /// Returns when the user has ended the program. Whenever the document has been loaded again, it has something done,
    /// which may throw Exception.
    void run(Document & document, std::function<void()> const & refreshed);
    /// Loads what has come since. Throws Exception if the file to be saved is the followed one and holds what couldn't
    /// be loaded, which would be lost.
    void prepareSaving(Document & document, std::string const & filename);

protected:
    void modified(Observable const & observable, ObservableEvent const & event) override;

private:
    void watchFiles(FileMonitor & monitor);
    bool refresh(Document & document);
    bool reload(Document & document);

    Sleeper m_sleeper;
    std::string m_filename;
    Watcher::Scope m_scope;
    std::string m_target; // where the name leads, if it is that of a symbolic link
    std::optional<std::string> m_content;
    bool m_isDue = true;    // what has happened since the loading is to be looked for
    bool m_isLoaded = true; // whether the content has been
    bool m_isMissing = false;
};
} // namespace tesseralis::host
