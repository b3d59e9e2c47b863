#pragma once

#include "VornicCore/sampler/Avx2.h"

#include <immintrin.h>

#include <cstdint>

namespace vornic {

/// The far ear's one-pole low-pass, state += a * (x - state), eight frames at a time.
///
/// With b = 1 - a, frame k of eight is a x_k + b a x_(k-1) + ... + b^(k+1) state. The sum over the
/// eight inputs takes three rounds, each adding the sum from 1, 2 and then 4 frames before, times
/// that power of b; it does not wait for the state, so that from eight frames to the next eight
/// there is only one multiplication and addition. Thread: real-time.
class Avx2Lowpass {
  public:
    /// The smallest coefficient for which b, rounded to a float, does not bend the filter: the gain
    /// is a / (1 - b), so an error of b weighs 1 / a.
    static constexpr float smallest = 0.25F;

    VORNIC_AVX2_INLINE explicit Avx2Lowpass(float coefficient, float state)
        : coefficient_(coefficient), state_(_mm256_set1_ps(state)) {
        const float b = 1.0F - coefficient;
        const float b2 = b * b;
        const float b3 = b2 * b;
        const float b4 = b2 * b2;
        one_ = _mm256_setr_ps(0.0F, b, b, b, 0.0F, b, b, b);
        two_ = _mm256_setr_ps(0.0F, 0.0F, b2, b2, 0.0F, 0.0F, b2, b2);
        four_ = _mm256_setr_ps(0.0F, 0.0F, 0.0F, 0.0F, b, b2, b3, b4);
        powers_ = _mm256_setr_ps(b, b2, b3, b4, b4 * b, b4 * b2, b4 * b3, b4 * b4);
        eighth_ = _mm256_set1_ps(b4 * b4);
    }

    VORNIC_AVX2_INLINE __m256 filter(__m256 input) {
        __m256 sum = _mm256_mul_ps(_mm256_set1_ps(coefficient_), input);
        // Within each half: from one frame before, then from two.
        sum = _mm256_fmadd_ps(one_, _mm256_permute_ps(sum, _MM_SHUFFLE(2, 1, 0, 0)), sum);
        sum = _mm256_fmadd_ps(two_, _mm256_permute_ps(sum, _MM_SHUFFLE(1, 0, 0, 0)), sum);
        // The upper half takes the lower half's last sum.
        sum = _mm256_fmadd_ps(four_, _mm256_permutevar8x32_ps(sum, _mm256_set1_epi32(3)), sum);
        const __m256 output = _mm256_fmadd_ps(powers_, state_, sum);
        const __m256 last = _mm256_permutevar8x32_ps(sum, _mm256_set1_epi32(7));
        state_ = _mm256_fmadd_ps(eighth_, state_, last);
        return output;
    }

    VORNIC_AVX2_INLINE float state() const { return _mm256_cvtss_f32(state_); }

  private:
    float coefficient_;
    __m256 state_; // the same in every lane
    __m256 one_, two_, four_, powers_, eighth_;
};

} // namespace vornic
