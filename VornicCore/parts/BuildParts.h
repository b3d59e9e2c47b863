#pragma once

#include "VornicCore/base/CaseNames.h"

#include <array>
#include <cstdint>
#include <set>

namespace vornic {

enum class CaseMaterial : std::uint8_t { plastic, aluminium, wood, acrylic };
enum class Plate : std::uint8_t { polycarbonate, fr4, pom, aluminium, brass, carbon, none };
enum class Mount : std::uint8_t { gasket, top, tray, leafSpring };
enum class Foam : std::uint8_t { caseFoam, peFoam, tapeMod, plateFoam, switchPads };
enum class KeycapMaterial : std::uint8_t { pbt, abs };
enum class KeycapProfile : std::uint8_t { cherry, oem, sa, xda, lowProfile };

template <>
struct CaseNames<CaseMaterial> {
    static constexpr std::array names{
        CaseName{CaseMaterial::plastic, "plastic", "Plastic"},
        CaseName{CaseMaterial::aluminium, "aluminium", "Aluminium"},
        CaseName{CaseMaterial::wood, "wood", "Wood"},
        CaseName{CaseMaterial::acrylic, "acrylic", "Acrylic"},
    };
};

template <>
struct CaseNames<Plate> {
    static constexpr std::array names{
        CaseName{Plate::polycarbonate, "polycarbonate", "Polycarbonate"},
        CaseName{Plate::fr4, "fr4", "FR4"},
        CaseName{Plate::pom, "pom", "POM"},
        CaseName{Plate::aluminium, "aluminium", "Aluminium"},
        CaseName{Plate::brass, "brass", "Brass"},
        CaseName{Plate::carbon, "carbon", "Carbon fibre"},
        CaseName{Plate::none, "none", "None (plateless)"},
    };
};

template <>
struct CaseNames<Mount> {
    static constexpr std::array names{
        CaseName{Mount::gasket, "gasket", "Gasket"},
        CaseName{Mount::top, "top", "Top mount"},
        CaseName{Mount::tray, "tray", "Tray mount"},
        CaseName{Mount::leafSpring, "leafSpring", "Leaf spring"},
    };
};

template <>
struct CaseNames<Foam> {
    static constexpr std::array names{
        CaseName{Foam::caseFoam, "caseFoam", "Case foam"},
        CaseName{Foam::peFoam, "peFoam", "PE foam"},
        CaseName{Foam::tapeMod, "tapeMod", "Tape mod"},
        CaseName{Foam::plateFoam, "plateFoam", "Plate foam"},
        CaseName{Foam::switchPads, "switchPads", "Switch pads"},
    };
};

template <>
struct CaseNames<KeycapMaterial> {
    static constexpr std::array names{
        CaseName{KeycapMaterial::pbt, "pbt", "PBT"},
        CaseName{KeycapMaterial::abs, "abs", "ABS"},
    };
};

template <>
struct CaseNames<KeycapProfile> {
    static constexpr std::array names{
        CaseName{KeycapProfile::cherry, "cherry", "Cherry"},
        CaseName{KeycapProfile::oem, "oem", "OEM"},
        CaseName{KeycapProfile::sa, "sa", "SA"},
        CaseName{KeycapProfile::xda, "xda", "XDA"},
        CaseName{KeycapProfile::lowProfile, "lowProfile", "Low profile"},
    };
};

/// What a keyboard is built of, apart from its switches. The defaults are those of an ordinary
/// board: the reference plate in a plastic tray case. Thread: any.
struct BuildParts {
    CaseMaterial caseMaterial = CaseMaterial::plastic;
    Plate plate = Plate::fr4;
    Mount mount = Mount::tray;
    std::set<Foam> foams = {};
    KeycapMaterial keycapMaterial = KeycapMaterial::pbt;
    KeycapProfile keycapProfile = KeycapProfile::cherry;

    bool operator==(const BuildParts&) const = default;
};

} // namespace vornic
