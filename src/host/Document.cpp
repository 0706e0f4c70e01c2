#include "Document.h"

#include "Modules.h"
#include "Text.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "value/Serializer.h"

#include <iostream>
#include <utility>

namespace tesseralis::host {
namespace {
constexpr char const * c_rootTag = "tesseralis";
constexpr char const * c_moduleAttribute = "filename"; // of a plug-in's element

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

void checkRoot(Archive & archive, std::string const & filename)
{
    std::string const tag = ArchiveElement(archive).GetName();
    if (tag != c_rootTag) {
        throw Exception("'%s' is not a document of this program: its root tag is '%s'.", filename.c_str(), tag.c_str());
    }
}

/// For the text of a file that has been read already.
class TextSerializer : public XmlSerializer
{
public:
    void load(Archive & archive, std::string const & text, std::string const & filename)
    {
        loadText(archive, text, "'" + filename + "'");
    }
};
} // namespace

void Document::load(std::string const & filename)
{
    Archive archive;
    Serializer(filename).load(archive);
    checkRoot(archive, filename);
    makeObjects(archive);
}

void Document::reload(std::string const & filename, std::string const & text)
{
    Archive archive;
    TextSerializer().load(archive, text, filename);
    checkRoot(archive, filename);
    Archive former;
    former.store();
    Archive const formerlySkipped = std::exchange(m_skipped, Archive());
    Tesseralis::Get().clearObjects();
    try {
        makeObjects(archive);
    } catch (...) {
        Tesseralis::Get().clearObjects();
        m_skipped = formerlySkipped;
        former.retrieve(ObjectAttribute::All);
        throw;
    }
}

void Document::makeObjects(Archive & archive)
{
    skipUnknownObjects(archive);
    archive.retrieve(ObjectAttribute::All);
}

void Document::skipUnknownObjects(Archive & archive)
{
    constexpr int c_mostWarnings = 20;
    int skippedCount = 0;
    Archive known;
    ArchiveElement source(archive);
    ArchiveElement target = ArchiveElement(known).store(c_rootTag);
    ArchiveElement skipped = ArchiveElement(m_skipped).store(c_rootTag);
    for (ArchiveElement child = source.retrieve(); !child.IsEmpty(); child = source.retrieve()) {
        if (Tesseralis::Get().HasObjectType(child.GetName())) {
            locateModule(child);
            moveChild(child, target);
            continue;
        }
        if (++skippedCount <= c_mostWarnings) {
            std::cerr << "tesseralis: warning: '" << onOneLine(child.GetAttribute("name"))
                      << "' is skipped, with links and expressions to it: its type '" << onOneLine(child.GetName())
                      << "' is not known.\n";
        }
        moveChild(child, skipped);
    }
    if (skippedCount > c_mostWarnings) {
        std::cerr << "tesseralis: warning: " << skippedCount - c_mostWarnings << " more objects are skipped.\n";
    }
    archive = known;
}

void Document::locateModule(ArchiveElement & element) const
{
    std::string const filename = element.GetAttribute(c_moduleAttribute);
    if (!filename.empty()) {
        std::string const path = m_modules.GetPath(filename);
        element.SetAttribute(c_moduleAttribute, path);
        m_modules.check(path, element.GetAttribute("name"));
    }
}

void Document::save(std::string const & filename) const
{
    Archive archive;
    archive.store();
    Archive stored(archive);
    archive = Archive();
    ArchiveElement storedRoot(stored);
    ArchiveElement target = ArchiveElement(archive).store(c_rootTag);
    target.SetAttribute("version", storedRoot.GetAttribute("version"));
    for (ArchiveElement child = storedRoot.retrieve(); !child.IsEmpty(); child = storedRoot.retrieve()) {
        std::string const module = child.GetAttribute(c_moduleAttribute);
        if (!module.empty()) {
            child.SetAttribute(c_moduleAttribute, m_modules.GetPortableName(module));
        }
        moveChild(child, target);
    }
    Archive skipped(m_skipped);
    ArchiveElement source(skipped);
    for (ArchiveElement child = source.retrieve(); !child.IsEmpty(); child = source.retrieve()) {
        moveChild(child, target);
    }
    Serializer(filename).save(archive);
}
} // namespace tesseralis::host
