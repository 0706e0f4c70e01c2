#pragma once

#include "object/Export.h"

#include <string>
#include <unordered_map>

namespace tesseralis {
class ArchiveElement;
class Controller;
class Vector;

/// Maps the names of input devices to the numbers under which one plug-in knows cursors and buttons. A device that
/// isn't mapped doesn't reach the plug-in; several devices can have one number. A device that is mapped to consume its
/// events is not offered to further plug-ins once this one has handled it. A plain value without a lock.
class TESSERALIS_API Translator
{
public:
    /// Maps "mouse0.cursor" to cursor 0, and "mouse0.leftbutton", "mouse0.rightbutton" and "mouse0.middlebutton" to the
    /// buttons 0, 1 and 2, none of them to be consumed.
    Translator();
    Translator(Translator const &) = default;
    Translator(Translator &&) = default;
    Translator & operator=(Translator const &) = default;
    Translator & operator=(Translator &&) = default;
    virtual ~Translator() = default;

    /// Replaces what the device was mapped to.
    void addCursorTranslation(std::string const & device, unsigned int index, bool consume);
    void addButtonTranslation(std::string const & device, unsigned int index, bool consume);
    void removeCursorTranslation(std::string const & device);
    void removeButtonTranslation(std::string const & device);
    void clearCursorTranslations();
    void clearButtonTranslations();
    void clearTranslations();

    /// Writes an event into a controller, as the active cursor or button, and tells whether it is to be consumed.
    /// False, with nothing changed, if the device isn't mapped.
    bool translateCursor(Controller & controller, bool & consume, std::string const & device,
                         Vector const & position) const;
    bool translateCursor(Controller & controller, bool & consume, std::string const & device, Vector const & position,
                         float horizontalTilt, float verticalTilt) const;
    bool translateButton(Controller & controller, bool & consume, std::string const & device, bool state) const;
    bool translateButton(Controller & controller, bool & consume, std::string const & device, float pressure) const;

    virtual void store(ArchiveElement & element);
    /// Replaces everything: an element without children maps no device.
    virtual void retrieve(ArchiveElement & element);

private:
    friend class TranslatorButtonIterator;
    friend class TranslatorCursorIterator;
    friend class TranslatorIterator;

    struct Target
    {
        unsigned int index;
        bool consume;
    };
    using Translations = std::unordered_map<std::string, Target>;

    static Target const * Find(Translations const & translations, std::string const & device);
    static void store(Translations const & translations, char const * kind, ArchiveElement & element);
    static void retrieve(Translations & translations, char const * kind, ArchiveElement & element);

    Translations m_cursors;
    Translations m_buttons;
};

/// What the iterators of cursors and of buttons have in common. The order isn't specified; the translator must not
/// change meanwhile.
class TESSERALIS_API TranslatorIterator
{
public:
    bool IsAtEnd() const { return m_position == m_end; }
    std::string const & GetDevice() const { return m_position->first; }
    unsigned int GetIndex() const { return m_position->second.index; }
    bool IsConsumed() const { return m_position->second.consume; }

protected:
    explicit TranslatorIterator(Translator::Translations const & translations)
        : m_position(translations.begin()), m_end(translations.end())
    {
    }
    void advance() { ++m_position; }

private:
    Translator::Translations::const_iterator m_position;
    Translator::Translations::const_iterator m_end;
};

class TESSERALIS_API TranslatorCursorIterator : public TranslatorIterator
{
public:
    explicit TranslatorCursorIterator(Translator const & translator) : TranslatorIterator(translator.m_cursors) {}
    TranslatorCursorIterator & operator++()
    {
        advance();
        return *this;
    }
};

class TESSERALIS_API TranslatorButtonIterator : public TranslatorIterator
{
public:
    explicit TranslatorButtonIterator(Translator const & translator) : TranslatorIterator(translator.m_buttons) {}
    TranslatorButtonIterator & operator++()
    {
        advance();
        return *this;
    }
};
} // namespace tesseralis
