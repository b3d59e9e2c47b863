#include "VornicCore/foreign/PackReport.h"

#include "VornicCore/base/ReadableText.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cmath>
#include <cstdio>
#include <map>

namespace vornic {

namespace {

using Json = nlohmann::ordered_json;

std::string counted(std::size_t number, const char* one, const char* many) {
    return std::to_string(number) + " " + (number == 1 ? one : many);
}

std::string megabytes(std::uint64_t bytes) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.1f MiB", static_cast<double>(bytes) / (1U << 20U));
    return text.data();
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : ", ") + word;
    }
    return text;
}

/// "A, B as S; Q as W".
std::string joined(const std::vector<PackReport::Substitute>& substitutes) {
    std::map<std::string, std::vector<std::string>> keys;
    for (const auto& [key, from] : substitutes) {
        keys[from].push_back(key);
    }
    std::string text;
    for (const auto& [from, names] : keys) {
        text += (text.empty() ? "" : "; ") + joined(names) + " as " + from;
    }
    return text;
}

} // namespace

std::string orNoneStated(const std::string& text) {
    return text.empty() ? "none stated" : readable(text, 200);
}

std::vector<ReportLine> reportLines(const PackReport& report) {
    std::vector<ReportLine> lines;
    const auto add = [&](ReportHead head, const std::vector<std::string>& notes) {
        for (const std::string& note : notes) {
            lines.push_back({head, note});
        }
    };
    add(ReportHead::missing, report.notes.missing);
    add(ReportHead::repaired, report.notes.repaired);
    add(ReportHead::ignored, report.notes.ignored);
    add(ReportHead::remark, report.notes.remarks);
    if (!report.silent.empty()) {
        add(ReportHead::silent, {joined(report.silent)});
    }
    if (!report.substituted.empty()) {
        add(ReportHead::substituted, {joined(report.substituted)});
    }
    return lines;
}

std::string reportNumbers(const PackReport& report) {
    return counted(report.keys, "key", "keys") + ", " +
           counted(report.releases, "release", "releases") + ", " +
           counted(report.recordings, "recording", "recordings") + ", " +
           counted(report.sounds, "sound", "sounds") + "; " + megabytes(report.boardBytes) +
           " as a board file" + (report.fitsFile ? "" : ", too large to be exported");
}

std::string reportAsText(const PackReport& report) {
    std::string text = "\"" + readable(report.name) + "\" (" + std::string(label(report.format)) +
                       (report.place.empty() ? "" : ", in " + readable(report.place, 200)) + ")\n";
    text += "  by: " + orNoneStated(report.author) + "\n";
    text += "  licence: " + orNoneStated(report.licence) + "\n";
    text += "  " + reportNumbers(report) + "\n";
    for (const auto& [head, line] : reportLines(report)) {
        text += "  " + std::string(rawString(head)) + ": " + line + "\n";
    }
    return text;
}

std::string reportAsJson(const PackReport& report) {
    const auto stated = [](const std::string& text) { return text.empty() ? Json() : Json(text); };
    Json json;
    json["format"] = rawString(report.format);
    json["place"] = report.place;
    json["name"] = report.name;
    json["author"] = stated(report.author);
    json["licence"] = stated(report.licence);
    json["description"] = stated(report.description);
    json["keys"] = report.keys;
    json["releases"] = report.releases;
    json["recordings"] = report.recordings;
    json["sounds"] = report.sounds;
    json["seconds"] = std::round(report.seconds * 1000) / 1000;
    json["silent"] = report.silent;
    json["substituted"] = Json::array();
    for (const auto& [key, from] : report.substituted) {
        json["substituted"].push_back({{"key", key}, {"from", from}});
    }
    json["missing"] = report.notes.missing;
    json["repaired"] = report.notes.repaired;
    json["ignored"] = report.notes.ignored;
    json["remarks"] = report.notes.remarks;
    json["boardBytes"] = report.boardBytes;
    json["fitsFile"] = report.fitsFile;
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace vornic
