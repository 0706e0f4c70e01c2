#pragma once

#include "object/Export.h"

#include <mutex>

namespace tesseralis {
/// A recursive lock: the same thread can take it again and must release it as often. A copy is a new, unlocked mutex,
/// so that classes which hold one stay copyable. Taken through MutexLocker only.
class TESSERALIS_API Mutex
{
public:
    Mutex() = default;
    Mutex(Mutex const &) {}
    Mutex & operator=(Mutex const &) { return *this; }

    void lock() { m_mutex.lock(); }
    void unlock() { m_mutex.unlock(); }
    /// Whether the lock was taken.
    bool tryLock() { return m_mutex.try_lock(); }

private:
    std::recursive_mutex m_mutex;
};

/// Holds a mutex for its own life; unlock() and lock() open a gap in between.
class TESSERALIS_API MutexLocker
{
public:
    explicit MutexLocker(Mutex & mutex) : m_mutex(mutex) { lock(); }
    ~MutexLocker() { unlock(); }
    MutexLocker(MutexLocker const &) = delete;
    MutexLocker & operator=(MutexLocker const &) = delete;

    Mutex & GetMutex() const { return m_mutex; }

    /// Takes the lock if this locker doesn't hold it.
    void lock()
    {
        if (!m_locked) {
            m_mutex.lock();
            m_locked = true;
        }
    }

    /// Releases the lock if this locker holds it.
    void unlock()
    {
        if (m_locked) {
            m_locked = false;
            m_mutex.unlock();
        }
    }

private:
    Mutex & m_mutex;
    bool m_locked = false;
};
} // namespace tesseralis
