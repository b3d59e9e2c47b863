#include "VornicCore/parts/PartEffect.h"

namespace vornic {

namespace {

using Level = std::optional<double>;

Level higher(const Level& a, const Level& b) {
    if (!a || !b) {
        return a ? a : b;
    }
    return *a < *b ? b : a;
}

Level missing(const Level& wanted, const Level& recorded) {
    constexpr double similarDb = 3;
    if (!wanted || !recorded || *recorded + similarDb < *wanted) {
        return wanted;
    }
    return std::nullopt;
}

} // namespace

const PartEffect& PartEffect::none() {
    static const PartEffect instance;
    return instance;
}

PartEffect PartEffect::operator+(const PartEffect& other) const {
    PartEffect sum = *this;
    for (const auto& [band, gain] : other.eq) {
        sum.eq[band] += gain;
    }
    sum.attackDb += other.attackDb;
    sum.sustainDb += other.sustainDb;
    sum.damping += other.damping;
    sum.drive += other.drive;
    sum.pitch += other.pitch;
    sum.ring += other.ring;
    sum.clickLayerDb = higher(clickLayerDb, other.clickLayerDb);
    sum.springLayerDb = higher(springLayerDb, other.springLayerDb);
    return sum;
}

PartEffect PartEffect::operator-(const PartEffect& recorded) const {
    PartEffect difference = *this;
    for (const auto& [band, gain] : recorded.eq) {
        difference.eq[band] -= gain;
    }
    difference.attackDb -= recorded.attackDb;
    difference.sustainDb -= recorded.sustainDb;
    difference.damping -= recorded.damping;
    difference.drive -= recorded.drive;
    difference.pitch -= recorded.pitch;
    difference.ring -= recorded.ring;
    difference.clickLayerDb = missing(clickLayerDb, recorded.clickLayerDb);
    difference.springLayerDb = missing(springLayerDb, recorded.springLayerDb);
    return difference;
}

} // namespace vornic
