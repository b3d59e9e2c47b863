#pragma once

#include "VornicCore/sampler/Avx2.h"
#include "VornicCore/sampler/Interpolation.h"
#include "VornicCore/sampler/Voice.h"

#include <immintrin.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace vornic {

/// Interpolates a voice's sample, up to eight frames of output at a time.
///
/// Gathering single frames from memory is slow. Instead every step reads whole vectors of
/// neighbouring frames and picks from them, in one of two ways:
///
/// Near the recorded pitch, from rate 6/7 to 8/7, output `lane` of a step is read `lane` frames
/// behind the step's base or one more. So each of the cubic's four frames is one of two vectors
/// that lie one frame apart, chosen in each lane by whether its fraction carries over.
///
/// At other rates a step covers only as many outputs as start within eight neighbouring frames: all
/// eight below rate 1, five up to 7/4, four up to 7/3. Each of the four frames is then one vector,
/// permuted.
///
/// Positions are whole numbers of 2^-32 frames here. A rate that was a float and is at least 1/64
/// is a whole number of 2^-29, so that a step's fraction can be kept as that few bits and goes on
/// without an error. Lane offsets are added to the fraction in the same integer, whose upper bits
/// then say which neighbour to take. Thread: real-time.
class Avx2Resampler {
  public:
    static constexpr double lowestRate = 0x1p-6;
    static constexpr double highestRate = 64.0;
    /// Positions must stay below this.
    static constexpr double end = 0x1p30;
    /// Room behind the last output that `run` may write to.
    static constexpr std::int64_t overrun = 7;

    VORNIC_AVX2_INLINE explicit Avx2Resampler(const Voice& voice)
        : data_(voice.data), length_(voice.length), position_(voice.position), rate_(voice.rate),
          nearRecorded_(voice.rate > 6.0 / 7.0 && voice.rate < 8.0 / 7.0) {
        if (nearRecorded_) {
            // Behind `lane` frames by lane * (rate - 1); below the recorded pitch that is negative,
            // so the base is one frame earlier and the offset one more.
            before_ = voice.rate < 1.0 ? 1 : 0;
            offsets_ = multiples(voice.rate - 1.0, static_cast<double>(before_));
        } else {
            outputs_ = voice.rate < 1.0 ? 8 : 1 + static_cast<std::int64_t>(7.0 / voice.rate);
            // In units of 2^-29; made at half their size, which a signed integer can hold.
            offsets_ = _mm256_slli_epi32(multiples(voice.rate * 0.125, 0.0), 1);
        }
    }

    /// Writes the sample's values for the `count` frames from the voice's frame `first` on, read
    /// `delay` frames earlier.
    VORNIC_AVX2_INLINE void run(std::int64_t first, std::int64_t count, double delay,
                                float* out) const {
        // A step reads from two frames before its position to ten behind it. At the sample's ends,
        // where some of those do not exist, the plain formula stands in. As divisions round, one
        // more frame is left to it.
        const double start = position_ + static_cast<double>(first) * rate_ - delay;
        const double limit = latest();
        const auto outputs = static_cast<double>(count);
        std::int64_t begin = 0;
        if (start < earliest) {
            begin = static_cast<std::int64_t>(
                std::min(std::ceil((earliest - start) / rate_) + 1.0, outputs));
            plain(first, first + begin, delay, out);
        }
        std::int64_t stop = count;
        if (start + (outputs - 1.0) * rate_ >= limit) {
            stop = static_cast<std::int64_t>(std::max((limit - start) / rate_ - 1.0, 0.0));
        }
        std::int64_t done = begin;
        if (begin < stop) {
            const double from = start + static_cast<double>(begin) * rate_;
            const Store store{out};
            done = nearRecorded_ ? steps<true>(from, begin, stop, store)
                                 : steps<false>(from, begin, stop, store);
        }
        if (done < count) {
            plain(first + done, first + count, delay, out + done);
        }
    }

    /// Hands the values of the next `count` frames to `sink(frame, values)`, eight at a time,
    /// without a detour through memory. Only where every step has eight outputs and no end of the
    /// sample is near; how many frames that were.
    template <typename Sink>
    VORNIC_AVX2_INLINE std::int64_t runInside(std::int64_t count, const Sink& sink) const {
        constexpr std::int64_t lanes = 8;
        const std::int64_t whole = count / lanes * lanes;
        const bool inside =
            position_ >= earliest && position_ + static_cast<double>(whole) * rate_ < latest();
        return nearRecorded_ && inside ? steps<true>(position_, 0, whole, sink) : 0;
    }

  private:
    /// The first position that a step can be made from.
    static constexpr double earliest = 2.0;
    /// The first position behind those.
    double latest() const { return static_cast<double>(length_ - 10); }

    struct Store {
        float* out;
        VORNIC_AVX2_INLINE void operator()(std::int64_t frame, __m256 values) const {
            _mm256_storeu_ps(out + frame, values);
        }
    };

    struct Neighbours {
        __m256 before, x0, x1, x2;
    };

    /// offset + lane * step for every lane, in units of 2^-31. An offset of 1 is the sign bit.
    VORNIC_AVX2_INLINE static __m256i multiples(double step, double offset) {
        const __m256d unit = _mm256_set1_pd(step * 0x1p31);
        const __m256d low = _mm256_mul_pd(_mm256_setr_pd(0.0, 1.0, 2.0, 3.0), unit);
        const __m256d high = _mm256_mul_pd(_mm256_setr_pd(4.0, 5.0, 6.0, 7.0), unit);
        const __m256i steps =
            _mm256_setr_m128i(_mm256_cvttpd_epi32(low), _mm256_cvttpd_epi32(high));
        const __m256i sign = _mm256_set1_epi32(std::numeric_limits<std::int32_t>::min());
        return offset == 0.0 ? steps : _mm256_add_epi32(steps, sign);
    }

    /// Hands on the outputs from `done` on until at least `stop` of them are there; the first one
    /// is read at `from`. How many there are.
    template <bool nearRecorded, typename Sink>
    VORNIC_AVX2_INLINE std::int64_t steps(double from, std::int64_t done, std::int64_t stop,
                                          const Sink& sink) const {
        // Near the recorded pitch one bit says which neighbour, else three.
        constexpr int bits = nearRecorded ? 31 : 29;
        constexpr std::int32_t ones = nearRecorded ? 0x7fffffff : 0x1fffffff;
        const auto fraction = [](std::int64_t position) {
            return static_cast<std::int32_t>((position >> (32 - bits)) & ones);
        };
        const std::int64_t outputs = nearRecorded ? 8 : outputs_;
        const std::int64_t advance = outputs * static_cast<std::int64_t>(rate_ * 0x1p32);
        const float* const data = data_ - (nearRecorded ? before_ : 0);
        auto position = static_cast<std::int64_t>(from * 0x1p32);
        const __m256i mask = _mm256_set1_epi32(ones);
        const __m256i fractionAdvance = _mm256_set1_epi32(fraction(advance));
        const __m256 unit = _mm256_set1_ps(nearRecorded ? 0x1p-31F : 0x1p-29F);
        __m256i fractions = _mm256_set1_epi32(fraction(position));
        for (; done < stop; done += outputs) {
            const __m256i sums = _mm256_add_epi32(fractions, offsets_);
            const __m256 t = _mm256_mul_ps(_mm256_cvtepi32_ps(_mm256_and_si256(sums, mask)), unit);
            const float* const base = data + (position >> 32);
            const Neighbours neighbours =
                nearRecorded ? chosen(base, sums) : permuted(base, _mm256_srli_epi32(sums, bits));
            sink(done, cubic(neighbours, t));
            fractions = _mm256_and_si256(_mm256_add_epi32(fractions, fractionAdvance), mask);
            position += advance;
        }
        return done;
    }

    /// Of the frames from `base` on, lane `k` takes frame k, or k + 1 where the sign is set.
    VORNIC_AVX2_INLINE static Neighbours chosen(const float* base, __m256i sign) {
        const __m256 later = _mm256_castsi256_ps(sign);
        const __m256 a = _mm256_loadu_ps(base - 1);
        const __m256 b = _mm256_loadu_ps(base);
        const __m256 c = _mm256_loadu_ps(base + 1);
        const __m256 d = _mm256_loadu_ps(base + 2);
        const __m256 e = _mm256_loadu_ps(base + 3);
        return {.before = _mm256_blendv_ps(a, b, later),
                .x0 = _mm256_blendv_ps(b, c, later),
                .x1 = _mm256_blendv_ps(c, d, later),
                .x2 = _mm256_blendv_ps(d, e, later)};
    }

    /// Of the frames from `base` on, lane `k` takes frame `lanes[k]`.
    VORNIC_AVX2_INLINE static Neighbours permuted(const float* base, __m256i lanes) {
        return {.before = _mm256_permutevar8x32_ps(_mm256_loadu_ps(base - 1), lanes),
                .x0 = _mm256_permutevar8x32_ps(_mm256_loadu_ps(base), lanes),
                .x1 = _mm256_permutevar8x32_ps(_mm256_loadu_ps(base + 1), lanes),
                .x2 = _mm256_permutevar8x32_ps(_mm256_loadu_ps(base + 2), lanes)};
    }

    VORNIC_AVX2_INLINE static __m256 cubic(const Neighbours& x, __m256 t) {
        const __m256 u = _mm256_sub_ps(_mm256_set1_ps(1.0F), t);
        // The cubic as the straight line and what its slopes at both ends, half of x1 - before and
        // half of x2 - x0, differ from that line's: a short chain of operations, because a step
        // waits for its results longer than for its turn.
        const __m256 half = _mm256_set1_ps(0.5F);
        const __m256 rise = _mm256_sub_ps(x.x1, x.x0);
        const __m256 atX0 = _mm256_fmsub_ps(half, _mm256_sub_ps(x.x1, x.before), rise);
        const __m256 atX1 = _mm256_fnmadd_ps(half, _mm256_sub_ps(x.x2, x.x0), rise);
        const __m256 bend = _mm256_fmadd_ps(t, atX1, _mm256_mul_ps(u, atX0));
        return _mm256_fmadd_ps(_mm256_mul_ps(t, u), bend, _mm256_fmadd_ps(t, rise, x.x0));
    }

    /// Not inlined, so that the steps keep their registers.
    [[gnu::noinline]] void plain(std::int64_t frame, std::int64_t endFrame, double delay,
                                 float* out) const {
        for (; frame < endFrame; ++frame) {
            const double position = position_ + static_cast<double>(frame) * rate_;
            *out++ = interpolate(data_, length_, position - delay);
        }
    }

    const float* data_;
    std::int64_t length_;
    double position_;
    double rate_;
    bool nearRecorded_;
    std::int64_t before_ = 0;  // near the recorded pitch: frames from the base to the position
    std::int64_t outputs_ = 8; // of one step
    __m256i offsets_;          // of the lanes
};

} // namespace vornic
