#include "value/Archive.h"

#include "object/Tesseralis.h"
#include "object/Version.h"
#include "value/detail/ArchiveNode.h"

namespace tesseralis {
namespace {
char const * const c_rootName = "tesseralis";
}

Archive::Archive(unsigned int flags) : m_flags(flags) {}

Archive::Archive(Archive const & source) : m_flags(source.m_flags)
{
    if (source.m_root != nullptr) {
        SetRoot(ArchiveNode::copy(*source.m_root));
    }
}

Archive const & Archive::operator=(Archive const & source)
{
    if (this != &source) {
        SetRoot(nullptr);
        m_flags = source.m_flags;
        if (source.m_root != nullptr) {
            SetRoot(ArchiveNode::copy(*source.m_root));
        }
    }
    return *this;
}

Archive::~Archive()
{
    SetRoot(nullptr);
}

void Archive::SetRoot(ArchiveNode * root)
{
    ArchiveNode * const former = m_root;
    m_root = ArchiveNode::hold(root);
    ArchiveNode::release(former);
}

void Archive::SetFlags(unsigned int flags, bool on)
{
    m_flags = on ? m_flags | flags : m_flags & ~flags;
}

void Archive::substitute(std::string const & from, std::string const & to)
{
    if (m_root == nullptr || from.empty()) {
        return;
    }
    for (ArchiveNode * node = m_root; node != nullptr; node = node->GetNextBelow(*m_root)) {
        node->substitute(from, to);
    }
}

void Archive::store()
{
    ArchiveElement root = ArchiveElement(*this).store(c_rootName);
    root.SetAttribute("version", Tesseralis::Get().GetVersion().GetString());
    for (TesseralisIterator object(Tesseralis::Get()); !object.IsAtEnd(); ++object) {
        if (object->HasAttribute(ObjectAttribute::All)) {
            ArchiveElement element = root.store(object->GetObjectTypeName());
            element.SetAttribute("name", object->GetObjectName());
            object->store(element);
        }
    }
}

void Archive::retrieve(unsigned int attributes)
{
    if (m_root == nullptr) {
        return;
    }
    if (m_root->GetName() == c_rootName) {
        // All objects are made before any is read, so that they can refer to one another.
        ArchiveElement const root(*this);
        Tesseralis & registry = Tesseralis::Get();
        for (ArchiveNode * child = m_root->GetFirstChild(); child != nullptr; child = child->GetNextSibling()) {
            ArchiveElement const element(this, child, m_root);
            std::string const name = element.GetAttribute("name");
            if (!registry.HasObject(element.GetName(), name)) {
                registry.createObject(element.GetName(), name, attributes == 0 ? ObjectAttribute::All : attributes);
            }
        }
        retrieveObjects();
    }
    SetRoot(nullptr);
}

void Archive::retrieveObjects()
{
    ArchiveElement root(*this);
    ArchiveNode * child = root.m_node->GetFirstChild();
    while (child != nullptr) {
        ArchiveElement element(this, child, root.m_node);
        Object * const object = Tesseralis::Get().GetObject(element.GetName(), element.GetAttribute("name"));
        if (object == nullptr) {
            return;
        }
        if (!object->IsRetrievable(element)) {
            child = child->GetNextSibling();
            continue;
        }
        child->detach();
        object->retrieve(element);
        child = root.m_node->GetFirstChild();
    }
}

ArchiveElement::ArchiveElement(Archive & archive) : ArchiveElement(&archive, archive.m_root, nullptr) {}

ArchiveElement::ArchiveElement(Archive * archive, ArchiveNode * node, ArchiveNode * parent)
    : m_archive(archive), m_node(ArchiveNode::hold(node)), m_parent(ArchiveNode::hold(parent))
{
}

ArchiveElement::ArchiveElement(ArchiveElement const & source)
    : ArchiveElement(source.m_archive, source.m_node, source.m_parent)
{
}

ArchiveElement & ArchiveElement::operator=(ArchiveElement const & source)
{
    ArchiveNode * const node = m_node;
    ArchiveNode * const parent = m_parent;
    m_archive = source.m_archive;
    m_node = ArchiveNode::hold(source.m_node);
    m_parent = ArchiveNode::hold(source.m_parent);
    ArchiveNode::release(node);
    ArchiveNode::release(parent);
    return *this;
}

ArchiveElement::~ArchiveElement()
{
    ArchiveNode::release(m_node);
    ArchiveNode::release(m_parent);
}

ArchiveElement ArchiveElement::GetParent() const
{
    return ArchiveElement(m_archive, m_parent, m_parent == nullptr ? nullptr : m_parent->GetParent());
}

void ArchiveElement::SetName(std::string const & name)
{
    if (m_node != nullptr) {
        m_node->SetName(name);
    }
}

std::string ArchiveElement::GetName() const
{
    return m_node == nullptr ? std::string() : m_node->GetName();
}

void ArchiveElement::SetValue(std::string const & value)
{
    if (m_node != nullptr) {
        m_node->SetValue(value);
    }
}

std::string ArchiveElement::GetValue() const
{
    return m_node == nullptr ? std::string() : m_node->GetValue();
}

void ArchiveElement::SetAttribute(std::string const & name, std::string const & value)
{
    if (m_node != nullptr) {
        m_node->SetAttribute(name, value);
    }
}

std::string ArchiveElement::GetAttribute(std::string const & name) const
{
    std::string const * const value = m_node == nullptr ? nullptr : m_node->FindAttribute(name);
    return value == nullptr ? std::string() : *value;
}

ArchiveElement ArchiveElement::store()
{
    return store(std::string());
}

ArchiveElement ArchiveElement::store(std::string const & name)
{
    auto * const node = new ArchiveNode(name);
    if (m_node == nullptr) {
        m_archive->SetRoot(node);
    } else {
        m_node->appendChild(node);
    }
    return ArchiveElement(m_archive, node, m_node);
}

ArchiveElement ArchiveElement::retrieve()
{
    return take(m_node == nullptr ? nullptr : m_node->GetFirstChild());
}

ArchiveElement ArchiveElement::retrieve(std::string const & name)
{
    return take(m_node == nullptr ? nullptr : m_node->FindChild(name));
}

ArchiveElement ArchiveElement::retrieve(std::string const & attribute, std::string const & value)
{
    return take(FindChild(attribute, value));
}

bool ArchiveElement::IsRetrievable() const
{
    return m_node != nullptr && m_node->GetFirstChild() != nullptr;
}

bool ArchiveElement::IsRetrievable(std::string const & name) const
{
    return m_node != nullptr && m_node->FindChild(name) != nullptr;
}

bool ArchiveElement::IsRetrievable(std::string const & attribute, std::string const & value) const
{
    return FindChild(attribute, value) != nullptr;
}

ArchiveNode * ArchiveElement::FindChild(std::string const & attribute, std::string const & value) const
{
    ArchiveNode * node = m_node;
    while (node != nullptr) {
        if (ArchiveNode * const child = node->FindChild(attribute, value)) {
            return child;
        }
        node = node == m_node ? m_parent : node->GetParent();
    }
    return nullptr;
}

ArchiveElement ArchiveElement::take(ArchiveNode * child) const
{
    if (child == nullptr) {
        return ArchiveElement(m_archive, nullptr, nullptr);
    }
    ArchiveElement const element(m_archive, child, child->GetParent());
    child->detach();
    return element;
}

bool ArchiveElement::operator==(ArchiveElement const & other) const
{
    if (m_node == nullptr || other.m_node == nullptr) {
        return m_node == other.m_node;
    }
    return m_node == other.m_node || ArchiveNode::equal(*m_node, *other.m_node);
}

bool ArchiveElementAttributeIterator::IsAtEnd() const
{
    return m_element.IsEmpty() || m_position >= m_element.m_node->GetAttributes().size();
}

ArchiveElementAttributeIterator & ArchiveElementAttributeIterator::operator++()
{
    ++m_position;
    return *this;
}

std::string const & ArchiveElementAttributeIterator::operator*() const
{
    return m_element.m_node->GetAttributes()[m_position].second;
}

std::string const & ArchiveElementAttributeIterator::GetName() const
{
    return m_element.m_node->GetAttributes()[m_position].first;
}
} // namespace tesseralis
