#include "math/Vector.h"
#include "support/Testing.h"
#include "support/ViewDoubles.h"

TEST(OrbitInteractor, FollowsACursorWithinItsLimits)
{
    Log log;
    ViewerDouble viewer(log);
    auto * const orbit = new InteractorPlugin("Orbit", ObjectAttribute::All);
    orbit->SetFilename(ORBIT_MODULE);
    orbit->GetProperty("Enabled") = true;
    viewer.add(static_cast<Plugin *>(orbit));
    viewer.reshape(200, 100);
    auto const stateAt = [&](float x, float y) {
        viewer.cursor("mouse0.cursor", Vector(x, y, 0), 0.0f, 0.0f);
        auto const text = [&](char const * name) -> std::string { return orbit->GetProperty(name); };
        return text("Azimuth") + " " + text("Elevation") + " " + text("Zoom");
    };

    viewer.button("mouse0.leftbutton", true);
    EXPECT_EQ(stateAt(50, 50), "0 0 1") << "the first place is no way";
    EXPECT_EQ(stateAt(60, 45), "18 9 1");
    EXPECT_EQ(stateAt(200, -1000), "-90 90 1") << "270 degrees are 90 the other way";
    viewer.button("mouse0.leftbutton", false);
    EXPECT_EQ(stateAt(0, 0), "-90 90 1");
    viewer.button("mouse0.rightbutton", 0.5f);
    EXPECT_EQ(stateAt(10, 50), "-90 90 2");
    EXPECT_EQ(stateAt(10, 1e9f), "-90 90 10");
    EXPECT_EQ(stateAt(10, -1e30f), "-90 90 0.1");
}
