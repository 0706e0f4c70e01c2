#include "object/Dispatcher.h"
#include "object/Dispatchable.h"
#include "object/Tesseralis.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

using namespace tesseralis;

namespace {
/// Takes posts on any thread and counts them, and its calls, on the thread that pumps.
class Task : public Dispatchable
{
public:
    ~Task() override { removeDispatchable(); }
    void post()
    {
        MutexLocker locker(m_mutex);
        ++m_posts;
        addDispatchable();
    }
    void dispatch() override
    {
        MutexLocker locker(m_mutex);
        ++calls;
        received += std::exchange(m_posts, 0);
        reaction();
    }

    int calls = 0;
    unsigned int received = 0;
    std::function<void()> reaction = [] {};

private:
    Mutex m_mutex;
    unsigned int m_posts = 0;
};

std::unique_ptr<Dispatcher> makeDispatcher(unsigned int attributes = ObjectAttribute::Registered)
{
    return std::make_unique<Dispatcher>(attributes);
}
} // namespace

TEST(DispatcherSearch, FindsTheFirstInTheRegistrysOrderAsItIsNow)
{
    std::array<Task, 4> tasks;
    auto const stranger = makeDispatcher(0);
    tasks[3].addDispatchable();
    EXPECT_EQ(stranger->GetDispatchableCount(), 0u);

    Object const other(ObjectAttribute::Registered);
    auto first = makeDispatcher();
    auto const second = makeDispatcher();
    registerObjectTypes();
    EXPECT_TRUE(Tesseralis::Get().HasObjectType(first->GetObjectName()));
    tasks[0].addDispatchable();
    Tesseralis::Get().moveObjectBefore(second.get(), first.get());
    tasks[1].addDispatchable();
    Tesseralis::Get().moveObjectAfter(second.get(), first.get());
    tasks[2].addDispatchable();
    EXPECT_TRUE(first->HasDispatchable(&tasks[0]) && second->HasDispatchable(&tasks[1]));
    EXPECT_TRUE(first->HasDispatchable(&tasks[2]) && !second->HasDispatchable(&tasks[2]));

    second->addDispatchable(&tasks[0]);
    tasks[0].removeDispatchable();
    EXPECT_EQ(first->GetDispatchableCount() + second->GetDispatchableCount(), 2u);
    first.reset();
    tasks[0].addDispatchable();
    EXPECT_TRUE(second->HasDispatchable(&tasks[0]));
}

TEST(DispatcherPass, LetsDispatchablesComeAndGo)
{
    auto const dispatcher = makeDispatcher();
    std::array<Task, 4> tasks; // their pointers rise
    tasks[1].reaction = [&] {
        tasks[3].addDispatchable();
        for (int const i : {0, 1, 2}) {
            tasks[i].removeDispatchable();
        }
    };
    auto const callsAfterAPass = [&] {
        dispatcher->dispatch();
        return std::vector<int>{tasks[0].calls, tasks[1].calls, tasks[2].calls, tasks[3].calls};
    };
    for (int const i : {2, 0, 1, 1}) {
        tasks[i].addDispatchable();
    }
    EXPECT_EQ(callsAfterAPass(), std::vector<int>({1, 1, 1, 0}));
    EXPECT_EQ(callsAfterAPass(), std::vector<int>({1, 1, 1, 1}));
    dispatcher->dispatch(&tasks[0]);
    EXPECT_EQ(tasks[0].calls, 2);

    tasks[3].reaction = [] { throw 1; };
    EXPECT_THROW(dispatcher->dispatch(), int);
    EXPECT_TRUE(dispatcher->HasDispatchable(&tasks[3]));
}

TEST(DispatcherThreads, LoseNoPostWhileDispatchersComeAndGo)
{
    constexpr unsigned int c_posts = 125000;
    std::array<Task, 3> tasks;
    for (Task & task : tasks) {
        task.reaction = [&] { task.removeDispatchable(); };
    }
    std::atomic<int> running = 8;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&, i] {
            for (unsigned int post = 0; post < c_posts; ++post) {
                tasks[(i + post) % tasks.size()].post();
            }
            --running;
        });
    }
    auto dispatcher = makeDispatcher();
    for (int pass = 0; running > 0; ++pass) {
        dispatcher->dispatch();
        auto next = pass % 64 == 0 ? makeDispatcher() : nullptr;
        dispatcher.swap(next ? next : dispatcher);
    }
    for (std::thread & thread : threads) {
        thread.join();
    }

    // What waited in a dispatcher that went away comes with the next post.
    unsigned int received = 0;
    for (Task & task : tasks) {
        task.post();
        dispatcher->dispatch();
        received += task.received;
    }
    EXPECT_EQ(received, 8 * c_posts + tasks.size());
    EXPECT_EQ(dispatcher->GetDispatchableCount(), 0u);
}
