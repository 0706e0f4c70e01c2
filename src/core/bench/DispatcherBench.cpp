// What a pass costs, how long a post and a file take to reach who waits for them, and what waiting costs. The rows of
// files tell what comes on top of the pause of 250 milliseconds; the floor is a blocking read of inotify on a thread.

#include "object/Dispatchable.h"
#include "object/Dispatcher.h"
#include "object/FileMonitor.h"
#include "object/Observer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>
#include <vector>

#include <sys/inotify.h>
#include <unistd.h>

using namespace tesseralis;

namespace {
using Clock = std::chrono::steady_clock;

constexpr double c_pause = 0.25;
constexpr std::chrono::milliseconds c_gap(20); // between changes, so that each finds the other threads asleep

class Task : public Dispatchable
{
public:
    ~Task() override { removeDispatchable(); }
    void dispatch() override { removeDispatchable(); }
};

class Counter : public Observer
{
public:
    void modified(Observable const &, ObservableEvent const &) override { ++count; }
    int count = 0;
};

/// A directory with a file that is written to.
class Place
{
public:
    Place()
    {
        std::filesystem::create_directories(directory);
        m_stream.open(file);
    }
    ~Place() { std::filesystem::remove_all(directory); }
    /// Returns the time just before.
    Clock::time_point write()
    {
        m_stream.seekp(0);
        m_stream << "text";
        Clock::time_point const now = Clock::now();
        m_stream.flush();
        return now;
    }

    std::string const directory =
        (std::filesystem::temp_directory_path() / ("tesseralis.bench" + std::to_string(getpid()))).string();
    std::string const file = directory + "/file";

private:
    std::ofstream m_stream;
};

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Sets the times of iterations and tells their median and their minimum, in microseconds.
class Times
{
public:
    explicit Times(benchmark::State & state) : m_state(state) {}
    ~Times()
    {
        std::sort(m_times.begin(), m_times.end());
        m_state.counters["median"] = m_times[m_times.size() / 2] * 1e6;
        m_state.counters["least"] = m_times.front() * 1e6;
    }
    void add(double seconds)
    {
        m_state.SetIterationTime(seconds);
        m_times.push_back(seconds);
    }

private:
    benchmark::State & m_state;
    std::vector<double> m_times;
};

void passOverNothing(benchmark::State & state)
{
    Dispatcher dispatcher(ObjectAttribute::Registered);
    for (auto _ : state) {
        dispatcher.dispatch();
    }
}

void postAndPass(benchmark::State & state)
{
    Dispatcher dispatcher(ObjectAttribute::Registered);
    std::vector<Task> tasks(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        for (Task & task : tasks) {
            task.addDispatchable();
        }
        dispatcher.dispatch();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void fileToThread(benchmark::State & state)
{
    Place place;
    Times times(state);
    int const events = inotify_init1(IN_CLOEXEC);
    inotify_add_watch(events, place.directory.c_str(), IN_MODIFY);
    std::atomic<int> count = 0;
    std::thread reader([&] {
        for (char buffer[4096]; read(events, buffer, sizeof buffer) > 0 && count >= 0;) {
            ++count;
        }
    });
    for (auto _ : state) {
        std::this_thread::sleep_for(c_gap);
        int const former = count;
        Clock::time_point const written = place.write();
        while (count == former) {
        }
        times.add(secondsSince(written));
    }
    count = -2;
    place.write();
    reader.join();
    close(events);
}

void fileToObserver(benchmark::State & state)
{
    Place place;
    Times times(state);
    Dispatcher dispatcher(ObjectAttribute::Registered);
    Counter counter;
    FileMonitor monitor;
    monitor.addObserver(&counter);
    monitor.addFile(place.file);
    for (auto _ : state) {
        std::this_thread::sleep_for(c_gap);
        dispatcher.dispatch();
        counter.count = 0;
        Clock::time_point const written = place.write();
        while (counter.count == 0) {
            dispatcher.dispatch();
        }
        times.add(secondsSince(written) - c_pause);
    }
}

void processorTimeOfIdleListener(benchmark::State & state)
{
    Place place;
    Times times(state);
    FileMonitor monitor;
    monitor.addFile(place.file);
    std::this_thread::sleep_for(std::chrono::seconds(1)); // until the thread has gone to sleep
    for (auto _ : state) {
        std::clock_t const start = std::clock();
        std::this_thread::sleep_for(std::chrono::seconds(2));
        times.add(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
}
} // namespace

BENCHMARK(passOverNothing);
BENCHMARK(postAndPass)->Arg(1)->Arg(100)->Arg(10000);
BENCHMARK(fileToThread)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(40);
BENCHMARK(fileToObserver)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(40);
BENCHMARK(processorTimeOfIdleListener)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(2);
