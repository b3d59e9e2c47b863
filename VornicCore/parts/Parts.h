#pragma once

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/parts/BuildParts.h"
#include "VornicCore/parts/PartEffect.h"
#include "VornicCore/parts/StabParts.h"
#include "VornicCore/parts/SwitchParts.h"

#include <optional>
#include <vector>

/// What parts do to the sound. The figures are the design, found by ear.
/// Thread: any, as everything here.
namespace vornic::Parts {

/// The sum over type, housing, lube, spring and films.
PartEffect effect(const SwitchParts& parts);

/// The sum over case, plate, mount, every foam, keycap material and keycap profile.
PartEffect effect(const BuildParts& parts);

/// The resonances of the case, followed by those of the plate.
std::vector<DSP::Mode> modes(const BuildParts& parts);

/// The level of the stabiliser rattle in dB; absent when there is next to none.
std::optional<double> rattleDb(const StabParts& parts);

} // namespace vornic::Parts
