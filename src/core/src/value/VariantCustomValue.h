#pragma once

#include "math/Box.h"
#include "math/Color.h"
#include "math/Matrix.h"
#include "math/Quaternion.h"
#include "math/Vector.h"
#include "value/VariantTypedValue.h"

#include <string>

namespace tesseralis {
/// A value of a class with stream operators, which make its text.
template <class T>
class TESSERALIS_API VariantCustomValue : public VariantTypedValue<T>
{
public:
    using VariantTypedValue<T>::VariantTypedValue;
    /// Throws Exception if the text isn't one of the class.
    explicit VariantCustomValue(std::string const & text);

    VariantValue * GetCloned() const override;

    using VariantTypedValue<T>::Get;
    using VariantTypedValue<T>::Set;
    void Set(T const & value) override;
    void Set(std::string const & value) override;
    void Set(VariantValue const & source) override;
    void Get(std::string & value) const override;
    void clear() override;
};

extern template class VariantCustomValue<Vector>;
extern template class VariantCustomValue<Quaternion>;
extern template class VariantCustomValue<Box>;
extern template class VariantCustomValue<Matrix>;
extern template class VariantCustomValue<Color>;
} // namespace tesseralis
