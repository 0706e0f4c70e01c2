#pragma once

#include "object/Observable.h"
#include "value/Variant.h"

#include <string>

namespace tesseralis {
/// The payload of a Variant: the value and all that depends on its type. Assignment between payloads of different types
/// is a double dispatch: the target asks the source for the target's own type.
///
/// What a payload doesn't take or give throws Exception, as does access to elements in one that has none. A failed
/// operation leaves the payload as it was.
class TESSERALIS_API VariantValue : public Observable
{
public:
    VariantValue() = default;
    VariantValue(VariantValue const &) = default;
    VariantValue & operator=(VariantValue const &) = default;
    ~VariantValue() override = default;

    virtual std::string GetTypeName() const;
    virtual Variant::Type GetType() const;
    /// Whether the other, converted to the own type, has an equal value.
    virtual bool IsEqual(VariantValue const & other) const = 0;
    /// A new copy with limits and without observers, which is the caller's.
    virtual VariantValue * GetCloned() const = 0;

    virtual void Set(Handle const & value);
    virtual void Set(Color const & value);
    virtual void Set(Matrix const & value);
    virtual void Set(Box const & value);
    virtual void Set(Quaternion const & value);
    virtual void Set(Vector const & value);
    virtual void Set(float const & value);
    virtual void Set(int const & value);
    virtual void Set(bool const & value);
    virtual void Set(std::string const & value);
    /// Takes the value of another payload, converted.
    virtual void Set(VariantValue const & source) = 0;

    virtual void Get(Handle & value) const;
    virtual void Get(Color & value) const;
    virtual void Get(Matrix & value) const;
    virtual void Get(Box & value) const;
    virtual void Get(Quaternion & value) const;
    virtual void Get(Vector & value) const;
    virtual void Get(float & value) const;
    virtual void Get(int & value) const;
    virtual void Get(bool & value) const;
    virtual void Get(std::string & value) const;
    /// Sets the other payload to the own value, converted.
    virtual void Get(VariantValue & target) const = 0;

    /// Sets the default value.
    virtual void clear();

    /// The constant forms throw Exception for a missing element, the others make it where they can.
    virtual Variant const & GetElement(std::string const & name) const;
    virtual Variant & GetElement(std::string const & name);
    virtual Variant const & GetElement(unsigned int index) const;
    virtual Variant & GetElement(unsigned int index);
    virtual bool HasElement(std::string const & name) const;
    virtual bool HasElement(unsigned int index) const;
    virtual std::string GetElementName(unsigned int index) const;
    virtual unsigned int GetSize() const;

    /// Limits that don't convert are ignored, and so are all limits where the type has none.
    virtual void SetMinimum(Variant const & minimum);
    virtual Variant GetMinimum() const;
    virtual void SetMaximum(Variant const & maximum);
    virtual Variant GetMaximum() const;
    virtual void SetFilter(Variant const & filter);
    virtual Variant GetFilter() const;

protected:
    /// Lead payloads to the protected Variant::SetValue() and Variant::GetValue().
    virtual void SetValue(Variant & variant, VariantValue const * value);
    virtual VariantValue const * GetValue(Variant const & variant) const;
    /// The same as target.assign(source), but the source need not keep its value, and half of it may be done where
    /// it throws.
    static void moveElement(Variant & target, Variant & source, detail::Origin origin) { target.take(source, origin); }

    [[noreturn]] static void throwNoElement(unsigned int index);
    [[noreturn]] static void throwNoElement(std::string const & name);
};
} // namespace tesseralis
