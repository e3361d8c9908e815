#pragma once

#include <mutex>

// What a lock guards, said so that clang checks it (-Wthread-safety); other compilers read nothing. A member
// with GUARDED_BY(mutex_) is touched only where the mutex is held, and a function with REQUIRES(mutex_) is
// called only there. This header knows no room, so every room may include it.
#if defined(__clang__)
#define TESSALY_THREAD_ATTRIBUTE(x) __attribute__((x))
#else
#define TESSALY_THREAD_ATTRIBUTE(x)
#endif

#define CAPABILITY(name) TESSALY_THREAD_ATTRIBUTE(capability(name))
#define SCOPED_CAPABILITY TESSALY_THREAD_ATTRIBUTE(scoped_lockable)
#define GUARDED_BY(mutex) TESSALY_THREAD_ATTRIBUTE(guarded_by(mutex))
#define REQUIRES(...) TESSALY_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
#define ACQUIRE(...) TESSALY_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define RELEASE(...) TESSALY_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))

namespace tessaly {

// std::mutex as clang's check can follow it. A std::condition_variable_any waits on it.
class CAPABILITY("mutex") Mutex {
 public:
  void lock() ACQUIRE() { mutex_.lock(); }
  void unlock() RELEASE() { mutex_.unlock(); }

 private:
  std::mutex mutex_;
};

// Holds a mutex until the end of its scope.
class SCOPED_CAPABILITY MutexLock {
 public:
  explicit MutexLock(Mutex& mutex) ACQUIRE(mutex) : mutex_(mutex) { mutex.lock(); }
  ~MutexLock() RELEASE() { mutex_.unlock(); }
  MutexLock(const MutexLock&) = delete;
  MutexLock& operator=(const MutexLock&) = delete;

 private:
  Mutex& mutex_;
};

}  // namespace tessaly
