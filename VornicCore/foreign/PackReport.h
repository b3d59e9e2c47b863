#pragma once

#include "VornicCore/base/CaseNames.h"
#include "VornicCore/foreign/ForeignPack.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vornic {

/// What became of a pack, for whoever decides whether to keep it. A value. Thread: any.
struct PackReport {
    /// A key that the pack lacks and whose sound it plays: another key's web name, or "fallback".
    struct Substitute {
        std::string key;
        std::string from;

        bool operator==(const Substitute&) const = default;
    };

    PackFormat format = PackFormat::mechvibes;
    /// In what was opened; empty: its top.
    std::string place;
    std::string name;
    /// Empty: none stated.
    std::string author;
    std::string licence;
    std::string description;
    /// Keys with a press of their own, and those of them with a release of their own.
    std::size_t keys = 0;
    std::size_t releases = 0;
    /// Different ones, after cutting.
    std::size_t recordings = 0;
    std::size_t sounds = 0;
    /// Of all recordings together.
    double seconds = 0;
    /// Web names of keys that the pack wants silent.
    std::vector<std::string> silent;
    std::vector<Substitute> substituted;
    PackNotes notes;
    /// As a board file.
    std::uint64_t boardBytes = 0;
    /// Whether a board file can hold it; otherwise it can be kept, but not exported.
    bool fitsFile = true;

    bool operator==(const PackReport&) const = default;
};

/// What a line of a report is about.
enum class ReportHead : std::uint8_t { silent, substituted, missing, repaired, ignored, remark };

template <>
struct CaseNames<ReportHead> {
    static constexpr std::array names{
        CaseName{ReportHead::silent, "silent in the pack", "Silent in the pack"},
        CaseName{ReportHead::substituted, "not in the pack", "Not in the pack"},
        CaseName{ReportHead::missing, "missing", "Missing"},
        CaseName{ReportHead::repaired, "repaired", "Repaired"},
        CaseName{ReportHead::ignored, "ignored", "Ignored"},
        CaseName{ReportHead::remark, "note", "Note"},
    };
};

struct ReportLine {
    ReportHead head = ReportHead::remark;
    std::string text;
};

/// Everything in a report that is neither a number nor about its author.
std::vector<ReportLine> reportLines(const PackReport& report);

/// "104 keys, 104 releases, 208 recordings, 100 sounds; 12.3 MiB as a board file".
std::string reportNumbers(const PackReport& report);

/// "none stated" for what a pack does not say.
std::string orNoneStated(const std::string& text);

/// To read, one line for each thing.
std::string reportAsText(const PackReport& report);

/// One object, without line breaks.
std::string reportAsJson(const PackReport& report);

} // namespace vornic
