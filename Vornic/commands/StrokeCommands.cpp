#include "Vornic/commands/BoardCommands.h"
#include "Vornic/library/BoardChoice.h"
#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/base/ReadableText.h"
#include "VornicCore/render/BuildBoard.h"
#include "VornicCore/sampler/VoiceBank.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <set>
#include <span>
#include <stdexcept>
#include <string_view>
#include <thread>

namespace vornic {

namespace {

using Clock = std::chrono::steady_clock;

std::string_view wordOf(Velocity velocity) {
    switch (velocity) {
    case Velocity::soft:
        return "soft";
    case Velocity::medium:
        return "medium";
    case Velocity::hard:
        return "hard";
    }
    return {};
}

std::span<const float> framesOf(const Sample& sample) {
    return {sample.data, static_cast<std::size_t>(sample.length)};
}

void write(const Sample& stroke, const std::filesystem::path& file) {
    if (const std::error_code error = writeFloatWAV(framesOf(stroke), file)) {
        throw std::runtime_error("Couldn't write " + file.string() + ": " + error.message());
    }
}

/// "sound "keys" of "Deep"".
std::string named(const SoundSpec& sound, const Board& board) {
    return "sound \"" + readable(sound.id) + "\" of \"" + readable(board.name) + "\"";
}

std::string soundsOf(const Board& board) {
    std::string ids;
    for (const SoundSpec& sound : board.sounds) {
        ids += (ids.empty() ? "" : ", ") + readable(sound.id);
    }
    return ids;
}

const SoundSpec& soundOf(const Board& board, const std::string& id) {
    const SoundSpec* const sound = board.sound(id);
    if (sound == nullptr) {
        throw std::runtime_error("\"" + readable(board.name) + "\" has no sound \"" + readable(id) +
                                 "\". Sounds: " + soundsOf(board) + ".");
    }
    return *sound;
}

/// Two digits at least, so that names sort as they count.
std::string twoDigits(std::size_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

/// A pool of a board and what its files' names begin with. Numbers and our own words only: the ids
/// of sounds may come from anywhere.
struct NamedPool {
    std::string key;
    std::string name;
};

std::vector<NamedPool> poolsOf(const Board& board) {
    std::vector<NamedPool> pools;
    std::set<std::string> known; // two sounds of one id share their pools
    const auto add = [&](std::string key, std::string name) {
        if (known.insert(key).second) {
            pools.push_back({std::move(key), std::move(name)});
        }
    };
    for (std::size_t index = 0; index < board.sounds.size(); ++index) {
        const std::string& sound = board.sounds[index].id;
        const std::string number = twoDigits(index + 1) + "-";
        for (const bool stabilised : {false, true}) {
            for (const Velocity velocity : allVelocities) {
                add(VoiceBank::key(sound, stabilised, velocity),
                    number + (stabilised ? "stabilised-" : "") + std::string(wordOf(velocity)));
            }
        }
        add(VoiceBank::releaseKey(sound), number + "release");
    }
    return pools;
}

struct StrokesReport {
    std::size_t pools = 0;
    std::size_t strokes = 0;
    std::int64_t frames = 0;
    /// How long rendering took, without loading and writing.
    double ms = 0;
};

std::string inWords(const StrokesReport& report) {
    nlohmann::json ms = report.ms;
    return std::to_string(report.strokes) + " strokes in " + std::to_string(report.pools) +
           " pools, " + std::to_string(report.frames) + " frames, rendered in " + ms.dump() +
           " ms\n";
}

std::string asJson(const StrokesReport& report) {
    nlohmann::ordered_json json;
    json["pools"] = report.pools;
    json["strokes"] = report.strokes;
    json["frames"] = report.frames;
    json["ms"] = report.ms;
    return json.dump() + "\n";
}

RenderedBoard rendered(const Board& board, const SampleLibrary& library, std::uint64_t seed) {
    RenderedBoard result =
        buildBoard(board, library, std::thread::hardware_concurrency(), {.seed = seed});
    for (std::string& message : result.messages) {
        constexpr std::size_t longestMessage = 300;
        message = readable(message, longestMessage);
    }
    return result;
}

} // namespace

CommandOutcome writeStroke(const WriteStroke& request, BoardShelf& shelf) {
    const Board board = chooseBoard(request.board, shelf.store, shelf.library);
    const SoundSpec& sound = soundOf(board, request.sound);
    if (request.release && !sound.release) {
        throw std::runtime_error("There is no release: " + named(sound, board) + " has none.");
    }
    const RenderedBoard whole = rendered(board, shelf.library, request.seed);
    const auto pool = whole.bank->pool(
        request.release ? VoiceBank::releaseKey(sound.id)
                        : VoiceBank::key(sound.id, request.stabilised, request.velocity));
    if (pool.empty() && request.stabilised &&
        !whole.bank->pool(VoiceBank::key(sound.id, false, request.velocity)).empty()) {
        throw std::runtime_error("No stabilised key plays " + named(sound, board) + ".");
    }
    if (pool.empty()) {
        throw std::runtime_error("None of the recordings is there for " + named(sound, board) +
                                 ", so it is silent.");
    }
    if (request.variant < 0 || request.variant >= std::ssize(pool)) {
        throw std::runtime_error("There is no variation " + std::to_string(request.variant) + ": " +
                                 named(sound, board) + " has " + std::to_string(pool.size()) +
                                 ", counted from 0.");
    }
    write(pool[static_cast<std::size_t>(request.variant)], request.out);
    return {.text = {}, .remarks = whole.messages};
}

CommandOutcome writeStrokes(const WriteStrokes& request, BoardShelf& shelf) {
    const Board board = chooseBoard(request.board, shelf.store, shelf.library);
    const Clock::time_point begun = Clock::now();
    const RenderedBoard whole = rendered(board, shelf.library, 1);
    const std::chrono::duration<double, std::milli> taken = Clock::now() - begun;

    std::error_code error;
    std::filesystem::create_directories(request.out, error);
    if (error) {
        throw std::runtime_error("Couldn't make the folder " + request.out.string() + ": " +
                                 error.message());
    }
    StrokesReport report;
    report.ms = std::round(taken.count() * 1000) / 1000;
    report.pools = whole.bank->pools().size();
    for (const NamedPool& pool : poolsOf(board)) {
        std::size_t variant = 0;
        for (const Sample& stroke : whole.bank->pool(pool.key)) {
            write(stroke, request.out / (pool.name + "-" + twoDigits(variant) + ".wav"));
            report.frames += stroke.length;
            ++report.strokes;
            ++variant;
        }
    }
    return {.text = request.json ? asJson(report) : inWords(report), .remarks = whole.messages};
}

} // namespace vornic
