#include "VornicCore/keys/KnownKeys.h"

#include <gtest/gtest.h>

#include <set>

namespace vornic {
namespace {

TEST(KnownKeys, noTwoKeysShareANumberOrAName) {
    std::set<std::int64_t> codes;
    std::set<std::uint32_t> numbers;
    std::set<std::string_view> names;
    for (const KnownKey& key : knownKeys()) {
        EXPECT_TRUE(codes.insert(key.code).second) << key.web;
        EXPECT_TRUE(numbers.insert(key.evdev).second) << key.web;
        EXPECT_TRUE(names.insert(key.web).second) << key.web;
        EXPECT_EQ(keyCodeOfEvdev(key.evdev), key.code);
        EXPECT_EQ(keyCodeOfWebName(key.web), key.code);
        EXPECT_EQ(keyCodeOfAnyName(key.web), key.code) << key.web;
        EXPECT_EQ(webNameOf(key.code), key.web);
    }
}

TEST(KnownKeys, programsNamesAreUnderstoodInAnyCase) {
    for (const auto& [name, code] :
         std::initializer_list<std::pair<const char*, std::int64_t>>{{"a", 0},
                                                                     {"A", 0},
                                                                     {"shift_l", 56},
                                                                     {"LeftShift", 56},
                                                                     {"caps_lock", 57},
                                                                     {"CMD", 55},
                                                                     {"Page Up", 116},
                                                                     {"page_up", 116},
                                                                     {"num_lock", 71},
                                                                     {"kp_enter", 76},
                                                                     {"-", 27},
                                                                     {"1", 18},
                                                                     {"Num1", 18},
                                                                     {"KeypadEnter", 76},
                                                                     {"alt_gr", 61},
                                                                     {"return", 36}}) {
        EXPECT_EQ(keyCodeOfAnyName(name), code) << name;
    }
    EXPECT_EQ(keyCodeOfAnyName("nonsense"), std::nullopt);
    EXPECT_EQ(keyCodeOfAnyName(""), std::nullopt);
    EXPECT_EQ(keyCodeOfWebName("keya"), std::nullopt);
    EXPECT_EQ(webNameOf(5000), "Key5000");
}

} // namespace
} // namespace vornic
