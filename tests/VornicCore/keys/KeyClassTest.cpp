#include "VornicCore/keys/KeyClass.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

TEST(KeyClass, namesTheKeysWithASoundOfTheirOwn) {
    for (const std::int64_t code : {36, 76}) {
        EXPECT_EQ(keyClassOf(code), KeyClass::enter) << code;
    }
    EXPECT_EQ(keyClassOf(49), KeyClass::space);
    for (const std::int64_t code : {51, 117}) {
        EXPECT_EQ(keyClassOf(code), KeyClass::backspace) << code;
    }
    for (const std::int64_t code : {54, 55, 56, 57, 58, 59, 60, 61, 62, 63}) {
        EXPECT_EQ(keyClassOf(code), KeyClass::modifier) << code;
    }
}

TEST(KeyClass, everythingElseIsRegular) {
    for (const std::int64_t code : {0, 48, 53, 122, 200, 1059, -1}) {
        EXPECT_EQ(keyClassOf(code), KeyClass::regular) << code;
    }
}

} // namespace
} // namespace vornic
