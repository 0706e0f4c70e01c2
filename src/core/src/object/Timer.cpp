#include "object/Timer.h"

#include <chrono>

namespace tesseralis {
namespace {
double GetCurrentTime()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}
} // namespace

Timer::Timer()
{
    start();
}

Timer::operator double() const
{
    return (m_running ? GetCurrentTime() : m_stopTime) - m_startTime;
}

Timer::operator float() const
{
    return static_cast<float>(operator double());
}

void Timer::start()
{
    m_running = true;
    m_startTime = GetCurrentTime();
    m_stopTime = m_startTime;
}

void Timer::stop()
{
    m_stopTime = GetCurrentTime();
    m_running = false;
}
} // namespace tesseralis
