#include "value/detail/ArchiveNode.h"

#include <algorithm>

namespace tesseralis {
namespace {
constexpr std::size_t c_mostUnindexedAttributes = 16;
constexpr std::size_t c_fewChildren = 32; // are searched without remembering anything

void replaceAll(std::string & text, std::string const & from, std::string const & to)
{
    std::size_t found = text.find(from);
    if (found == std::string::npos) {
        return;
    }

    std::string result;
    std::size_t start = 0;
    for (; found != std::string::npos; found = text.find(from, start)) {
        result.append(text, start, found - start).append(to);
        start = found + from.size();
    }
    text = result.append(text, start);
}
} // namespace

ArchiveNode * ArchiveNode::hold(ArchiveNode * node)
{
    if (node != nullptr) {
        ++node->m_referenceCount;
    }
    return node;
}

void ArchiveNode::release(ArchiveNode * node)
{
    if (node == nullptr || --node->m_referenceCount >= 1) {
        return;
    }

    // Nodes that nothing holds any longer wait in a chain, linked by what was the link to their next sibling.
    ArchiveNode * dead = node;
    dead->m_next = nullptr;
    while (dead != nullptr) {
        ArchiveNode * const parent = dead;
        dead = parent->m_next;
        while (ArchiveNode * const child = parent->m_firstChild) {
            parent->m_firstChild = child->m_next;
            child->m_parent = child->m_previous = child->m_next = nullptr;
            if (--child->m_referenceCount < 1) {
                child->m_next = dead;
                dead = child;
            }
        }
        delete parent;
    }
}

ArchiveNode * ArchiveNode::copy(ArchiveNode const & source)
{
    std::unique_ptr<ArchiveNode, void (*)(ArchiveNode *)> root(new ArchiveNode, &ArchiveNode::release);
    root->copyAlone(source);

    ArchiveNode const * from = &source;
    ArchiveNode * to = root.get();
    while (true) {
        if (from->m_firstChild != nullptr) {
            from = from->m_firstChild;
        } else {
            while (from != &source && from->m_next == nullptr) {
                from = from->m_parent;
                to = to->m_parent;
            }
            if (from == &source) {
                return root.release();
            }
            from = from->m_next;
            to = to->m_parent;
        }
        auto * const child = new ArchiveNode;
        to->appendChild(child);
        child->copyAlone(*from);
        to = child;
    }
}

bool ArchiveNode::equal(ArchiveNode const & left, ArchiveNode const & right)
{
    ArchiveNode const * other = &right;
    for (ArchiveNode const * node = &left; node != nullptr; node = node->GetNextBelow(left)) {
        if (!node->IsEqualAlone(*other)) {
            return false;
        }
        // Equal child counts so far, so both walks go the same way.
        other = other->GetNextBelow(right);
    }
    return true;
}

std::string const * ArchiveNode::FindAttribute(std::string const & name) const
{
    std::size_t const position = FindAttributePosition(name);
    return position == c_notFound ? nullptr : &m_attributes[position].second;
}

std::size_t ArchiveNode::FindAttributePosition(std::string const & name) const
{
    if (m_attributeIndex != nullptr) {
        auto const found = m_attributeIndex->find(name);
        return found == m_attributeIndex->end() ? c_notFound : found->second;
    }
    auto const found = std::find_if(m_attributes.begin(), m_attributes.end(),
                                    [&](Attribute const & attribute) { return attribute.first == name; });
    return found == m_attributes.end() ? c_notFound : static_cast<std::size_t>(found - m_attributes.begin());
}

void ArchiveNode::SetAttribute(std::string const & name, std::string const & value)
{
    if (m_parent != nullptr && m_parent->m_searchedAttributes != nullptr) {
        m_parent->m_searchedAttributes->erase(name);
    }
    std::size_t const position = FindAttributePosition(name);
    if (position != c_notFound) {
        m_attributes[position].second = value;
        return;
    }

    m_attributes.emplace_back(name, value);
    if (m_attributeIndex != nullptr) {
        m_attributeIndex->emplace(name, m_attributes.size() - 1);
    } else if (m_attributes.size() > c_mostUnindexedAttributes) {
        m_attributeIndex = std::make_unique<std::unordered_map<std::string, std::size_t>>();
        for (std::size_t i = 0; i < m_attributes.size(); ++i) {
            m_attributeIndex->emplace(m_attributes[i].first, i);
        }
    }
}

std::string const & ArchiveNode::GetAttributeOrEmpty(std::string const & name) const
{
    static std::string const s_empty;
    std::string const * const value = FindAttribute(name);
    return value == nullptr ? s_empty : *value;
}

void ArchiveNode::SetName(std::string const & name)
{
    if (m_parent != nullptr) {
        m_parent->m_nameSearch.reset();
    }
    m_name = name;
}

ArchiveNode * ArchiveNode::FindChild(std::string const & name) const
{
    bool const isRepeated = m_nameSearch != nullptr && m_nameSearch->name == name;
    ArchiveNode * child = isRepeated ? m_nameSearch->from : m_firstChild;
    while (child != nullptr && child->m_name != name) {
        child = child->m_next;
    }
    if (isRepeated) {
        m_nameSearch->from = child;
    } else if (m_childCount > c_fewChildren) {
        m_nameSearch.reset(new NameSearch{name, child});
    }
    return child;
}

ArchiveNode * ArchiveNode::FindChild(std::string const & attribute, std::string const & value)
{
    if (m_childCount > c_fewChildren && !GetValueCounts(attribute).contains(value)) {
        return nullptr;
    }
    ArchiveNode * child = m_firstChild;
    while (child != nullptr && child->GetAttributeOrEmpty(attribute) != value) {
        child = child->m_next;
    }
    return child;
}

ArchiveNode::ValueCounts & ArchiveNode::GetValueCounts(std::string const & attribute)
{
    if (m_searchedAttributes == nullptr) {
        m_searchedAttributes = std::make_unique<std::unordered_map<std::string, ValueCounts>>();
    }
    auto const [entry, isNew] = m_searchedAttributes->try_emplace(attribute);
    for (ArchiveNode * child = isNew ? m_firstChild : nullptr; child != nullptr; child = child->m_next) {
        ++entry->second[child->GetAttributeOrEmpty(attribute)];
    }
    return entry->second;
}

ArchiveNode * ArchiveNode::GetNextBelow(ArchiveNode const & top) const
{
    std::size_t depth = 0;
    return GetNextBelow(top, depth);
}

ArchiveNode * ArchiveNode::GetNextBelow(ArchiveNode const & top, std::size_t & depth) const
{
    if (m_firstChild != nullptr) {
        ++depth;
        return m_firstChild;
    }
    ArchiveNode const * node = this;
    while (node != &top && node->m_next == nullptr) {
        node = node->m_parent;
        --depth;
    }
    return node == &top ? nullptr : node->m_next;
}

void ArchiveNode::appendChild(ArchiveNode * child)
{
    child->m_parent = this;
    child->m_previous = m_lastChild;
    (m_lastChild == nullptr ? m_firstChild : m_lastChild->m_next) = hold(child);
    m_lastChild = child;
    ++m_childCount;
    m_searchedAttributes.reset();
    if (m_nameSearch != nullptr && m_nameSearch->from == nullptr) {
        m_nameSearch->from = child;
    }
}

void ArchiveNode::detach()
{
    if (m_parent == nullptr) {
        return;
    }
    (m_previous == nullptr ? m_parent->m_firstChild : m_previous->m_next) = m_next;
    (m_next == nullptr ? m_parent->m_lastChild : m_next->m_previous) = m_previous;
    --m_parent->m_childCount;
    if (m_parent->m_nameSearch != nullptr && m_parent->m_nameSearch->from == this) {
        m_parent->m_nameSearch->from = m_next;
    }
    if (m_parent->m_searchedAttributes != nullptr) {
        for (auto & [attribute, counts] : *m_parent->m_searchedAttributes) {
            auto const found = counts.find(GetAttributeOrEmpty(attribute));
            if (--found->second == 0) {
                counts.erase(found);
            }
        }
    }
    m_parent = m_previous = m_next = nullptr;
    release(this);
}

void ArchiveNode::substitute(std::string const & from, std::string const & to)
{
    replaceAll(m_value, from, to);
    m_searchedAttributes.reset();
    for (auto & [name, value] : m_attributes) {
        replaceAll(value, from, to);
    }
}

bool ArchiveNode::IsEqualAlone(ArchiveNode const & other) const
{
    if (m_name != other.m_name || m_value != other.m_value || m_childCount != other.m_childCount ||
        m_attributes.size() != other.m_attributes.size()) {
        return false;
    }
    return std::all_of(m_attributes.begin(), m_attributes.end(), [&](Attribute const & attribute) {
        std::string const * const value = other.FindAttribute(attribute.first);
        return value != nullptr && *value == attribute.second;
    });
}

void ArchiveNode::copyAlone(ArchiveNode const & source)
{
    m_name = source.m_name;
    m_value = source.m_value;
    m_attributes = source.m_attributes;
    if (source.m_attributeIndex != nullptr) {
        m_attributeIndex = std::make_unique<std::unordered_map<std::string, std::size_t>>(*source.m_attributeIndex);
    }
}
} // namespace tesseralis
