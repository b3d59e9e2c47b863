#include "packs/analysis/StrokeFigures.h"

#include "VornicCore/base/SplitMix64.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>

namespace vornic::packs {

namespace {

constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

struct ScalarFigure {
    const char* name;
    double StrokeFeatures::* value;
    bool isTime; // or a frequency: what differs by ratios
};

// The number of events is drawn with them; levels of strokes are no figures.
constexpr std::array<ScalarFigure, 13> scalarFigures{
    {{.name = "centroid_hz", .value = &StrokeFeatures::centroidHz, .isTime = true},
     {.name = "dur20_ms", .value = &StrokeFeatures::dur20Ms, .isTime = true},
     {.name = "dur30_ms", .value = &StrokeFeatures::dur30Ms, .isTime = true},
     {.name = "dur40_ms", .value = &StrokeFeatures::dur40Ms, .isTime = true},
     {.name = "attack_ms", .value = &StrokeFeatures::attackMs, .isTime = true},
     {.name = "crest_db", .value = &StrokeFeatures::crestDb, .isTime = false},
     {.name = "tonality_db", .value = &StrokeFeatures::tonalityDb, .isTime = false},
     {.name = "t50_ms", .value = &StrokeFeatures::t50Ms, .isTime = true},
     {.name = "t90_ms", .value = &StrokeFeatures::t90Ms, .isTime = true},
     {.name = "low_db", .value = &StrokeFeatures::lowDb, .isTime = false},
     {.name = "high_db", .value = &StrokeFeatures::highDb, .isTime = false},
     {.name = "mid_db", .value = &StrokeFeatures::midDb, .isTime = false},
     {.name = "late_db", .value = &StrokeFeatures::lateDb, .isTime = false}}};

// 2 ms before the onset, then 6, 14, 26, 42, 66 and 98 ms after it.
constexpr std::array<std::size_t, 7> steps{0, 2, 4, 7, 11, 17, 25};
constexpr std::array<const char*, windowCount> windowNames{"early", "mid", "late"};

std::size_t windowOfStep(std::size_t step) {
    const double ms = 4.0 * static_cast<double>(step) - 2;
    return ms < windowEdgesMs[1] ? 0 : ms < windowEdgesMs[2] ? 1 : 2;
}

double logarithm(double time) {
    return std::log2(1 + std::max(time, 0.0));
}

std::string whole(double number) {
    return std::to_string(static_cast<int>(std::lround(number)));
}

// The kinds of figures in their order, each told to `take` with what it has in the keyboard's
// statistics, so that drawing and naming cannot differ.
struct Expected {
    std::string name;
    Statistic over;
    double least; // the analysis goes no lower
    bool isTime;
    double share; // of strokes that have it
    bool isValid;
};

double meanSpread(const ClassFeatures& keyboard, std::size_t window, std::size_t broad) {
    double sum = 0;
    double count = 0;
    for (std::size_t band = 0; band < bandCount; ++band) {
        if (bandCentres[band] >= broadEdges[broad] && bandCentres[band] < broadEdges[broad + 1]) {
            sum += keyboard.bandSpread[window][band];
            count += 1;
        }
    }
    return sum / std::max(count, 1.0);
}

std::vector<Expected> expectedOf(const ClassFeatures& keyboard) {
    std::vector<Expected> all;
    for (const ScalarFigure& figure : scalarFigures) {
        const auto found = keyboard.scalars.find(figure.name);
        all.push_back({figure.name, found == keyboard.scalars.end() ? Statistic() : found->second,
                       figure.isTime ? 0.0 : -60.0, figure.isTime, 1,
                       found != keyboard.scalars.end()});
    }
    for (std::size_t window = 0; window < windowCount; ++window) {
        for (std::size_t band = 0; band < bandCount; ++band) {
            all.push_back(
                {std::string(windowNames.at(window)) + " " + whole(bandCentres[band]) + " Hz",
                 {.median = keyboard.bands[window][band],
                  .deviation = keyboard.bandSpread[window][band]},
                 -55,
                 false,
                 1,
                 bandCentres[band] >= keyboard.validFromHz});
        }
    }
    for (std::size_t broad = 0; broad < broadCount; ++broad) {
        const std::string range = whole(broadEdges[broad]) + "-" + whole(broadEdges[broad + 1]);
        const bool isValid = broadEdges[broad + 1] > 1.5 * keyboard.validFromHz;
        const auto& decay = keyboard.decayMs[broad];
        all.push_back({"decay " + range + " Hz", decay.value_or(Statistic()), 0, true, 1,
                       isValid && decay.has_value()});
        for (const std::size_t step : steps) {
            all.push_back(
                {range + " Hz at " + std::to_string(4 * static_cast<int>(step) - 2) + " ms",
                 {.median = keyboard.envelopeDb[broad][step],
                  .deviation = meanSpread(keyboard, windowOfStep(step), broad)},
                 -45,
                 false,
                 1,
                 isValid});
        }
    }
    const bool hasSecond = keyboard.events.size() > 1;
    const EventStatistic second = hasSecond ? keyboard.events[1] : EventStatistic();
    all.push_back({"second event ms", second.ms, 0, true, second.share, hasSecond});
    all.push_back({"second event db", second.db, -26, false, second.share, hasSecond});
    all.push_back({"gap to strongest ms", keyboard.gapToStrongestMs, 0, true, 1, true});
    return all;
}

// Where a normally distributed `z` lies in what was measured; skewed as the percentiles are.
double placed(const Statistic& over, double z) {
    const double half = z < 0 ? over.median - over.tenth : over.ninetieth - over.median;
    const bool hasPercentiles =
        over.ninetieth > over.tenth && over.tenth <= over.median && over.median <= over.ninetieth;
    return over.median + z * (hasPercentiles ? half / 1.2816 : over.deviation);
}

double normal(SplitMix64& random) {
    double sum = -6;
    for (int i = 0; i < 12; ++i) {
        sum += random.uniform(0, 1);
    }
    return sum;
}

// A sum of the lender's strokes with random weights has its correlations, whatever they are.
Figures mixture(const std::vector<Figures>& lender, std::size_t count, SplitMix64& random) {
    constexpr double chance = 0.3; // of the variance
    Figures sum(count);
    double squares = 0;
    for (const Figures& stroke : lender) {
        const double weight = normal(random);
        squares += weight * weight;
        for (std::size_t i = 0; i < count; ++i) {
            sum[i] += weight * stroke[i];
        }
    }
    const double lent = lender.empty() ? 0 : std::sqrt((1 - chance) / squares);
    const double own = lender.empty() ? 1 : std::sqrt(chance);
    for (double& value : sum) {
        value = lent * value + own * normal(random);
    }
    return sum;
}

} // namespace

const std::vector<std::string>& figureNames() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> list;
        for (const Expected& figure : expectedOf({})) {
            list.push_back(figure.name);
        }
        return list;
    }();
    return names;
}

Figures figuresOf(const StrokeFeatures& stroke) {
    Figures figures;
    for (const ScalarFigure& figure : scalarFigures) {
        const double value = stroke.*figure.value;
        figures.push_back(figure.isTime ? logarithm(value) : value);
    }
    for (const Bands& window : stroke.bandsDb) {
        figures.insert(figures.end(), window.begin(), window.end());
    }
    for (std::size_t broad = 0; broad < broadCount; ++broad) {
        const auto& decay = stroke.broad.decayMs[broad];
        figures.push_back(decay ? logarithm(*decay) : unknown);
        for (const std::size_t step : steps) {
            figures.push_back(stroke.broad.envelopeDb[broad][step]);
        }
    }
    const bool hasSecond = stroke.events.size() > 1;
    figures.push_back(hasSecond ? logarithm(stroke.events[1].ms) : unknown);
    figures.push_back(hasSecond ? stroke.events[1].db : unknown);
    figures.push_back(logarithm(stroke.gapToStrongestMs));
    return figures;
}

std::vector<Figures> standardised(const std::vector<Figures>& strokes) {
    std::vector<Figures> result = strokes;
    for (std::size_t figure = 0; figure < figureNames().size(); ++figure) {
        std::vector<double> known;
        for (const Figures& stroke : strokes) {
            if (std::isfinite(stroke[figure])) {
                known.push_back(stroke[figure]);
            }
        }
        const double count = std::max<double>(static_cast<double>(known.size()), 1);
        const double mean = std::accumulate(known.begin(), known.end(), 0.0) / count;
        const double deviation = statisticOf(known).deviation;
        for (Figures& stroke : result) {
            stroke[figure] = std::isfinite(stroke[figure]) && deviation > 0
                                 ? (stroke[figure] - mean) / deviation
                                 : 0;
        }
    }
    return result;
}

std::vector<Figures> drawnFigures(const ClassFeatures& keyboard, const std::vector<Figures>& lender,
                                  std::size_t count, std::uint64_t seed) {
    SplitMix64 random(seed);
    const std::vector<Expected> expected = expectedOf(keyboard);
    const std::vector<Figures> lent = standardised(lender);
    std::vector<Figures> strokes;
    for (std::size_t i = 0; i < count; ++i) {
        Figures stroke = mixture(lent, expected.size(), random);
        const double has = random.uniform(0, 1);
        for (std::size_t figure = 0; figure < expected.size(); ++figure) {
            const Expected& is = expected[figure];
            const double value = std::max(placed(is.over, stroke[figure]), is.least);
            stroke[figure] = !is.isValid || has > is.share ? unknown
                             : is.isTime                   ? logarithm(value)
                                                           : value;
        }
        strokes.push_back(std::move(stroke));
    }
    return strokes;
}

} // namespace vornic::packs
