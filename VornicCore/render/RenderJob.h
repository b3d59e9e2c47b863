#pragma once

#include "VornicCore/board/Board.h"

#include <cstddef>
#include <functional>
#include <optional>

namespace vornic {

/// One stroke of one sound under one condition. Equal jobs render identically. Thread: any.
struct RenderJob {
    SoundSpec sound;
    BuildParts build;
    /// The build that the recordings were made with.
    BuildParts recordedBuild;
    /// Only for stabilised keys.
    std::optional<StabParts> stabs;
    Character boardCharacter;
    /// How far variations differ; 0 makes them identical.
    double variation = 0;
    /// The release stroke instead of the press.
    bool isRelease = false;

    /// Takes what it needs from `board`, its stabilisers if `stabilised`.
    RenderJob(const SoundSpec& ofSound, const Board& board, bool stabilised, bool ofRelease);

    /// The stroke to render, or none: not every sound has a release.
    const StrokeSpec* stroke() const;

    bool operator==(const RenderJob&) const = default;
};

} // namespace vornic

template <>
struct std::hash<vornic::RenderJob> {
    std::size_t operator()(const vornic::RenderJob& job) const;
};
