#pragma once

#include "value/XmlSerializer.h"

#include <string>

namespace tesseralis {
/// Moves an archive to and from XML text in memory, which it writes without white space between the tags. Failures are
/// Exceptions with the line and column where there is such a place.
class TESSERALIS_API MemorySerializer : public XmlSerializer
{
public:
    MemorySerializer();
    MemorySerializer(MemorySerializer const & source);
    virtual ~MemorySerializer();

    /// Reads a document into the archive, which is empty to begin with: else the document becomes a last child of its
    /// root. A failure leaves the archive as it is.
    virtual void load(Archive & archive, std::string const & text);
    /// The same; null is an empty text.
    virtual void load(Archive & archive, char const * text);
    /// Replaces the text by the archive's document, and empties the archive but for the root without its children. A
    /// failure leaves the text as it is.
    virtual void save(std::string & text, Archive & archive);
};
} // namespace tesseralis
