#include "object/platform/DirectoryWatch.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace tesseralis::detail {
namespace {
constexpr std::uint32_t c_selfEvents = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t c_arrivalEvents = IN_CREATE | IN_MOVED_TO;
// Closing after writing counts as writing too: it is all that is seen of a file that was written through a mapping or
// whose time was set.
constexpr std::uint32_t c_contentEvents =
    c_selfEvents | c_arrivalEvents | IN_DELETE | IN_MOVED_FROM | IN_MODIFY | IN_CLOSE_WRITE;
constexpr std::uint32_t c_lossEvents = c_selfEvents | IN_UNMOUNT | IN_IGNORED;

// The two halves of a rename are queued one after the other, not both at once.
constexpr int c_halfMilliseconds = 2;

// What one batch reads at most, many times what the system's queue holds: others may write faster than this is read.
constexpr int c_mostReads = 1000;
constexpr std::size_t c_largestEvent = sizeof(inotify_event) + NAME_MAX + 1;

constexpr int c_mostLinks = 40; // on the way to a directory, as in the system

constexpr std::chrono::microseconds c_wakingTime(120);

void closeDescriptor(int descriptor)
{
    if (descriptor >= 0) {
        close(descriptor);
    }
}

/// The names between the separators of a path, the first one on top.
std::vector<std::filesystem::path> stackOfNames(std::filesystem::path const & path)
{
    std::filesystem::path const relative = path.relative_path();
    std::vector<std::filesystem::path> names(relative.begin(), relative.end());
    std::erase_if(names, [](std::filesystem::path const & name) { return name.empty() || name == "."; });
    std::reverse(names.begin(), names.end());
    return names;
}
} // namespace

/// Turns what the system's queue holds into a batch.
class DirectoryWatch::Reader
{
public:
    explicit Reader(DirectoryWatch & watch) : m_watch(watch) {}

    bool HasHalf() const { return !m_halves.empty(); }
    bool HasRemoval() const { return m_removed; }

    void readAll()
    {
        alignas(inotify_event) char buffer[16384];
        for (int i = 0; i < c_mostReads; ++i) {
            ssize_t const size = ::read(m_watch.m_events, buffer, sizeof buffer);
            if (size < 0 && errno == EINTR) {
                continue;
            }
            for (ssize_t position = 0; position < size;) {
                auto const * const event = reinterpret_cast<inotify_event const *>(buffer + position);
                add(*event, event->len > 0 ? event->name : "");
                position += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            }
            if (size < static_cast<ssize_t>(sizeof buffer - c_largestEvent)) {
                return; // there was room for more
            }
        }
    }

    DirectoryBatch takeBatch()
    {
        // A file whose other half never came has left the directory.
        for (auto const & [cookie, position] : m_halves) {
            m_batch.records[position].action = DirectoryAction::Removed;
        }
        std::erase_if(m_batch.records, [](DirectoryRecord const & record) { return record.name.empty(); });
        m_batch.incomplete = m_lost;
        return std::move(m_batch);
    }

private:
    void add(inotify_event const & event, std::string_view name)
    {
        bool const content = event.wd == m_watch.m_content && !m_lost;
        if ((event.mask & IN_Q_OVERFLOW) != 0 || IsOnTheWay(event, name) ||
            (content && (event.mask & c_lossEvents) != 0)) {
            m_lost = true;
        } else if (content && (event.mask & IN_ISDIR) == 0) {
            addRecord(event, name);
        }
    }

    bool IsOnTheWay(inotify_event const & event, std::string_view name) const
    {
        return std::any_of(m_watch.m_way.begin(), m_watch.m_way.end(), [&](auto const & part) {
            return part.first == event.wd && ((event.mask & c_lossEvents) != 0 || (name != "" && part.second == name));
        });
    }

    void addRecord(inotify_event const & event, std::string_view name)
    {
        m_removed |= (event.mask & (IN_DELETE | IN_MOVED_FROM)) != 0;
        std::vector<DirectoryRecord> & records = m_batch.records;
        if ((event.mask & IN_MOVED_FROM) != 0) {
            // Room for the other half, beside this one.
            m_halves.emplace_back(event.cookie, records.size());
            records.push_back({DirectoryAction::OldName, std::string(name)});
            records.push_back({DirectoryAction::NewName, ""});
        } else if ((event.mask & IN_MOVED_TO) != 0) {
            addSecondHalf(event.cookie, name);
        } else if ((event.mask & IN_CREATE) != 0) {
            records.push_back({DirectoryAction::Added, std::string(name)});
        } else if ((event.mask & IN_DELETE) != 0) {
            records.push_back({DirectoryAction::Removed, std::string(name)});
        } else if ((event.mask & (IN_MODIFY | IN_CLOSE_WRITE)) != 0) {
            records.push_back({DirectoryAction::Modified, std::string(name)});
        }
    }

    void addSecondHalf(std::uint32_t cookie, std::string_view name)
    {
        // Nearly always the last one.
        auto const half =
            std::find_if(m_halves.rbegin(), m_halves.rend(), [&](auto const & other) { return other.first == cookie; });
        if (half == m_halves.rend()) {
            m_batch.records.push_back({DirectoryAction::Added, std::string(name)});
            return;
        }
        m_batch.records[half->second + 1].name = name;
        m_halves.erase(std::next(half).base());
    }

    DirectoryWatch & m_watch;
    DirectoryBatch m_batch;
    std::vector<std::pair<std::uint32_t, std::size_t>> m_halves; // cookie and position of old names without new ones
    bool m_removed = false;
    bool m_lost = false;
};

std::unique_ptr<DirectoryWatch> DirectoryWatch::open(std::string const & directory)
{
    std::unique_ptr<DirectoryWatch> watch(new DirectoryWatch(directory));
    return watch->IsOpen() ? std::move(watch) : nullptr;
}

DirectoryWatch::DirectoryWatch(std::string const & directory)
    : m_directory(directory),
      m_events(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
      m_wake(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      m_timer(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC))
{
    follow();
}

DirectoryWatch::~DirectoryWatch()
{
    closeDescriptor(m_timer);
    closeDescriptor(m_wake);
    closeDescriptor(m_events);
}

bool DirectoryWatch::IsOpen() const
{
    return m_events >= 0 && m_wake >= 0 && m_timer >= 0 && m_content >= 0;
}

bool DirectoryWatch::wait()
{
    return waitFor(m_events);
}

bool DirectoryWatch::pause(std::chrono::nanoseconds time)
{
    // A timer of its own: the time-out of poll() comes late by up to a thousandth. The last stretch is spent awake,
    // since waking up takes about as long.
    auto const end = std::chrono::steady_clock::now() + time;
    std::chrono::nanoseconds const sleep = time - c_wakingTime;
    auto const seconds = std::chrono::duration_cast<std::chrono::seconds>(sleep);
    itimerspec timer = {};
    timer.it_value.tv_sec = seconds.count();
    timer.it_value.tv_nsec = (sleep - seconds).count();
    timerfd_settime(m_timer, 0, &timer, nullptr);
    if (!waitFor(m_timer)) {
        return false;
    }

    while (std::chrono::steady_clock::now() < end) {
    }
    return true;
}

DirectoryBatch DirectoryWatch::read()
{
    Reader reader(*this);
    reader.readAll();
    if (reader.HasHalf()) {
        pollfd events = {m_events, POLLIN, 0};
        poll(&events, 1, c_halfMilliseconds);
        reader.readAll();
    }
    DirectoryBatch batch = reader.takeBatch();

    // A directory that is deleted while somebody still uses it doesn't tell; but it was emptied before.
    if (batch.incomplete || (reader.HasRemoval() && watch(m_directory, c_contentEvents) != m_content)) {
        batch.incomplete = true;
        follow();
    }
    return batch;
}

void DirectoryWatch::wake()
{
    eventfd_write(m_wake, 1);
}

int DirectoryWatch::watch(std::string const & path, unsigned int events)
{
    // Added to the mask, since a part of the way and the directory may be one.
    return inotify_add_watch(m_events, path.c_str(), events | IN_EXCL_UNLINK | IN_MASK_ADD);
}

/// Sets all watches anew, from the root down, so that whatever changes further down meanwhile is noticed. Symbolic
/// links are followed one by one, since each may come to lead elsewhere.
void DirectoryWatch::follow()
{
    // What the queue still holds from the former watches won't be taken for the new ones', whose numbers are others.
    for (auto const & part : m_way) {
        inotify_rm_watch(m_events, part.first);
    }
    inotify_rm_watch(m_events, m_content);
    m_way.clear();
    m_content = -1;

    std::filesystem::path place = "/"; // without links and ".."
    std::vector<std::filesystem::path> names = stackOfNames(m_directory);
    for (int links = 0; !names.empty() && links <= c_mostLinks;) {
        std::filesystem::path const name = names.back();
        names.pop_back();
        if (!watchPart(place, name)) {
            return;
        }
        std::error_code error;
        std::filesystem::path const target = std::filesystem::read_symlink(place / name, error);
        if (error) {
            place = (place / name).lexically_normal();
            continue;
        }
        ++links;
        place = target.is_absolute() ? "/" : place;
        std::vector<std::filesystem::path> const more = stackOfNames(target);
        names.insert(names.end(), more.begin(), more.end());
    }
    m_content = watch(m_directory, c_contentEvents | IN_ONLYDIR);
}

/// Watches an entry of a directory on the way. If there is none, the directory is watched until it comes; false then.
bool DirectoryWatch::watchPart(std::filesystem::path const & directory, std::string const & name)
{
    auto const watchEntry = [&] {
        int const number = watch((directory / name).string(), c_selfEvents | IN_DONT_FOLLOW);
        bool const isThere = number >= 0 || errno != ENOENT;
        m_way.emplace_back(number, "");
        return isThere;
    };
    if (watchEntry()) {
        return true;
    }
    m_way.emplace_back(watch(directory.string(), c_arrivalEvents | IN_ONLYDIR), name);
    return watchEntry(); // it may have come meanwhile
}

bool DirectoryWatch::waitFor(int descriptor)
{
    pollfd descriptors[] = {{m_wake, POLLIN, 0}, {descriptor, POLLIN, 0}};
    while (poll(descriptors, 2, -1) < 0) {
    }
    return descriptors[0].revents == 0;
}

std::thread startThread(unsigned int (*function)(void *), void * argument)
{
    // A thread starts with the mask of the one that makes it. Faults aren't masked: they are the thread's own.
    sigset_t signals;
    sigset_t former;
    sigfillset(&signals);
    for (int const fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP}) {
        sigdelset(&signals, fault);
    }
    pthread_sigmask(SIG_BLOCK, &signals, &former);
    auto const restore = [](sigset_t const * mask) { pthread_sigmask(SIG_SETMASK, mask, nullptr); };
    std::unique_ptr<sigset_t const, decltype(restore)> const restorer(&former, restore);
    return std::thread(function, argument);
}
} // namespace tesseralis::detail
