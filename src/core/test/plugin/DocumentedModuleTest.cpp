// Uses the module that docs/plugins.md shows: the one built in this tree, or another build of it that the environment
// names.

#include "plugin/Environment.h"
#include "plugin/InteractorPlugin.h"
#include "support/Modules.h"
#include "value/Variant.h"
#include "view/Controller.h"

#include <cstdlib>

TEST(DocumentedModule, StepsUntilTheLastSlice)
{
    char const * const other = std::getenv("STEPPER_MODULE");
    std::string const file = other != nullptr ? other : STEPPER_MODULE;
    registerObjectTypes();
    Environment environment(0u);
    auto * const plugin = dynamic_cast<InteractorPlugin *>(Plugin::createPlugin(file));
    ASSERT_NE(plugin, nullptr) << file;
    environment.add(plugin);
    ASSERT_TRUE(plugin->IsInitialized());
    EXPECT_EQ(plugin->GetObjectName(), "Stepper");
    EXPECT_EQ(plugin->GetButtonRole(0), "Next slice");

    Controller controller;
    EXPECT_FALSE(plugin->button(controller));
    controller.SetActiveButtonState(true);
    EXPECT_TRUE(plugin->button(controller));
    EXPECT_EQ(plugin->GetProperty("Slice"), Variant(1));

    plugin->GetProperty("Slice") = 99;
    EXPECT_NE(outputOf([&] { EXPECT_FALSE(plugin->button(controller)); }).first.find("value of 100"),
              std::string::npos);
    plugin->suspend();
    EXPECT_FALSE(isMapped(file));
    plugin->resume();
    EXPECT_EQ(plugin->GetProperty("Slice"), Variant(99));
    EXPECT_TRUE(plugin->IsInitialized());
}
