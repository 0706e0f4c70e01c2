#include "view/Translator.h"
#include "math/Vector.h"
#include "value/Archive.h"
#include "view/Controller.h"

#include <gtest/gtest.h>

#include <set>

using namespace tesseralis;

namespace {
template <class Iterator>
std::set<std::string> mappings(Translator const & translator)
{
    std::set<std::string> texts;
    for (Iterator i(translator); !i.IsAtEnd(); ++i) {
        texts.insert(i.GetDevice() + ">" + std::to_string(i.GetIndex()) + (i.IsConsumed() ? "!" : ""));
    }
    return texts;
}
auto const cursors = mappings<TranslatorCursorIterator>;
auto const buttons = mappings<TranslatorButtonIterator>;
using Texts = std::set<std::string>;
} // namespace

TEST(TranslatorMappings, AreReplacedAndRemovedByDevice)
{
    Translator translator;
    EXPECT_EQ(cursors(translator), (Texts{"mouse0.cursor>0"}));
    EXPECT_EQ(buttons(translator), (Texts{"mouse0.leftbutton>0", "mouse0.middlebutton>2", "mouse0.rightbutton>1"}));
    translator.addCursorTranslation("pen", 0, true);
    translator.removeCursorTranslation("mouse0.cursor");
    translator.removeCursorTranslation("unknown");
    translator.clearButtonTranslations();
    translator.addButtonTranslation("key", 7, false);
    translator.addButtonTranslation("key", 8, true);
    translator.removeButtonTranslation("mouse0.leftbutton");
    EXPECT_EQ(cursors(translator), (Texts{"pen>0!"}));
    EXPECT_EQ(buttons(translator), (Texts{"key>8!"}));
    translator.clearTranslations();
    EXPECT_EQ(cursors(translator).size() + buttons(translator).size(), 0u);
}

TEST(TranslatorTranslation, WritesTheActiveCursorOrButton)
{
    Translator translator;
    translator.addCursorTranslation("pen", 3, true);
    Controller controller;
    bool consume = false;
    EXPECT_TRUE(translator.translateCursor(controller, consume, "pen", Vector(1, 2, 3), 0.25f, 0.5f));
    EXPECT_TRUE(consume);
    EXPECT_TRUE(translator.translateCursor(controller, consume, "pen", Vector(4, 5, 6)));
    EXPECT_EQ(controller.GetActiveCursor(), 3u);
    EXPECT_EQ(controller.GetCursorPosition(3), Vector(4, 5, 6));
    EXPECT_EQ(controller.GetCursorHorizontalTilt(3), 0.25f) << "stays where none is told";
    EXPECT_EQ(controller.GetCursorVerticalTilt(3), 0.5f);

    EXPECT_TRUE(translator.translateButton(controller, consume, "mouse0.rightbutton", 0.5f));
    EXPECT_FALSE(consume);
    EXPECT_EQ(controller.GetActiveButton(), 1u);
    EXPECT_EQ(controller.GetButtonPressure(1), 0.5f);
    EXPECT_TRUE(translator.translateButton(controller, consume, "mouse0.rightbutton", true));
    EXPECT_EQ(controller.GetButtonPressure(1), 1.0f);

    consume = true;
    EXPECT_FALSE(translator.translateButton(controller, consume, "pen", true));
    EXPECT_FALSE(translator.translateCursor(controller, consume, "mouse0.leftbutton", Vector(), 1.0f, 1.0f));
    EXPECT_TRUE(consume);
    EXPECT_EQ(controller.GetActiveButton(), 1u);
    EXPECT_EQ(controller.GetActiveCursor(), 3u);
}

TEST(TranslatorArchive, HoldsTheWholeMapping)
{
    Translator translator;
    translator.addCursorTranslation("pen", 4294967295u, true);
    translator.addButtonTranslation("key", 0, true);
    Archive archive;
    ArchiveElement element = ArchiveElement(archive).store("translator");
    translator.store(element);

    Translator read;
    read.addCursorTranslation("gone", 9, true);
    read.retrieve(element);
    EXPECT_EQ(cursors(read), (Texts{"mouse0.cursor>0", "pen>4294967295!"}));
    EXPECT_EQ(buttons(read), (Texts{"key>0!", "mouse0.leftbutton>0", "mouse0.middlebutton>2", "mouse0.rightbutton>1"}));

    for (char const * index : {"", "-1", "x", "99999999999"}) {
        ArchiveElement cursor = element.store("cursor");
        cursor.SetAttribute("index", index);
        cursor.SetAttribute("device", "pen");
        cursor.SetAttribute("consume", "yes");
        read.retrieve(element);
        EXPECT_EQ(cursors(read), (Texts{"pen>0"})) << index;
    }
    read.retrieve(element);
    EXPECT_EQ(cursors(read).size() + buttons(read).size(), 0u);
}
