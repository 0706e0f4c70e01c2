#pragma once

#include "object/Export.h"

#include <cstddef>
#include <string>

namespace tesseralis {
class ArchiveNode;

/// The bits of an archive's flags, set before storing.
namespace ArchiveFlag {
constexpr unsigned int WithoutValues = 1; ///< property containers leave out the value of each property
} // namespace ArchiveFlag

/// The persistence document: a tree of named elements with attributes and text, independent of any file format. It is
/// filled and read through ArchiveElement; a Serializer or a MemorySerializer moves it to and from XML text.
///
/// Reading consumes: an element that is read leaves the tree. Takes no lock; an archive and its elements belong to one
/// thread.
class TESSERALIS_API Archive
{
public:
    explicit Archive(unsigned int flags = 0);
    /// A tree of its own, equal in names, values, attributes and order, and the flags.
    Archive(Archive const & source);
    Archive const & operator=(Archive const & source);
    ~Archive();

    /// Null for an empty archive.
    ArchiveNode * GetRoot() const { return m_root; }
    bool IsEmpty() const { return m_root == nullptr; }

    /// Sets or clears bits.
    void SetFlags(unsigned int flags, bool on);
    /// Whether all of the bits are set.
    bool HasFlags(unsigned int mask) const { return (m_flags & mask) == mask; }
    unsigned int GetFlags() const { return m_flags; }

    /// Replaces each occurrence of a text in all values and attribute values, such as the names of files or objects
    /// before retrieve(). What has been put in isn't searched again; an empty text to look for changes nothing.
    void substitute(std::string const & from, std::string const & to);

    /// Writes all persistent objects of the registry, oldest first, into an empty archive.
    void store();
    /// Makes the objects that the archive names and the registry lacks, with the given attribute word (0 stands for
    /// all attributes), lets every one read its element as soon as it says that it can, and empties the archive.
    ///
    /// The names are relative to the registry's name space. A document with another root than "tesseralis" is dropped.
    /// An object that can't be made, or objects that all can't be read yet, end the load: what has been read stays.
    /// What an object throws passes through and leaves the archive as far as it has been read.
    void retrieve(unsigned int attributes);

private:
    friend class ArchiveElement;

    void retrieveObjects();
    void SetRoot(ArchiveNode * root);

    ArchiveNode * m_root = nullptr;
    unsigned int m_flags;
};

/// A handle on one element of an archive, copied freely; all copies are the same element. It is empty where there was
/// nothing to be found: reads then give empty texts and no children, and writes do nothing.
///
/// An element that has been taken out of the tree lives as long as a handle does, and still knows where it came from.
/// The archive must outlive its handles' use.
class TESSERALIS_API ArchiveElement
{
public:
    /// The root; empty if the archive is empty.
    explicit ArchiveElement(Archive & archive);
    ArchiveElement(ArchiveElement const & source);
    ArchiveElement & operator=(ArchiveElement const & source);
    ~ArchiveElement();

    Archive const & GetArchive() const { return *m_archive; }
    void SetArchiveFlags(unsigned int flags, bool on) { m_archive->SetFlags(flags, on); }
    bool HasArchiveFlags(unsigned int mask) const { return m_archive->HasFlags(mask); }
    unsigned int GetArchiveFlags() const { return m_archive->GetFlags(); }

    bool IsEmpty() const { return m_node == nullptr; }
    /// The element that this one was made under or taken from; empty if there is none.
    ArchiveElement GetParent() const;
    void SetName(std::string const & name);
    std::string GetName() const;
    void SetValue(std::string const & value);
    std::string GetValue() const;
    /// Changes an attribute in place, or puts a new one behind the others.
    void SetAttribute(std::string const & name, std::string const & value);
    /// The value; empty as well if there is no such attribute.
    std::string GetAttribute(std::string const & name) const;

    /// A new last child. On an empty element the new one becomes the root of the archive and replaces a former tree, so
    /// the holder of an element that may not have been found tests IsEmpty() before.
    ArchiveElement store();
    ArchiveElement store(std::string const & name);

    /// Takes out the first child; empty if there is none.
    ArchiveElement retrieve();
    /// Takes out the first child of that name. Called until the result is empty, it gives all of them in order.
    ArchiveElement retrieve(std::string const & name);
    /// Takes out the first child with that value of an attribute. If there is none, the children of the element that
    /// this one is or was a child of are searched, then those of its parent, and so on up to the root, or to an element
    /// that has been taken out itself. A missing attribute counts as empty.
    ArchiveElement retrieve(std::string const & attribute, std::string const & value);
    /// Whether retrieve() with the same arguments would find something.
    bool IsRetrievable() const;
    bool IsRetrievable(std::string const & name) const;
    bool IsRetrievable(std::string const & attribute, std::string const & value) const;

    /// Whether both are the same element, both are empty, or their trees have equal names, values and attributes, these
    /// in any order, and equal children in the same order.
    bool operator==(ArchiveElement const & other) const;
    bool operator!=(ArchiveElement const & other) const { return !(*this == other); }

private:
    friend class Archive;
    friend class ArchiveElementAttributeIterator;

    ArchiveElement(Archive * archive, ArchiveNode * node, ArchiveNode * parent);

    ArchiveNode * FindChild(std::string const & attribute, std::string const & value) const;
    ArchiveElement take(ArchiveNode * child) const;

    Archive * m_archive;
    ArchiveNode * m_node = nullptr;   // counted
    ArchiveNode * m_parent = nullptr; // counted; the node that this one was made under or taken from
};

/// Walks the attributes of an element in the order of their first setting.
class TESSERALIS_API ArchiveElementAttributeIterator
{
public:
    explicit ArchiveElementAttributeIterator(ArchiveElement const & element) : m_element(element) {}

    bool IsAtEnd() const;
    ArchiveElementAttributeIterator & operator++();
    /// The value, which is good until an attribute is set.
    std::string const & operator*() const;
    std::string const & GetName() const;

private:
    ArchiveElement m_element;
    std::size_t m_position = 0;
};
} // namespace tesseralis
