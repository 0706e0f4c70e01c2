#include "view/Viewport.h"
#include "object/Exception.h"
#include "support/Output.h"
#include "support/Recorder.h"
#include "view/Viewer.h"

#include <memory>

using namespace tesseralis;
using namespace tesseralis::test;

TEST(ViewportMembership, MovesAViewerAndInitialisesIt)
{
    Viewport first(0u);
    Viewport second(0u);
    auto * const viewer = new Viewer(0u);
    std::string log;
    auto const note = [&](std::string const & name) {
        return [&log, name](Observable const &, ObservableEvent const & event) {
            log += name + typeid(event).name() + " ";
        };
    };
    Recorder atFirst(first);
    Recorder atSecond(second);
    Recorder atViewer(*viewer);
    atFirst.SetReaction([&](Observable const &, ObservableEvent const & event) {
        auto const & change = dynamic_cast<ViewportViewerEvent const &>(event);
        EXPECT_EQ(change.GetViewer(), viewer);
        EXPECT_TRUE(first.HasViewer(viewer) && viewer->GetViewport() == &first && viewer->IsInitialized());
    });
    atSecond.SetReaction(note("second:"));
    atViewer.SetReaction(note("viewer:"));

    viewer->SetViewport(nullptr);
    first.add(viewer);
    first.add(viewer);
    EXPECT_EQ(atFirst.GetCount(), 1u);
    log.clear();
    viewer->SetViewport(&second);
    EXPECT_EQ(log, std::string("viewer:") + typeid(ViewerUninitializeEvent).name() + " viewer:" +
                       typeid(ViewerInitializeEvent).name() + " second:" + typeid(ViewportAdditionEvent).name() + " ");
    EXPECT_NE(atFirst.GetAs<ViewportAdditionEvent>(0), nullptr);
    EXPECT_NE(atFirst.GetAs<ViewportRemovalEvent>(1), nullptr);
    EXPECT_EQ(&*ViewportIterator(second), viewer);

    first.remove(viewer);
    EXPECT_EQ(viewer->GetViewport(), &second);
    viewer->SetViewport(nullptr);
    EXPECT_FALSE(viewer->IsInitialized());
    EXPECT_TRUE(ViewportIterator(second).IsAtEnd());
    delete viewer;
}

TEST(ViewportMembership, EndsWithTheViewerOrWithTheViewport)
{
    auto viewport = std::make_unique<Viewport>(0u);
    Recorder recorder(*viewport);
    Recorder atViewers;
    for (int i = 0; i < 3; ++i) {
        auto * const viewer = new Viewer(0u);
        viewer->addObserver(&atViewers);
        viewport->add(viewer);
    }
    delete &*ViewportIterator(*viewport);
    EXPECT_EQ(recorder.GetCountOf<ViewportRemovalEvent>(), 1u);
    viewport->clearViewers();
    EXPECT_EQ(recorder.GetCountOf<ViewportRemovalEvent>(), 3u);
    EXPECT_EQ(atViewers.GetCountOf<ObservableDestructionEvent>(), 3u);
    EXPECT_TRUE(ViewportIterator(*viewport).IsAtEnd());

    auto * const viewer = new Viewer(0u);
    viewer->addObserver(&atViewers);
    viewport->add(viewer);
    viewport.reset();
    EXPECT_EQ(atViewers.GetCountOf<ObservableDestructionEvent>(), 4u);
}

TEST(ViewportObserver, ThatThrowsKeepsNoViewerFromComingOrGoing)
{
    Viewport viewport(0u);
    auto * const viewer = new Viewer(0u);
    Recorder atViewer(*viewer);
    Recorder atViewport(viewport);
    auto const refuse = [](Observable const &, ObservableEvent const &) { throw Exception("No."); };
    atViewer.SetReaction(refuse);
    EXPECT_THROW(viewport.add(viewer), Exception);
    EXPECT_TRUE(viewport.HasViewer(viewer) && viewer->IsInitialized());
    EXPECT_EQ(atViewport.GetCountOf<ViewportAdditionEvent>(), 1u);
    atViewer.SetReaction({});
    atViewport.SetReaction(refuse);
    EXPECT_EQ(outputOf([&] { delete viewer; }).first, "No.\n\n");
    EXPECT_TRUE(ViewportIterator(viewport).IsAtEnd());
}
