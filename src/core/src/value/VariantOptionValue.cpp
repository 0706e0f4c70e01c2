#include "value/VariantOptionValue.h"

#include "object/Exception.h"
#include "value/VariantTypedValue.h"
#include "value/detail/NumberText.h"
#include "value/detail/VariantFields.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace tesseralis {
namespace {
constexpr unsigned int c_selectionPart = 0;
constexpr unsigned int c_optionsPart = 1;

std::string const & toMessage(std::string const & value)
{
    return value;
}

std::string toMessage(bool value)
{
    return std::to_string(value);
}

std::string toMessage(int value)
{
    return std::to_string(value);
}

std::string toMessage(float value)
{
    return std::to_string(value);
}

template <class T>
std::string toMessage(T const & value)
{
    return detail::toText(value);
}

template <class T>
std::string GetTypeNameOf()
{
    return Variant::GetNameFromType(c_variantType<T>);
}

template <class Keys>
auto GetSelectionKey()
{
    return Keys::GetKey(c_selectionPart, "selection");
}

template <class Keys>
auto GetOptionsKey()
{
    return Keys::GetKey(c_optionsPart, "options");
}
} // namespace

VariantOptionValue::VariantOptionValue(VariantOptionValue const & source) : VariantIndexedValue()
{
    replaceOptions(source);
}

bool VariantOptionValue::IsEqual(VariantValue const & other) const
{
    if (m_selection < 0) {
        return false;
    }
    VariantValue const * const selected = GetValue(*m_elements[m_selection]);
    return selected != nullptr && selected->IsEqual(other);
}

VariantValue * VariantOptionValue::GetCloned() const
{
    return new VariantOptionValue(*this);
}

#define TESSERALIS_BY_OPTION(T)                                                                                        \
    void VariantOptionValue::Set(T const & value)                                                                      \
    {                                                                                                                  \
        selectEqual(value);                                                                                            \
    }                                                                                                                  \
    void VariantOptionValue::Get(T & value) const                                                                      \
    {                                                                                                                  \
        GetSelected(value);                                                                                            \
    }
TESSERALIS_BY_OPTION(Color)
TESSERALIS_BY_OPTION(Matrix)
TESSERALIS_BY_OPTION(Box)
TESSERALIS_BY_OPTION(Quaternion)
TESSERALIS_BY_OPTION(Vector)
TESSERALIS_BY_OPTION(float)
TESSERALIS_BY_OPTION(int)
TESSERALIS_BY_OPTION(bool)
TESSERALIS_BY_OPTION(std::string)
#undef TESSERALIS_BY_OPTION

void VariantOptionValue::Set(VariantValue const & source)
{
    if (auto const * const option = dynamic_cast<VariantOptionValue const *>(&source)) {
        replaceOptions(*option);
        return;
    }
    if (source.GetType() == Variant::Type::Map || source.GetType() == Variant::Type::Array) {
        takeCopy(source);
        return;
    }

    for (unsigned int i = 0; i < GetSize(); ++i) {
        VariantValue const * const option = GetValue(*m_elements[i]);
        if (option != nullptr && option->IsEqual(source)) {
            select(static_cast<int>(i));
            return;
        }
    }
    throw Exception("Unable to assign a value to this variant!");
}

void VariantOptionValue::Get(VariantValue & target) const
{
    target.Set(*this);
}

void VariantOptionValue::clear()
{
    VariantIndexedValue::clear();
    m_selection = c_none;
}

Variant const & VariantOptionValue::GetElement(unsigned int index) const
{
    if (!HasElement(index)) {
        throw Exception("Unable to retrieve a variant with index '%d' from this variant!", static_cast<int>(index));
    }
    return *m_elements[index];
}

Variant & VariantOptionValue::GetElement(unsigned int index)
{
    unsigned int const size = GetSize();
    grow(index);
    if (m_selection < 0) {
        m_selection = static_cast<int>(GetSize()) - 1;
        m_elements[m_selection]->addObserver(this);
    }
    if (GetSize() > size) {
        beginModification();
        endModification();
    }
    return *m_elements[index];
}

void VariantOptionValue::selectText(std::string const & text)
{
    auto const hasText = [&](auto const & option) {
        try {
            return option->operator std::string() == text;
        } catch (Exception const &) {
            return false;
        }
    };
    auto const found = std::find_if(m_elements.begin(), m_elements.end(), hasText);
    if (found != m_elements.end()) {
        select(static_cast<int>(found - m_elements.begin()));
    }
}

template <class T>
void VariantOptionValue::selectEqual(T const & value)
{
    for (unsigned int i = 0; i < GetSize(); ++i) {
        T const option = *m_elements[i];
        if (option == value) {
            select(static_cast<int>(i));
            return;
        }
    }
    char const * const article = c_variantType<T> == Variant::Type::Integer ? "an" : "a";
    throw Exception("Unable to assign %s %s value of '%s' to this variant!", article, GetTypeNameOf<T>().c_str(),
                    std::string(toMessage(value)).c_str());
}

template <class T>
void VariantOptionValue::GetSelected(T & value) const
{
    if (m_selection < 0) {
        char const * const kind = c_variantType<T> == Variant::Type::String ? "string value" : "value";
        throw Exception("Unable to retrieve a %s of type %s from this variant!", kind, GetTypeNameOf<T>().c_str());
    }
    T const selected = *m_elements[m_selection];
    value = selected;
}

void VariantOptionValue::select(int selection)
{
    if (selection == m_selection) {
        return;
    }

    if (m_selection >= 0) {
        m_elements[m_selection]->removeObserver(this);
    }
    m_elements[selection]->addObserver(this);
    m_selection = selection;
    beginModification();
    endModification();
}

void VariantOptionValue::replaceOptions(VariantOptionValue const & source)
{
    // Before anything goes, since the source may be inside this payload.
    Elements clones = GetClones(source.m_elements);
    int const selection = source.m_selection;
    VariantIndexedValue::clear();
    m_elements = std::move(clones);
    m_selection = selection;
    if (m_selection >= 0) {
        m_elements[m_selection]->addObserver(this);
    }
}

bool VariantOptionValue::take(VariantValue & source, detail::Origin origin)
{
    if (source.GetType() == Variant::Type::Map) {
        takeParts<detail::NameKeys>(source, origin);
        return true;
    }
    if (source.GetType() == Variant::Type::Array) {
        takeParts<detail::IndexKeys>(source, origin);
        return true;
    }
    return false;
}

template <class Keys>
void VariantOptionValue::takeParts(VariantValue & parts, detail::Origin origin)
{
    if (parts.HasElement(GetOptionsKey<Keys>())) {
        Variant & options = parts.GetElement(GetOptionsKey<Keys>());
        for (unsigned int i = 0; i < options.GetSize(); ++i) {
            moveElement(GetElement(i), options.GetElement(i), origin);
        }
    }
    if (!parts.HasElement(GetSelectionKey<Keys>())) {
        return;
    }

    Variant const & selection = parts.GetElement(GetSelectionKey<Keys>());
    for (unsigned int i = 0; i < GetSize(); ++i) {
        if (*m_elements[i] == selection) {
            select(static_cast<int>(i));
            return;
        }
    }
}

template <class Keys>
void VariantOptionValue::moveParts(VariantValue & target, detail::Origin origin)
{
    if (m_selection < 0) {
        throw Exception("Unable to retrieve value from this variant!");
    }

    // A copy, since it is one of the options too. A document that nests such copies would grow without bounds.
    if (origin == detail::Origin::Document && m_elements[m_selection]->GetSize() > 0) {
        throw Exception("Unable to retrieve value from this variant!");
    }
    Variant selected(*m_elements[m_selection]);
    moveElement(target.GetElement(GetSelectionKey<Keys>()), selected, origin);
    Variant & options = target.GetElement(GetOptionsKey<Keys>());
    for (unsigned int i = 0; i < GetSize(); ++i) {
        moveElement(options.GetElement(i), *m_elements[i], origin);
    }
}

template void VariantOptionValue::moveParts<detail::NameKeys>(VariantValue &, detail::Origin);
template void VariantOptionValue::moveParts<detail::IndexKeys>(VariantValue &, detail::Origin);
} // namespace tesseralis
