#include "view/Controller.h"
#include "support/Testing.h"

TEST(ControllerBanks, KeepWhatIsWrittenToEachIndexAndNothingBeyond)
{
    Controller controller;
    Controller const untouched(controller);
    float const nowhere = std::numeric_limits<float>::max();
    for (unsigned int const index : {0u, 255u, 256u, 4294967295u}) {
        bool const exists = index < 256;
        EXPECT_EQ(controller.GetCursorPosition(index), exists ? Vector(nowhere, nowhere, nowhere) : Vector());
        EXPECT_FALSE(controller.GetButtonState(index));
        controller.SetActiveCursor(index);
        controller.SetActiveButton(index);
        controller.SetActiveCursorPosition(Vector(1, 2, 3));
        controller.SetActiveCursorHorizontalTilt(0.25f);
        controller.SetActiveCursorVerticalTilt(-0.5f);
        controller.SetActiveButtonPressure(-2.0f);
        EXPECT_EQ(controller.GetActiveCursor(), index);
        EXPECT_EQ(controller.GetActiveCursorPosition(), exists ? Vector(1, 2, 3) : Vector()) << index;
        EXPECT_EQ(controller.GetActiveCursorHorizontalTilt(), exists ? 0.25f : 0.0f) << index;
        EXPECT_EQ(controller.GetActiveCursorVerticalTilt(), exists ? -0.5f : 0.0f) << index;
        EXPECT_EQ(controller.GetActiveButtonPressure(), exists ? -2.0f : 0.0f) << index;
        EXPECT_EQ(controller.GetActiveButtonState(), exists) << "any pressure counts";
        controller.SetActiveButtonState(false);
        EXPECT_EQ(controller.GetButtonPressure(index), 0.0f) << index;
        controller.SetActiveButtonState(true);
        EXPECT_EQ(controller.GetButtonPressure(index), exists ? 1.0f : 0.0f) << index;
        EXPECT_FALSE(untouched.GetButtonState(index)) << "a copy has its own";
    }
}
