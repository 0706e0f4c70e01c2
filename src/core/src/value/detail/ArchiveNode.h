#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tesseralis {
/// An element of an archive's tree. A node is counted by what holds it: its parent, the archive for the root, and every
/// ArchiveElement. Trees may be deeper than the stack: nothing here recurses.
class ArchiveNode
{
public:
    using Attribute = std::pair<std::string, std::string>; // name, value

    ArchiveNode() = default;
    explicit ArchiveNode(std::string const & name) : m_name(name) {}
    ArchiveNode(ArchiveNode const &) = delete;
    ArchiveNode & operator=(ArchiveNode const &) = delete;

    /// Adds a holder; null is ignored. Returns the node.
    static ArchiveNode * hold(ArchiveNode * node);
    /// Removes a holder, and deletes the node and whatever of its tree nothing else holds if that was the last.
    static void release(ArchiveNode * node);
    /// A copy of the tree without any holder.
    static ArchiveNode * copy(ArchiveNode const & source);
    static bool equal(ArchiveNode const & left, ArchiveNode const & right);

    std::string const & GetName() const { return m_name; }
    void SetName(std::string const & name);
    std::string const & GetValue() const { return m_value; }
    void SetValue(std::string const & value) { m_value = value; }

    std::vector<Attribute> const & GetAttributes() const { return m_attributes; }
    /// Null if there is none of that name.
    std::string const * FindAttribute(std::string const & name) const;
    void SetAttribute(std::string const & name, std::string const & value);

    ArchiveNode * GetParent() const { return m_parent; }
    ArchiveNode * GetFirstChild() const { return m_firstChild; }
    ArchiveNode * GetNextSibling() const { return m_next; }
    /// The first child of that name; null if there is none. Taking out all of one name takes linear time.
    ArchiveNode * FindChild(std::string const & name) const;
    /// The first child with that value of an attribute, where a missing one counts as empty; null if there is none.
    ArchiveNode * FindChild(std::string const & attribute, std::string const & value);
    /// The next node of the tree below top in document order, parents first; null at the end.
    ArchiveNode * GetNextBelow(ArchiveNode const & top) const;
    /// The same, and adds to the depth the steps down, less those up.
    ArchiveNode * GetNextBelow(ArchiveNode const & top, std::size_t & depth) const;

    /// Appends a new or detached node and holds it.
    void appendChild(ArchiveNode * child);
    /// Takes the node out of its parent, which lets go of it. The caller holds it.
    void detach();

    /// Replaces a text in the value and the attribute values of this node alone.
    void substitute(std::string const & from, std::string const & to);

private:
    /// Of an attribute of all children: how many have which value.
    using ValueCounts = std::unordered_map<std::string, std::size_t>;

    /// The last search for a name: no child ahead of this one has it. Null stands for the end.
    struct NameSearch
    {
        std::string name;
        ArchiveNode * from;
    };

    ~ArchiveNode() = default;

    static constexpr std::size_t c_notFound = static_cast<std::size_t>(-1);
    std::size_t FindAttributePosition(std::string const & name) const;
    std::string const & GetAttributeOrEmpty(std::string const & name) const;
    ValueCounts & GetValueCounts(std::string const & attribute);
    bool IsEqualAlone(ArchiveNode const & other) const;
    void copyAlone(ArchiveNode const & source);

    ArchiveNode * m_parent = nullptr; // not counted; null for the root and for a node that has been taken out
    std::string m_name;
    std::string m_value;
    std::vector<Attribute> m_attributes;                                            // in order of first setting
    std::unique_ptr<std::unordered_map<std::string, std::size_t>> m_attributeIndex; // only where there are many
    ArchiveNode * m_firstChild = nullptr;
    ArchiveNode * m_lastChild = nullptr;
    ArchiveNode * m_previous = nullptr;
    ArchiveNode * m_next = nullptr;
    std::size_t m_childCount = 0;
    // By attribute. Children are often searched for what isn't there, so those searches are to be fast.
    std::unique_ptr<std::unordered_map<std::string, ValueCounts>> m_searchedAttributes;
    mutable std::unique_ptr<NameSearch> m_nameSearch; // only where there are many children
    int m_referenceCount = 0;
};
} // namespace tesseralis
