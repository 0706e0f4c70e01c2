#pragma once

#include "object/Export.h"

#include <list>
#include <string>

namespace tesseralis {
/// The parts of a path, in the order in which they stand in it.
struct PathParts
{
    std::string drive;
    std::string directory; // with its separators, the one behind it included
    std::string name;
    std::string extension; // with its leading point
};

/// Takes a path apart; the parts put together give it back. A path that begins with "/" splits at "/", any other one at
/// backslashes only. The drive is the text before the first separator (of a path with "/", the first directory with its
/// slash), the directory goes on to the last separator, and the extension begins at the last point behind the first
/// character that is left. So:
///
///     C:\data\head.raw      C:          \data\      head        .raw
///     /data/ct/head.raw     /data       /ct/        head        .raw
///     /data/head.raw        /data                   /head       .raw
///     /head.raw             /head.raw
///     ct/head.raw                                   ct/head     .raw
TESSERALIS_API PathParts splitPath(std::string const & path);
/// The same into buffers, of which any can be null. Each needs room for the length of the path and a final zero.
TESSERALIS_API void splitPath(char const * path, char * drive, char * directory, char * name, char * extension);

/// Joins the parts of a path. The separator is "/" if the drive begins with it, otherwise the backslash. Separators
/// that lack behind the drive and round the directory and the point before the extension are added. Runs of separators
/// in the drive and the directory and runs of points in the name and the extension collapse to one. An empty part is
/// left out.
TESSERALIS_API std::string makePath(PathParts const & parts);
/// The same into a buffer, which needs room for the lengths of all the parts and 4 more; null does nothing. A part can
/// be null: a null extension takes the points from the end of the path, while an empty one leaves them.
TESSERALIS_API void makePath(char * path, char const * drive, char const * directory, char const * name,
                             char const * extension);

/// The names of what a directory holds, files and directories, in the order that the system gives them. Only the last
/// component can have wildcards: "*" stands for any characters, "?" for a single one, a leading point included. "." and
/// ".." are never listed. A directory that can't be read gives an empty list.
TESSERALIS_API std::list<std::string> findFiles(std::string const & pattern);
} // namespace tesseralis
