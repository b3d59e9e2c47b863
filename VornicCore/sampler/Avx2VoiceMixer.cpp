#include "VornicCore/sampler/Avx2VoiceMixer.h"

#if defined(__x86_64__)

#include "VornicCore/sampler/Avx2.h"
#include "VornicCore/sampler/Avx2Lowpass.h"
#include "VornicCore/sampler/Avx2Resampler.h"
#include "VornicCore/sampler/VoiceSpan.h"

#include <immintrin.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vornic {

namespace {

/// Frames worked on at a time, so that what lies between the two stages stays in the first cache.
constexpr std::int64_t blockFrames = 256;

using Block = float[blockFrames + Avx2Resampler::overrun];

/// One ear: where its signal goes, and how loud.
struct Ear {
    float* out;
    float gain;
};

/// What the second stage needs beside the interpolated signals.
struct Ears {
    /// Hears the direct signal, and without a binaural stage so does the other.
    Ear near;
    Ear far;
    /// Coefficient of the far ear's low-pass.
    float lowpass;
    /// The low-pass's state before and after.
    float* state;
    /// The fade-out of these frames; null = none.
    const float* envelope;
};

enum class Stage : std::uint8_t { none, delayed, filtered };

/// The second stage: fades out, filters, applies the gains and adds to the ears.
template <bool fading, Stage stage>
VORNIC_AVX2_INLINE void addToEars(const float* direct, const float* delayed, std::int64_t count,
                                  const Ears& ears) {
    constexpr std::int64_t lanes = 8;
    const __m256 nearGain = _mm256_set1_ps(ears.near.gain);
    const __m256 farGain = _mm256_set1_ps(ears.far.gain);
    std::int64_t i = 0;
    if (stage != Stage::filtered || ears.lowpass >= Avx2Lowpass::smallest) {
        Avx2Lowpass lowpass(ears.lowpass, *ears.state);
        for (; i + lanes <= count; i += lanes) {
            __m256 near = _mm256_loadu_ps(direct + i);
            __m256 far = stage == Stage::none ? near : _mm256_loadu_ps(delayed + i);
            if constexpr (fading) {
                const __m256 envelope = _mm256_loadu_ps(ears.envelope + i);
                near = _mm256_mul_ps(near, envelope);
                far = _mm256_mul_ps(far, envelope);
            }
            if constexpr (stage == Stage::filtered) {
                far = lowpass.filter(far);
            }
            float* const nearOut = ears.near.out + i;
            float* const farOut = ears.far.out + i;
            _mm256_storeu_ps(nearOut, _mm256_fmadd_ps(near, nearGain, _mm256_loadu_ps(nearOut)));
            _mm256_storeu_ps(farOut, _mm256_fmadd_ps(far, farGain, _mm256_loadu_ps(farOut)));
        }
        if constexpr (stage == Stage::filtered) {
            *ears.state = lowpass.state();
        }
    }
    for (; i < count; ++i) {
        const float envelope = fading ? ears.envelope[i] : 1.0F;
        float far = (stage == Stage::none ? direct[i] : delayed[i]) * envelope;
        if constexpr (stage == Stage::filtered) {
            *ears.state += ears.lowpass * (far - *ears.state);
            far = *ears.state;
        }
        ears.near.out[i] += direct[i] * envelope * ears.near.gain;
        ears.far.out[i] += far * ears.far.gain;
    }
}

template <bool fading>
VORNIC_AVX2_INLINE void addToEars(const float* direct, const float* delayed, std::int64_t count,
                                  const Voice& voice, const Ears& ears) {
    if (voice.farEar == 0) {
        addToEars<fading, Stage::none>(direct, delayed, count, ears);
    } else if (voice.farLowpass > 0.0F) {
        addToEars<fading, Stage::filtered>(direct, delayed, count, ears);
    } else {
        addToEars<fading, Stage::delayed>(direct, delayed, count, ears);
    }
}

/// Fades out, applies the gains and adds to both ears, straight from the interpolation.
template <bool fading>
struct AddToBoth {
    float* left;
    float* right;
    const float* envelope;
    __m256 gainLeft;
    __m256 gainRight;

    VORNIC_AVX2_INLINE AddToBoth(float* leftOut, float* rightOut, const Voice& voice,
                                 const float* envelopeOfFrames)
        : left(leftOut), right(rightOut), envelope(envelopeOfFrames),
          gainLeft(_mm256_set1_ps(voice.gainLeft)), gainRight(_mm256_set1_ps(voice.gainRight)) {}

    VORNIC_AVX2_INLINE void operator()(std::int64_t frame, __m256 values) const {
        if constexpr (fading) {
            values = _mm256_mul_ps(values, _mm256_loadu_ps(envelope + frame));
        }
        float* const l = left + frame;
        float* const r = right + frame;
        _mm256_storeu_ps(l, _mm256_fmadd_ps(values, gainLeft, _mm256_loadu_ps(l)));
        _mm256_storeu_ps(r, _mm256_fmadd_ps(values, gainRight, _mm256_loadu_ps(r)));
    }
};

/// The common case, both stages in one: how many frames of it there were.
VORNIC_AVX2_INLINE std::int64_t mixInside(const Voice& voice, const Avx2Resampler& resampler,
                                          std::int64_t frames, const float* envelope, float* left,
                                          float* right) {
    if (voice.farEar != 0) {
        return 0;
    }
    return envelope == nullptr
               ? resampler.runInside(frames, AddToBoth<false>(left, right, voice, envelope))
               : resampler.runInside(frames, AddToBoth<true>(left, right, voice, envelope));
}

/// Eight frames, each less itself.
VORNIC_AVX2_INLINE __m256 differences(const float* frames) {
    const __m256 values = _mm256_loadu_ps(frames);
    return _mm256_sub_ps(values, values);
}

/// Whether every frame that the next `frames` frames of output may be read from is finite. The
/// vector code weighs neighbours that the plain formula does not look at, and what is not finite
/// stays in a sum whatever its weight.
VORNIC_AVX2_INLINE bool readsFinite(const Voice& voice, std::int64_t frames) {
    constexpr std::int64_t lanes = 8;
    constexpr double before = 2.0; // frames that a step reads before its position, and behind it
    constexpr double behind = 11.0;
    const double delay = voice.farEar == 0 ? 0.0 : voice.itd;
    const double from = voice.position - std::max(delay, 0.0) - before;
    const double to =
        voice.position - std::min(delay, 0.0) + static_cast<double>(frames) * voice.rate + behind;
    const auto length = static_cast<double>(voice.length);
    const auto begin = static_cast<std::int64_t>(std::clamp(from, 0.0, length));
    const auto end = static_cast<std::int64_t>(std::clamp(to, 0.0, length));
    if (end - begin < lanes) {
        return std::all_of(voice.data + begin, voice.data + std::max(begin, end),
                           [](float value) { return std::isfinite(value); });
    }
    // Of a finite value the difference from itself is 0, of any other it is no number. Four sums,
    // since each addition waits for the one before.
    __m256 first = differences(voice.data + end - lanes);
    __m256 second = _mm256_setzero_ps();
    __m256 third = _mm256_setzero_ps();
    __m256 fourth = _mm256_setzero_ps();
    std::int64_t frame = begin;
    for (; frame + 4 * lanes <= end; frame += 4 * lanes) {
        const float* const data = voice.data + frame;
        first = _mm256_add_ps(first, differences(data));
        second = _mm256_add_ps(second, differences(data + lanes));
        third = _mm256_add_ps(third, differences(data + 2 * lanes));
        fourth = _mm256_add_ps(fourth, differences(data + 3 * lanes));
    }
    for (; frame + lanes <= end; frame += lanes) {
        first = _mm256_add_ps(first, differences(voice.data + frame));
    }
    const __m256 sum = _mm256_add_ps(_mm256_add_ps(first, second), _mm256_add_ps(third, fourth));
    return _mm256_movemask_ps(_mm256_cmp_ps(sum, sum, _CMP_UNORD_Q)) == 0;
}

/// What the vector code is not made for, and voices that the plain mixer stops the program for.
bool needsPlainMixer(const Voice& voice, std::int64_t frames) VORNIC_REALTIME {
    constexpr double longestDelay = 0x1p20;
    const bool rateFits =
        voice.rate >= Avx2Resampler::lowestRate && voice.rate <= Avx2Resampler::highestRate;
    const bool lengthFits = static_cast<double>(voice.length) <= Avx2Resampler::end;
    const bool stageFits =
        voice.farEar == 0 || (std::fabs(voice.itd) <= longestDelay && !(voice.farLowpass > 1.0F) &&
                              std::isfinite(voice.farState));
    return !(VoiceSpan::isExact(voice, frames) && rateFits && lengthFits && stageFits);
}

} // namespace

VORNIC_AVX2 void mixVoiceAvx2(Voice& voice, const FadeCurve& fade, std::int64_t frames, float* left,
                              float* right) VORNIC_REALTIME {
    if (needsPlainMixer(voice, frames) || !readsFinite(voice, frames)) {
        mixVoicePlain(voice, fade, frames, left, right);
        return;
    }
    constexpr std::int32_t leftIsFar = 1;
    const std::int64_t sounding = VoiceSpan::sounding(voice, frames);
    const float* const envelope = voice.fadeLeft > 0 ? fade.from(voice.fadeLeft) : nullptr;
    const Avx2Resampler resampler(voice);
    alignas(32) Block direct;
    alignas(32) Block delayed;
    std::int64_t first = mixInside(voice, resampler, sounding, envelope, left, right);
    for (; first < sounding; first += blockFrames) {
        const std::int64_t count = std::min(blockFrames, sounding - first);
        resampler.run(first, count, 0.0, direct);
        if (voice.farEar != 0) {
            resampler.run(first, count, voice.itd, delayed);
        }
        const Ear leftEar = {.out = left + first, .gain = voice.gainLeft};
        const Ear rightEar = {.out = right + first, .gain = voice.gainRight};
        const bool leftFirst = voice.farEar != leftIsFar;
        const Ears ears = {.near = leftFirst ? leftEar : rightEar,
                           .far = leftFirst ? rightEar : leftEar,
                           .lowpass = voice.farLowpass,
                           .state = &voice.farState,
                           .envelope = envelope == nullptr ? nullptr : envelope + first};
        if (envelope != nullptr) {
            addToEars<true>(direct, delayed, count, voice, ears);
        } else {
            addToEars<false>(direct, delayed, count, voice, ears);
        }
    }
    VoiceSpan::advance(voice, sounding, frames);
}

bool hasAvx2() noexcept {
    return static_cast<bool>(__builtin_cpu_supports("avx2")) &&
           static_cast<bool>(__builtin_cpu_supports("fma"));
}

} // namespace vornic

#endif
