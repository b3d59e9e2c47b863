#pragma once

#include "VornicCore/base/CaseNames.h"
#include "VornicCore/board/StageSpec.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vornic {

/// Why keys make no sound.
enum class Silence : std::uint8_t { off, microphone, password, recording };

/// The label is the line that tells the user.
template <>
struct CaseNames<Silence> {
    static constexpr std::array names{
        CaseName{Silence::off, "off", "Off · keys are silent"},
        CaseName{Silence::microphone, "microphone", "Silent while your microphone is on"},
        CaseName{Silence::password, "password", "Paused while you type a password"},
        CaseName{Silence::recording, "recording", "Quiet while recording your keyboard"},
    };
};

/// What decides whether keys sound.
struct QuietFacts {
    /// The user's switch.
    bool soundsOn = false;
    /// The user's option.
    bool quietDuringCalls = false;
    /// The program records the keyboard itself.
    bool recording = false;
    /// A password is being typed.
    bool secureInput = false;
    /// Another program listens to the microphone.
    bool micInUse = false;

    bool operator==(const QuietFacts&) const = default;
};

/// The reason to be silent; absent when keys sound. Of several the one that the user can do most
/// about: the program's own recording, then the switch, then a call, then a password.
std::optional<Silence> silence(const QuietFacts& facts);

/// The line below the program's name: the reason, or what is played and where it stands.
std::string statusLine(std::optional<Silence> reason, std::string_view boardName,
                       Placement placement);

/// What the settings and the panel say about silence.
namespace QuietTexts {
inline constexpr std::string_view quietDuringCalls = "Go quiet when the microphone is on";
inline constexpr std::string_view quietDuringCallsNote =
    "Calls use the microphone. On speakers, key sounds would otherwise go into the call.";
inline constexpr std::string_view soundsSwitchHelp = "Sounds on or off (⌥⌘K)";
} // namespace QuietTexts

} // namespace vornic
