#include "Vornic/quiet/QuietRules.h"

#include <algorithm>
#include <array>

namespace vornic {

namespace {

constexpr std::array rules{
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

} // namespace

bool QuietRule::active(const QuietFacts& facts) const {
    return facts.holding.contains(reason) && !(optional && facts.ignored.contains(reason));
}

std::span<const QuietRule> quietRules() {
    return rules;
}

const QuietRule* quietRule(const QuietFacts& facts) {
    const auto found =
        std::ranges::find_if(rules, [&](const QuietRule& rule) { return rule.active(facts); });
    return found == rules.end() ? nullptr : &*found;
}

std::string statusLine(const QuietRule* rule, std::string_view boardName, Placement placement) {
    if (rule != nullptr) {
        return std::string(rule->text);
    }
    return std::string(boardName) + " · " +
           (placement == Placement::close ? "Close" : "On the desk");
}

} // namespace vornic
