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

/// The function that one of ours hides. The look-up is not counted, since it may lock.
template <typename Function>
Function hidden(std::atomic<Function>& known, const char* name) noexcept {
    Function function = known.load(std::memory_order_acquire);
    if (function == nullptr) {
        RealTimeCounts& counts = RealTimeCounts::ofThisThread();
        const bool counting = counts.counting;
        counts.counting = false;
        function = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
        counts.counting = counting;
        known.store(function, std::memory_order_release);
    }
    return function;
}

} // namespace

// Defines the function `name`: it counts the call and passes it on to the one that it hides.
#define VORNIC_INTERPOSE(counter, name, parameters, arguments, exceptions)                         \
    int name parameters exceptions {                                                               \
        static constinit std::atomic<int(*) parameters> known{nullptr};                            \
        note(&RealTimeCounts::counter, #name);                                                     \
        return hidden(known, #name) arguments;                                                     \
    }

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

// clang-format off
VORNIC_INTERPOSE(locks, pthread_mutex_lock, (pthread_mutex_t* mutex), (mutex), noexcept)
VORNIC_INTERPOSE(locks, pthread_mutex_trylock, (pthread_mutex_t* mutex), (mutex), noexcept)
VORNIC_INTERPOSE(locks, pthread_mutex_timedlock,
                 (pthread_mutex_t* mutex, const timespec* until), (mutex, until), noexcept)
VORNIC_INTERPOSE(locks, pthread_mutex_clocklock,
                 (pthread_mutex_t* mutex, clockid_t clock, const timespec* until),
                 (mutex, clock, until), noexcept)
VORNIC_INTERPOSE(locks, pthread_rwlock_rdlock, (pthread_rwlock_t* lock), (lock), noexcept)
VORNIC_INTERPOSE(locks, pthread_rwlock_tryrdlock, (pthread_rwlock_t* lock), (lock), noexcept)
VORNIC_INTERPOSE(locks, pthread_rwlock_wrlock, (pthread_rwlock_t* lock), (lock), noexcept)
VORNIC_INTERPOSE(locks, pthread_rwlock_trywrlock, (pthread_rwlock_t* lock), (lock), noexcept)
VORNIC_INTERPOSE(waits, pthread_cond_wait,
                 (pthread_cond_t* condition, pthread_mutex_t* mutex), (condition, mutex), )
VORNIC_INTERPOSE(waits, pthread_cond_timedwait,
                 (pthread_cond_t* condition, pthread_mutex_t* mutex, const timespec* until),
                 (condition, mutex, until), )
VORNIC_INTERPOSE(waits, pthread_cond_clockwait,
                 (pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock,
                  const timespec* until),
                 (condition, mutex, clock, until), )
// clang-format on

} // extern "C"

#endif
