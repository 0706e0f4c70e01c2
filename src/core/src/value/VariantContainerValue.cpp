#include "value/VariantContainerValue.h"

#include "value/detail/NumberText.h"

namespace tesseralis {
void VariantContainerValue::modified(Observable const &, ObservableEvent const &)
{
    beginModification();
    endModification();
}

bool VariantContainerValue::take(VariantValue &, detail::Origin)
{
    return false;
}

bool VariantContainerValue::takeCopy(VariantValue const & source)
{
    // An element may refuse what it is to take: a clone tells before anything is changed here. What is nested needs no
    // trial of its own.
    std::unique_ptr<VariantValue> const copy(source.GetCloned());
    std::unique_ptr<VariantValue> const trialCopy(source.GetCloned());
    std::unique_ptr<VariantContainerValue> const trial(static_cast<VariantContainerValue *>(GetCloned()));
    return trial->take(*trialCopy, detail::Origin::Program) && take(*copy, detail::Origin::Program);
}

VariantIndexedValue::~VariantIndexedValue()
{
    shrink(0);
}

void VariantIndexedValue::clear()
{
    shrink(0);
}

Variant const & VariantIndexedValue::GetElement(std::string const & name) const
{
    unsigned int index = 0;
    if (!detail::parseIndex(name, index)) {
        throwNoElement(name);
    }
    return GetElement(index);
}

Variant & VariantIndexedValue::GetElement(std::string const & name)
{
    unsigned int index = 0;
    if (!detail::parseIndex(name, index)) {
        throwNoElement(name);
    }
    return GetElement(index);
}

Variant const & VariantIndexedValue::GetElement(unsigned int index) const
{
    if (!HasElement(index)) {
        throwNoElement(index);
    }
    return *m_elements[index];
}

bool VariantIndexedValue::HasElement(std::string const & name) const
{
    unsigned int index = 0;
    return detail::parseIndex(name, index) && HasElement(index);
}

std::string VariantIndexedValue::GetElementName(unsigned int index) const
{
    return HasElement(index) ? std::to_string(index) : std::string();
}

VariantIndexedValue::Elements VariantIndexedValue::GetClones(Elements const & elements)
{
    Elements clones;
    clones.reserve(elements.size());
    for (auto const & element : elements) {
        clones.push_back(std::make_unique<Variant>(*element));
    }
    return clones;
}

void VariantIndexedValue::grow(unsigned int index)
{
    if (!HasElement(index) && index - GetSize() >= c_largestGrowth) {
        throwNoElement(index);
    }
    while (!HasElement(index)) {
        m_elements.push_back(std::make_unique<Variant>());
    }
}

void VariantIndexedValue::observe(unsigned int first)
{
    for (unsigned int i = first; i < GetSize(); ++i) {
        m_elements[i]->addObserver(this);
    }
}

void VariantIndexedValue::shrink(unsigned int size)
{
    while (GetSize() > size) {
        // It must not announce its end to this payload.
        m_elements.back()->removeObserver(this);
        m_elements.pop_back();
    }
}
} // namespace tesseralis
