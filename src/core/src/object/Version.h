#pragma once

#include "object/Export.h"

#include <iosfwd>
#include <string>

namespace tesseralis {
/// The version of a module or of the library, as text in the form 0.8.0-3801 (20121004), with the words "experimental"
/// and "debug" behind it where they hold.
class TESSERALIS_API Version
{
public:
    Version() = default;
    /// The build date is a decimal number made of year, month and day.
    Version(unsigned int majorNumber, unsigned int minorNumber, unsigned int revisionNumber,
            unsigned int sourceRevisionNumber, unsigned int buildDate, bool experimental, bool debug);
    /// Reads the text form. A text that can't be read, or a null pointer, gives the zero version.
    explicit Version(char const * text);
    explicit Version(std::string const & text);

    unsigned int GetMajorNumber() const { return m_majorNumber; }
    unsigned int GetMinorNumber() const { return m_minorNumber; }
    unsigned int GetRevisionNumber() const { return m_revisionNumber; }
    unsigned int GetSourceRevisionNumber() const { return m_sourceRevisionNumber; }
    unsigned int GetBuildDate() const { return m_buildDate; }
    bool IsExperimental() const { return m_experimental; }
    bool IsDebug() const { return m_debug; }
    /// Whether this is no debug version; it may be experimental.
    bool IsRelease() const { return !m_debug; }
    std::string GetString() const;

    bool operator==(Version const & other) const = default;
    /// The order of the five numbers. The flags take no part, so two versions that differ only in a flag are neither
    /// equal nor ordered: every comparison but != is false for them.
    bool operator<(Version const & other) const;
    bool operator>(Version const & other) const { return other < *this; }
    bool operator<=(Version const & other) const { return *this == other || *this < other; }
    bool operator>=(Version const & other) const { return *this == other || *this > other; }

private:
    unsigned int m_majorNumber = 0;
    unsigned int m_minorNumber = 0;
    unsigned int m_revisionNumber = 0;
    unsigned int m_sourceRevisionNumber = 0;
    unsigned int m_buildDate = 0;
    bool m_experimental = false;
    bool m_debug = false;
};

TESSERALIS_API std::ostream & operator<<(std::ostream & stream, Version const & version);
/// Reads the text form, whatever the locale and the base of the stream. A text that doesn't fit, or a number that is
/// too large, sets the fail bit and leaves the version as it was.
TESSERALIS_API std::istream & operator>>(std::istream & stream, Version & version);
} // namespace tesseralis
