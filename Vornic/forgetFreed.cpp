// Everything that the program and its libraries give back to the heap is overwritten: an event of
// the window system, a message from one thread to another, a node of a set, whatever a key was in
// on its way. Linked into the program alone. A sanitizer sees to the heap itself.

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>

/// The C library's own, which the one below takes the place of.
extern "C" void __libc_free(void* memory) noexcept; // NOLINT: its name

/// Thread: any.
extern "C" void free(void* memory) noexcept {
    if (memory != nullptr) {
        // What is larger holds sounds and pictures.
        constexpr std::size_t most = 65536;
        const std::size_t size = malloc_usable_size(memory);
        std::memset(memory, 0, std::min(size, most));
        // Otherwise the compiler leaves that out: who reads what is freed?
        asm volatile("" : : "r"(memory) : "memory");
    }
    __libc_free(memory);
}

#endif
