#include "VornicCore/foreign/PlayedKeys.h"

#include "VornicCore/keys/KeyClass.h"
#include "VornicCore/keys/KeyboardLayout.h"
#include "VornicCore/keys/KnownKeys.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <set>

namespace vornic {

namespace {

/// The key that only ISO keyboards have, between left shift and Z.
constexpr std::int64_t isoKey = 10;
constexpr std::int64_t keyZ = 6;

struct Point {
    double x;
    double y;
};

std::optional<Point> placeOf(std::int64_t code) {
    const LayoutKey* const key = layout(LayoutID::full).find(code == isoKey ? keyZ : code);
    if (key == nullptr) {
        return std::nullopt;
    }
    return Point{key->centreX() - (code == isoKey ? 1 : 0), key->y + key->h / 2};
}

std::set<std::int64_t> keysOf(LayoutID id) {
    std::set<std::int64_t> codes;
    for (const LayoutKey& key : layout(id).keys) {
        if (key.code) {
            codes.insert(*key.code);
        }
    }
    return codes;
}

class Resolver {
  public:
    Resolver(const ForeignPack& pack, PackRecordings& recordings)
        : pack_(pack), recordings_(recordings) {}

    PlayedKeys resolve() {
        result_.fallback.press =
            strokeOf(pack_.fallback.press, "fallback", &result_.fallback.gainDb);
        result_.fallback.release = strokeOf(pack_.fallback.release, "fallback", nullptr);
        result_.fallback.from = "fallback";
        for (const auto& [code, key] : pack_.keys) {
            addOwn(code, key);
        }
        if (own_.empty() && result_.fallback.press.recordings.empty()) {
            throw ForeignPackError("None of its recordings can be read.");
        }
        for (const std::int64_t code : keysOf(LayoutID::full)) {
            fillIn(code);
        }
        fillIn(isoKey);
        if (result_.fallback.press.recordings.empty()) {
            const auto usual = result_.keys.find(0); // A
            result_.fallback = usual != result_.keys.end() && !isSilent(usual->second)
                                   ? usual->second
                                   : own_.begin()->second;
        }
        result_.layout = smallestLayout();
        measureReleases();
        return std::move(result_);
    }

  private:
    static bool isSilent(const PlayedKey& key) { return key.press.recordings.empty(); }

    /// `gainDb`, if given, becomes the mean loudness in the pack beside that of rendered strokes.
    PlayedStroke strokeOf(const std::vector<ForeignTake>& takes, const std::string& name,
                          double* gainDb) {
        PlayedStroke stroke;
        double sum = 0;
        double least = std::numeric_limits<double>::infinity();
        double most = -least;
        for (const ForeignTake& take : takes) {
            const std::optional<std::size_t> index = recordings_.add(take, name);
            if (!index) {
                continue;
            }
            if (stroke.recordings.empty()) {
                stroke.pitch = std::clamp(take.semitones, -36.0, 36.0);
            }
            stroke.recordings.push_back(*index);
            const double level = take.gainDb - recordings_.all()[*index].raisedDb;
            sum += level;
            least = std::min(least, level);
            most = std::max(most, level);
        }
        if (!stroke.recordings.empty()) {
            result_.spreadDb = std::max(result_.spreadDb, most - least);
            if (gainDb != nullptr) {
                *gainDb = sum / static_cast<double>(stroke.recordings.size());
            }
        }
        return stroke;
    }

    void addOwn(std::int64_t code, const ForeignKey& key) {
        const std::string name = webNameOf(code);
        PlayedKey played;
        played.isOwn = true;
        played.press = strokeOf(key.press, name, &played.gainDb);
        played.release = strokeOf(key.release, "the release of " + name, nullptr);
        if (isSilent(played)) {
            if (result_.fallback.press.recordings.empty()) {
                orphans_[code] = played.release;
                return;
            }
            played.isOwn = false;
            played.press = result_.fallback.press;
            played.gainDb = result_.fallback.gainDb;
            played.from = "fallback";
        }
        if (played.release.recordings.empty()) {
            played.release = result_.fallback.release;
        }
        result_.keys[code] = played;
        if (played.isOwn) {
            own_[code] = played;
        }
    }

    void fillIn(std::int64_t code) {
        if (result_.keys.contains(code)) {
            return;
        }
        if (pack_.silent.contains(code)) {
            result_.keys[code] = {};
            return;
        }
        PlayedKey played = result_.fallback;
        if (isSilent(played)) {
            const auto& [neighbour, sound] = *nearest(code);
            played = sound;
            played.from = webNameOf(neighbour);
        }
        played.isOwn = false;
        if (const auto orphan = orphans_.find(code);
            orphan != orphans_.end() && !orphan->second.recordings.empty()) {
            played.release = orphan->second;
        }
        result_.keys[code] = std::move(played);
    }

    /// The nearest of the pack's own keys, one of the same class where there is one.
    std::map<std::int64_t, PlayedKey>::const_iterator nearest(std::int64_t code) const {
        constexpr double otherClass = 1000;
        auto best = own_.begin();
        double least = std::numeric_limits<double>::infinity();
        const std::optional<Point> place = placeOf(code);
        for (auto each = own_.begin(); each != own_.end(); ++each) {
            const std::optional<Point> there = placeOf(each->first);
            if (!place || !there) {
                continue;
            }
            const double distance = std::hypot(place->x - there->x, place->y - there->y) +
                                    (keyClassOf(code) == keyClassOf(each->first) ? 0 : otherClass);
            if (distance < least) {
                least = distance;
                best = each;
            }
        }
        return best;
    }

    LayoutID smallestLayout() const {
        for (const LayoutID id : {LayoutID::sixty, LayoutID::tkl}) {
            const std::set<std::int64_t> keys = keysOf(id);
            const std::set<std::int64_t> full = keysOf(LayoutID::full);
            if (std::ranges::all_of(own_, [&](const auto& entry) {
                    return keys.contains(entry.first) || !full.contains(entry.first);
                })) {
                // A pack of few sounds for all keys says nothing about the keyboard.
                return own_.size() > 20 ? id : LayoutID::tkl;
            }
        }
        return LayoutID::full;
    }

    void measureReleases() {
        double sum = 0;
        double count = 0;
        for (const auto& [code, key] : own_) {
            for (const std::size_t index : key.release.recordings) {
                sum += -recordings_.all()[index].raisedDb - key.gainDb;
                count += 1;
            }
        }
        result_.releaseDb = count > 0 ? sum / count : 0;
    }

    const ForeignPack& pack_;
    PackRecordings& recordings_;
    PlayedKeys result_;
    std::map<std::int64_t, PlayedKey> own_;
    /// Releases of keys whose press is missing.
    std::map<std::int64_t, PlayedStroke> orphans_;
};

} // namespace

PlayedKeys playedKeys(const ForeignPack& pack, PackRecordings& recordings) {
    return Resolver(pack, recordings).resolve();
}

} // namespace vornic
