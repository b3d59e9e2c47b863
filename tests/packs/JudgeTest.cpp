// What the judge of the packs is made of.

#include "packs/analysis/Classifier.h"
#include "packs/analysis/StrokeFigures.h"
#include "packs/analysis/TypicalFirst.h"
#include "packs/model/PackTable.h"
#include "packs/model/StrokeModel.h"
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>

namespace vornic::packs {
namespace {

std::vector<std::vector<float>> strokesOf(const std::string& id) {
    std::string error;
    const auto table =
        readPackTable(std::filesystem::path(VORNIC_PACK_TABLES) / (id + ".json"), error);
    EXPECT_TRUE(table) << error;
    return makeStrokes(table.value_or(PackTable()), "regular");
}

std::vector<Figures> measured(const std::vector<std::vector<float>>& strokes) {
    std::vector<Figures> figures;
    for (const auto& stroke : strokes) {
        figures.push_back(figuresOf(featuresOf(stroke)));
    }
    return figures;
}

double median(const std::vector<Figures>& strokes, std::size_t figure) {
    std::vector<double> known;
    for (const Figures& stroke : strokes) {
        if (std::isfinite(stroke[figure])) {
            known.push_back(stroke[figure]);
        }
    }
    return statisticOf(known).median;
}

// Whether `kind` can be told from `other`, each one half known.
double told(const std::vector<Figures>& kind, const std::vector<Figures>& other) {
    const auto half = [](const std::vector<Figures>& all, std::size_t first) {
        std::vector<Figures> part;
        for (std::size_t i = first; i < all.size(); i += 2) {
            part.push_back(all[i]);
        }
        return part;
    };
    const Classifier classifier(half(kind, 0), half(other, 0));
    std::vector<double> first;
    std::vector<double> second;
    for (const Figures& stroke : half(kind, 1)) {
        first.push_back(classifier.score(stroke));
    }
    for (const Figures& stroke : half(other, 1)) {
        second.push_back(classifier.score(stroke));
    }
    return areaUnderCurve(first, second);
}

TEST(Judge, countsThePairsInOrder) {
    EXPECT_EQ(areaUnderCurve({2, 3}, {0, 1}), 1);
    EXPECT_EQ(areaUnderCurve({0, 1}, {2, 3}), 0);
    EXPECT_EQ(areaUnderCurve({1, 1}, {1, 1}), 0.5);
    EXPECT_EQ(areaUnderCurve({0, 2}, {1}), 0.5);
}

TEST(Judge, whatIsDrawnLiesWhereItWasMeasured) {
    const auto strokes = strokesOf("plastic");
    const std::vector<Figures> own = measured(strokes);
    const std::vector<Figures> lent =
        drawnFigures(classFeaturesOf(strokes), measured(strokesOf("soft")), 400, 5);
    for (std::size_t i = 0; i < figureNames().size(); ++i) {
        // A decay that few strokes show is known too little.
        if (figureNames()[i].find("decay") == std::string::npos &&
            figureNames()[i].find("second") == std::string::npos) {
            EXPECT_NEAR(median(lent, i), median(own, i), 2) << figureNames()[i];
        }
    }
}

TEST(Judge, drawsTheSameForTheSameSeed) {
    const ClassFeatures keyboard = classFeaturesOf(strokesOf("plastic"));
    const Figures once = drawnFigures(keyboard, {}, 1, 7).front();
    const Figures again = drawnFigures(keyboard, {}, 1, 7).front();
    const Figures other = drawnFigures(keyboard, {}, 1, 8).front();
    EXPECT_EQ(once.front(), again.front());
    EXPECT_NE(once.front(), other.front());
}

TEST(Judge, tellsKeyboardsApartAndNotOneFromItself) {
    const std::vector<Figures> soft = measured(strokesOf("soft"));
    const std::vector<Figures> metal = measured(strokesOf("metal"));
    EXPECT_GT(told(soft, metal), 0.95);
    std::vector<Figures> first;
    std::vector<Figures> second;
    const std::vector<Figures> drawn =
        drawnFigures(classFeaturesOf(strokesOf("soft")), soft, 200, 9);
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        (i % 4 < 2 ? first : second).push_back(drawn[i]);
    }
    EXPECT_NEAR(told(first, second), 0.5, 0.12);
}

TEST(TypicalFirst, beginsWithTheUsualAndEndsWithTheOdd) {
    auto strokes = strokesOf("plastic");
    strokes.resize(11);
    // One that is nothing but a tick.
    strokes.emplace_back(9600);
    strokes.back()[100] = 0.5F;
    const std::vector<std::size_t> order = typicalFirst(strokes);
    EXPECT_EQ(order.size(), strokes.size());
    EXPECT_EQ(std::set(order.begin(), order.end()).size(), strokes.size());
    EXPECT_GE(std::ranges::find(order, strokes.size() - 1) - order.begin(), 9);
}

TEST(TypicalFirst, putsALikenessOfTheFirstBehindTheOthers) {
    auto strokes = strokesOf("soft");
    strokes.resize(8);
    const std::size_t first = typicalFirst(strokes).front();
    strokes.push_back(strokes[first]);
    const std::vector<std::size_t> order = typicalFirst(strokes);
    const auto place = [&](std::size_t stroke) {
        return std::ranges::find(order, stroke) - order.begin();
    };
    // Of two alike one is among the first, the other the last of the typical.
    EXPECT_GE(std::max(place(first), place(strokes.size() - 1)), 6);
}

TEST(TypicalFirst, ofNoStrokesIsNone) {
    EXPECT_TRUE(typicalFirst({}).empty());
}

} // namespace
} // namespace vornic::packs
