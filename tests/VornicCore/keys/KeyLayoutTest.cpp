#include "VornicCore/keys/KeyLayout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <set>

namespace vornic {
namespace {

TEST(KeyLayout, knowsTheColumnOfEveryStandardKey) {
    const std::map<std::int64_t, double> expected{
        {50, 0},     {18, 1},    {19, 2},     {20, 3},     {21, 4},     {23, 5},     {22, 6},
        {26, 7},     {28, 8},    {25, 9},     {29, 10},    {27, 11},    {24, 12},    {51, 13.5},
        {48, 0.5},   {12, 1.5},  {13, 2.5},   {14, 3.5},   {15, 4.5},   {17, 5.5},   {16, 6.5},
        {32, 7.5},   {34, 8.5},  {31, 9.5},   {35, 10.5},  {33, 11.5},  {30, 12.5},  {42, 13.5},
        {0, 1.75},   {1, 2.75},  {2, 3.75},   {3, 4.75},   {5, 5.75},   {4, 6.75},   {38, 7.75},
        {40, 8.75},  {37, 9.75}, {41, 10.75}, {39, 11.75}, {36, 13.25}, {6, 2.25},   {7, 3.25},
        {8, 4.25},   {9, 5.25},  {11, 6.25},  {45, 7.25},  {46, 8.25},  {43, 9.25},  {47, 10.25},
        {44, 11.25}, {49, 6.5},  {123, 12.5}, {124, 14.5}, {125, 13.5}, {126, 13.5}, {117, 14},
        {57, 0.9},   {56, 1.1},  {60, 13.4},  {63, 0.5},   {59, 1.5},   {58, 2.5},   {55, 3.6},
        {54, 9.4},   {61, 10.5}, {62, 11.4}};
    ASSERT_EQ(expected.size(), 66U);
    for (std::int64_t code = -5; code < 300; ++code) {
        const auto found = expected.find(code);
        const auto column =
            found == expected.end() ? std::nullopt : std::optional<double>(found->second);
        EXPECT_EQ(KeyLayout::column(code), column) << code;
    }
    EXPECT_FALSE(KeyLayout::column(std::numeric_limits<std::int64_t>::max()).has_value());
    EXPECT_FALSE(KeyLayout::column(std::numeric_limits<std::int64_t>::min()).has_value());
}

TEST(KeyLayout, rateIsOneOfNineStepsAndTheSameEveryTime) {
    std::set<float> steps;
    for (std::int64_t code = -300; code < 3000; ++code) {
        const float rate = KeyLayout::rate(code);
        EXPECT_EQ(rate, KeyLayout::rate(code));
        EXPECT_GE(rate, 0.984F) << code;
        EXPECT_LE(rate, 1.016F) << code;
        steps.insert(rate);
    }
    EXPECT_EQ(steps.size(), 9U);
}

TEST(KeyLayout, rateFollowsTheHash) {
    // (0x9E3779B9 * code >> 7) mod 9, worked out apart from the program: 0, 6, 0.
    EXPECT_EQ(KeyLayout::rate(0), 1.0F - 4 * 0.004F);
    EXPECT_EQ(KeyLayout::rate(1), 1.0F + 2 * 0.004F);
    EXPECT_EQ(KeyLayout::rate(49), 1.0F - 4 * 0.004F);
}

TEST(KeyLayout, negativeCodesWrapInTheHash) {
    const std::uint64_t hash = ~std::uint64_t{0} * 0x9E3779B9ULL;
    EXPECT_EQ(KeyLayout::rate(-1),
              1.0F + static_cast<float>(static_cast<int>((hash >> 7U) % 9) - 4) * 0.004F);
}

TEST(KeyLayout, panReachesItsFullWidthAtTheEdges) {
    EXPECT_EQ(KeyLayout::pan(50, 1), -0.85F);
    EXPECT_EQ(KeyLayout::pan(124, 1), 0.85F);
    EXPECT_FLOAT_EQ(KeyLayout::pan(49, 1), static_cast<float>(2 * (6.5 / 14.5 - 0.5) * 0.85));
    EXPECT_FLOAT_EQ(KeyLayout::pan(50, 0.5), -0.425F);
}

TEST(KeyLayout, widthZeroPutsEveryKeyInTheMiddle) {
    for (std::int64_t code = 0; code < 130; ++code) {
        EXPECT_EQ(KeyLayout::pan(code, 0), 0.0F) << code;
        EXPECT_EQ(KeyLayout::pan(code, -3), 0.0F) << code;
        EXPECT_EQ(KeyLayout::pan(code, 0, layout(LayoutID::full)), 0.0F) << code;
    }
}

TEST(KeyLayout, widthIsClampedToOne) {
    EXPECT_EQ(KeyLayout::pan(50, 7), -0.85F);
    EXPECT_EQ(KeyLayout::pan(53, 7, layout(LayoutID::tkl)),
              KeyLayout::pan(53, 1, layout(LayoutID::tkl)));
    EXPECT_TRUE(std::isnan(KeyLayout::pan(50, std::numeric_limits<double>::quiet_NaN())));
}

TEST(KeyLayout, anUnknownKeyIsInTheMiddle) {
    EXPECT_EQ(KeyLayout::pan(200, 1), 0.0F);
    EXPECT_EQ(KeyLayout::pan(200, 1, layout(LayoutID::macANSI)), 0.0F);
}

TEST(KeyLayout, panTakesThePlaceOnTheGivenLayoutFirst) {
    const KeyboardLayout& full = layout(LayoutID::full);
    for (const LayoutKey& key : full.keys) {
        ASSERT_TRUE(key.code.has_value());
        const double position = full.position(*key.code).value();
        EXPECT_EQ(KeyLayout::pan(*key.code, 0.7, full), static_cast<float>(position * 0.85 * 0.7));
    }
    // The power key has no code, and right control is not on a MacBook: the column decides.
    EXPECT_EQ(KeyLayout::pan(62, 1, layout(LayoutID::macANSI)), KeyLayout::pan(62, 1));
    EXPECT_NE(KeyLayout::pan(62, 1, full), KeyLayout::pan(62, 1));
}

} // namespace
} // namespace vornic
