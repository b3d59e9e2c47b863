#include "VornicCore/foreign/BoardOfKeys.h"

#include "VornicCore/keys/KnownKeys.h"
#include "VornicCore/render/BoardJobs.h"
#include "VornicCore/render/JobLimits.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace vornic {

namespace {

constexpr std::int64_t fewestVariations = 4;
constexpr std::array<const char*, 6> colours{"#5E5CE6", "#30D158", "#63E6E2",
                                             "#FFD60A", "#FF375F", "#BF5AF2"};

double rounded(double gainDb) {
    return std::round(std::clamp(gainDb, -60.0, 40.0) * 100) / 100;
}

StrokeSpec strokeSpecOf(const PlayedStroke& stroke, LayerPart part) {
    std::vector<std::string> ids;
    ids.reserve(stroke.recordings.size());
    for (const std::size_t index : stroke.recordings) {
        ids.push_back(recordingId(index));
    }
    return StrokeSpec({LayerSpec(part, std::move(ids), 0, 0, stroke.pitch)});
}

class Maker {
  public:
    Maker(const PlayedKeys& played, PackNotes& notes) : played_(played), notes_(notes) {}

    Board make() {
        board_.id = "pack";
        board_.colorHex = colours[0];
        board_.layout = played_.layout;
        // The recordings have whatever rattle there is.
        board_.stabs.rattle = 0;
        for (const KeyGroup group : allCases<KeyGroup>()) {
            setGroup(group);
        }
        for (const auto& [code, key] : played_.keys) {
            setKey(code, key);
        }
        nameSounds();
        limitVariations();
        return std::move(board_);
    }

  private:
    using Sound = std::pair<PlayedStroke, PlayedStroke>;
    /// A sound and a gain in hundredths of a dB.
    struct Playing {
        Sound sound;
        std::int64_t gain = 0;
        auto operator<=>(const Playing&) const = default;
    };

    static Playing playingOf(const PlayedKey& key) {
        return {{key.press, key.release}, std::llround(rounded(key.gainDb) * 100)};
    }

    /// What most keys of the group play; for keys that nobody knows, which count as letters, the
    /// fallback where no two letters are alike.
    void setGroup(KeyGroup group) {
        std::map<Playing, std::size_t> counts;
        const Playing* most = nullptr;
        std::size_t best = 0;
        for (const auto& [code, key] : played_.keys) {
            if (keyGroupOf(code) != group) {
                continue;
            }
            const auto entry = counts.try_emplace(playingOf(key), 0).first;
            ++entry->second;
        }
        for (const auto& [playing, count] : counts) {
            if (count > best) {
                best = count;
                most = &playing;
            }
        }
        const bool takesFallback = best == 0 || (group == KeyGroup::alphas && best == 1 &&
                                                 played_.fallback.from == "fallback");
        const Playing playing = takesFallback ? playingOf(played_.fallback) : *most;
        Assignment assignment;
        assignment.sound = soundId(playing.sound);
        assignment.gainDb = static_cast<double>(playing.gain) / 100;
        board_.groups[group] = assignment;
        groups_[group] = playing;
    }

    void setKey(std::int64_t code, const PlayedKey& key) {
        const Playing wanted = playingOf(key);
        users_[soundId(wanted.sound)].push_back(code);
        const Playing& group = groups_.at(keyGroupOf(code));
        if (wanted == group) {
            return;
        }
        Assignment assignment;
        if (wanted.sound != group.sound) {
            assignment.sound = soundId(wanted.sound);
        }
        if (!wanted.sound.first.recordings.empty()) {
            // Gains of key and group add.
            assignment.gainDb = static_cast<double>(wanted.gain - group.gain) / 100;
        }
        board_.keys[std::to_string(code)] = assignment;
    }

    std::string soundId(const Sound& sound) {
        const auto [found, isNew] = ids_.try_emplace(sound, std::string());
        if (isNew) {
            const auto& [press, release] = sound;
            found->second = "s" + std::to_string(ids_.size());
            SoundSpec spec(found->second, {}, colours[ids_.size() % colours.size()],
                           press.recordings.empty() ? StrokeSpec()
                                                    : strokeSpecOf(press, LayerPart::bottomOut),
                           std::nullopt, SwitchParts(), Character());
            if (!release.recordings.empty()) {
                spec.release = strokeSpecOf(release, LayerPart::topOut);
            }
            spec.variations = std::clamp<std::int64_t>(
                std::ssize(press.recordings.size() > release.recordings.size()
                               ? press.recordings
                               : release.recordings),
                fewestVariations, JobLimits::mostVariations);
            board_.sounds.push_back(std::move(spec));
        }
        return found->second;
    }

    /// By its one key, by the group that its keys belong to, or as what it is.
    std::string nameOf(const SoundSpec& sound) const {
        if (sound.press.layers.empty()) {
            return "Silence";
        }
        const auto users = users_.find(sound.id);
        if (users == users_.end()) {
            return "Other keys";
        }
        if (users->second.size() == 1) {
            return webNameOf(users->second[0]);
        }
        std::set<KeyGroup> groups;
        for (const std::int64_t code : users->second) {
            groups.insert(keyGroupOf(code));
        }
        return groups.size() == 1 ? std::string(label(*groups.begin())) : "Keys";
    }

    void nameSounds() {
        std::map<std::string, int> taken;
        for (SoundSpec& sound : board_.sounds) {
            sound.name = nameOf(sound);
            if (const int count = ++taken[sound.name]; count > 1) {
                sound.name += " " + std::to_string(count);
            }
        }
    }

    /// No board renders more than so many strokes.
    void limitVariations() {
        std::int64_t strokes = 0;
        for (const SoundSpec& sound : board_.sounds) {
            constexpr std::int64_t most = 7; // presses, stabilised ones and releases
            strokes += sound.variations * most;
        }
        if (strokes <= BoardJobs::mostStrokes) {
            return;
        }
        for (SoundSpec& sound : board_.sounds) {
            sound.variations =
                std::max(fewestVariations, sound.variations * BoardJobs::mostStrokes / strokes);
        }
        addNote(notes_.remarks, "It has more recordings than play at once: some sounds use a part "
                                "of theirs.");
    }

    const PlayedKeys& played_;
    PackNotes& notes_;
    Board board_;
    std::map<Sound, std::string> ids_;
    std::map<KeyGroup, Playing> groups_;
    std::map<std::string, std::vector<std::int64_t>> users_;
};

} // namespace

std::string recordingId(std::size_t index) {
    const std::string digits = std::to_string(index);
    constexpr std::size_t width = 4;
    return "pack/" + std::string(width - std::min(width, digits.size()), '0') + digits;
}

Board boardOfKeys(const PlayedKeys& played, PackNotes& notes) {
    return Maker(played, notes).make();
}

} // namespace vornic
