#include "value/VariantBooleanValue.h"

#include "value/detail/NumberText.h"

namespace tesseralis {
VariantValue * VariantBooleanValue::GetCloned() const
{
    return new VariantBooleanValue(*this);
}

void VariantBooleanValue::Set(float const & value)
{
    if (value != 0.0f && value != 1.0f) {
        throw Exception("Unable to assign a float value of '%f' to this variant!", static_cast<double>(value));
    }
    m_value = value != 0.0f;
}

void VariantBooleanValue::Set(int const & value)
{
    if (value != 0 && value != 1) {
        throw Exception("Unable to assign an integer value of '%d' to this variant!", value);
    }
    m_value = value != 0;
}

void VariantBooleanValue::Set(bool const & value)
{
    m_value = value;
}

void VariantBooleanValue::Set(std::string const & value)
{
    m_value = detail::readText<bool>(value);
}

void VariantBooleanValue::Set(VariantValue const & source)
{
    source.Get(m_value);
}

void VariantBooleanValue::Get(float & value) const
{
    value = m_value ? 1.0f : 0.0f;
}

void VariantBooleanValue::Get(int & value) const
{
    value = m_value ? 1 : 0;
}

void VariantBooleanValue::Get(std::string & value) const
{
    value = detail::toText(m_value);
}

void VariantBooleanValue::clear()
{
    m_value = false;
}
} // namespace tesseralis
