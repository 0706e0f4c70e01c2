#include "value/Variant.h"

#include "math/Box.h"
#include "math/Color.h"
#include "math/Matrix.h"
#include "math/Quaternion.h"
#include "math/Vector.h"
#include "object/Exception.h"
#include "value/VariantContainerValue.h"
#include "value/detail/Modification.h"

#include <ostream>
#include <utility>
#include <vector>

namespace tesseralis {
namespace {
std::unique_ptr<VariantValue> cloneValue(VariantValue const * value)
{
    return std::unique_ptr<VariantValue>(value == nullptr ? nullptr : value->GetCloned());
}

/// Destroys a payload. What is nested deeper in it than the stack may hold goes behind it.
void destroyValue(std::unique_ptr<VariantValue> value)
{
    struct Descent
    {
        int depth = 0;
        std::vector<std::unique_ptr<VariantValue>> waiting;
    };
    constexpr int c_deepest = 1000;
    thread_local Descent * t_descent = nullptr;
    if (t_descent == nullptr) {
        Descent descent;
        t_descent = &descent;
        value.reset();
        while (!descent.waiting.empty()) {
            value = std::move(descent.waiting.back());
            descent.waiting.pop_back();
            value.reset();
        }
        t_descent = nullptr;
    } else if (t_descent->depth == c_deepest) {
        t_descent->waiting.push_back(std::move(value));
    } else {
        ++t_descent->depth;
        value.reset();
        --t_descent->depth;
    }
}

} // namespace

Variant::Variant() = default;

Variant::Variant(std::unique_ptr<VariantValue> value)
{
    install(std::move(value));
}

Variant::Variant(Variant const & source) : Observable(), Observer()
{
    install(cloneValue(source.m_value.get()));
}

Variant::~Variant()
{
    destroyObservable();
    if (m_value) {
        m_value->removeObserver(this);
        destroyValue(std::move(m_value));
    }
}

Variant::Type Variant::GetType() const
{
    return m_value ? m_value->GetType() : Type::Undefined;
}

std::string Variant::GetTypeName() const
{
    return m_value ? m_value->GetTypeName() : GetNameFromType(Type::Undefined);
}

Variant Variant::GetMinimum() const
{
    return m_value ? m_value->GetMinimum() : Variant();
}

Variant Variant::GetMaximum() const
{
    return m_value ? m_value->GetMaximum() : Variant();
}

Variant Variant::GetFilter() const
{
    return m_value ? m_value->GetFilter() : Variant();
}

void Variant::SetMinimum(Variant const & minimum)
{
    if (m_value) {
        m_value->SetMinimum(minimum);
    }
}

void Variant::SetMaximum(Variant const & maximum)
{
    if (m_value) {
        m_value->SetMaximum(maximum);
    }
}

void Variant::SetFilter(Variant const & filter)
{
    if (m_value) {
        m_value->SetFilter(filter);
    }
}

bool Variant::operator==(Variant const & other) const
{
    if (!m_value || !other.m_value) {
        return !m_value && !other.m_value;
    }
    return m_value->IsEqual(*other.m_value);
}

template <class T>
T Variant::Convert(char const * type) const
{
    if (!m_value) {
        throw Exception("Unable to retrieve %s value from this variant!", type);
    }
    T value = T();
    m_value->Get(value);
    return value;
}

Variant::operator std::string() const
{
    return Convert<std::string>("a string");
}

Variant::operator bool() const
{
    return Convert<bool>("a boolean");
}

Variant::operator int() const
{
    return Convert<int>("an integer");
}

Variant::operator float() const
{
    return Convert<float>("a float");
}

Variant::operator Vector() const
{
    return Convert<Vector>("a vector");
}

Variant::operator Quaternion() const
{
    return Convert<Quaternion>("a quaternion");
}

Variant::operator Box() const
{
    return Convert<Box>("a box");
}

Variant::operator Matrix() const
{
    return Convert<Matrix>("a matrix");
}

Variant::operator Color() const
{
    return Convert<Color>("a color");
}

Variant & Variant::operator=(Variant const & source)
{
    if (this != &source) {
        // The source may be inside this variant, but its clone isn't.
        replace(cloneValue(source.m_value.get()));
    }
    return *this;
}

Variant & Variant::operator=(std::string const & value)
{
    return assignPlain(value);
}

Variant & Variant::operator=(char const * value)
{
    return assignPlain(std::string(value == nullptr ? "" : value));
}

Variant & Variant::operator=(bool value)
{
    return assignPlain(value);
}

Variant & Variant::operator=(int value)
{
    return assignPlain(value);
}

Variant & Variant::operator=(float value)
{
    return assignPlain(value);
}

Variant & Variant::operator=(Vector const & value)
{
    return assignPlain(value);
}

Variant & Variant::operator=(Quaternion const & value)
{
    return assignPlain(value);
}

Variant & Variant::operator=(Box const & value)
{
    return assignPlain(value);
}

Variant & Variant::operator=(Matrix const & value)
{
    return assignPlain(value);
}

Variant & Variant::operator=(Color const & value)
{
    return assignPlain(value);
}

template <class T>
Variant & Variant::assignPlain(T const & value)
{
    if (m_value) {
        detail::modify(*this, [&] { m_value->Set(value); });
    } else {
        replace(Variant(value).release());
    }
    return *this;
}

void Variant::assign(Variant const & source)
{
    if (source.m_value && !(m_value && m_value->IsEqual(*source.m_value))) {
        SetValue(source.m_value.get());
    }
}

void Variant::take(Variant & source, detail::Origin origin)
{
    if (!m_value && source.m_value) {
        replace(source.release());
        return;
    }
    if (!source.m_value || m_value->IsEqual(*source.m_value)) {
        return;
    }

    // Set() would try each level of a container once more than the level above.
    auto * const container = dynamic_cast<VariantContainerValue *>(m_value.get());
    detail::modify(*this, [&] {
        if (container == nullptr || !container->take(*source.m_value, origin)) {
            m_value->Set(*source.m_value);
        }
    });
}

Variant & Variant::require(Variant const & requirement)
{
    if (requirement.IsAssignable(*this)) {
        return *this;
    }

    auto value = cloneValue(requirement.m_value.get());
    if (m_value) {
        try {
            value->Set(*m_value);
        } catch (...) {
            // The value of the requirement stays.
        }
    }
    replace(std::move(value));
    return *this;
}

void Variant::swap(Variant & other)
{
    if (this == &other) {
        return;
    }

    detail::modify(*this, [&] {
        auto value = release();
        install(other.release());
        other.install(std::move(value));
    });
}

void Variant::clear()
{
    if (m_value) {
        detail::modify(*this, [&] { m_value->clear(); });
    }
}

bool Variant::IsAssignable(Variant const & source) const
{
    if (!m_value || !source.m_value) {
        return !m_value;
    }

    try {
        cloneValue(m_value.get())->Set(*source.m_value);
        return true;
    } catch (Exception const &) {
        return false;
    }
}

Variant Variant::GetConverted(Type type) const
{
    Variant converted(type);
    converted.SetValue(m_value.get());
    return converted;
}

bool Variant::IsConvertable(Type type) const
{
    try {
        GetConverted(type);
        return true;
    } catch (Exception const &) {
        return false;
    }
}

void Variant::SetValue(VariantValue const * value)
{
    if (value == nullptr) {
        return;
    }
    if (m_value) {
        detail::modify(*this, [&] { m_value->Set(*value); });
    } else {
        replace(cloneValue(value));
    }
}

void Variant::modified(Observable const & observable, ObservableEvent const & event)
{
    if (&observable != m_value.get()) {
        return;
    }
    if (dynamic_cast<ObservableDestructionEvent const *>(&event) != nullptr) {
        // Somebody else has deleted the payload.
        static_cast<void>(m_value.release());
        return;
    }

    beginModification(event.GetCloned());
    endModification();
}

void Variant::replace(std::unique_ptr<VariantValue> value)
{
    beginModification();
    install(std::move(value));
    endModification();
}

std::unique_ptr<VariantValue> Variant::release()
{
    if (m_value) {
        m_value->removeObserver(this);
    }
    return std::move(m_value);
}

void Variant::install(std::unique_ptr<VariantValue> value)
{
    auto const former = release();
    m_value = std::move(value);
    if (m_value) {
        m_value->addObserver(this);
    }
}

std::ostream & operator<<(std::ostream & stream, Variant const & variant)
{
    return stream << variant.operator std::string();
}
} // namespace tesseralis
