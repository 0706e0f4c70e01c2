#pragma once

#include "value/VariantContainerValue.h"

#include <string>

namespace tesseralis {
namespace detail {
struct TESSERALIS_API IndexKeys;
struct TESSERALIS_API NameKeys;
} // namespace detail

/// What arrays and maps have in common: they are vectors, quaternions, boxes, matrices and colours on request, by the
/// elements that hold the fields of one. Setting assigns to these elements, so that their types and limits stay;
/// getting leaves the fields alone that have no element. Their text is the number of elements, and as a text they
/// accept anything and keep what they have.
template <class Base, class Keys>
class TESSERALIS_API VariantStructuredValue : public Base
{
public:
    using Base::Base;

    using Base::Get;
    using Base::Set;
    void Set(Color const & value) override;
    void Set(Matrix const & value) override;
    void Set(Box const & value) override;
    void Set(Quaternion const & value) override;
    void Set(Vector const & value) override;
    void Set(std::string const & value) override;
    void Set(VariantValue const & source) override;
    void Get(Color & value) const override;
    void Get(Matrix & value) const override;
    void Get(Box & value) const override;
    void Get(Quaternion & value) const override;
    void Get(Vector & value) const override;
    void Get(std::string & value) const override;
    void Get(VariantValue & target) const override;

protected:
    /// Replaces all elements by clones of those of a payload of the own class; false for any other payload.
    virtual bool replaceElements(VariantValue const & source) = 0;
    bool take(VariantValue & source, detail::Origin origin) override;

private:
    template <class T>
    void write(T const & value);
    template <class T>
    void read(T & value) const;
};

extern template class VariantStructuredValue<VariantIndexedValue, detail::IndexKeys>;
extern template class VariantStructuredValue<VariantContainerValue, detail::NameKeys>;
} // namespace tesseralis
