#pragma once

#include "value/XmlSerializer.h"

#include <string>

namespace tesseralis {
/// Moves an archive to and from an XML file. Failures are Exceptions that name the file, and the line and column where
/// there is such a place.
class TESSERALIS_API Serializer : public XmlSerializer
{
public:
    explicit Serializer(std::string const & filename);
    Serializer(Serializer const & source);
    virtual ~Serializer();

    /// Reads the file into the archive, which is empty to begin with: else the document becomes a last child of its
    /// root. A failure leaves the archive as it is.
    virtual void load(Archive & archive);
    /// Writes the archive and empties it but for the root without its children. The file has its old content until the
    /// new one is complete and on the disk: a failure leaves it as it is. A document that can't be written for what is
    /// in it leaves the archive as it is as well.
    virtual void save(Archive & archive);

private:
    std::string m_filename;
};
} // namespace tesseralis
