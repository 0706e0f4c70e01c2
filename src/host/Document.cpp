#include "Document.h"

#include "Text.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "value/Serializer.h"

#include <iostream>

namespace tesseralis::host {
namespace {
constexpr char const * c_rootTag = "tesseralis";

/// Moves all that an element holds to another one.
void moveContent(ArchiveElement & source, ArchiveElement & target)
{
    target.SetValue(source.GetValue());
    for (ArchiveElementAttributeIterator i(source); !i.IsAtEnd(); ++i) {
        target.SetAttribute(i.GetName(), *i);
    }
    for (ArchiveElement child = source.retrieve(); !child.IsEmpty(); child = source.retrieve()) {
        ArchiveElement copy = target.store(child.GetName());
        moveContent(child, copy);
    }
}

void moveChild(ArchiveElement & child, ArchiveElement & target)
{
    ArchiveElement copy = target.store(child.GetName());
    moveContent(child, copy);
}
} // namespace

void Document::load(std::string const & filename)
{
    Archive archive;
    Serializer(filename).load(archive);
    std::string const tag = ArchiveElement(archive).GetName();
    if (tag != c_rootTag) {
        throw Exception("'%s' is not a document of this program: its root tag is '%s'.", filename.c_str(),
                        onOneLine(tag).c_str());
    }
    skipUnknownObjects(archive);
    archive.retrieve(ObjectAttribute::All);
}

void Document::skipUnknownObjects(Archive & archive)
{
    Archive known;
    ArchiveElement source(archive);
    ArchiveElement target = ArchiveElement(known).store(c_rootTag);
    ArchiveElement skipped = ArchiveElement(m_skipped).store(c_rootTag);
    for (ArchiveElement child = source.retrieve(); !child.IsEmpty(); child = source.retrieve()) {
        if (Tesseralis::Get().HasObjectType(child.GetName())) {
            moveChild(child, target);
            continue;
        }
        std::cerr << "tesseralis: warning: '" << onOneLine(child.GetAttribute("name")) << "' is skipped: its type '"
                  << onOneLine(child.GetName()) << "' is not known.\n";
        moveChild(child, skipped);
    }
    archive = known;
}

void Document::save(std::string const & filename) const
{
    Archive archive;
    archive.store();
    Archive skipped(m_skipped);
    ArchiveElement source(skipped);
    ArchiveElement target(archive);
    for (ArchiveElement child = source.retrieve(); !child.IsEmpty(); child = source.retrieve()) {
        moveChild(child, target);
    }
    Serializer(filename).save(archive);
}
} // namespace tesseralis::host
