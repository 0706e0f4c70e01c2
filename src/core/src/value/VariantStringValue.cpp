#include "value/VariantStringValue.h"

#include "math/Box.h"
#include "math/Color.h"
#include "math/Matrix.h"
#include "math/Quaternion.h"
#include "math/Vector.h"
#include "value/detail/NumberText.h"

namespace tesseralis {
VariantValue * VariantStringValue::GetCloned() const
{
    return new VariantStringValue(*this);
}

#define TESSERALIS_BY_TEXT(T)                                                                                          \
    void VariantStringValue::Set(T const & value)                                                                      \
    {                                                                                                                  \
        m_value = detail::toText(value);                                                                               \
    }                                                                                                                  \
    void VariantStringValue::Get(T & value) const                                                                      \
    {                                                                                                                  \
        value = detail::readText<T>(m_value);                                                                          \
    }
TESSERALIS_BY_TEXT(Color)
TESSERALIS_BY_TEXT(Matrix)
TESSERALIS_BY_TEXT(Box)
TESSERALIS_BY_TEXT(Quaternion)
TESSERALIS_BY_TEXT(Vector)
TESSERALIS_BY_TEXT(float)
TESSERALIS_BY_TEXT(int)
TESSERALIS_BY_TEXT(bool)
#undef TESSERALIS_BY_TEXT

void VariantStringValue::Set(std::string const & value)
{
    m_value = value;
}

void VariantStringValue::Set(VariantValue const & source)
{
    source.Get(m_value);
}

void VariantStringValue::clear()
{
    m_value.clear();
}
} // namespace tesseralis
