#include "Follower.h"

#include "Document.h"
#include "Output.h"
#include "Snapshot.h"
#include "Text.h"

#include "object/Dispatcher.h"
#include "object/Exception.h"
#include "object/FileMonitor.h"
#include "object/Filename.h"
#include "object/Tesseralis.h"
#include "value/XmlSerializer.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <utility>

namespace tesseralis::host {
namespace {
namespace fs = std::filesystem;

/// Gets what other threads bring, and wakes the main thread for it.
class WakingDispatcher : public Dispatcher
{
public:
    explicit WakingDispatcher(Sleeper & sleeper) : Dispatcher(static_cast<Dispatcher *>(nullptr)), m_sleeper(sleeper)
    {
        // Documents can hold dispatchers too, and the first one gets everything. The name is unlike those of documents.
        Tesseralis & registry = Tesseralis::Get();
        constructDispatcher("--follow", ObjectAttribute::Registered);
        registry.moveObjectBefore(this, registry.GetNextObject(nullptr));
    }
    ~WakingDispatcher() override { destroyDispatcher(); }

    void addDispatchable(Dispatchable * dispatchable) override
    {
        Dispatcher::addDispatchable(dispatchable);
        m_sleeper.wake();
    }

private:
    Sleeper & m_sleeper;
};

/// Runs something; false if it throws, which is told with a remark behind it.
bool runGuarded(std::function<void()> const & action, char const * remark = "")
{
    try {
        action();
        return true;
    } catch (Exception const & exception) {
        std::cerr << "tesseralis: " << asMessage(exception.GetMessage()) << remark << '\n';
        return false;
    }
}

/// What a plain file holds, up to a little more than a document may; nothing if there is none.
std::optional<std::string> contentOf(std::string const & filename)
{
    std::error_code error;
    std::ifstream file;
    if (fs::is_regular_file(filename, error)) {
        file.open(filename, std::ios::binary);
    }
    if (!file.is_open()) {
        return std::nullopt;
    }
    std::string content;
    char piece[65536];
    while (content.size() <= XmlSerializer::c_defaultSizeLimit && (file.read(piece, sizeof piece), file.gcount() > 0)) {
        content.append(piece, static_cast<std::size_t>(file.gcount()));
    }
    return content;
}
} // namespace

Follower::Follower(std::string const & filename, Watcher::Scope scope)
    : m_filename(filename), m_scope(scope), m_content(contentOf(filename))
{
    std::error_code error;
    if (!m_content && fs::exists(filename, error)) {
        throw Exception("'%s' can't be followed, since it is no plain file that can be read.", filename.c_str());
    }
}

void Follower::run(Document & document, std::function<void()> const & refreshed)
{
    WakingDispatcher dispatcher(m_sleeper);
    FileMonitor monitor;
    Watcher watcher(GetOutput(), m_scope);
    monitor.addObserver(&watcher);
    monitor.addObserver(this);
    try {
        monitor.addFile(m_filename);
    } catch (Exception const & exception) {
        throw Exception("'%s' can't be followed: %s", m_filename.c_str(), exception.GetMessage().c_str());
    }
    GetOutput() << "file: following '" << onOneLine(Filename(m_filename)) << "'\n";
    do {
        dispatcher.dispatch();
        if (std::exchange(m_isDue, false)) {
            watchFiles(monitor);
            if (refresh(document)) {
                runGuarded(refreshed);
            }
        }
        flushOutput();
    } while (m_sleeper.sleep());
}

void Follower::prepareSaving(Document & document, std::string const & filename)
{
    refresh(document);
    std::error_code error;
    if (!m_isLoaded && fs::equivalent(m_filename, filename, error)) {
        throw Exception("'%s' isn't saved, since what it holds now would be lost.", filename.c_str());
    }
}

void Follower::modified(Observable const &, ObservableEvent const &)
{
    m_isDue = true;
}

/// Watches also the file that a symbolic link leads to. Before the file is read, so that nothing is missed.
void Follower::watchFiles(FileMonitor & monitor)
{
    std::error_code error;
    std::string const target = fs::is_symlink(m_filename, error) ? fs::canonical(m_filename, error).string() : "";
    if (error || target == m_target) {
        return;
    }
    if (!target.empty()) {
        runGuarded([&] { monitor.addFile(target); });
    }
    monitor.removeFile(m_target);
    m_target = target;
}

/// Whether there is something new.
bool Follower::refresh(Document & document)
{
    std::optional<std::string> content = contentOf(m_filename);
    bool const wasMissing = std::exchange(m_isMissing, !content);
    flushOutput(); // what is said of it comes behind
    if (m_isMissing && !wasMissing) {
        std::cerr << "tesseralis: warning: '" << onOneLine(m_filename)
                  << "' can't be read at present; it is loaded when it comes back.\n";
    }
    if (m_isMissing || content == m_content) {
        return false;
    }
    m_content = std::move(content);
    return reload(document);
}

bool Follower::reload(Document & document)
{
    Snapshot const former;
    m_isLoaded = runGuarded([&] { document.reload(m_filename, *m_content); }, " The objects stay what they were.");
    if (m_isLoaded) {
        former.printDifferences(GetOutput());
        GetOutput() << "file: loaded\n";
    }
    return m_isLoaded;
}
} // namespace tesseralis::host
