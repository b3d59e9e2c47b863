// Text must be read: at least 4.5 to 1 against what it stands on (WCAG 2.1, AA).

#include "Vornic/views/theme/ThemeObject.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QQmlEngine>
#include <algorithm>
#include <cmath>

namespace {

double luminance(const QColor& colour) {
    const auto linear = [](double v) {
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

class ThemeTest : public ::testing::TestWithParam<bool> {
  protected:
    ThemeTest() {
        theme = vornic::themeOf(engine);
        theme->setProperty("dark", GetParam());
    }
    QColor colour(const char* name) const { return theme->property(name).value<QColor>(); }

    QQmlEngine engine;
    QObject* theme = nullptr;
};

TEST_P(ThemeTest, textIsReadOnEverySurface) {
    for (const char* const ground : {"window", "surface", "hover", "selected"}) {
        EXPECT_GE(contrast(colour("text"), colour(ground)), 7.0) << ground;
        EXPECT_GE(contrast(colour("secondary"), colour(ground)), 4.5) << ground;
        EXPECT_GE(contrast(colour("warning"), colour(ground)), 4.5) << ground;
        EXPECT_GE(contrast(colour("focus"), colour(ground)), 3.0) << ground;
    }
    EXPECT_GE(contrast(colour("text"), colour("track")), 4.5);
    // What a control ends at, and what a slider runs in.
    for (const char* const ground : {"window", "surface", "hover", "selected", "track"}) {
        EXPECT_GE(contrast(colour("edge"), colour(ground)), 3.0) << ground;
        EXPECT_GE(contrast(colour("groove"), colour(ground)), 3.0) << ground;
    }
    EXPECT_GE(contrast(colour("text"), colour("raised")), 4.5);
}

TEST_P(ThemeTest, textIsReadOnEveryAccent) {
    for (const char* const accent : {"#5E5CE6", "#30D158", "#63E6E2", "#FFD60A", "#FF375F",
                                     "#BF5AF2", "#000000", "#FFFFFF", "#7F7F7F"}) {
        theme->setProperty("accent", QColor(accent));
        EXPECT_GE(contrast(colour("accentInk"), colour("accent")), 4.5) << accent;
        EXPECT_GE(contrast(colour("graph"), colour("surface")), 3.0) << accent;
    }
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, ThemeTest, ::testing::Bool());

} // namespace
