#pragma once

#include <type_traits>

namespace tesseralis::detail {
/// Walks a sequence of pointers, none of them null; the base of iterators with a name of their own. Takes
/// no lock; the sequence must not change meanwhile.
template <class Sequence>
class PointerIterator
{
public:
    using Pointer = typename Sequence::value_type;

    bool IsAtEnd() const { return m_position == m_end; }
    PointerIterator & operator++()
    {
        ++m_position;
        return *this;
    }
    std::remove_pointer_t<Pointer> & operator*() const { return **m_position; }
    Pointer operator->() const { return *m_position; }

protected:
    explicit PointerIterator(Sequence const & sequence) : m_position(sequence.begin()), m_end(sequence.end()) {}

private:
    typename Sequence::const_iterator m_position;
    typename Sequence::const_iterator m_end;
};
} // namespace tesseralis::detail
