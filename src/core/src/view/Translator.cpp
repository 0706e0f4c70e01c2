#include "view/Translator.h"

#include "value/Archive.h"
#include "view/Controller.h"

#include <charconv>
#include <set>
#include <tuple>

namespace tesseralis {
Translator::Translator()
{
    addCursorTranslation("mouse0.cursor", 0, false);
    addButtonTranslation("mouse0.leftbutton", 0, false);
    addButtonTranslation("mouse0.rightbutton", 1, false);
    addButtonTranslation("mouse0.middlebutton", 2, false);
}

void Translator::addCursorTranslation(std::string const & device, unsigned int index, bool consume)
{
    m_cursors[device] = {index, consume};
}

void Translator::addButtonTranslation(std::string const & device, unsigned int index, bool consume)
{
    m_buttons[device] = {index, consume};
}

void Translator::removeCursorTranslation(std::string const & device)
{
    m_cursors.erase(device);
}

void Translator::removeButtonTranslation(std::string const & device)
{
    m_buttons.erase(device);
}

void Translator::clearCursorTranslations()
{
    m_cursors.clear();
}

void Translator::clearButtonTranslations()
{
    m_buttons.clear();
}

void Translator::clearTranslations()
{
    clearCursorTranslations();
    clearButtonTranslations();
}

Translator::Target const * Translator::Find(Translations const & translations, std::string const & device)
{
    auto const found = translations.find(device);
    return found == translations.end() ? nullptr : &found->second;
}

bool Translator::translateCursor(Controller & controller, bool & consume, std::string const & device,
                                 Vector const & position) const
{
    Target const * const target = Find(m_cursors, device);
    if (target == nullptr) {
        return false;
    }
    consume = target->consume;
    controller.SetActiveCursor(target->index);
    controller.SetActiveCursorPosition(position);
    return true;
}

bool Translator::translateCursor(Controller & controller, bool & consume, std::string const & device,
                                 Vector const & position, float horizontalTilt, float verticalTilt) const
{
    if (!translateCursor(controller, consume, device, position)) {
        return false;
    }
    controller.SetActiveCursorHorizontalTilt(horizontalTilt);
    controller.SetActiveCursorVerticalTilt(verticalTilt);
    return true;
}

bool Translator::translateButton(Controller & controller, bool & consume, std::string const & device, bool state) const
{
    return translateButton(controller, consume, device, state ? 1.0f : 0.0f);
}

bool Translator::translateButton(Controller & controller, bool & consume, std::string const & device,
                                 float pressure) const
{
    Target const * const target = Find(m_buttons, device);
    if (target == nullptr) {
        return false;
    }
    consume = target->consume;
    controller.SetActiveButton(target->index);
    controller.SetActiveButtonPressure(pressure);
    return true;
}

void Translator::store(ArchiveElement & element)
{
    store(m_cursors, "cursor", element);
    store(m_buttons, "button", element);
}

void Translator::store(Translations const & translations, char const * kind, ArchiveElement & element)
{
    std::set<std::tuple<unsigned int, std::string, bool>> sorted; // the same order each time
    for (auto const & [device, target] : translations) {
        sorted.emplace(target.index, device, target.consume);
    }
    for (auto const & [index, device, consume] : sorted) {
        ArchiveElement child = element.store(kind);
        child.SetAttribute("index", std::to_string(index));
        child.SetAttribute("device", device);
        if (consume) {
            child.SetAttribute("consume", "true");
        }
    }
}

void Translator::retrieve(ArchiveElement & element)
{
    retrieve(m_cursors, "cursor", element);
    retrieve(m_buttons, "button", element);
}

void Translator::retrieve(Translations & translations, char const * kind, ArchiveElement & element)
{
    translations.clear();
    for (ArchiveElement child = element.retrieve(kind); !child.IsEmpty(); child = element.retrieve(kind)) {
        unsigned int index = 0;
        std::string const text = child.GetAttribute("index");
        std::from_chars(text.data(), text.data() + text.size(), index);
        translations[child.GetAttribute("device")] = {index, child.GetAttribute("consume") == "true"};
    }
}
} // namespace tesseralis
