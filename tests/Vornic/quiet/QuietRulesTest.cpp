#include "Vornic/quiet/QuietRules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace vornic {
namespace {

std::optional<Silence> silence(const QuietFacts& facts) {
    const QuietRule* const rule = quietRule(facts);
    return rule == nullptr ? std::nullopt : std::optional(rule->reason);
}

const QuietRule& ruleOf(Silence reason) {
    return *std::ranges::find(quietRules, reason, &QuietRule::reason);
}

TEST(QuietRules, thereIsNoSilenceWhileNothingSpeaksAgainstTheSounds) {
    EXPECT_EQ(silence({}), std::nullopt);
}

TEST(QuietRules, recordingWinsThenTheSwitchThenACallThenAPassword) {
    QuietFacts facts{
        .holding = {Silence::off, Silence::microphone, Silence::password, Silence::recording}};
    for (const Silence expected :
         {Silence::recording, Silence::off, Silence::microphone, Silence::password}) {
        EXPECT_EQ(silence(facts), expected);
        facts.holding.erase(expected);
    }
    EXPECT_EQ(silence(facts), std::nullopt);
}

TEST(QuietRules, aRunningMicrophoneDoesNotMatterUnlessTheUserAsksForIt) {
    QuietFacts facts{.holding = {Silence::microphone}, .ignored = {Silence::microphone}};
    EXPECT_EQ(silence(facts), std::nullopt);
    facts.holding.insert(Silence::password);
    EXPECT_EQ(silence(facts), Silence::password);
}

TEST(QuietRules, onlyTheMicrophoneCanBeIgnored) {
    for (const QuietRule& rule : quietRules) {
        const bool ignored = silence({.holding = {rule.reason}, .ignored = {rule.reason}}) !=
                             std::optional(rule.reason);
        EXPECT_EQ(ignored, rule.reason == Silence::microphone) << rule.text;
    }
}

TEST(QuietRules, everyReasonHasItsWordsAndAPictureOfItsOwn) {
    std::vector<std::vector<std::string_view>> said;
    std::set<std::string_view> symbols;
    for (const QuietRule& rule : quietRules) {
        said.push_back({rule.word, rule.text, rule.symbol});
        EXPECT_TRUE(symbols.insert(rule.symbol).second) << rule.symbol;
    }
    const std::vector<std::vector<std::string_view>> wanted{
        {"recording", "Quiet while recording your keyboard", "waveform"},
        {"off", "Off · keys are silent", "keyboard-off"},
        {"microphone", "Silent while your microphone is on", "mic"},
        {"password", "Paused while you type a password", "lock"},
    };
    EXPECT_EQ(said, wanted);
}

TEST(QuietRules, theStatusLineSaysTheReasonOrTheBoardAndItsPlace) {
    EXPECT_EQ(statusLine(&ruleOf(Silence::password), "Deep", Placement::close),
              "Paused while you type a password");
    EXPECT_EQ(statusLine(nullptr, "Deep", Placement::close), "Deep · Close");
    EXPECT_EQ(statusLine(nullptr, "Deep", Placement::desk), "Deep · On the desk");
}

} // namespace
} // namespace vornic
