#include "VornicCore/parts/Parts.h"

namespace vornic::Parts {

namespace {

using Band = Equalizer::Band;

PartEffect caseEffect(CaseMaterial material) {
    switch (material) {
    case CaseMaterial::plastic:
        return {.eq = {{Band::body, 1}}, .ring = 0.3};
    case CaseMaterial::aluminium:
        return {.eq = {{Band::bass, -0.5}}, .sustainDb = -1};
    case CaseMaterial::wood:
        return {.eq = {{Band::body, 2}, {Band::bass, 1}, {Band::air, -1}}, .ring = 0.1};
    case CaseMaterial::acrylic:
        return {.eq = {{Band::clack, 1.5}, {Band::click, 1.5}}, .ring = 0.2};
    }
    return {};
}

PartEffect plateEffect(Plate plate) {
    switch (plate) {
    case Plate::polycarbonate:
        return {.eq = {{Band::bass, 1}, {Band::click, -1.5}}, .damping = 0.15, .pitch = -0.3};
    case Plate::fr4:
        // The plate that the others are compared with.
        return {};
    case Plate::pom:
        return {.eq = {{Band::bass, 1.5}, {Band::click, -2}}, .damping = 0.2, .pitch = -0.4};
    case Plate::aluminium:
        return {.eq = {{Band::click, 1.5}}, .pitch = 0.3, .ring = 0.25};
    case Plate::brass:
        return {.eq = {{Band::click, 2}, {Band::air, 1}}, .sustainDb = 2, .ring = 0.5};
    case Plate::carbon:
        return {.eq = {{Band::click, 1}}, .sustainDb = -1};
    case Plate::none:
        return {.eq = {{Band::bass, 2}, {Band::body, 1.5}, {Band::click, -2}},
                .damping = 0.25,
                .pitch = -0.6};
    }
    return {};
}

PartEffect mountEffect(Mount mount) {
    switch (mount) {
    case Mount::gasket:
        return {.eq = {{Band::bass, 0.5}}, .sustainDb = -1, .damping = 0.2};
    case Mount::top:
        return {.eq = {{Band::clack, 1}}, .attackDb = 1};
    case Mount::tray:
        return {.eq = {{Band::clack, 1}}, .sustainDb = 2, .ring = 0.4};
    case Mount::leafSpring:
        return {.eq = {{Band::bass, 1.5}}, .sustainDb = -1, .damping = 0.1};
    }
    return {};
}

PartEffect foamEffect(Foam foam) {
    switch (foam) {
    case Foam::caseFoam:
        return {.eq = {{Band::body, -1.5}}, .ring = -0.4};
    case Foam::peFoam:
        return {.eq = {{Band::clack, 2}, {Band::click, 1.5}}, .damping = 0.15};
    case Foam::tapeMod:
        return {.eq = {{Band::bass, 1.5}, {Band::clack, 1.5}}, .damping = 0.1};
    case Foam::plateFoam:
        return {.ring = -0.2};
    case Foam::switchPads:
        return {.sustainDb = -2, .damping = 0.2};
    }
    return {};
}

PartEffect keycapEffect(KeycapMaterial material) {
    switch (material) {
    case KeycapMaterial::pbt:
        return {.eq = {{Band::bass, 1}, {Band::click, -1.5}}, .pitch = -0.3};
    case KeycapMaterial::abs:
        return {.eq = {{Band::click, 1.5}, {Band::air, 1}}, .pitch = 0.4};
    }
    return {};
}

PartEffect profileEffect(KeycapProfile profile) {
    switch (profile) {
    case KeycapProfile::cherry:
        return {};
    case KeycapProfile::oem:
        return {.eq = {{Band::bass, 0.5}}, .pitch = -0.2};
    case KeycapProfile::sa:
        return {.eq = {{Band::bass, 2}, {Band::body, 1.5}}, .sustainDb = 1, .pitch = -0.8};
    case KeycapProfile::xda:
        return {.eq = {{Band::click, 1}}, .pitch = 0.5};
    case KeycapProfile::lowProfile:
        return {.eq = {{Band::click, 2}}, .sustainDb = -3, .damping = 0.2, .pitch = 0.6};
    }
    return {};
}

} // namespace

PartEffect effect(const BuildParts& parts) {
    PartEffect sum =
        caseEffect(parts.caseMaterial) + plateEffect(parts.plate) + mountEffect(parts.mount);
    for (const Foam foam : parts.foams) {
        sum = sum + foamEffect(foam);
    }
    return sum + keycapEffect(parts.keycapMaterial) + profileEffect(parts.keycapProfile);
}

} // namespace vornic::Parts
