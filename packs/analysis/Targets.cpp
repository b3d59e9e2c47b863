#include "packs/analysis/Targets.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>

namespace vornic::packs {

namespace {

using nlohmann::json;

double number(const json& value) {
    return value.is_number() ? value.get<double>() : 0;
}

Statistic statistic(const json& value) {
    if (!value.is_array() || value.size() != 4 || !value[0].is_number()) {
        return {};
    }
    return {.median = number(value[0]),
            .deviation = number(value[1]),
            .tenth = number(value[2]),
            .ninetieth = number(value[3])};
}

template <std::size_t count>
std::array<double, count> numbers(const json& values) {
    std::array<double, count> result{};
    std::ranges::transform(
        values.begin(),
        values.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(values.size(), count)),
        result.begin(), number);
    return result;
}

void readBands(const json& source, ClassFeatures& result) {
    constexpr std::array<const char*, windowCount> names{"early", "mid", "late"};
    for (std::size_t window = 0; window < windowCount; ++window) {
        const json& here = source.at("third_octave_db").at(names.at(window));
        result.bands.at(window) = numbers<bandCount>(here.at("median"));
        result.bandSpread.at(window) = numbers<bandCount>(here.at("sd"));
    }
    const json& decay = source.at("broad_decay_ms");
    for (std::size_t band = 0; band < broadCount; ++band) {
        const json& median = decay.at("median").at(band);
        if (median.is_number()) {
            result.decayMs.at(band) = Statistic{.median = median.get<double>(),
                                                .deviation = number(decay.at("sd").at(band))};
        }
        result.envelopeDb.at(band) = numbers<envelopeSteps>(source.at("broad_env_db").at(band));
    }
}

void readModes(const json& source, ClassFeatures& result) {
    for (const json& mode : source.at("modes")) {
        const json& jitter = mode.at("jitter_cents");
        const json& decay = mode.at("tau_ms");
        result.modes.push_back(
            {.hz = number(mode.at("hz")),
             .db = number(mode.at("db")),
             .decayMs = decay.is_array() ? std::optional(statistic(decay).median) : std::nullopt,
             .present = number(mode.at("present")),
             .jitterCents = jitter.is_number() ? std::optional(number(jitter)) : std::nullopt});
    }
}

void readEvents(const json& source, ClassFeatures& result) {
    const json& events = source.at("events");
    for (const json& event : events.at("by_index")) {
        result.events.push_back({.share = number(event.at("share")),
                                 .ms = statistic(event.at("t_ms")),
                                 .db = statistic(event.at("db")),
                                 .centroidHz = statistic(event.at("centroid_hz"))});
    }
    result.gapToStrongestMs = statistic(events.at("gap_first_to_strongest_ms"));
}

ClassFeatures readClass(const json& source) {
    ClassFeatures result;
    result.count = source.at("n").get<std::size_t>();
    result.validFromHz = source.value("valid_from_hz", 125.0);
    for (const auto& [name, value] : source.at("scalars").items()) {
        result.scalars[name] = statistic(value);
    }
    if (const json& level = source.at("level_db_re_regular_press"); level.is_array()) {
        result.level = statistic(level);
    }
    readBands(source, result);
    readModes(source, result);
    readEvents(source, result);
    return result;
}

} // namespace

std::optional<MeasuredKeyboard> readTargets(const std::filesystem::path& file,
                                            const std::string& pack, const std::string& keyboard) {
    std::ifstream stream(file);
    const json all = json::parse(stream, nullptr, false);
    if (all.is_discarded()) {
        return std::nullopt;
    }
    try {
        const json& found = all.at("characters").at(pack).at("keyboards").at(keyboard);
        MeasuredKeyboard result{.what = found.at("what").get<std::string>(), .classes = {}};
        for (const auto& [name, value] : found.at("classes").items()) {
            result.classes[name] = readClass(value);
        }
        // What one keyboard shows once, others show how it may vary.
        ClassFeatures lender = result.classes.at("regular");
        if (lender.count < 5) {
            lender = readClass(all.at("characters")
                                   .at("clicky")
                                   .at("keyboards")
                                   .at("cherry-mx-blue-abs")
                                   .at("classes")
                                   .at("regular"));
        }
        for (auto& [name, features] : result.classes) {
            lendSpread(features, lender);
        }
        return result;
    } catch (const json::exception&) {
        return std::nullopt;
    }
}

std::vector<std::pair<std::string, std::string>>
measuredKeyboards(const std::filesystem::path& file) {
    std::ifstream stream(file);
    const json all = json::parse(stream, nullptr, false);
    std::vector<std::pair<std::string, std::string>> result;
    try {
        for (const auto& [pack, character] : all.at("characters").items()) {
            for (const auto& [keyboard, figures] : character.at("keyboards").items()) {
                result.emplace_back(pack, keyboard);
            }
        }
    } catch (const json::exception&) {
        return {};
    }
    return result;
}

void lendSpread(ClassFeatures& target, const ClassFeatures& lender) {
    constexpr std::size_t enough = 5;
    if (target.count >= enough) {
        return;
    }
    for (auto& [name, value] : target.scalars) {
        if (const auto found = lender.scalars.find(name); found != lender.scalars.end()) {
            value.deviation = found->second.deviation;
        }
    }
    target.bandSpread = lender.bandSpread;
    for (std::size_t band = 0; band < broadCount; ++band) {
        std::optional<Statistic>& decay = target.decayMs[band];
        const std::optional<Statistic>& lent = lender.decayMs[band];
        if (decay && lent) {
            decay->deviation = lent->deviation;
        }
    }
    for (std::size_t i = 0; i < target.events.size() && !lender.events.empty(); ++i) {
        const EventStatistic& from = lender.events[std::min(i, lender.events.size() - 1)];
        target.events[i].ms.deviation = i == 0 ? 0 : from.ms.deviation;
        target.events[i].db.deviation = from.db.deviation;
        target.events[i].centroidHz.deviation = from.centroidHz.deviation;
    }
    target.gapToStrongestMs.deviation = lender.gapToStrongestMs.deviation;
}

} // namespace vornic::packs
