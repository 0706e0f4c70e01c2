#include "value/XmlSerializer.h"

#include "object/Exception.h"
#include "object/platform/AtomicFile.h"
#include "value/Archive.h"
#include "value/detail/ArchiveNode.h"
#include "value/detail/XmlCheck.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <string_view>

#include <tinyxml.h>

namespace tesseralis {
namespace {
using detail::XmlError;

constexpr std::size_t c_indent = 4; // the parser's own layout
constexpr std::string_view c_endMark = "]]>";

void parse(TiXmlDocument & document, std::string const & text, std::size_t sizeLimit)
{
    detail::XmlEncoding const encoding = detail::checkXml(text, sizeLimit);
    document.Parse(text.c_str(), nullptr,
                   encoding == detail::XmlEncoding::Utf8 ? TIXML_ENCODING_UTF8 : TIXML_ENCODING_LEGACY);
    if (document.Error()) {
        throw XmlError{document.ErrorDesc(), document.ErrorRow(), document.ErrorCol()};
    }
}

/// The text that an element begins with. A value that holds the end mark of a CDATA section comes in several of them.
std::string leadingText(TiXmlElement const & xml)
{
    std::string value = xml.GetText();
    TiXmlNode const * node = xml.FirstChild();
    while (node->ToText()->CDATA()) {
        node = node->NextSibling();
        if (node == nullptr || node->ToText() == nullptr || !node->ToText()->CDATA()) {
            break;
        }
        value += node->Value();
    }
    return value;
}

void addText(TiXmlElement & xml, std::string const & value, bool isCData)
{
    auto text = std::make_unique<TiXmlText>(value);
    text->SetCDATA(isCData);
    xml.LinkEndChild(text.release());
}

void addValue(TiXmlElement & xml, std::string const & value)
{
    // Sections end within each end mark, so that none holds it whole.
    std::size_t start = 0;
    for (std::size_t i = value.find(c_endMark); i != std::string::npos; i = value.find(c_endMark, start)) {
        addText(xml, value.substr(start, i + 2 - start), true);
        start = i + 2;
    }
    addText(xml, value.substr(start), !value.empty());
}

std::size_t countSections(std::string const & value)
{
    std::size_t count = value.empty() ? 0 : 1;
    for (std::size_t i = value.find(c_endMark); i != std::string::npos; i = value.find(c_endMark, i + 2)) {
        ++count;
    }
    return count;
}

/// How many bytes an attribute's value takes with what stands for its special characters.
std::size_t encodedSize(std::string const & value)
{
    std::size_t size = 0;
    for (char const c : value) {
        bool const isLong = static_cast<unsigned char>(c) < 32 || c == '"' || c == '\'';
        size += isLong ? 6 : c == '&' ? 5 : c == '<' || c == '>' ? 4 : 1;
    }
    return size;
}

void checkText(std::string const & text)
{
    if (text.find('\0') != std::string::npos) {
        throw XmlError{detail::c_nulCause};
    }
}

void checkName(std::string const & name)
{
    checkText(name);
    if (!detail::isXmlName(name)) {
        throw XmlError{"'" + name + "' can't be a name"};
    }
}

/// Looks for what can't be written while the tree is still there.
class TreeCheck
{
public:
    TreeCheck(bool isIndented, std::size_t sizeLimit)
        : m_indent(isIndented ? c_indent : 0), m_lineBreak(isIndented ? 1 : 0), m_sizeLimit(sizeLimit)
    {
    }

    /// Throws XmlError.
    void check(ArchiveNode const & root)
    {
        std::size_t depth = 1;
        for (ArchiveNode const * node = &root; node != nullptr; node = node->GetNextBelow(root, depth)) {
            if (depth > detail::c_deepestXml) {
                throw XmlError{detail::tooDeepCause()};
            }
            checkElement(*node, depth);
            checkAttributes(*node);
            if (m_size > m_sizeLimit) {
                throw XmlError{detail::tooLargeCause(m_sizeLimit)};
            }
            if (m_steps > detail::mostXmlSteps(m_sizeLimit)) {
                throw XmlError{detail::c_tooManyStepsCause};
            }
        }
    }

private:
    void checkElement(ArchiveNode const & node, std::size_t depth)
    {
        checkName(node.GetName());
        checkText(node.GetValue());

        std::size_t const indent = m_indent * (depth - 1);
        std::size_t const sections = countSections(node.GetValue());
        m_size += indent + std::string_view("<></>").size() + 2 * node.GetName().size() + m_lineBreak;
        m_size += node.GetValue().size();
        m_size += sections * (std::string_view("<![CDATA[]]>").size() + 2 * m_lineBreak + indent + m_indent);
        if (sections > 1 || node.GetFirstChild() != nullptr) {
            m_size += m_lineBreak + indent;
        }
        m_steps += depth - 1 + sections * depth + depth;
    }

    void checkAttributes(ArchiveNode const & node)
    {
        std::size_t const count = node.GetAttributes().size();
        if (count > detail::c_mostXmlAttributes) {
            throw XmlError{detail::tooManyAttributesCause()};
        }
        for (auto const & [name, value] : node.GetAttributes()) {
            checkName(name);
            checkText(value);
            m_size += std::string_view(" =''").size() + name.size() + encodedSize(value);
        }
        m_steps += count * (count + 1) / 2;
    }

    std::size_t m_indent;
    std::size_t m_lineBreak;
    std::size_t m_sizeLimit;
    std::size_t m_size = 0;  // of the text, to the byte
    std::size_t m_steps = 0; // of the parser over it
};

std::string print(TiXmlDocument const & document, bool indented)
{
    if (indented) {
        detail::MemoryFile file;
        document.SaveFile(file.GetStream());
        return file.GetText();
    }
    TiXmlPrinter printer;
    printer.SetStreamPrinting();
    document.Accept(&printer);
    return printer.Str();
}

Exception failure(char const * what, std::string const & where, XmlError const & error)
{
    return Exception("Error %s %s (line %d, column %d: %s)!", what, where.c_str(), error.line, error.column,
                     error.cause.c_str());
}
} // namespace

void XmlSerializer::SetSizeLimit(std::size_t bytes)
{
    m_sizeLimit = std::min<std::size_t>(bytes, std::numeric_limits<int>::max());
}

void XmlSerializer::loadData(ArchiveElement & parent, TiXmlElement * xml)
{
    if (xml == nullptr) {
        return;
    }

    ArchiveElement element = parent.store(xml->ValueStr());
    if (xml->GetText() != nullptr) {
        element.SetValue(leadingText(*xml));
    }
    for (TiXmlAttribute const * i = xml->FirstAttribute(); i != nullptr; i = i->Next()) {
        element.SetAttribute(i->Name(), i->Value());
    }
    for (TiXmlElement * child = xml->FirstChildElement(); child != nullptr; child = child->NextSiblingElement()) {
        loadData(element, child);
    }
}

TiXmlElement * XmlSerializer::saveData(ArchiveElement & element, TiXmlElement * parent)
{
    if (element.IsEmpty()) {
        return nullptr;
    }

    auto owner = std::make_unique<TiXmlElement>(element.GetName());
    TiXmlElement * const xml = owner.get();
    addValue(*xml, element.GetValue());
    if (parent != nullptr) {
        parent->LinkEndChild(owner.release());
    }
    for (ArchiveElementAttributeIterator i(element); !i.IsAtEnd(); ++i) {
        xml->SetAttribute(i.GetName(), *i);
    }
    for (ArchiveElement child = element.retrieve(); !child.IsEmpty(); child = element.retrieve()) {
        saveData(child, xml);
    }
    owner.release(); // the caller's, or the parent's already
    return xml;
}

void XmlSerializer::loadText(Archive & archive, std::string const & text, std::string const & source)
{
    TiXmlDocument document;
    try {
        parse(document, text, m_sizeLimit);
    } catch (XmlError const & error) {
        throw failure("loading from", source, error);
    }
    if (document.FirstChildElement() == nullptr) {
        throw Exception("Error loading from %s!", source.c_str());
    }

    ArchiveElement root(archive);
    loadData(root, document.FirstChildElement());
}

std::string XmlSerializer::saveText(Archive & archive, Layout layout, std::string const & target)
{
    if (archive.IsEmpty()) {
        throw Exception("Error saving to %s!", target.c_str());
    }

    bool const isIndented = layout == Layout::Indented;
    try {
        TreeCheck(isIndented, m_sizeLimit).check(*archive.GetRoot());
        ArchiveElement root(archive);
        TiXmlDocument document;
        document.LinkEndChild(saveData(root, nullptr));
        std::string text = print(document, isIndented);
        detail::checkXml(text, m_sizeLimit);
        return text;
    } catch (XmlError const & error) {
        throw failure("saving to", target, error);
    }
}
} // namespace tesseralis
