#include "VornicCore/render/BoardJobs.h"

#include "VornicCore/keys/KeySet.h"
#include "VornicCore/render/JobLimits.h"
#include "VornicCore/sampler/Velocity.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

namespace vornic {

namespace {

std::set<std::string> soundsOfStabilisedKeys(const Board& board) {
    std::set<std::string> sounds;
    for (const std::int64_t key : KeySet::stabilised) {
        if (const auto resolved = board.resolve(key)) {
            sounds.insert(resolved->sound->id);
        }
    }
    return sounds;
}

std::set<std::string> soundsOfAnyKey(const Board& board) {
    constexpr std::int64_t keyCodes = 128;
    std::set<std::string> sounds;
    for (std::int64_t key = 0; key < keyCodes; ++key) {
        if (const auto resolved = board.resolve(key)) {
            sounds.insert(resolved->sound->id);
        }
    }
    return sounds;
}

} // namespace

BoardJobs::BoardJobs(const Board& board) {
    const std::set<std::string> stabilised = soundsOfStabilisedKeys(board);
    const std::set<std::string> onKeys = soundsOfAnyKey(board);
    std::unordered_map<RenderJob, std::size_t> known;
    bool tooMany = false;
    const auto add = [&](const RenderJob& wanted) {
        LimitedJob within = limited(wanted);
        for (std::string& message : within.messages) {
            note(std::move(message));
        }
        const auto [found, isNew] = known.try_emplace(within.job, jobs.size());
        if (isNew) {
            if (strokes_ + strokes(within.job) > mostStrokes) {
                tooMany = true;
                known.erase(found);
                return;
            }
            strokes_ += strokes(within.job);
            jobs.push_back(std::move(within.job));
            played.push_back(onKeys.contains(wanted.sound.id));
        }
        uses.push_back({.job = found->second, .sound = wanted.sound.id});
    };
    for (const SoundSpec& sound : board.sounds) {
        add(RenderJob(sound, board, false, false));
        if (sound.release) {
            add(RenderJob(sound, board, false, true));
        }
        if (stabilised.contains(sound.id)) {
            add(RenderJob(sound, board, true, false));
        }
    }
    if (tooMany) {
        messages.push_back("The board's sounds have more than " + std::to_string(mostStrokes) +
                           " variations; those beyond are not rendered");
    }
}

std::int64_t BoardJobs::strokes(const RenderJob& job) {
    return job.sound.variations * (job.isRelease ? 1 : std::ssize(allVelocities));
}

void BoardJobs::note(std::string message) {
    constexpr std::size_t mostMessages = 40;
    if (messages.size() < mostMessages && std::ranges::find(messages, message) == messages.end()) {
        messages.push_back(std::move(message));
    }
}

} // namespace vornic
