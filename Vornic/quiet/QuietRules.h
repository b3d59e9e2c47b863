#pragma once

#include "Vornic/ports/QuietWatch.h"
#include "VornicCore/board/StageSpec.h"

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace vornic {

/// Why keys make no sound.
enum class Silence : std::uint8_t { off, microphone, password, recording };

/// What decides whether keys sound.
struct QuietFacts {
    /// The reasons that hold now, whether the user minds them or not.
    std::set<Silence> holding = {};
    /// The optional reasons that the user has switched off.
    std::set<Silence> ignored = {};

    bool operator==(const QuietFacts&) const = default;
};

/// One reason to be silent.
struct QuietRule {
    Silence reason;
    /// What `vornic status --json` says.
    std::string_view word;
    /// The line that tells the user.
    std::string_view text;
    /// The picture that stands for it, in the tray and in the panel.
    std::string_view symbol;
    /// Whether the user may switch it off.
    bool optional = false;

    /// Whether it silences keys now.
    bool active(const QuietFacts& facts) const;
};

/// What tells whether a reason holds.
struct WatchedReason {
    Silence reason;
    QuietWatch* watch; // never null
};

/// Every reason, from what the user can do most about to the least: the program's own recording,
/// then the switch, then a call, then a password. A new one is an entry here; what it watches is
/// handed to the model as a `WatchedReason`. Thread: any.
inline constexpr std::array quietRules{
    QuietRule{.reason = Silence::recording,
              .word = "recording",
              .text = "Quiet while recording your keyboard",
              .symbol = "waveform"},
    QuietRule{.reason = Silence::off,
              .word = "off",
              .text = "Off · keys are silent",
              .symbol = "keyboard-off"},
    QuietRule{.reason = Silence::microphone,
              .word = "microphone",
              .text = "Silent while your microphone is on",
              .symbol = "mic",
              .optional = true},
    QuietRule{.reason = Silence::password,
              .word = "password",
              .text = "Paused while you type a password",
              .symbol = "lock"},
};

/// The first rule that silences keys; null when they sound. Thread: any.
const QuietRule* quietRule(const QuietFacts& facts);

/// The line below the program's name: the reason, or what is played and where it stands.
/// Thread: any.
std::string statusLine(const QuietRule* rule, std::string_view boardName, Placement placement);

} // namespace vornic
