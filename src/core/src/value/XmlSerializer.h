#pragma once

#include "object/Export.h"

#include <cstddef>
#include <string>

class TiXmlElement;

namespace tesseralis {
class Archive;
class ArchiveElement;

/// What the serializers for files and for buffers have in common: the XML text of an archive.
///
/// A document is read with caution: it may have at most so many bytes, elements may nest 512 deep and have 1,024
/// attributes each. Nothing is written that couldn't be read back: text with NUL bytes, names that XML doesn't have, or
/// more than these limits.
class TESSERALIS_API XmlSerializer
{
public:
    static constexpr std::size_t c_defaultSizeLimit = 64 * 1024 * 1024;

    /// The most bytes that a document may have, at most 2^31 - 1.
    std::size_t GetSizeLimit() const { return m_sizeLimit; }
    void SetSizeLimit(std::size_t bytes);

protected:
    enum class Layout
    {
        Compact,
        Indented
    };

    XmlSerializer() = default;
    XmlSerializer(XmlSerializer const &) = default;
    XmlSerializer & operator=(XmlSerializer const &) = default;
    ~XmlSerializer() = default;

    /// Adds the XML element with all it holds as a child of the parent, or as the root of an empty archive. Null adds
    /// nothing.
    void loadData(ArchiveElement & parent, TiXmlElement * xml);
    /// Moves an element into a new XML element: its children are gone from the archive afterwards. The new one belongs
    /// to the parent, or to the caller if that is null. Null for an empty element.
    TiXmlElement * saveData(ArchiveElement & element, TiXmlElement * parent);

    /// Reads a document into the archive, which a failure leaves as it is. The source is what messages call it.
    void loadText(Archive & archive, std::string const & text, std::string const & source);
    /// The archive's document. The children of the root are gone from the archive afterwards; they stay if it is
    /// refused for what is in it.
    std::string saveText(Archive & archive, Layout layout, std::string const & target);

private:
    std::size_t m_sizeLimit = c_defaultSizeLimit;
};
} // namespace tesseralis
