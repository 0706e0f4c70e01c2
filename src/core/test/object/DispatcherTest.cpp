#include "object/Dispatcher.h"
#include "object/Dispatchable.h"
#include "object/Tesseralis.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

using namespace tesseralis;

namespace {
class Task : public Dispatchable
{
public:
    ~Task() override { removeDispatchable(); }
    void dispatch() override
    {
        ++calls;
        reaction();
    }

    int calls = 0;
    std::function<void()> reaction = [] {};
};

/// Takes posts on any thread, and counts them on the thread that pumps.
class Mailbox : public Dispatchable
{
public:
    ~Mailbox() override { removeDispatchable(); }
    void post()
    {
        MutexLocker locker(m_mutex);
        ++m_waiting;
        addDispatchable();
    }
    void dispatch() override
    {
        MutexLocker locker(m_mutex);
        received += m_waiting;
        m_waiting = 0;
        removeDispatchable();
    }

    unsigned int received = 0;

private:
    Mutex m_mutex;
    unsigned int m_waiting = 0;
};

class HostDispatcher : public Dispatcher
{
public:
    HostDispatcher() : Dispatcher(static_cast<Dispatcher *>(nullptr)) { constructDispatcher("host", 1); }
    ~HostDispatcher() override { destroyDispatcher(); }
};

std::unique_ptr<Dispatcher> makeDispatcher(unsigned int attributes = ObjectAttribute::Registered)
{
    return std::make_unique<Dispatcher>(attributes);
}
} // namespace

TEST(DispatcherSearch, FindsNothingWithoutARegisteredDispatcher)
{
    auto const stranger = makeDispatcher(0);
    Task task;
    task.addDispatchable();
    task.removeDispatchable();
    EXPECT_EQ(stranger->GetDispatchableCount(), 0u);
    stranger->dispatch();
    EXPECT_EQ(task.calls, 0);
}

TEST(DispatcherSearch, FindsTheFirstInTheRegistrysOrderAsItIsNow)
{
    Object const other(ObjectAttribute::Registered);
    auto first = makeDispatcher();
    auto const second = std::make_unique<HostDispatcher>();
    EXPECT_EQ(first->GetObjectName(), "dispatcher");
    EXPECT_EQ(first->GetObjectTypeName(), "dispatcher");

    std::array<Task, 3> tasks;
    tasks[0].addDispatchable();
    Tesseralis::Get().moveObjectBefore(second.get(), first.get());
    tasks[1].addDispatchable();
    Tesseralis::Get().moveObjectAfter(second.get(), first.get());
    tasks[2].addDispatchable();
    EXPECT_TRUE(first->HasDispatchable(&tasks[0]) && second->HasDispatchable(&tasks[1]));
    EXPECT_TRUE(first->HasDispatchable(&tasks[2]) && !second->HasDispatchable(&tasks[2]));

    second->addDispatchable(&tasks[0]);
    tasks[0].removeDispatchable();
    EXPECT_EQ(first->GetDispatchableCount(), 1u);
    EXPECT_EQ(second->GetDispatchableCount(), 1u);

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
    for (int const i : {2, 0, 1, 1}) {
        tasks[i].addDispatchable();
    }

    auto const callsAfterAPass = [&] {
        dispatcher->dispatch();
        return std::vector<int>{tasks[0].calls, tasks[1].calls, tasks[2].calls, tasks[3].calls};
    };
    EXPECT_EQ(callsAfterAPass(), std::vector<int>({1, 1, 1, 0}));
    EXPECT_EQ(callsAfterAPass(), std::vector<int>({1, 1, 1, 1}));
    dispatcher->dispatch(&tasks[0]);
    EXPECT_EQ(tasks[0].calls, 2);
}

TEST(DispatcherPass, EndsWithAnExceptionAndGoesOnInTheNextOne)
{
    auto const dispatcher = makeDispatcher();
    std::array<Task, 2> tasks;
    tasks[0].reaction = [&] {
        tasks[0].removeDispatchable();
        throw 1;
    };
    tasks[0].addDispatchable();
    tasks[1].addDispatchable();
    EXPECT_THROW(dispatcher->dispatch(), int);
    EXPECT_EQ(tasks[1].calls, 0);
    dispatcher->dispatch();
    EXPECT_EQ(tasks[0].calls, 1);
    EXPECT_EQ(tasks[1].calls, 1);
}

TEST(DispatcherThreads, LoseNoPostWhileDispatchersComeAndGo)
{
    constexpr unsigned int c_posts = 125000;
    std::array<Mailbox, 3> mailboxes;
    std::atomic<int> running = 8;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&, i] {
            for (unsigned int post = 0; post < c_posts; ++post) {
                mailboxes[(i + post) % mailboxes.size()].post();
            }
            --running;
        });
    }

    auto dispatcher = makeDispatcher();
    for (int pass = 0; running > 0; ++pass) {
        dispatcher->dispatch();
        if (pass % 64 == 0) {
            auto next = makeDispatcher();
            dispatcher.swap(next);
        }
    }
    for (std::thread & thread : threads) {
        thread.join();
    }

    // What waited in a dispatcher that went away comes with the next post.
    unsigned int received = 0;
    for (Mailbox & mailbox : mailboxes) {
        mailbox.post();
        dispatcher->dispatch();
        received += mailbox.received;
    }
    EXPECT_EQ(received, 8 * c_posts + mailboxes.size());
    EXPECT_EQ(dispatcher->GetDispatchableCount(), 0u);
}
