#include "value/VariantCustomValue.h"

#include "value/detail/NumberText.h"

namespace tesseralis {
template <class T>
VariantCustomValue<T>::VariantCustomValue(std::string const & text) : VariantTypedValue<T>(detail::readText<T>(text))
{
}

template <class T>
VariantValue * VariantCustomValue<T>::GetCloned() const
{
    return new VariantCustomValue(*this);
}

template <class T>
void VariantCustomValue<T>::Set(T const & value)
{
    this->m_value = value;
}

template <class T>
void VariantCustomValue<T>::Set(std::string const & value)
{
    this->m_value = detail::readText<T>(value);
}

template <class T>
void VariantCustomValue<T>::Set(VariantValue const & source)
{
    source.Get(this->m_value);
}

template <class T>
void VariantCustomValue<T>::Get(std::string & value) const
{
    value = detail::toText(this->m_value);
}

template <class T>
void VariantCustomValue<T>::clear()
{
    this->m_value = T();
}

template class VariantCustomValue<Vector>;
template class VariantCustomValue<Quaternion>;
template class VariantCustomValue<Box>;
template class VariantCustomValue<Matrix>;
template class VariantCustomValue<Color>;
} // namespace tesseralis
