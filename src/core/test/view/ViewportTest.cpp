#include "view/Viewport.h"
#include "support/Testing.h"
#include "view/Viewer.h"

TEST(Viewport, InitialisesTheViewersThatItHas)
{
    Viewport first(0u);
    Viewport second(0u);
    auto * const viewer = new Viewer(0u);
    Texts order;
    Recorder atFirst(first);
    Recorder atSecond(second);
    Recorder atViewer(*viewer);
    atFirst.SetReaction([&](Observable const &, ObservableEvent const & event) {
        EXPECT_EQ(dynamic_cast<ViewportViewerEvent const &>(event).GetViewer(), viewer);
        EXPECT_TRUE(first.HasViewer(viewer) && viewer->GetViewport() == &first && viewer->IsInitialized());
    });
    for (Recorder * const recorder : {&atSecond, &atViewer}) {
        recorder->SetReaction(
            [&](Observable const &, ObservableEvent const & event) { order.push_back(typeid(event).name()); });
    }
    viewer->SetViewport(nullptr);
    first.add(viewer);
    first.add(viewer);
    EXPECT_EQ(atFirst.GetCount(), 1u);
    order.clear();
    viewer->SetViewport(&second);
    EXPECT_EQ(order, (Texts{typeid(ViewerUninitializeEvent).name(), typeid(ViewerInitializeEvent).name(),
                            typeid(ViewportAdditionEvent).name()}));
    EXPECT_NE(atFirst.GetAs<ViewportRemovalEvent>(1), nullptr);
    first.remove(viewer);
    EXPECT_EQ(&*ViewportIterator(second), viewer);

    Viewport third(0u);
    atSecond.SetReaction(
        [&](Observable const &, ObservableEvent const &) { atSecond.SetReaction({}), third.add(viewer); });
    first.add(viewer);
    EXPECT_TRUE(!third.HasViewer(viewer) && first.HasViewer(viewer)) << "has been put elsewhere on its way";
    second.add(viewer);
    atSecond.SetReaction([](Observable const &, ObservableEvent const &) { throw Exception("No."); });
    EXPECT_EQ(logOf([&] { delete viewer; }), "No.\n\n");
    EXPECT_TRUE(ViewportIterator(second).IsAtEnd());
}

TEST(Viewport, OwnsItsViewers)
{
    Recorder atViewers;
    for (bool const clear : {true, false}) {
        Viewport viewport(0u);
        for (int i = 0; i < 3; ++i) {
            auto * const viewer = new Viewer(0u);
            viewer->addObserver(&atViewers);
            viewport.add(viewer);
        }
        delete &*ViewportIterator(viewport);
        if (clear) {
            viewport.clearViewers();
            EXPECT_TRUE(ViewportIterator(viewport).IsAtEnd());
        }
    }
    EXPECT_EQ(atViewers.GetCountOf<ObservableDestructionEvent>(), 6u);
}
