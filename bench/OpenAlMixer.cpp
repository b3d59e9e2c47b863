#include "bench/OpenAlMixer.h"

#define AL_ALEXT_PROTOTYPES
#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <string_view>

namespace vornic {

namespace {

constexpr int channels = 2;

template <typename Function>
Function contextFunction(const char* name) {
    const auto function = reinterpret_cast<Function>(alGetProcAddress(name));
    if (function == nullptr) {
        throw std::runtime_error(std::string("OpenAL has no ") + name);
    }
    return function;
}

void require(bool condition, const char* what) {
    if (!condition) {
        throw std::runtime_error(std::string("OpenAL: ") + what);
    }
}

/// The number of the resampler named "Cubic".
ALint cubicResampler() {
    const auto name = contextFunction<LPALGETSTRINGISOFT>("alGetStringiSOFT");
    const ALint count = alGetInteger(AL_NUM_RESAMPLERS_SOFT);
    for (ALint i = 0; i < count; ++i) {
        if (std::string_view(name(AL_RESAMPLER_NAME_SOFT, i)) == "Cubic") {
            return i;
        }
    }
    throw std::runtime_error("OpenAL has no cubic resampler");
}

} // namespace

struct OpenAlMixer::State {
    const std::vector<MixerScene::Voice>& scene;
    ALCdevice* device = nullptr;
    ALCcontext* context = nullptr;
    LPALCRENDERSAMPLESSOFT renderSamples = nullptr;
    ALint cubic = 0;
    std::array<ALuint, MixerScene::voices> buffers{};
    std::array<ALuint, MixerScene::voices> sources{};
    std::array<float, MixerScene::bufferFrames * channels> output{};
    int rendered = 0; // buffers since prepare
    float level = 1.0F;

    explicit State(const std::vector<MixerScene::Voice>& voices) : scene(voices) {}
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    ~State() {
        if (context != nullptr) {
            alDeleteSources(static_cast<ALsizei>(sources.size()), sources.data());
            alDeleteBuffers(static_cast<ALsizei>(buffers.size()), buffers.data());
            alcMakeContextCurrent(nullptr);
            alcDestroyContext(context);
        }
        if (device != nullptr) {
            alcCloseDevice(device);
        }
    }

    void open() {
        const auto loopback = [](const char* name) { return alcGetProcAddress(nullptr, name); };
        const auto openLoopback =
            reinterpret_cast<LPALCLOOPBACKOPENDEVICESOFT>(loopback("alcLoopbackOpenDeviceSOFT"));
        renderSamples = reinterpret_cast<LPALCRENDERSAMPLESSOFT>(loopback("alcRenderSamplesSOFT"));
        require(openLoopback != nullptr && renderSamples != nullptr, "no loopback device");
        device = openLoopback(nullptr);
        require(device != nullptr, "the loopback device does not open");
        // Nothing beside the mixing itself: no head model, no limiter, no effects.
        const std::array<ALCint, 15> attributes = {ALC_FORMAT_CHANNELS_SOFT,
                                                   ALC_STEREO_SOFT,
                                                   ALC_FORMAT_TYPE_SOFT,
                                                   ALC_FLOAT_SOFT,
                                                   ALC_FREQUENCY,
                                                   48'000,
                                                   ALC_HRTF_SOFT,
                                                   ALC_FALSE,
                                                   ALC_OUTPUT_LIMITER_SOFT,
                                                   ALC_FALSE,
                                                   ALC_MAX_AUXILIARY_SENDS,
                                                   0,
                                                   ALC_MONO_SOURCES,
                                                   64,
                                                   0};
        context = alcCreateContext(device, attributes.data());
        require(context != nullptr && alcMakeContextCurrent(context) != ALC_FALSE, "no context");
        cubic = cubicResampler();
    }

    void load() {
        alDistanceModel(AL_NONE);
        alGenBuffers(static_cast<ALsizei>(buffers.size()), buffers.data());
        alGenSources(static_cast<ALsizei>(sources.size()), sources.data());
        for (std::size_t i = 0; i < scene.size(); ++i) {
            const MixerScene::Voice& voice = scene[i];
            alBufferData(buffers[i], AL_FORMAT_MONO_FLOAT32, voice.sample.data(),
                         static_cast<ALsizei>(voice.sample.size() * sizeof(float)), 48'000);
            alSourcei(sources[i], AL_BUFFER, static_cast<ALint>(buffers[i]));
            alSourcei(sources[i], AL_SOURCE_RESAMPLER_SOFT, cubic);
            alSourcei(sources[i], AL_SOURCE_RELATIVE, AL_TRUE);
            alSource3f(sources[i], AL_POSITION, voice.pan, 0.0F,
                       -std::sqrt(1.0F - voice.pan * voice.pan));
            alSourcef(sources[i], AL_PITCH, voice.rate);
            alSourcef(sources[i], AL_GAIN, voice.gain);
        }
        require(alGetError() == AL_NO_ERROR, "the scene does not load");
    }

    void renderBuffer() {
        renderSamples(device, output.data(), static_cast<ALCsizei>(MixerScene::bufferFrames));
        ++rendered;
    }
};

OpenAlMixer::OpenAlMixer(const std::vector<MixerScene::Voice>& scene)
    : state_(std::make_unique<State>(scene)) {
    state_->open();
    state_->load();
}

OpenAlMixer::~OpenAlMixer() = default;

void OpenAlMixer::prepare() {
    state_->level = 1.0F;
    state_->rendered = 0;
    for (std::size_t i = 0; i < state_->sources.size(); ++i) {
        alSourcef(state_->sources[i], AL_GAIN, state_->scene[i].gain);
    }
    const auto count = static_cast<ALsizei>(state_->sources.size());
    alSourceRewindv(count, state_->sources.data());
    alSourcePlayv(count, state_->sources.data());
    render();
}

void OpenAlMixer::render() {
    state_->renderBuffer();
}

void OpenAlMixer::fade() {
    state_->level *= 0.97F;
    // One update for all of them, as a program would do it.
    alcSuspendContext(state_->context);
    for (std::size_t i = 0; i < state_->sources.size(); ++i) {
        alSourcef(state_->sources[i], AL_GAIN, state_->scene[i].gain * state_->level);
    }
    alcProcessContext(state_->context);
}

std::string OpenAlMixer::flaw() const {
    for (std::size_t i = 0; i < state_->sources.size(); ++i) {
        ALint playing = 0;
        alGetSourcei(state_->sources[i], AL_SOURCE_STATE, &playing);
        if (playing != AL_PLAYING) {
            return "a voice has ended";
        }
        ALint resampler = -1;
        alGetSourcei(state_->sources[i], AL_SOURCE_RESAMPLER_SOFT, &resampler);
        if (resampler != state_->cubic) {
            return "a voice is not resampled by the cubic";
        }
        ALint offset = 0;
        alGetSourcei(state_->sources[i], AL_SAMPLE_OFFSET, &offset);
        const double expected = state_->rendered * static_cast<double>(MixerScene::bufferFrames) *
                                static_cast<double>(state_->scene[i].rate);
        // It keeps pitches as fixed-point numbers of 14 fractional bits.
        if (std::fabs(offset - expected) > 4.0) {
            return "a voice does not play at its pitch";
        }
    }
    if (std::ranges::all_of(state_->output, [](float value) { return value == 0.0F; })) {
        return "silence";
    }
    return {};
}

} // namespace vornic
