#include "value/VariantStructuredValue.h"

#include "object/Exception.h"
#include "value/VariantOptionValue.h"
#include "value/detail/NumberText.h"
#include "value/detail/VariantFields.h"

namespace tesseralis {
unsigned int detail::IndexKeys::GetKey(VariantValue const & map, unsigned int index, Origin origin)
{
    std::string const name = map.GetElementName(index);
    unsigned int key = index;
    if (parseIndex(name, key) && origin == Origin::Document && !IsNear(key, map.GetSize())) {
        throw Exception("Unable to retrieve a Variant with index '%s' from this variant!", name.c_str());
    }
    return key;
}

#define TESSERALIS_BY_FIELDS(T)                                                                                        \
    template <class Base, class Keys>                                                                                  \
    void VariantStructuredValue<Base, Keys>::Set(T const & value)                                                      \
    {                                                                                                                  \
        write(value);                                                                                                  \
    }                                                                                                                  \
    template <class Base, class Keys>                                                                                  \
    void VariantStructuredValue<Base, Keys>::Get(T & value) const                                                      \
    {                                                                                                                  \
        read(value);                                                                                                   \
    }
TESSERALIS_BY_FIELDS(Color)
TESSERALIS_BY_FIELDS(Matrix)
TESSERALIS_BY_FIELDS(Box)
TESSERALIS_BY_FIELDS(Quaternion)
TESSERALIS_BY_FIELDS(Vector)
#undef TESSERALIS_BY_FIELDS

template <class Base, class Keys>
void VariantStructuredValue<Base, Keys>::Set(std::string const &)
{
}

template <class Base, class Keys>
void VariantStructuredValue<Base, Keys>::Set(VariantValue const & source)
{
    auto const setClass = [&](auto value) {
        source.Get(value);
        Set(value);
    };
    if (replaceElements(source) || detail::withClassType(source.GetType(), setClass)) {
        return;
    }

    if (source.GetType() == Keys::c_counterpart || source.GetType() == Variant::Type::Option) {
        this->takeCopy(source);
    } else {
        source.Get(*this);
    }
}

template <class Base, class Keys>
void VariantStructuredValue<Base, Keys>::Get(std::string & value) const
{
    std::string text = "[";
    text.append(std::to_string(this->GetSize())).append("]");
    value = text;
}

template <class Base, class Keys>
void VariantStructuredValue<Base, Keys>::Get(VariantValue & target) const
{
    auto const setClass = [&](auto value) {
        Get(value);
        target.Set(value);
    };
    if (!detail::withClassType(target.GetType(), setClass)) {
        target.Set(*this);
    }
}

template <class Base, class Keys>
template <class T>
void VariantStructuredValue<Base, Keys>::write(T const & value)
{
    detail::tryFields<Keys>(*this, value);
    detail::writeFields<Keys>(*this, value);
}

template <class Base, class Keys>
template <class T>
void VariantStructuredValue<Base, Keys>::read(T & value) const
{
    T fields = value;
    detail::readFields<Keys>(*this, fields);
    value = fields;
}

template <class Base, class Keys>
bool VariantStructuredValue<Base, Keys>::take(VariantValue & source, detail::Origin origin)
{
    if (auto * const option = dynamic_cast<VariantOptionValue *>(&source)) {
        option->moveParts<Keys>(*this, origin);
        return true;
    }
    if (source.GetType() != Keys::c_counterpart) {
        return false;
    }
    for (unsigned int i = 0; i < source.GetSize(); ++i) {
        this->moveElement(this->GetElement(Keys::GetKey(source, i, origin)), source.GetElement(i), origin);
    }
    return true;
}

template class VariantStructuredValue<VariantIndexedValue, detail::IndexKeys>;
template class VariantStructuredValue<VariantContainerValue, detail::NameKeys>;
} // namespace tesseralis
