#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tesseralis::detail {
/// Distinct pointers in order of addition, none owned. A single one needs no memory beside the object; for many, adding
/// and removing take constant time, and so does finding after prepareSearch(). Positions, from 0 to GetSlotCount(), may
/// hold null where a pointer was removed.
template <class T>
class PointerSequence
{
public:
    std::size_t GetSize() const { return m_many ? m_many->slots.size() - m_many->holes : GetSlotCount(); }
    std::size_t GetSlotCount() const { return m_many ? m_many->slots.size() : (m_single != nullptr ? 1 : 0); }
    T * GetSlot(std::size_t slot) const { return m_many ? m_many->slots[slot] : m_single; }
    /// The newest pointer; null if there is none.
    T * GetLast() const { return GetSlotCount() == 0 ? nullptr : GetSlot(GetSlotCount() - 1); }
    bool Has(T * pointer) const { return m_many ? m_many->Find(pointer) != c_none : (pointer && m_single == pointer); }

    /// Lets Has() find a pointer among many without looking at each, from here on.
    void prepareSearch()
    {
        if (m_many) {
            m_many->prepareSearch();
        }
    }

    /// Appends a pointer that is neither null nor present.
    void add(T * pointer)
    {
        if (!m_many) {
            if (m_single == nullptr) {
                m_single = pointer;
                return;
            }
            auto many = std::make_unique<Many>();
            many->slots.reserve(4);
            many->add(m_single);
            m_many = std::move(many);
        }
        m_many->add(pointer);
    }

    /// Removes a pointer that is present.
    void remove(T * pointer)
    {
        if (m_many) {
            m_many->remove(pointer);
        } else {
            m_single = nullptr;
        }
    }

private:
    static constexpr std::size_t c_none = static_cast<std::size_t>(-1);

    struct Many
    {
        static constexpr std::size_t c_indexedFrom = 16;

        std::size_t Find(T * pointer) const
        {
            if (pointer == nullptr) {
                return c_none;
            }
            if (!index.empty()) {
                auto const found = index.find(pointer);
                return found == index.end() ? c_none : found->second;
            }
            for (std::size_t slot = 0; slot < slots.size(); ++slot) {
                if (slots[slot] == pointer) {
                    return slot;
                }
            }
            return c_none;
        }

        void add(T * pointer)
        {
            if (!index.empty()) {
                index.emplace(pointer, slots.size());
            }
            try {
                slots.push_back(pointer);
            } catch (...) {
                index.erase(pointer);
                throw;
            }
        }

        void remove(T * pointer)
        {
            // What removes all of its pointers takes the newest first, and needs no index for that.
            std::size_t slot = slots.size() - 1;
            if (slots[slot] != pointer) {
                prepareSearch();
                slot = Find(pointer);
            }
            slots[slot] = nullptr;
            index.erase(pointer);
            ++holes;
            while (!slots.empty() && slots.back() == nullptr) {
                slots.pop_back();
                --holes;
            }
            if (holes > c_indexedFrom && holes > slots.size() / 2) {
                std::erase(slots, nullptr);
                holes = 0;
                buildIndex();
            }
        }

        void prepareSearch()
        {
            if (index.empty() && slots.size() > c_indexedFrom) {
                buildIndex();
            }
        }

        void buildIndex()
        {
            index.clear();
            for (std::size_t slot = 0; slot < slots.size(); ++slot) {
                if (slots[slot] != nullptr) {
                    index.emplace(slots[slot], slot);
                }
            }
        }

        std::vector<T *> slots;
        std::unordered_map<T *, std::size_t> index; // empty, or all that is in the slots
        std::size_t holes = 0;
    };

    T * m_single = nullptr;
    std::unique_ptr<Many> m_many;
};

/// The pointers of a sequence as they were at construction; a few need no heap.
template <class T>
class PointerSnapshot
{
public:
    explicit PointerSnapshot(PointerSequence<T> const & sequence)
    {
        std::size_t const count = sequence.GetSlotCount();
        T ** target = m_few;
        if (count > c_few) {
            m_many.reset(new T *[count]);
            target = m_many.get();
        }
        m_begin = target;
        for (std::size_t slot = 0; slot < count; ++slot) {
            if (T * const pointer = sequence.GetSlot(slot)) {
                *target++ = pointer;
            }
        }
        m_end = target;
    }

    T * const * begin() const { return m_begin; }
    T * const * end() const { return m_end; }

private:
    static constexpr std::size_t c_few = 16;

    T * m_few[c_few];
    std::unique_ptr<T *[]> m_many;
    T * const * m_begin;
    T * const * m_end;
};
} // namespace tesseralis::detail
