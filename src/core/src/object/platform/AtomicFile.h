#pragma once

#include "object/Export.h"

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>

namespace tesseralis::detail {
/// The bytes of a file, read once from beginning to end; where there are more than the limit, only a few more. Nothing
/// if the file can't be opened. Throws Exception in the system's words if it can't be read.
std::optional<std::string> readFile(std::string const & filename, std::size_t limit);

/// Gives a file new content, or leaves it as it is: at every moment, that of a crash included, either the old or the
/// new one is there, whole. The content goes to a hidden file in the same folder, which takes the old one's place when
/// it is on the disk. Only a process that is killed leaves such a file behind, and the next to replace the same file
/// removes it.
///
/// A symbolic link stays, and what it leads to is replaced. The mode stays, and the owner where the system permits it;
/// further hard links keep the old content. What is no plain file, such as a pipe or a device, is written to directly.
/// Throws Exception in the system's words.
TESSERALIS_API void replaceFile(std::string const & filename, std::string const & content);

/// A stream into memory, for what writes to streams only.
class MemoryFile
{
public:
    /// Throws Exception if there is no memory.
    MemoryFile();
    ~MemoryFile();
    MemoryFile(MemoryFile const &) = delete;
    MemoryFile & operator=(MemoryFile const &) = delete;

    std::FILE * GetStream() const { return m_stream; }
    /// What has been written. Throws Exception if there wasn't memory enough for it.
    std::string GetText();

private:
    char * m_text = nullptr;
    std::size_t m_size = 0;
    std::FILE * m_stream;
};
} // namespace tesseralis::detail
