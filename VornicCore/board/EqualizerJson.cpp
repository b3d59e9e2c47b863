#include "VornicCore/board/BoardRecords.h"

namespace vornic {

Equalizer JsonValue<Equalizer>::read(const JsonReader& in) {
    const JsonReader gains = in.member("gains");
    const std::vector<JsonReader> elements = gains.elements();
    if (elements.size() % 2 != 0) {
        gains.fail("expected pairs of a band and a number, found an odd number of elements");
    }
    Equalizer eq;
    eq.gains.clear();
    for (std::size_t i = 0; i < elements.size(); i += 2) {
        const auto band = JsonValue<Equalizer::Band>::read(elements[i]);
        const bool isNew = eq.gains.emplace(band, elements[i + 1].single()).second;
        if (!isNew) {
            elements[i].fail("this band occurs twice");
        }
    }
    return eq;
}

nlohmann::json JsonValue<Equalizer>::write(const Equalizer& eq) {
    nlohmann::json gains = nlohmann::json::array();
    for (const auto& [band, gain] : eq.gains) {
        gains.push_back(rawString(band));
        gains.push_back(JsonValue<float>::write(gain));
    }
    return {{"gains", std::move(gains)}};
}

} // namespace vornic
