#pragma once

// Thread: any, as whatever is marked with these.
//
// For functions that may use AVX2 and FMA: only those are compiled for processors that have them,
// so that the program still starts on others. What they share is inlined, because a function
// without the mark must not be compiled for them.
#define VORNIC_AVX2 __attribute__((target("avx2,fma")))
#define VORNIC_AVX2_INLINE __attribute__((target("avx2,fma"), always_inline)) inline
