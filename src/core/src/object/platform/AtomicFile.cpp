#include "object/platform/AtomicFile.h"

#include "object/Exception.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace tesseralis::detail {
namespace {
namespace fs = std::filesystem;

[[noreturn]] void throwError(int number)
{
    throw Exception(std::generic_category().message(number));
}

/// An open file, closed at the end of its life.
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor && source) noexcept { *this = std::move(source); }
    Descriptor & operator=(Descriptor && source) noexcept
    {
        std::swap(m_number, source.m_number);
        return *this;
    }
    ~Descriptor()
    {
        if (IsOpen()) {
            ::close(m_number);
        }
    }

    bool IsOpen() const { return m_number >= 0; }
    int Get() const { return m_number; }

private:
    int m_number = -1;
};

Descriptor open(fs::path const & path, int flags, mode_t mode = 0)
{
    int number = -1;
    do {
        number = ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode);
    } while (number < 0 && errno == EINTR);
    return Descriptor(number);
}

void write(Descriptor const & file, std::string_view content)
{
    while (!content.empty()) {
        ssize_t const written = ::write(file.Get(), content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            throwError(errno);
        }
        content.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
}

/// Whether the file is still the one of that name.
bool isAt(Descriptor const & file, fs::path const & path)
{
    struct stat opened = {};
    struct stat found = {};
    return ::fstat(file.Get(), &opened) == 0 && ::lstat(path.c_str(), &found) == 0 && opened.st_ino == found.st_ino &&
           opened.st_dev == found.st_dev;
}

/// A file on its way to take another one's place. It goes away with this object unless it has done so.
///
/// Its writer holds a lock on it all the while. So one that can be locked has been left behind.
class TemporaryFile
{
public:
    TemporaryFile(fs::path const & target, mode_t mode)
    {
        constexpr std::size_t c_longestName = 200;
        constexpr int c_mostWriters = 100;
        std::string name(1, '.');
        name.append(target.filename().string(), 0, c_longestName).append(".tesseralis-saving");
        for (int i = 0; !m_file.IsOpen(); ++i) {
            m_path = target.parent_path() / (i == 0 ? name : name + std::to_string(i));
            removeStale(m_path);
            m_file = createLocked(m_path, mode);
            if (!m_file.IsOpen() && (errno != EEXIST || i == c_mostWriters)) {
                throwError(errno);
            }
        }
    }
    ~TemporaryFile()
    {
        if (!m_isInPlace) {
            ::unlink(m_path.c_str());
        }
    }
    TemporaryFile(TemporaryFile const &) = delete;
    TemporaryFile & operator=(TemporaryFile const &) = delete;

    Descriptor const & Get() const { return m_file; }

    void takePlace(fs::path const & target)
    {
        if (::rename(m_path.c_str(), target.c_str()) != 0) {
            throwError(errno);
        }
        m_isInPlace = true;
    }

private:
    static void removeStale(fs::path const & path)
    {
        Descriptor const file = open(path, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
        struct stat status = {};
        if (file.IsOpen() && ::fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode) &&
            status.st_uid == ::geteuid() && ::flock(file.Get(), LOCK_EX | LOCK_NB) == 0 && isAt(file, path)) {
            ::unlink(path.c_str());
        }
    }

    /// Not open, with the reason in errno, if it can't be made, which is EEXIST where another writer uses the name.
    static Descriptor createLocked(fs::path const & path, mode_t mode)
    {
        Descriptor file = open(path, O_WRONLY | O_CREAT | O_EXCL, mode);
        if (!file.IsOpen()) {
            return file;
        }
        // Another writer may have taken it for a stale one before it was locked. A file system without locks has none
        // that does.
        bool const isLocked = ::flock(file.Get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
        if (!isLocked || !isAt(file, path)) {
            errno = EEXIST;
            return Descriptor();
        }
        return file;
    }

    fs::path m_path;
    Descriptor m_file;
    bool m_isInPlace = false;
};

/// What a path leads to through symbolic links, there or not. Empty for a link that stands for an open file.
fs::path resolve(fs::path path)
{
    constexpr int c_mostLinks = 40;
    std::error_code error;
    for (int i = 0; i < c_mostLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i) {
        fs::path const folder = fs::canonical(path.parent_path() / ".", error);
        if (folder.native().starts_with("/proc/")) {
            return fs::path();
        }
        path = folder / fs::read_symlink(path, error);
    }
    return path;
}

/// Gives the file the list of further users and groups that a former one has; false if it has one that can't be set.
bool keepAccessList(Descriptor const & file, fs::path const & former)
{
    constexpr char const * c_attribute = "system.posix_acl_access";
    char list[65536]; // the most that the system takes
    ssize_t const size = ::getxattr(former.c_str(), c_attribute, list, sizeof(list));
    if (size < 0) {
        ::fremovexattr(file.Get(), c_attribute); // which the folder may have given it
        return true;
    }
    return ::fsetxattr(file.Get(), c_attribute, list, static_cast<std::size_t>(size), 0) == 0;
}

/// Gives the file the attributes that users have attached to a former one, as far as it can take them.
void keepUserAttributes(Descriptor const & file, fs::path const & former)
{
    std::vector<char> names(65536); // the most that the system gives, as it is for a value
    std::vector<char> value(65536);
    ssize_t const size = ::listxattr(former.c_str(), names.data(), names.size());
    for (char const * name = names.data(); name < names.data() + size; name += std::strlen(name) + 1) {
        if (!std::string_view(name).starts_with("user.")) {
            continue;
        }
        ssize_t const length = ::getxattr(former.c_str(), name, value.data(), value.size());
        if (length >= 0) {
            ::fsetxattr(file.Get(), name, value.data(), static_cast<std::size_t>(length), 0);
        }
    }
}

void keepOwnerAndMode(Descriptor const & file, struct stat const & former, fs::path const & target)
{
    mode_t mode = former.st_mode & 07777;
    if (::fchown(file.Get(), former.st_uid, former.st_gid) != 0) {
        mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID); // another owner's now
        if (::fchown(file.Get(), static_cast<uid_t>(-1), former.st_gid) != 0) {
            mode &= ~static_cast<mode_t>(S_IRWXG); // and another group's
        }
    }
    if (!keepAccessList(file, target)) {
        mode &= ~static_cast<mode_t>(S_IRWXG); // with a list these bits bound what it grants
    }
    if (::fchmod(file.Get(), mode) != 0) {
        throwError(errno);
    }
}

/// Whether the process writes its output or its errors to the file.
bool isStandardStream(struct stat const & status)
{
    for (int const number : {STDOUT_FILENO, STDERR_FILENO}) {
        struct stat stream = {};
        if (::fstat(number, &stream) == 0 && stream.st_ino == status.st_ino && stream.st_dev == status.st_dev) {
            return true;
        }
    }
    return false;
}

/// For what can't be replaced. What the process has written to a standard stream stays ahead of it.
void writeDirectly(std::string const & filename, std::string const & content, struct stat const & status)
{
    Descriptor const file = open(filename, O_WRONLY | (isStandardStream(status) ? O_APPEND : O_TRUNC));
    if (!file.IsOpen()) {
        throwError(errno);
    }
    write(file, content);
}

/// Makes what has been renamed in a folder last. The file is in place already, so a failure changes nothing.
void flushFolder(fs::path const & folder)
{
    Descriptor const file = open(folder.empty() ? fs::path(".") : folder, O_RDONLY | O_DIRECTORY);
    if (file.IsOpen()) {
        ::fsync(file.Get());
    }
}
} // namespace

std::optional<std::string> readFile(std::string const & filename, std::size_t limit)
{
    Descriptor const file = open(filename, O_RDONLY);
    if (!file.IsOpen()) {
        return std::nullopt;
    }

    std::string content;
    char piece[65536];
    while (content.size() <= limit) {
        ssize_t const count = ::read(file.Get(), piece, sizeof(piece));
        if (count == 0) {
            break;
        }
        if (count < 0 && errno != EINTR) {
            throwError(errno);
        }
        content.append(piece, count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return content;
}

void replaceFile(std::string const & filename, std::string const & content)
{
    constexpr mode_t c_everyone = 0666; // less the process's mask
    if (filename.find('\0') != std::string::npos) {
        throwError(EINVAL);
    }
    struct stat former = {};
    bool const exists = ::stat(filename.c_str(), &former) == 0;
    if (!exists && errno != ENOENT) {
        throwError(errno);
    }
    fs::path const target = resolve(filename);
    if (exists && (!S_ISREG(former.st_mode) || target.empty())) {
        writeDirectly(filename, content, former);
        return;
    }
    if (exists && ::faccessat(AT_FDCWD, filename.c_str(), W_OK, AT_EACCESS) != 0) {
        throwError(errno);
    }

    TemporaryFile file(target, exists ? S_IRUSR | S_IWUSR : c_everyone);
    write(file.Get(), content);
    if (exists) {
        keepUserAttributes(file.Get(), target);
        keepOwnerAndMode(file.Get(), former, target);
    }
    if (::fsync(file.Get().Get()) != 0) {
        throwError(errno);
    }
    file.takePlace(target);
    flushFolder(target.parent_path());
}

MemoryFile::MemoryFile() : m_stream(::open_memstream(&m_text, &m_size))
{
    if (m_stream == nullptr) {
        throwError(errno);
    }
}

MemoryFile::~MemoryFile()
{
    std::fclose(m_stream);
    std::free(m_text);
}

std::string MemoryFile::GetText()
{
    if (std::fflush(m_stream) != 0 || std::ferror(m_stream) != 0) {
        throwError(ENOMEM);
    }
    return std::string(m_text, m_size);
}
} // namespace tesseralis::detail
