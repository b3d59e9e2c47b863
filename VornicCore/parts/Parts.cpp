#include "VornicCore/parts/Parts.h"

#include "VornicCore/realtime/Fatal.h"

#include <cmath>

namespace vornic::Parts {

namespace {

using Modes = std::vector<DSP::Mode>;

Modes caseModes(CaseMaterial material) {
    switch (material) {
    case CaseMaterial::plastic:
        return {{480, 40, -2}, {1150, 25, -6}};
    case CaseMaterial::aluminium:
        return {{900, 60, -4}, {2400, 45, -8}};
    case CaseMaterial::wood:
        return {{260, 30, -2}, {700, 18, -6}};
    case CaseMaterial::acrylic:
        return {{700, 35, -3}, {1800, 22, -7}};
    }
    return {};
}

Modes plateModes(Plate plate) {
    switch (plate) {
    case Plate::polycarbonate:
        return {{350, 20, -4}};
    case Plate::fr4:
        return {{600, 25, -5}};
    case Plate::pom:
        return {{300, 18, -5}};
    case Plate::aluminium:
        return {{1400, 60, -4}, {3600, 40, -9}};
    case Plate::brass:
        return {{1200, 120, -3}, {3100, 80, -8}};
    case Plate::carbon:
        return {{1700, 30, -6}};
    case Plate::none:
        return {};
    }
    return {};
}

double tuningDb(StabTuning tuning) {
    switch (tuning) {
    case StabTuning::stock:
        return -12;
    case StabTuning::lubed:
        return -20;
    case StabTuning::tuned:
        return -30;
    }
    fatal("a stabiliser has three tunings");
}

} // namespace

std::vector<DSP::Mode> modes(const BuildParts& parts) {
    Modes all = caseModes(parts.caseMaterial);
    const Modes plate = plateModes(parts.plate);
    all.insert(all.end(), plate.begin(), plate.end());
    return all;
}

std::optional<double> rattleDb(const StabParts& parts) {
    constexpr double nextToNone = 0.01;
    if (parts.rattle <= nextToNone) {
        return std::nullopt;
    }
    return 20 * std::log10(parts.rattle) + tuningDb(parts.tuning);
}

} // namespace vornic::Parts
