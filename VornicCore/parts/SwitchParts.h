#pragma once

#include "VornicCore/base/CaseNames.h"

#include <array>
#include <cstdint>

namespace vornic {

enum class SwitchType : std::uint8_t { linear, tactile, clicky, topre, silent };
enum class Housing : std::uint8_t { nylon, polycarbonate, pom, uhmwpe };
enum class Lube : std::uint8_t { none, light, thick };
/// `long_` is written "long", which C++ keeps for itself.
enum class Spring : std::uint8_t { standard, long_ };

template <>
struct CaseNames<SwitchType> {
    static constexpr std::array names{
        CaseName{SwitchType::linear, "linear", "Linear"},
        CaseName{SwitchType::tactile, "tactile", "Tactile"},
        CaseName{SwitchType::clicky, "clicky", "Clicky"},
        CaseName{SwitchType::topre, "topre", "Topre"},
        CaseName{SwitchType::silent, "silent", "Silent"},
    };
};

template <>
struct CaseNames<Housing> {
    static constexpr std::array names{
        CaseName{Housing::nylon, "nylon", "Nylon"},
        CaseName{Housing::polycarbonate, "polycarbonate", "Polycarbonate"},
        CaseName{Housing::pom, "pom", "POM"},
        CaseName{Housing::uhmwpe, "uhmwpe", "UHMWPE"},
    };
};

template <>
struct CaseNames<Lube> {
    static constexpr std::array names{
        CaseName{Lube::none, "none", "None"},
        CaseName{Lube::light, "light", "Light"},
        CaseName{Lube::thick, "thick", "Thick"},
    };
};

template <>
struct CaseNames<Spring> {
    static constexpr std::array names{
        CaseName{Spring::standard, "standard", "Standard"},
        CaseName{Spring::long_, "long", "Long"},
    };
};

/// What a key switch is made of. The defaults change a sound the least: they are those of an
/// ordinary switch, as it leaves the factory. Thread: any, as everything here.
struct SwitchParts {
    SwitchType type = SwitchType::linear;
    Housing housing = Housing::nylon;
    Lube lube = Lube::light;
    Spring spring = Spring::standard;
    bool films = false;

    bool operator==(const SwitchParts&) const = default;
};

} // namespace vornic
