#include "packs/recorded/SpringPack.h"

#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/packs/SoundPack.h"

#include "packs/recorded/KeyRecording.h"
#include "packs/recorded/PackFiles.h"
#include "packs/recorded/StrokeShape.h"
#include "packs/recorded/StrokeVariant.h"
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <set>

namespace vornic::packs {

namespace {

namespace fs = std::filesystem;
using Samples = std::vector<float>;

constexpr double pressLevel = -24;
constexpr double releaseLevel = -30;
constexpr double ceiling = -1;
constexpr auto credit = "Recordings by Ico Doornekampt, 2016, from Debian's bucklespring-data, cut "
                        "and levelled, those of wide keys also varied; GPL version 2 or later";

struct Collected {
    std::map<KeyClass, std::vector<Samples>> presses;
    std::vector<Samples> releases;
};

std::vector<fs::path> sortedEntries(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> entries;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        entries.push_back(entry->path());
    }
    std::ranges::sort(entries);
    return entries;
}

// A mono file's samples as the file holds them: converting the rate hides what ran into full
// scale. Empty for any other file.
Samples unconverted(const fs::path& file) {
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, decltype(&sf_close)> sound(
        sf_open(file.c_str(), SFM_READ, &info), &sf_close);
    if (!sound || info.channels != 1) {
        return {};
    }
    Samples samples(static_cast<std::size_t>(info.frames));
    sf_readf_float(sound.get(), samples.data(), info.frames);
    return samples;
}

// The recordings so far, to know one that comes again.
using Seen = std::set<Samples>;

// Why a recording is of no use, or nothing.
std::string flawOf(const Samples& recording, const fs::path& file, Seen& seen) {
    if (peak(recording) < 0.001F) {
        return "silent";
    }
    if (isClipped(unconverted(file))) {
        return "ran into full scale";
    }
    if (!seen.insert(recording).second) {
        return "repeats another";
    }
    return {};
}

// The stroke in `file`, or in `flaw` why it is of no use.
Samples strokeIn(const fs::path& file, Stroke kind, Seen& seen, std::string& flaw) {
    std::optional<Samples> recording = loadAudio(file);
    if (!recording) {
        flaw = "cannot be read";
        return {};
    }
    flaw = flawOf(*recording, file, seen);
    removeRumble(*recording);
    Samples stroke = cutStroke(*recording, strokeOnset(*recording, kind));
    if (flaw.empty() && holdsSecondStroke(stroke)) {
        flaw = "holds a second stroke";
    }
    return stroke;
}

Collected collect(const fs::path& source, std::vector<std::string>& notes) {
    Collected collected;
    Seen seen;
    for (const fs::path& file : sortedEntries(source)) {
        std::string name = file.filename().string();
        const auto kind = keyRecordingNamed(name);
        if (!kind) {
            continue;
        }
        std::string flaw;
        Samples stroke = strokeIn(file, kind->stroke, seen, flaw);
        if (!flaw.empty()) {
            notes.push_back(name.append(": ").append(flaw));
            continue;
        }
        auto& list = kind->stroke == Stroke::release ? collected.releases
                                                     : collected.presses[kind->keyClass];
        list.push_back(std::move(stroke));
    }
    return collected;
}

// Wide keys were recorded once or twice; a keyboard never sounds twice the same.
void addVariants(std::map<KeyClass, std::vector<Samples>>& presses) {
    constexpr std::size_t enough = 6;
    for (const KeyClass keyClass : {KeyClass::space, KeyClass::enter, KeyClass::backspace}) {
        std::vector<Samples>& strokes = presses[keyClass];
        const std::size_t recorded = strokes.size();
        for (std::size_t i = recorded; recorded > 0 && i < enough; ++i) {
            strokes.push_back(variantOf(strokes[i % recorded], i));
        }
    }
}

void amplify(Samples& samples, double gainDb) {
    const double room = ceiling - decibels(static_cast<double>(peak(samples)));
    const auto factor = static_cast<float>(std::pow(10.0, std::min(gainDb, room) / 20));
    for (float& x : samples) {
        x *= factor;
    }
}

double medianLevel(const std::vector<Samples>& strokes) {
    std::vector<double> levels;
    std::ranges::transform(strokes, std::back_inserter(levels),
                           [](const Samples& stroke) { return strokeLevel(stroke); });
    const auto middle = levels.begin() + static_cast<std::ptrdiff_t>(levels.size() / 2);
    std::ranges::nth_element(levels, middle);
    return *middle;
}

std::vector<Samples> inOrder(const std::vector<Samples>& strokes, const StrokeOrder& order) {
    std::vector<Samples> ordered;
    for (const std::size_t stroke : order(strokes)) {
        ordered.push_back(strokes[stroke]);
    }
    return ordered;
}

void setLevels(Collected& collected) {
    const double gain = pressLevel - medianLevel(collected.presses[KeyClass::regular]);
    for (auto& [keyClass, strokes] : collected.presses) {
        for (Samples& stroke : strokes) {
            amplify(stroke,
                    keyClass == KeyClass::regular ? pressLevel - strokeLevel(stroke) : gain);
        }
    }
    for (Samples& stroke : collected.releases) {
        amplify(stroke, releaseLevel - strokeLevel(stroke));
    }
}

} // namespace

Assembly assembleSpringPack(const fs::path& source, const fs::path& target,
                            const StrokeOrder& order) {
    Assembly assembly;
    Collected collected = collect(source, assembly.notes);
    if (collected.presses[KeyClass::regular].empty()) {
        assembly.error = "no usable press of a regular key in " + source.string();
        return assembly;
    }
    addVariants(collected.presses);
    setLevels(collected);
    if (order) {
        collected.releases = inOrder(collected.releases, order);
        for (auto& [keyClass, strokes] : collected.presses) {
            strokes = inOrder(strokes, order);
        }
    }
    std::error_code error;
    fs::remove_all(target, error);
    fs::create_directories(target, error);
    bool written = writeStrokes(collected.releases, "release", target);
    assembly.written = collected.releases.size();
    for (const auto& [keyClass, strokes] : collected.presses) {
        written = written && writeStrokes(strokes, packFileWord(keyClass), target);
        assembly.written += strokes.size();
    }
    if (!written || !writeManifest({.id = "spring",
                                    .name = "Buckling Spring",
                                    .character = "A loud spring under every key",
                                    .credit = credit},
                                   target)) {
        assembly.error = "cannot write to " + target.string();
    }
    return assembly;
}

} // namespace vornic::packs
