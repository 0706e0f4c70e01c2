#include "Sleeper.h"

#include "object/Exception.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace tesseralis::host {
Sleeper::Sleeper()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    m_wake = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    m_signals = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
    if (m_wake < 0 || m_signals < 0) {
        close(m_signals);
        close(m_wake);
        throw Exception("There are too many open files.");
    }
    pthread_sigmask(SIG_BLOCK, &signals, &m_formerMask);
}

Sleeper::~Sleeper()
{
    close(m_signals);
    close(m_wake);
    pthread_sigmask(SIG_SETMASK, &m_formerMask, nullptr);
}

bool Sleeper::sleep()
{
    pollfd descriptors[] = {{m_signals, POLLIN, 0}, {m_wake, POLLIN, 0}};
    while (poll(descriptors, 2, -1) < 0) {
    }
    eventfd_t count = 0;
    eventfd_read(m_wake, &count);
    signalfd_siginfo signal = {};
    return read(m_signals, &signal, sizeof signal) < 0;
}

void Sleeper::wake()
{
    eventfd_write(m_wake, 1);
}
} // namespace tesseralis::host
