#pragma once

#include "Vornic/app/SimpleTweaks.h"
#include "VornicCore/board/OutputKind.h"
#include "VornicCore/board/StageSpec.h"
#include "VornicCore/packs/SoundPack.h"

#include <string>

namespace vornic {

/// What the user has chosen. The defaults are those of a fresh installation. Thread: any.
struct Settings {
    /// Whether keys make a sound.
    bool hearMyself = true;
    bool quietDuringCalls = true;
    /// Whether every program is asked to tell of its password fields.
    bool noticePasswordsEverywhere = false;
    /// Whether the advanced editor is shown.
    bool advanced = false;
    /// From 0 to 1.
    double volume = 0.7;
    OutputKind outputKind = OutputKind::automatic;
    /// The current board's id.
    std::string board = std::string(SoundPack::defaultID);
    StageSpec stage;
    TweaksByBoard tweaks;
    /// Whether the user has seen what a first start shows.
    bool welcomed = false;
    /// Whether the user was told that there is no tray.
    bool toldOfNoTray = false;

    bool operator==(const Settings&) const = default;
};

/// Calls `visit` with every setting: its name in the file, and its field. Thread: any.
template <typename Visit>
void forEachSetting(Visit&& visit) {
    visit("hearMyself", &Settings::hearMyself);
    visit("quietDuringCalls", &Settings::quietDuringCalls);
    visit("noticePasswordsEverywhere", &Settings::noticePasswordsEverywhere);
    visit("advanced", &Settings::advanced);
    visit("volume", &Settings::volume);
    visit("outputKind", &Settings::outputKind);
    visit("board", &Settings::board);
    visit("stage", &Settings::stage);
    visit("tweaks", &Settings::tweaks);
    visit("welcomed", &Settings::welcomed);
    visit("toldOfNoTray", &Settings::toldOfNoTray);
}

} // namespace vornic
