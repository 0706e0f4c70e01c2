#pragma once

#include "object/Export.h"

namespace tesseralis {
/// A stopwatch on the steady clock; it runs from construction. Times are in seconds. Not for sharing between threads.
class TESSERALIS_API Timer
{
public:
    Timer();

    bool IsRunning() const { return m_running; }
    /// Seconds since start(); after stop() the same value on every read.
    operator double() const;
    operator float() const;

    /// Starts from zero, also while running.
    void start();
    void stop();

private:
    double m_startTime = 0.0;
    double m_stopTime = 0.0;
    bool m_running = false;
};
} // namespace tesseralis
