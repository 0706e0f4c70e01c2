#pragma once

#include <csignal>

namespace tesseralis::host {
/// Where the main thread sleeps until another one wakes it or the user ends the program, by SIGINT (Ctrl-C) or SIGTERM.
/// These are held back for the life of this object, which the thread makes before it starts others.
class Sleeper
{
public:
    /// Throws Exception if the system has no means left for it.
    Sleeper();
    ~Sleeper();
    Sleeper(Sleeper const &) = delete;
    Sleeper & operator=(Sleeper const &) = delete;

    /// Sleeps, unless wake() has been called since the last time. False if the user has ended the program.
    bool sleep();
    /// For any thread.
    void wake();

private:
    sigset_t m_formerMask = {};
    int m_wake = -1;
    int m_signals = -1;
};
} // namespace tesseralis::host
