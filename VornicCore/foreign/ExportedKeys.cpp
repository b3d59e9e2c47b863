#include "VornicCore/foreign/ExportedKeys.h"

#include "VornicCore/keys/KeyLayout.h"
#include "VornicCore/keys/KeySet.h"
#include "VornicCore/keys/KeyboardLayout.h"
#include "VornicCore/keys/KnownKeys.h"

#include <algorithm>
#include <array>

namespace vornic {

namespace {

/// The keys of a full keyboard, those of the board's own and the one that only ISO keyboards have.
std::vector<std::int64_t> codesOf(const Board& board) {
    std::vector<KnownKey> known(knownKeys().begin(), knownKeys().end());
    std::ranges::sort(known, {}, &KnownKey::evdev);
    constexpr std::int64_t isoKey = 10;
    std::vector<std::int64_t> codes;
    for (const KnownKey& key : known) {
        if (key.code == isoKey || layout(LayoutID::full).find(key.code) != nullptr ||
            board.keys.contains(std::to_string(key.code))) {
            codes.push_back(key.code);
        }
    }
    return codes;
}

bool playsRelease(const Assignment& assignment, const Board& board) {
    return assignment.release == ReleaseMode::on ||
           (assignment.release == ReleaseMode::inherit && board.releaseByDefault);
}

} // namespace

ExportedKeys::ExportedKeys(const Board& board, const VoiceBank& bank) {
    static constexpr std::array<const char*, 3> words{"soft", "medium", "hard"};
    for (const std::int64_t code : codesOf(board)) {
        const auto resolved = board.resolve(code);
        if (!resolved) {
            continue;
        }
        const auto& [sound, assignment] = *resolved;
        const std::string number = std::to_string(sound - board.sounds.data() + 1);
        ExportedKey key{.code = code,
                        .gainDb = assignment.gainDb,
                        .pitch = assignment.pitch,
                        .pan = assignment.pan.value_or(
                            static_cast<double>(KeyLayout::pan(code, 1, layout(board.layout)))),
                        .presses = {},
                        .releases = {}};
        const auto add = [&](std::vector<ExportedPool>& to, const std::string& name,
                             const std::string& pool) {
            if (const auto strokes = bank.pool(pool); !strokes.empty()) {
                to.push_back({name, strokes});
                pools.emplace(name, strokes);
            }
        };
        const bool stabilised = KeySet::isStabilised(code);
        for (const Velocity velocity : allVelocities) {
            add(key.presses,
                (stabilised ? "stabilised-" : "press-") + number + "-" +
                    words.at(static_cast<std::size_t>(velocity)),
                VoiceBank::key(sound->id, stabilised, velocity));
        }
        if (playsRelease(assignment, board)) {
            add(key.releases, "release-" + number, VoiceBank::releaseKey(sound->id));
        }
        if (!key.presses.empty() || !key.releases.empty()) {
            keys.push_back(std::move(key));
        }
    }
}

} // namespace vornic
