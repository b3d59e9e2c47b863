// Whether the sound packs can be told from real keyboards: a classifier is trained on each pack's
// strokes and on real ones, without those of the keyboard that the pack is modelled after, and then
// has to tell strokes of the pack that it has not seen from that keyboard's.
//
//   bench_judge [TARGETS]
//
// What stands for real are figures drawn from the distributions of measured keystrokes, no strokes,
// and the recordings of the pack "spring". Without TARGETS only the latter.

#include "VornicCore/base/SplitMix64.h"
#include "bench/PackStrokes.h"

#include "packs/analysis/Classifier.h"
#include "packs/analysis/Targets.h"
#include "packs/model/PackTable.h"
#include "packs/model/StrokeModel.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <numbers>
#include <numeric>
#include <string>
#include <utility>

namespace {

using namespace vornic;
using namespace vornic::packs;
using Strokes = std::vector<Figures>;
using Recordings = std::vector<std::vector<float>>;

constexpr std::size_t folds = 5;
constexpr std::size_t repeats = 5; // with other draws
constexpr std::size_t drawn = 30;  // strokes of each keyboard
const std::string usualTargets = "../shared/sound/targets.json";
const std::string recordedKeyboard = "ibm-model-m";

Strokes figuresOfAll(const Recordings& recordings) {
    Strokes strokes;
    for (const auto& samples : recordings) {
        strokes.push_back(figuresOf(featuresOf(samples)));
    }
    return strokes;
}

void append(Strokes& strokes, const Strokes& more) {
    strokes.insert(strokes.end(), more.begin(), more.end());
}

Strokes shuffled(Strokes strokes, std::uint64_t seed) {
    SplitMix64 random(seed);
    for (std::size_t i = strokes.size(); i > 1; --i) {
        std::swap(strokes[i - 1], strokes[random.next(i)]);
    }
    return strokes;
}

Strokes everySecond(const Strokes& strokes, std::size_t first) {
    Strokes half;
    for (std::size_t i = first; i < strokes.size(); i += 2) {
        half.push_back(strokes[i]);
    }
    return half;
}

// One real keyboard.
struct Real {
    std::string name;
    ClassFeatures features; // to draw from, if any
    Strokes recorded;       // or its strokes

    Strokes strokes(const Strokes& lender, std::uint64_t seed) const {
        return recorded.empty() ? drawnFigures(features, lender, drawn, seed) : recorded;
    }
};

struct Verdict {
    std::vector<double> areas;
    Figures parts = Figures(figureNames().size()); // what speaks against the suspect
};

// What is on trial beside the keyboard it should sound like.
void judge(const Strokes& suspect, const Strokes& counterpart, const Strokes& others,
           std::uint64_t seed, Verdict& verdict) {
    const Strokes mixed = shuffled(suspect, seed);
    std::vector<double> modelled;
    std::vector<double> real(counterpart.size());
    double area = 0;
    for (std::size_t fold = 0; fold < folds; ++fold) {
        Strokes seen;
        Strokes unseen;
        for (std::size_t i = 0; i < mixed.size(); ++i) {
            (i % folds == fold ? unseen : seen).push_back(mixed[i]);
        }
        const Classifier classifier(seen, others);
        modelled.clear();
        for (const Figures& stroke : unseen) {
            modelled.push_back(classifier.score(stroke));
        }
        std::ranges::transform(counterpart, real.begin(),
                               [&](const Figures& stroke) { return classifier.score(stroke); });
        area += areaUnderCurve(modelled, real) / folds;
        const Figures against = classifier.parts(unseen);
        const Figures usual = classifier.parts(counterpart);
        for (std::size_t i = 0; i < against.size(); ++i) {
            verdict.parts[i] += against[i] - usual[i];
        }
    }
    verdict.areas.push_back(area);
}

void print(const std::string& name, std::size_t strokes, const Verdict& verdict) {
    const Statistic area = statisticOf(verdict.areas);
    std::printf("%-26s %3zu  %.2f +- %.2f  ", name.c_str(), strokes, area.median, area.deviation);
    std::vector<std::size_t> order(verdict.parts.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, std::ranges::greater(),
                      [&](std::size_t i) { return verdict.parts[i]; });
    double sum = 0;
    for (const double part : verdict.parts) {
        sum += std::max(part, 0.0);
    }
    for (std::size_t i = 0; i < 4; ++i) {
        std::printf("%s%s %.0f %%", i == 0 ? "" : ", ", figureNames()[order[i]].c_str(),
                    100 * verdict.parts[order[i]] / std::max(sum, 1e-9));
    }
    std::printf("\n");
}

// What no keyboard sounds like, each with a pitch and a decay of its own.
Recordings decaying(bool isNoise) {
    Recordings result;
    SplitMix64 random(11);
    for (int i = 0; i < 26; ++i) {
        const double decay = 48 * random.uniform(3, 20);
        const double turn = 2 * std::numbers::pi * random.uniform(500, 6000) / 48000;
        std::vector<float> samples(9600);
        for (std::size_t at = 48; at < samples.size(); ++at) {
            const auto since = static_cast<double>(at - 48);
            const double wave = isNoise ? random.uniform(-1, 1) : std::sin(turn * since);
            samples[at] = static_cast<float>(0.5 * wave * std::exp(-since / decay));
        }
        result.push_back(std::move(samples));
    }
    return result;
}

class Court {
  public:
    Court(std::filesystem::path targets, std::string keyClass)
        : targets_(std::move(targets)), keyClass_(std::move(keyClass)) {
        const auto spring = SoundPack::load(std::filesystem::path(VORNIC_BUILT_PACKS) / "spring");
        isRecorded_ = spring && spring->manifest.credit.find("not recorded") == std::string::npos;
        if (isRecorded_) {
            recorded_ = figuresOfAll(bench::strokesOf(*spring, keyClass_));
        }
        for (const auto& [pack, keyboard] : measuredKeyboards(targets_)) {
            const auto found = readTargets(targets_, pack, keyboard);
            if (found && found->classes.contains(keyClass_) &&
                (keyboard != recordedKeyboard || !isRecorded_)) {
                real_.push_back({keyboard, found->classes.at(keyClass_), {}});
            }
        }
        hasFigures_ = !real_.empty();
        if (isRecorded_) {
            real_.push_back({recordedKeyboard, {}, recorded_});
        }
    }

    void sit() const {
        std::printf("%s: area under the curve (0.5: cannot be told apart), what betrays\n",
                    keyClass_.c_str());
        for (const char* id : {"deep", "soft", "plastic", "metal", "clicky", "spring"}) {
            tryPack(id);
        }
        if (isRecorded_) {
            tryControls();
        }
        std::printf("\n");
    }

  private:
    void tryPack(const std::string& id) const {
        std::string error;
        const auto table =
            readPackTable(std::filesystem::path(VORNIC_PACK_TABLES) / (id + ".json"), error);
        const auto pack = SoundPack::load(std::filesystem::path(VORNIC_BUILT_PACKS) / id);
        if (!table || !pack) {
            std::printf("%s: no table or no pack\n", id.c_str());
            return;
        }
        // Where its recordings are, the pack "spring" is real; on trial is what stands in for it.
        const Strokes suspect = figuresOfAll(id == "spring" ? makeStrokes(*table, keyClass_)
                                                            : bench::strokesOf(*pack, keyClass_));
        std::string name = id == "spring" ? "spring, modelled" : id;
        const auto counterpart = std::ranges::find(real_, table->keyboard, &Real::name);
        if (counterpart == real_.end() && hasFigures_) {
            std::printf("%-26s not measured\n", id.c_str());
            return;
        }
        Verdict verdict;
        for (std::size_t i = 0; i < repeats; ++i) {
            if (counterpart != real_.end() && hasFigures_) {
                judge(suspect, counterpart->strokes(recorded_, 1000 + i),
                      others(counterpart->name, i), i, verdict);
            } else {
                againstRecordings(suspect, i, verdict);
            }
        }
        print(name, suspect.size(), verdict);
    }

    // All real ones but one.
    Strokes others(const std::string& without, std::uint64_t seed) const {
        Strokes all;
        for (std::size_t i = 0; i < real_.size(); ++i) {
            if (real_[i].name != without) {
                append(all, real_[i].strokes(recorded_, 100 * seed + i));
            }
        }
        return all;
    }

    // One half of the recordings is known, the other is not.
    void againstRecordings(const Strokes& suspect, std::uint64_t seed, Verdict& verdict) const {
        const Strokes mixed = shuffled(recorded_, seed);
        judge(suspect, everySecond(mixed, 0), everySecond(mixed, 1), seed, verdict);
    }

    void tryControls() const {
        const auto control = [&](const char* name, const Strokes& suspect) {
            Verdict verdict;
            for (std::size_t i = 0; i < repeats; ++i) {
                againstRecordings(suspect, i, verdict);
            }
            print(name, suspect.size(), verdict);
        };
        control("control: noise bursts", figuresOfAll(decaying(true)));
        control("control: sines", figuresOfAll(decaying(false)));
        control("control: one stroke, 26 x", Strokes(26, recorded_.front()));
        Verdict verdict;
        for (std::size_t i = 0; i < repeats; ++i) {
            const Strokes mixed = shuffled(recorded_, 500 + i);
            const Strokes half = everySecond(mixed, 0);
            const Strokes rest = everySecond(mixed, 1);
            // Known are others, or else a part of the other half.
            judge(half, hasFigures_ ? rest : everySecond(rest, 0),
                  hasFigures_ ? others(recordedKeyboard, i) : everySecond(rest, 1), i, verdict);
        }
        print("control: half a keyboard", recorded_.size() / 2, verdict);
    }

    std::filesystem::path targets_;
    std::string keyClass_;
    bool isRecorded_ = false;
    bool hasFigures_ = false;
    Strokes recorded_;
    std::vector<Real> real_;
};

} // namespace

int main(int count, char** arguments) {
    try {
        const std::filesystem::path targets = count > 1 ? arguments[1] : usualTargets;
        if (std::filesystem::exists(targets)) {
            std::cout << "Real: figures drawn from the distributions in " << targets.string()
                      << " (no real strokes) and the pack \"spring\".\n";
        } else {
            std::cout << "No measured keystrokes at " << targets.string()
                      << ": real are the recordings of the pack \"spring\" only, and the packs are "
                         "of other keyboards.\n";
        }
        for (const char* keyClass : {"regular", "release"}) {
            Court(targets, keyClass).sit();
        }
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "bench_judge: " << error.what() << "\n";
        return 1;
    }
}
