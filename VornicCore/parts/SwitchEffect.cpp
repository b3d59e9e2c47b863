#include "VornicCore/parts/Parts.h"

namespace vornic::Parts {

namespace {

using Band = Equalizer::Band;

PartEffect typeEffect(SwitchType type) {
    switch (type) {
    case SwitchType::linear:
        return {};
    case SwitchType::tactile:
        return {.eq = {{Band::clack, 1.5}, {Band::body, 1}}};
    case SwitchType::clicky:
        return {.eq = {{Band::click, 3}}, .attackDb = 2, .clickLayerDb = -8};
    case SwitchType::topre:
        return {.eq = {{Band::bass, 2}, {Band::body, 2}, {Band::click, -4}, {Band::air, -3}},
                .attackDb = -2,
                .damping = 0.2,
                .pitch = -0.5};
    case SwitchType::silent:
        return {.eq = {{Band::click, -9}, {Band::clack, -4}, {Band::air, -6}},
                .attackDb = -6,
                .sustainDb = -4,
                .damping = 0.5};
    }
    return {};
}

PartEffect housingEffect(Housing housing) {
    switch (housing) {
    case Housing::nylon:
        return {.eq = {{Band::bass, 1.5}, {Band::click, -2}, {Band::air, -1}}, .pitch = -0.3};
    case Housing::polycarbonate:
        return {.eq = {{Band::clack, 2}, {Band::click, 2}, {Band::air, 1}}, .pitch = 0.4};
    case Housing::pom:
        return {.eq = {{Band::bass, 1}, {Band::body, 1}, {Band::click, -1}}, .pitch = -0.2};
    case Housing::uhmwpe:
        return {.eq = {{Band::body, 1}, {Band::click, -2}, {Band::air, -3}}};
    }
    return {};
}

// A Topre switch has a rubber dome above its spring: the spring never pings.
PartEffect lubeEffect(Lube lube, SwitchType type) {
    const bool pings = type != SwitchType::topre;
    switch (lube) {
    case Lube::none:
        return {.eq = {{Band::air, 2}},
                .springLayerDb = pings ? std::optional(-16.0) : std::nullopt};
    case Lube::light:
        return {.eq = {{Band::air, -1}},
                .springLayerDb = pings ? std::optional(-24.0) : std::nullopt};
    case Lube::thick:
        return {.eq = {{Band::air, -3}, {Band::click, -2}},
                .attackDb = -1.5,
                .damping = 0.1,
                .pitch = -0.2};
    }
    return {};
}

PartEffect springEffect(Spring spring) {
    if (spring == Spring::long_) {
        return {.eq = {{Band::air, -0.5}}};
    }
    return {};
}

PartEffect filmsEffect(bool films) {
    if (films) {
        return {.attackDb = 1, .sustainDb = -2, .damping = 0.1};
    }
    return {};
}

} // namespace

PartEffect effect(const SwitchParts& parts) {
    PartEffect sum = typeEffect(parts.type) + housingEffect(parts.housing) +
                     lubeEffect(parts.lube, parts.type) + springEffect(parts.spring) +
                     filmsEffect(parts.films);
    if (parts.spring == Spring::long_ && sum.springLayerDb) {
        *sum.springLayerDb -= 6;
    }
    return sum;
}

} // namespace vornic::Parts
