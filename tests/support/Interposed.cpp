// The functions that the guard counts, under the names that the whole program calls them by. The
// linker prefers these to the C library's, also for calls from shared libraries.

#include "tests/support/RealTimeCounts.h"

#if VORNIC_GUARD_ACTIVE

#include <dlfcn.h>
#include <pthread.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <ctime>

// The C library's allocator under its second names, because looking the first ones up would itself
// allocate.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)

namespace {

using vornic::RealTimeCounts;

void note(std::int64_t RealTimeCounts::* counter, const char* name) noexcept {
    RealTimeCounts::ofThisThread().note(counter, name);
}

/// The C library's function that one of ours hides: counts a call and passes it on.
template <typename... Arguments>
class Hidden {
  public:
    constexpr Hidden(const char* name, std::int64_t RealTimeCounts::* counter)
        : name_(name), counter_(counter) {}

    int operator()(Arguments... arguments) {
        note(counter_, name_);
        Function* function = function_.load(std::memory_order_acquire);
        if (function == nullptr) {
            function = find();
            function_.store(function, std::memory_order_release);
        }
        return function(arguments...);
    }

  private:
    using Function = int(Arguments...);

    /// Not counted, since looking up may lock.
    Function* find() const {
        RealTimeCounts& counts = RealTimeCounts::ofThisThread();
        const bool counting = counts.counting;
        counts.counting = false;
        auto* const function = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name_));
        counts.counting = counting;
        return function;
    }

    const char* name_;
    std::int64_t RealTimeCounts::* counter_;
    std::atomic<Function*> function_{nullptr};
};

} // namespace

extern "C" {

void* malloc(std::size_t size) noexcept {
    note(&RealTimeCounts::allocations, "malloc");
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    note(&RealTimeCounts::allocations, "calloc");
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) noexcept {
    note(&RealTimeCounts::allocations, "realloc");
    return __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    note(&RealTimeCounts::allocations, "aligned_alloc");
    return __libc_memalign(alignment, size);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    note(&RealTimeCounts::allocations, "memalign");
    return __libc_memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    note(&RealTimeCounts::allocations, "posix_memalign");
    if (alignment % sizeof(void*) != 0 || (alignment & (alignment - 1)) != 0 || alignment == 0) {
        return EINVAL;
    }
    void* const allocated = __libc_memalign(alignment, size);
    if (allocated == nullptr) {
        return ENOMEM;
    }
    *block = allocated;
    return 0;
}

void free(void* block) noexcept {
    if (block != nullptr) {
        note(&RealTimeCounts::frees, "free");
    }
    __libc_free(block);
}

int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
    static constinit Hidden<pthread_mutex_t*> hidden("pthread_mutex_lock", &RealTimeCounts::locks);
    return hidden(mutex);
}

int pthread_mutex_trylock(pthread_mutex_t* mutex) noexcept {
    static constinit Hidden<pthread_mutex_t*> hidden("pthread_mutex_trylock",
                                                     &RealTimeCounts::locks);
    return hidden(mutex);
}

int pthread_mutex_timedlock(pthread_mutex_t* mutex, const timespec* until) noexcept {
    static constinit Hidden<pthread_mutex_t*, const timespec*> hidden("pthread_mutex_timedlock",
                                                                      &RealTimeCounts::locks);
    return hidden(mutex, until);
}

int pthread_mutex_clocklock(pthread_mutex_t* mutex, clockid_t clock,
                            const timespec* until) noexcept {
    static constinit Hidden<pthread_mutex_t*, clockid_t, const timespec*> hidden(
        "pthread_mutex_clocklock", &RealTimeCounts::locks);
    return hidden(mutex, clock, until);
}

int pthread_rwlock_rdlock(pthread_rwlock_t* lock) noexcept {
    static constinit Hidden<pthread_rwlock_t*> hidden("pthread_rwlock_rdlock",
                                                      &RealTimeCounts::locks);
    return hidden(lock);
}

int pthread_rwlock_tryrdlock(pthread_rwlock_t* lock) noexcept {
    static constinit Hidden<pthread_rwlock_t*> hidden("pthread_rwlock_tryrdlock",
                                                      &RealTimeCounts::locks);
    return hidden(lock);
}

int pthread_rwlock_wrlock(pthread_rwlock_t* lock) noexcept {
    static constinit Hidden<pthread_rwlock_t*> hidden("pthread_rwlock_wrlock",
                                                      &RealTimeCounts::locks);
    return hidden(lock);
}

int pthread_rwlock_trywrlock(pthread_rwlock_t* lock) noexcept {
    static constinit Hidden<pthread_rwlock_t*> hidden("pthread_rwlock_trywrlock",
                                                      &RealTimeCounts::locks);
    return hidden(lock);
}

int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
    static constinit Hidden<pthread_cond_t*, pthread_mutex_t*> hidden("pthread_cond_wait",
                                                                      &RealTimeCounts::waits);
    return hidden(condition, mutex);
}

int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                           const timespec* until) {
    static constinit Hidden<pthread_cond_t*, pthread_mutex_t*, const timespec*> hidden(
        "pthread_cond_timedwait", &RealTimeCounts::waits);
    return hidden(condition, mutex, until);
}

int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock,
                           const timespec* until) {
    static constinit Hidden<pthread_cond_t*, pthread_mutex_t*, clockid_t, const timespec*> hidden(
        "pthread_cond_clockwait", &RealTimeCounts::waits);
    return hidden(condition, mutex, clock, until);
}

} // extern "C"

#endif
