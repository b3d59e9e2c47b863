#pragma once

#include "VornicCore/render/LaneKernels.h"

#include <cstdint>

#if defined(__AVX__)
#include <immintrin.h>
#endif

// Four lanes as one vector, through the compilers' vector extension. Everything is static: each
// file that includes this is compiled for another processor and keeps its code to itself.
// Thread: any, as everything here.
namespace vornic::lanestages {

using Vector = double __attribute__((vector_size(32)));
using Integers = std::int64_t __attribute__((vector_size(32)));
using Floats = float __attribute__((vector_size(16)));
using FloatIntegers = std::int32_t __attribute__((vector_size(16)));
// The same wherever they lie in memory.
using LooseVector = double __attribute__((vector_size(32), aligned(8), may_alias));
using LooseFloats = float __attribute__((vector_size(16), aligned(4), may_alias));

static_assert(sizeof(Vector) == laneCount * sizeof(double));

static inline Vector load(const double* from) {
    return *reinterpret_cast<const LooseVector*>(from);
}
static inline Vector load(const Lanes& lanes) {
    return load(&lanes.lane[0]);
}
static inline void store(Vector value, double* to) {
    *reinterpret_cast<LooseVector*>(to) = value;
}
static inline Floats loadFloats(const float* from) {
    return *reinterpret_cast<const LooseFloats*>(from);
}
static inline void storeFloats(Floats value, float* to) {
    *reinterpret_cast<LooseFloats*>(to) = value;
}
static inline Vector widened(Floats value) {
    return __builtin_convertvector(value, Vector);
}
static inline Floats narrowed(Vector value) {
    return __builtin_convertvector(value, Floats);
}
static inline Vector all(double value) {
    return Vector{value, value, value, value};
}

// `mask ? a : b` says the same, but not every compiler sees the one instruction in it.
static inline Vector larger(Vector a, Vector b) {
#if defined(__AVX__)
    return _mm256_max_pd(a, b);
#else
    return a > b ? a : b;
#endif
}
static inline Vector smaller(Vector a, Vector b) {
#if defined(__AVX__)
    return _mm256_min_pd(a, b);
#else
    return a < b ? a : b;
#endif
}
static inline Vector magnitude(Vector value) {
    constexpr std::int64_t allButSign = INT64_MAX;
    const auto bits = reinterpret_cast<Integers>(value);
    return reinterpret_cast<Vector>(bits & allButSign);
}

struct FourFloats {
    Floats a, b, c, d;
};

static inline FourFloats transposed(Floats a, Floats b, Floats c, Floats d) {
    const Floats low01 = __builtin_shufflevector(a, b, 0, 4, 1, 5);
    const Floats low23 = __builtin_shufflevector(c, d, 0, 4, 1, 5);
    const Floats high01 = __builtin_shufflevector(a, b, 2, 6, 3, 7);
    const Floats high23 = __builtin_shufflevector(c, d, 2, 6, 3, 7);
    return {.a = __builtin_shufflevector(low01, low23, 0, 1, 4, 5),
            .b = __builtin_shufflevector(low01, low23, 2, 3, 6, 7),
            .c = __builtin_shufflevector(high01, high23, 0, 1, 4, 5),
            .d = __builtin_shufflevector(high01, high23, 2, 3, 6, 7)};
}

/// tanh as x P(x^2) / Q(x^2), a minimax fit of the relative error up to 8.5, which is 1.2e-8; from
/// there on it stays at its last value, 8e-8 below 1.
struct TanhFraction {
    Vector numerator, denominator;
};

static inline TanhFraction tanhFraction(Vector x) {
    constexpr double end = 8.5;
    x = larger(smaller(x, all(end)), all(-end));
    const Vector u = x * x;
    Vector p = u * 1.4269634098046248e-8 + 2.1251352008539738e-5;
    p = p * u + 0.0035340463017575295;
    p = p * u + 0.13413263584720736;
    p = p * u + 0.9999999882673853;
    Vector q = u * 8.1452937602402256e-7 + 0.00033488960550560508;
    q = q * u + 0.026022826183046846;
    q = q * u + 0.4674658634337438;
    q = q * u + 1.0;
    return {.numerator = x * p, .denominator = q};
}

} // namespace vornic::lanestages
