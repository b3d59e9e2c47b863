#include "VornicCore/keys/KeyboardLayout.h"

#include "tests/VornicCore/keys/DrawnLayouts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace vornic {
namespace {

bool overlap(const LayoutKey& a, const LayoutKey& b) {
    constexpr double tolerance = 1e-9;
    return a.x + a.w > b.x + tolerance && b.x + b.w > a.x + tolerance &&
           a.y + a.h > b.y + tolerance && b.y + b.h > a.y + tolerance;
}

TEST(LayoutID, namesItsCasesInOrder) {
    const std::vector<std::string_view> raw{"macANSI",     "macISO", "sixty", "sixtyFive",
                                            "seventyFive", "tkl",    "full"};
    const std::vector<std::string_view> labels{"MacBook (US)", "MacBook (ISO)", "60%",      "65%",
                                               "75%",          "TKL",           "Full size"};
    const auto cases = allCases<LayoutID>();
    ASSERT_EQ(cases.size(), raw.size());
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(cases[i]), i);
        EXPECT_EQ(rawString(cases[i]), raw[i]);
        EXPECT_EQ(label(cases[i]), labels[i]);
    }
}

TEST(KeyboardLayout, sharedLayoutsEqualFreshOnes) {
    for (const LayoutID id : allCases<LayoutID>()) {
        EXPECT_EQ(layout(id).id, id);
        EXPECT_EQ(layout(id), KeyboardLayout::build(id));
    }
}

TEST(KeyboardLayout, macBookANSIHasEveryKeyInItsPlace) {
    const KeyboardLayout& mac = layout(LayoutID::macANSI);
    EXPECT_DOUBLE_EQ(mac.width, 14.5);
    EXPECT_DOUBLE_EQ(mac.height, 6.05);
    EXPECT_EQ(mac.keys.size(), 14U + 14 + 14 + 13 + 12 + 11);

    EXPECT_EQ(mac.keys.front(), (LayoutKey{53, "esc", 0, 0, 1.5, 0.55}));
    EXPECT_TRUE(has(mac.id, {122, "F1", 1.5, 0, 1, 0.55}));
    EXPECT_TRUE(has(mac.id, {111, "F12", 12.5, 0, 1, 0.55}));
    EXPECT_TRUE(has(mac.id, {std::nullopt, "⏻", 13.5, 0, 1, 0.55}));

    EXPECT_TRUE(has(mac.id, {50, "`", 0, 0.65, 1, 1}));
    EXPECT_TRUE(has(mac.id, {29, "0", 10, 0.65, 1, 1}));
    EXPECT_TRUE(has(mac.id, {51, "delete", 13, 0.65, 1.5, 1}));
    EXPECT_TRUE(has(mac.id, {48, "tab", 0, 1.75, 1.5, 1}));
    EXPECT_TRUE(has(mac.id, {42, "\\", 13.5, 1.75, 1, 1}));
    EXPECT_TRUE(has(mac.id, {57, "caps", 0, 2.85, 1.75, 1}));
    EXPECT_TRUE(has(mac.id, {36, "return", 12.75, 2.85, 1.75, 1}));
    EXPECT_TRUE(has(mac.id, {56, "shift", 0, 3.95, 2.25, 1}));
    EXPECT_TRUE(has(mac.id, {6, "Z", 2.25, 3.95, 1, 1}));
    EXPECT_TRUE(has(mac.id, {60, "shift", 12.25, 3.95, 2.25, 1}));

    const std::vector<LayoutKey> lowest(mac.keys.end() - 11, mac.keys.end());
    EXPECT_EQ(lowest, (std::vector<LayoutKey>{{63, "fn", 0, 5.05, 1, 1},
                                              {59, "control", 1, 5.05, 1, 1},
                                              {58, "option", 2, 5.05, 1, 1},
                                              {55, "command", 3, 5.05, 1.25, 1},
                                              {49, "", 4.25, 5.05, 5, 1},
                                              {54, "command", 9.25, 5.05, 1.25, 1},
                                              {61, "option", 10.5, 5.05, 1, 1},
                                              {123, "←", 11.5, 5.05, 1, 1},
                                              {126, "↑", 12.5, 5.05, 1, 0.5},
                                              {125, "↓", 12.5, 5.55, 1, 0.5},
                                              {124, "→", 13.5, 5.05, 1, 1}}));
    for (const double y : {0.0, 0.65, 1.75, 2.85, 3.95, 5.05}) {
        EXPECT_DOUBLE_EQ(rowEnd(mac.id, y, 100), 14.5) << y;
    }
}

TEST(KeyboardLayout, macBookISODiffersInFourPlaces) {
    const KeyboardLayout& ansi = layout(LayoutID::macANSI);
    const KeyboardLayout& iso = layout(LayoutID::macISO);
    EXPECT_EQ(iso.width, ansi.width);
    EXPECT_EQ(iso.height, ansi.height);
    std::vector<LayoutKey> added;
    std::vector<LayoutKey> removed;
    std::ranges::copy_if(iso.keys, std::back_inserter(added),
                         [&](const LayoutKey& each) { return !has(ansi.id, each); });
    std::ranges::copy_if(ansi.keys, std::back_inserter(removed),
                         [&](const LayoutKey& each) { return !has(iso.id, each); });
    EXPECT_EQ(added, (std::vector<LayoutKey>{{10, "§", 0, 0.65, 1, 1},
                                             {36, "return", 13.5, 1.75, 1, 2.1},
                                             {42, "\\", 12.75, 2.85, 1, 1},
                                             {56, "shift", 0, 3.95, 1.25, 1},
                                             {50, "`", 1.25, 3.95, 1, 1}}));
    EXPECT_EQ(removed, (std::vector<LayoutKey>{{50, "`", 0, 0.65, 1, 1},
                                               {42, "\\", 13.5, 1.75, 1, 1},
                                               {36, "return", 12.75, 2.85, 1.75, 1},
                                               {56, "shift", 0, 3.95, 2.25, 1}}));
}

TEST(KeyboardLayout, onlyTheISOReturnOverlapsAnotherKey) {
    for (const LayoutID id : allCases<LayoutID>()) {
        std::vector<std::string> overlaps;
        const std::vector<LayoutKey>& keys = layout(id).keys;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            for (std::size_t j = i + 1; j < keys.size(); ++j) {
                if (overlap(keys[i], keys[j])) {
                    overlaps.push_back(keys[i].label + " " + keys[j].label);
                }
            }
        }
        const auto expected = id == LayoutID::macISO ? std::vector<std::string>{"return \\"}
                                                     : std::vector<std::string>{};
        EXPECT_EQ(overlaps, expected) << rawString(id);
    }
    EXPECT_EQ(key(LayoutID::macISO, 42).x + 1 - key(LayoutID::macISO, 36).x, 0.25);
}

TEST(KeyboardLayout, noCodeAndNoIdentityAppearsTwice) {
    for (const LayoutID id : allCases<LayoutID>()) {
        std::set<std::int64_t> codes;
        std::set<std::string> ids;
        for (const LayoutKey& each : layout(id).keys) {
            EXPECT_TRUE(ids.insert(each.id()).second) << rawString(id) << each.id();
            if (each.code) {
                EXPECT_TRUE(codes.insert(*each.code).second) << rawString(id) << *each.code;
            }
        }
    }
}

TEST(KeyboardLayout, onlyThePowerKeyHasNoCode) {
    for (const LayoutID id : allCases<LayoutID>()) {
        for (const LayoutKey& each : layout(id).keys) {
            EXPECT_EQ(each.code.has_value(), each.label != "⏻") << rawString(id) << each.id();
        }
    }
}

TEST(KeyboardLayout, theBoxHoldsEveryKeyAndNoMore) {
    const std::map<LayoutID, std::pair<double, double>> sizes{{LayoutID::sixty, {15, 5}},
                                                              {LayoutID::sixtyFive, {17, 5}},
                                                              {LayoutID::seventyFive, {17, 6.25}},
                                                              {LayoutID::tkl, {18.25, 6.25}},
                                                              {LayoutID::full, {22.5, 6.25}}};
    for (const LayoutID id : mechanical) {
        EXPECT_EQ(layout(id).width, sizes.at(id).first) << rawString(id);
        EXPECT_EQ(layout(id).height, sizes.at(id).second) << rawString(id);
        for (const LayoutKey& each : layout(id).keys) {
            EXPECT_GE(each.x, 0);
            EXPECT_GE(each.y, 0);
            EXPECT_LE(each.x + each.w, layout(id).width);
            EXPECT_LE(each.y + each.h, layout(id).height);
        }
    }
}

TEST(KeyboardLayout, labelsComeFromOneVocabulary) {
    const std::set<std::string> words{"esc",   "delete", "del",   "tab",     "caps",   "return",
                                      "enter", "shift",  "fn",    "control", "option", "command",
                                      "help",  "home",   "pg up", "pg dn",   "end",    "clear",
                                      "←",     "↑",      "↓",     "→",       "⏻",      "§"};
    for (const LayoutID id : allCases<LayoutID>()) {
        for (const LayoutKey& each : layout(id).keys) {
            const bool functionKey = each.label.size() > 1 && each.label[0] == 'F';
            if (each.label.empty()) {
                EXPECT_EQ(each.code, 49);
            } else if (each.label.size() > 1 && !functionKey) {
                EXPECT_EQ(words.count(each.label), 1U) << rawString(id) << " " << each.label;
            }
        }
    }
}

TEST(KeyboardLayout, keysOfARowRunFromLeftToRight) {
    for (const LayoutID id : mechanical) {
        const std::vector<LayoutKey>& keys = layout(id).keys;
        for (std::size_t i = 1; i < keys.size(); ++i) {
            const bool newRow = keys[i].y > keys[i - 1].y;
            EXPECT_TRUE(newRow || keys[i].x >= keys[i - 1].x + keys[i - 1].w)
                << rawString(id) << keys[i].id();
        }
    }
}

TEST(KeyboardLayout, positionRunsFromLeftToRight) {
    const KeyboardLayout& mac = layout(LayoutID::macANSI);
    EXPECT_DOUBLE_EQ(mac.position(50).value(), 2 * (0.5 / 14.5 - 0.5));
    EXPECT_DOUBLE_EQ(mac.position(124).value(), 2 * (14.0 / 14.5 - 0.5));
    EXPECT_FALSE(mac.position(200).has_value());
    // The power key has no code: no code finds it, not even the one in its identity.
    EXPECT_FALSE(mac.position(-1).has_value());
}

TEST(LayoutKey, identityNamesCodeAndPlace) {
    const KeyboardLayout& mac = layout(LayoutID::macANSI);
    EXPECT_EQ(mac.keys[0].id(), "53-0.0-0.0");
    const auto power = std::ranges::find(mac.keys, "⏻", &LayoutKey::label);
    ASSERT_NE(power, mac.keys.end());
    EXPECT_EQ(power->id(), "-1-13.5-0.0");
    EXPECT_EQ(key(LayoutID::macANSI, 55).id(), "55-3.0-5.05");
    EXPECT_EQ((LayoutKey{7, "", -2, 0.1, 1, 1}.id()), "7--2.0-0.1");
}

TEST(LayoutKey, equalityCoversEveryField) {
    const LayoutKey one{1, "a", 2, 3, 4, 5};
    EXPECT_EQ(one, (LayoutKey{1, "a", 2, 3, 4, 5}));
    for (const LayoutKey& other :
         {LayoutKey{9, "a", 2, 3, 4, 5}, LayoutKey{std::nullopt, "a", 2, 3, 4, 5},
          LayoutKey{1, "b", 2, 3, 4, 5}, LayoutKey{1, "a", 9, 3, 4, 5},
          LayoutKey{1, "a", 2, 9, 4, 5}, LayoutKey{1, "a", 2, 3, 9, 5},
          LayoutKey{1, "a", 2, 3, 4, 9}}) {
        EXPECT_NE(one, other);
    }
}

TEST(KeyboardLayout, findsTheKeyAtAPlace) {
    const KeyboardLayout& keyboard = layout(LayoutID::sixty);
    const LayoutKey& a = key(LayoutID::sixty, 0);
    EXPECT_EQ(keyboard.at(a.x, a.y), &a) << "its left and upper edges are its own";
    EXPECT_EQ(keyboard.at(a.x + a.w - 0.01, a.y + a.h - 0.01), &a);
    EXPECT_NE(keyboard.at(a.x + a.w, a.y), &a);
    EXPECT_EQ(keyboard.at(-1, 0), nullptr);
    for (const LayoutKey& each : layout(LayoutID::macANSI).keys) {
        const LayoutKey* const found =
            layout(LayoutID::macANSI).at(each.centreX(), each.y + each.h / 2);
        EXPECT_EQ(found, each.code ? &each : nullptr) << each.label << ": the power key is mute";
    }
}

TEST(KeyboardLayout, namesTheKeysThatARectangleTouches) {
    const KeyboardLayout& keyboard = layout(LayoutID::sixty);
    const LayoutKey& a = key(LayoutID::sixty, 0);
    const LayoutKey& s = key(LayoutID::sixty, 1);
    EXPECT_EQ(keyboard.within(a.x, a.y, a.w, a.h), std::set<std::int64_t>{0}) << "edges only touch";
    EXPECT_EQ(keyboard.within(a.centreX(), a.y + 0.4, s.centreX() - a.centreX(), 0.1),
              (std::set<std::int64_t>{0, 1}));
    EXPECT_TRUE(keyboard.within(-2, -2, 1, 1).empty());
}

TEST(KeyboardLayout, goesFromKeyToKey) {
    const KeyboardLayout& keyboard = layout(LayoutID::sixty);
    constexpr std::int64_t a = 0;
    constexpr std::int64_t s = 1;
    constexpr std::int64_t q = 12;
    constexpr std::int64_t z = 6;
    constexpr std::int64_t space = 49;
    EXPECT_EQ(keyboard.neighbour(a, 1, 0), s);
    EXPECT_EQ(keyboard.neighbour(s, -1, 0), a);
    EXPECT_EQ(keyboard.neighbour(a, 0, -1), q);
    EXPECT_EQ(keyboard.neighbour(a, 0, 1), z);
    EXPECT_EQ(keyboard.neighbour(space, 0, 1), space) << "nothing is below";
    EXPECT_EQ(keyboard.neighbour(a, 0, 0), a);
    EXPECT_EQ(keyboard.neighbour(-1, 0, 0), *keyboard.keys.front().code) << "where it begins";
    // To the right from every key one comes to the end of its row, and stays there.
    for (const LayoutKey& each : keyboard.keys) {
        std::int64_t at = *each.code;
        for (int steps = 0; steps < 20; ++steps) {
            const std::int64_t next = keyboard.neighbour(at, 1, 0);
            EXPECT_EQ(key(LayoutID::sixty, next).y, each.y);
            at = next;
        }
        EXPECT_EQ(keyboard.neighbour(at, 1, 0), at);
    }
}

} // namespace
} // namespace vornic
