#pragma once

#include "VornicCore/parts/BuildParts.h"
#include "VornicCore/parts/StabParts.h"
#include "VornicCore/parts/SwitchParts.h"

namespace vornic {

/// What a part does to the sound, in a few words, in the translations' context "Studio".
/// Thread: any, as everything here.
const char* noteOf(SwitchType part);
const char* noteOf(Housing part);
const char* noteOf(Lube part);
const char* noteOf(Spring part);
const char* noteOf(CaseMaterial part);
const char* noteOf(Plate part);
const char* noteOf(Mount part);
const char* noteOf(Foam part);
const char* noteOf(KeycapMaterial part);
const char* noteOf(KeycapProfile part);
const char* noteOf(StabTuning part);
/// The same of a switch with films, or without.
const char* noteOfFilms(bool films);

} // namespace vornic
