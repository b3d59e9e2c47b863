// How long does a voice take to mix? Nanoseconds per voice and frame, for the plain mixer, the one
// that this processor would use, and OpenAL Soft with its cubic resampler as a peer. One run, one
// scene: 48 pitched voices with stereo gains, buffers of 128 frames at 48 kHz.

#include "VornicCore/sampler/SamplerCore.h"
#include "bench/Contest.h"
#include "bench/MixerScene.h"

#if defined(VORNIC_BENCH_OPENAL)
#include "bench/OpenAlMixer.h"
#endif

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <memory>

namespace vornic {
namespace {

constexpr int rounds = 200;
constexpr double voiceFrames = static_cast<double>(MixerScene::voices) *
                               static_cast<double>(MixerScene::bufferFrames) * MixerScene::buffers;

struct Output {
    std::array<float, MixerScene::bufferFrames> left{};
    std::array<float, MixerScene::bufferFrames> right{};
};

/// The whole sampler: queue, voices, reflection's history.
Contest::Contestant sampler(const char* name, const std::vector<MixerScene::Voice>& scene,
                            VoiceMixer mixer, bool binaural) {
    auto core = std::make_shared<SamplerCore>(MixerScene::sampleRate, 512U, mixer);
    auto output = std::make_shared<Output>();
    const auto render = [core, output] {
        core->render(MixerScene::bufferFrames, output->left.data(), output->right.data(), 0);
    };
    return {.name = name,
            .prepare =
                [core, render, &scene, binaural] {
                    core->clear();
                    for (const MixerScene::Voice& voice : scene) {
                        const VoiceStage stage =
                            binaural ? VoiceStage::binaural(voice.pan, MixerScene::sampleRate)
                                     : VoiceStage::none;
                        core->play({.data = voice.sample.data(),
                                    .length = static_cast<std::int64_t>(voice.sample.size())},
                                   voice.gain, voice.pan, voice.rate, 0, stage);
                    }
                    render();
                },
            .run =
                [render] {
                    for (int i = 0; i < MixerScene::buffers; ++i) {
                        render();
                    }
                },
            .flaw =
                [core] {
                    return core->activeVoices() == MixerScene::voices ? "" : "a voice has ended";
                }};
}

/// Voices alone, all of them fading: the sampler never lets so many fade at once. A fade lasts for
/// two buffers and is then begun again.
Contest::Contestant fading(const char* name, const std::vector<MixerScene::Voice>& scene,
                           VoiceMixer mixer) {
    struct State {
        FadeCurve fade{288};
        std::vector<Voice> voices;
        Output output;
    };
    auto state = std::make_shared<State>();
    return {.name = name,
            .prepare =
                [state, &scene] {
                    state->voices.clear();
                    for (const MixerScene::Voice& voice : scene) {
                        const auto [left, right] = SamplerCore::ears(voice.gain, voice.pan);
                        state->voices.push_back(
                            {.data = voice.sample.data(),
                             .length = static_cast<std::int64_t>(voice.sample.size()),
                             .rate = static_cast<double>(voice.rate),
                             .gainLeft = left,
                             .gainRight = right});
                    }
                },
            .run =
                [state, mixer] {
                    for (int i = 0; i < MixerScene::buffers; ++i) {
                        state->output.left.fill(0.0F);
                        state->output.right.fill(0.0F);
                        for (Voice& voice : state->voices) {
                            if (i % 2 == 0) {
                                voice.fadeLeft = state->fade.frames();
                            }
                            mixer(voice, state->fade, MixerScene::bufferFrames,
                                  state->output.left.data(), state->output.right.data());
                        }
                    }
                },
            .flaw =
                [state] {
                    const bool all = std::ranges::all_of(state->voices, &Voice::fading);
                    return all ? "" : "a voice has ended";
                }};
}

#if defined(VORNIC_BENCH_OPENAL)
Contest::Contestant peer(const char* name, const std::shared_ptr<OpenAlMixer>& mixer,
                         bool fadeAll) {
    return {.name = name,
            .prepare = [mixer] { mixer->prepare(); },
            .run =
                [mixer, fadeAll] {
                    for (int i = 0; i < MixerScene::buffers; ++i) {
                        if (fadeAll) {
                            mixer->fade();
                        }
                        mixer->render();
                    }
                },
            .flaw = [mixer] { return mixer->flaw(); }};
}
#endif

int run() {
    const auto scene = MixerScene::make(2024);
    const VoiceMixer best = bestVoiceMixer();
    Contest contest;
    contest.add(sampler("plain", scene, mixVoicePlain, false));
    contest.add(sampler("fast", scene, best, false));
    contest.add(sampler("plain, binaural", scene, mixVoicePlain, true));
    contest.add(sampler("fast, binaural", scene, best, true));
    contest.add(fading("plain, all fading", scene, mixVoicePlain));
    contest.add(fading("fast, all fading", scene, best));
#if defined(VORNIC_BENCH_OPENAL)
    const auto openAl = std::make_shared<OpenAlMixer>(scene);
    contest.add(peer("OpenAL Soft, cubic", openAl, false));
    contest.add(peer("OpenAL Soft, cubic, gains changing", openAl, true));
#endif
    if (const std::string flaw = contest.measure(rounds); !flaw.empty()) {
        std::fprintf(stderr, "not measured: %s\n", flaw.c_str());
        return 1;
    }
    std::printf("%d voices, buffers of %d frames, %d rounds; ns per voice and frame\n",
                MixerScene::voices, static_cast<int>(MixerScene::bufferFrames), rounds);
    std::printf("%-36s %8s %8s %8s\n", "", "median", "p5", "p95");
    for (std::size_t i = 0; i < contest.size(); ++i) {
        std::printf("%-36s %8.3f %8.3f %8.3f\n", contest.name(i).c_str(),
                    contest.median(i) / voiceFrames, contest.quantile(i, 0.05) / voiceFrames,
                    contest.quantile(i, 0.95) / voiceFrames);
    }
    if (best == mixVoicePlain) {
        std::puts("This processor has no fast mixer: the plain one stands in for it.");
    }
#if defined(VORNIC_BENCH_OPENAL)
    std::printf("peer / fast                %6.2f\n", contest.ratio(6, 1));
    std::printf("peer / fast, binaural      %6.2f\n", contest.ratio(6, 3));
    std::printf("peer / fast, all fading    %6.2f (peer with changing gains %.2f)\n",
                contest.ratio(6, 5), contest.ratio(7, 5));
#else
    std::puts("Built without OpenAL (Debian: libopenal-dev): no peer to compare with.");
#endif
    std::printf("plain / fast               %6.2f\n", contest.ratio(0, 1));
    return 0;
}

} // namespace
} // namespace vornic

int main() {
    try {
        return vornic::run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "not measured: %s\n", error.what());
        return 1;
    }
}
