#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// What `vornic slice` was asked to do. Thread: main, as everything here.
struct SliceRequest {
    /// The recording of typing.
    std::filesystem::path file;
    /// Write every stroke instead of those that would be offered.
    bool all = false;
    /// Folder for the strokes, made when missing; absent: nothing is written.
    std::optional<std::filesystem::path> out = std::nullopt;
    /// The helper for further audio formats; empty: there is none.
    std::filesystem::path decoder = {};
};

/// What became of it.
struct SliceReport {
    struct FoundStroke {
        /// Seconds from the start of the recording.
        double start = 0.0;
        double snrDb = 0.0;
        bool clean = false;
        /// Samples of the slice at 48 kHz, as cut.
        std::size_t frames = 0;
        /// The place among those that would be offered, 1 for the best; absent: not offered.
        std::optional<std::size_t> rank;
    };
    /// In the order of their onsets.
    std::vector<FoundStroke> strokes;
    /// The files written, in the same order: "stroke-" and the stroke's number, from 01.
    std::vector<std::filesystem::path> files;
    /// Things the user should know.
    std::vector<std::string> remarks;
};

/// Cuts a recording into strokes and, if asked to, writes them finished as for the library. Throws
/// std::runtime_error with a sentence for the user.
SliceReport sliceFile(const SliceRequest& request);

/// `{"found":…,"strokes":[{"start":…,"snrDb":…,"clean":…,"frames":…,"rank":…},…]}`.
std::string reportAsJson(const SliceReport& report);

/// The same as a table to read.
std::string reportAsText(const SliceReport& report);

} // namespace vornic
