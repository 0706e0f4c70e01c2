#include "view/Translator.h"
#include "math/Vector.h"
#include "support/Testing.h"
#include "value/Archive.h"
#include "view/Controller.h"

namespace {
template <class Iterator>
Texts sorted(Translator const & translator)
{
    Texts texts;
    for (Iterator i(translator); !i.IsAtEnd(); ++i) {
        texts.push_back(i.GetDevice() + ">" + std::to_string(i.GetIndex()) + (i.IsConsumed() ? "!" : ""));
    }
    std::sort(texts.begin(), texts.end());
    return texts;
}
auto const cursors = sorted<TranslatorCursorIterator>;
auto const buttons = sorted<TranslatorButtonIterator>;
Texts const c_buttons = {"mouse0.leftbutton>0", "mouse0.middlebutton>2", "mouse0.rightbutton>1"};
} // namespace

TEST(Translator, WritesMappedEventsAndNothingElse)
{
    Translator translator;
    translator.addCursorTranslation("pen", 2, false);
    translator.addCursorTranslation("pen", 3, true);
    Controller controller;
    bool consume = false;
    EXPECT_TRUE(translator.translateCursor(controller, consume, "pen", Vector(1, 2, 3), 0.25f, 0.5f) && consume);
    EXPECT_TRUE(translator.translateCursor(controller, consume, "pen", Vector(4, 5, 6)));
    EXPECT_EQ(controller.GetCursorPosition(3), Vector(4, 5, 6));
    EXPECT_EQ(controller.GetCursorHorizontalTilt(3) * 2, controller.GetCursorVerticalTilt(3)) << "stay if not told";
    EXPECT_TRUE(translator.translateButton(controller, consume, "mouse0.rightbutton", true) && !consume);
    EXPECT_TRUE(translator.translateButton(controller, consume, "mouse0.middlebutton", 0.5f));
    EXPECT_EQ(controller.GetButtonPressure(1) + controller.GetButtonPressure(2), 1.5f);

    consume = true;
    EXPECT_FALSE(translator.translateButton(controller, consume, "pen", true));
    EXPECT_FALSE(translator.translateCursor(controller, consume, "mouse0.leftbutton", Vector(), 1.0f, 1.0f));
    EXPECT_TRUE(consume && controller.GetActiveButton() == 2 && controller.GetActiveCursor() == 3);
}

TEST(Translator, IsStoredAsTheWholeMapping)
{
    Translator translator;
    translator.addCursorTranslation("pen", 4294967295u, true);
    translator.removeCursorTranslation("mouse0.cursor");
    translator.removeButtonTranslation("unknown");
    Archive archive;
    ArchiveElement element = ArchiveElement(archive).store("translator");
    translator.store(element);
    Translator read;
    read.retrieve(element);
    EXPECT_EQ(cursors(read), (Texts{"pen>4294967295!"}));
    EXPECT_EQ(buttons(read), c_buttons);

    for (char const * index : {"", "-1", "x", "99999999999"}) {
        ArchiveElement cursor = element.store("cursor");
        cursor.SetAttribute("index", index);
        cursor.SetAttribute("device", "pen");
        cursor.SetAttribute("consume", "yes");
        read.retrieve(element);
        EXPECT_EQ(cursors(read), (Texts{"pen>0"})) << index;
        EXPECT_EQ(buttons(read), Texts());
    }
}
