#pragma once

#include "object/Observer.h"
#include "value/VariantValue.h"

#include <memory>
#include <string>
#include <vector>

namespace tesseralis {
namespace detail {
class VariantJsonReader;
} // namespace detail

/// The base of the payloads that hold variants. It observes them and passes each of their changes on as one of its own.
class TESSERALIS_API VariantContainerValue : public VariantValue, public Observer
{
public:
    VariantContainerValue() = default;
    VariantContainerValue(VariantContainerValue const & source) : VariantValue(source), Observer() {}
    VariantContainerValue & operator=(VariantContainerValue const &) = delete;

protected:
    friend class Variant;
    friend class detail::VariantJsonReader;

    void modified(Observable const & observable, ObservableEvent const & event) override;

    /// Assigns the elements of another kind of container, as far as this kind knows how, and may leave that without
    /// them. False, and nothing is changed, for what it doesn't know; half of it may be done where it throws.
    virtual bool take(VariantValue & source, detail::Origin origin);
    /// The same with a copy of the source, which may be inside this payload. Where it throws nothing is changed.
    bool takeCopy(VariantValue const & source);
};

/// The base of the containers whose elements have numbers for names. An element keeps its address as long as it is in
/// the container.
class TESSERALIS_API VariantIndexedValue : public VariantContainerValue
{
public:
    VariantIndexedValue() = default;
    VariantIndexedValue(VariantIndexedValue const &) = delete;
    ~VariantIndexedValue() override;

    void clear() override;

    using VariantContainerValue::GetElement;
    Variant const & GetElement(std::string const & name) const override;
    Variant & GetElement(std::string const & name) override;
    Variant const & GetElement(unsigned int index) const override;
    bool HasElement(std::string const & name) const override;
    bool HasElement(unsigned int index) const override { return index < GetSize(); }
    std::string GetElementName(unsigned int index) const override;
    unsigned int GetSize() const override { return static_cast<unsigned int>(m_elements.size()); }

protected:
    using Elements = std::vector<std::unique_ptr<Variant>>;

    static Elements GetClones(Elements const & elements);

    /// Appends undefined variants, unobserved, until there is an element of that index. Throws Exception where these
    /// would be more than c_largestGrowth.
    void grow(unsigned int index);
    /// Observes the elements from an index to the end.
    void observe(unsigned int first);
    /// Drops elements from the end.
    void shrink(unsigned int size);

    Elements m_elements;

private:
    static constexpr unsigned int c_largestGrowth = 1u << 20;
};
} // namespace tesseralis
