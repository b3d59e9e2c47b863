#include "packs/model/PackTable.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <fstream>

namespace vornic::packs {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::array<const char*, windowCount> windowNames{"early", "mid", "late"};

Bands readBands(const Json& source) {
    Bands bands{};
    for (std::size_t band = 0; band < bandCount; ++band) {
        bands.at(band) = source.at(band).get<double>();
    }
    return bands;
}

StrokeTable readStrokes(const Json& source) {
    StrokeTable strokes{.from = source.at("from").get<std::string>(),
                        .strokes = source.at("strokes").get<std::size_t>(),
                        .lengthMs = source.at("lengthMs").get<double>(),
                        .levelDb = source.at("levelDb").get<double>(),
                        .levelSpread = source.at("levelSpread").get<double>(),
                        .contactMs = source.at("contactMs").get<double>(),
                        .lagMs = source.at("lagMs").get<double>(),
                        .snap = source.at("snap").get<double>(),
                        .bodyShare = source.at("bodyShare").get<double>(),
                        .tailShare = source.at("tailShare").get<double>(),
                        .tailMs = source.at("tailMs").get<double>(),
                        .tailTone = source.at("tailTone").get<double>(),
                        .crowd = source.at("crowd").get<double>(),
                        .rattles = source.at("rattles").get<int>(),
                        .events = {},
                        .levels = {},
                        .spreads = {},
                        .decayMs = readBands(source.at("decayMs")),
                        .modes = {},
                        .approach = source.at("approach").get<std::array<double, broadCount>>()};
    for (std::size_t window = 0; window < windowCount; ++window) {
        strokes.levels.at(window) = readBands(source.at("levels").at(windowNames.at(window)));
        strokes.spreads.at(window) = readBands(source.at("spreads").at(windowNames.at(window)));
    }
    for (const Json& event : source.at("events")) {
        strokes.events.push_back({.share = event.at("share").get<double>(),
                                  .ms = event.at("ms").get<double>(),
                                  .msSpread = event.at("msSpread").get<double>(),
                                  .db = event.at("db").get<double>(),
                                  .dbSpread = event.at("dbSpread").get<double>(),
                                  .tilt = event.at("tilt").get<double>()});
    }
    for (const Json& mode : source.at("modes")) {
        strokes.modes.push_back({.hz = mode.at("hz").get<double>(),
                                 .part = mode.at("part").get<double>(),
                                 .decayMs = mode.at("decayMs").get<double>(),
                                 .cents = mode.at("cents").get<double>()});
    }
    return strokes;
}

PackTable readTable(const Json& source) {
    PackTable table{.id = source.at("id").get<std::string>(),
                    .name = source.at("name").get<std::string>(),
                    .character = source.at("character").get<std::string>(),
                    .credit = source.at("credit").get<std::string>(),
                    .keyboard = source.at("keyboard").get<std::string>(),
                    .seed = source.at("seed").get<std::uint64_t>(),
                    .pressDb = source.at("pressDb").get<double>(),
                    .ping = {},
                    .classes = {}};
    for (const Json& line : source.at("ping")) {
        table.ping.push_back({.hz = line.at("hz").get<double>(),
                              .db = line.at("db").get<double>(),
                              .decayMs = line.at("decayMs").get<double>()});
    }
    for (const auto& [name, strokes] : source.at("classes").items()) {
        table.classes.push_back({.name = name, .strokes = readStrokes(strokes)});
    }
    return table;
}

double rounded(double value) {
    return std::round(value * 100) / 100;
}

Json roundedBands(const Bands& bands) {
    Json list = Json::array();
    for (const double value : bands) {
        list.push_back(std::round(value * 10) / 10);
    }
    return list;
}

Json strokesJson(const StrokeTable& strokes) {
    Json json = {{"from", strokes.from},
                 {"strokes", strokes.strokes},
                 {"lengthMs", strokes.lengthMs},
                 {"levelDb", rounded(strokes.levelDb)},
                 {"levelSpread", rounded(strokes.levelSpread)},
                 {"contactMs", rounded(strokes.contactMs)},
                 {"lagMs", rounded(strokes.lagMs)},
                 {"snap", rounded(strokes.snap)},
                 {"bodyShare", rounded(strokes.bodyShare)},
                 {"tailShare", rounded(strokes.tailShare)},
                 {"tailMs", rounded(strokes.tailMs)},
                 {"tailTone", rounded(strokes.tailTone)},
                 {"crowd", rounded(strokes.crowd)},
                 {"rattles", strokes.rattles}};
    json["events"] = Json::array();
    for (const EventTable& event : strokes.events) {
        json["events"].push_back({{"share", rounded(event.share)},
                                  {"ms", rounded(event.ms)},
                                  {"msSpread", rounded(event.msSpread)},
                                  {"db", rounded(event.db)},
                                  {"dbSpread", rounded(event.dbSpread)},
                                  {"tilt", rounded(event.tilt)}});
    }
    for (std::size_t window = 0; window < windowCount; ++window) {
        json["levels"][windowNames.at(window)] = roundedBands(strokes.levels.at(window));
    }
    for (std::size_t window = 0; window < windowCount; ++window) {
        json["spreads"][windowNames.at(window)] = roundedBands(strokes.spreads.at(window));
    }
    json["approach"] = Json::array();
    for (const double db : strokes.approach) {
        json["approach"].push_back(std::round(db * 10) / 10);
    }
    json["decayMs"] = roundedBands(strokes.decayMs);
    json["modes"] = Json::array();
    for (const ModeTable& mode : strokes.modes) {
        json["modes"].push_back({{"hz", std::round(mode.hz)},
                                 {"part", rounded(mode.part)},
                                 {"decayMs", rounded(mode.decayMs)},
                                 {"cents", std::round(mode.cents)}});
    }
    return json;
}

bool isFlat(const Json& json) {
    return std::ranges::none_of(json, [](const Json& value) { return value.is_structured(); });
}

// One line for what holds no further structure.
void print(const Json& json, std::ostream& out, int depth) {
    if (!json.is_structured() || isFlat(json)) {
        std::string text = json.dump();
        out << text;
        return;
    }
    const std::string indent(static_cast<std::size_t>(2 * depth + 2), ' ');
    out << (json.is_object() ? "{\n" : "[\n");
    bool isFirst = true;
    for (const auto& [key, value] : json.items()) {
        out << (isFirst ? "" : ",\n") << indent;
        isFirst = false;
        if (json.is_object()) {
            out << Json(key).dump() << ": ";
        }
        print(value, out, depth + 1);
    }
    out << "\n" << indent.substr(2) << (json.is_object() ? "}" : "]");
}

} // namespace

const StrokeTable* PackTable::find(std::string_view keyClass) const {
    const auto found = std::ranges::find(classes, keyClass, &ClassTable::name);
    return found == classes.end() ? nullptr : &found->strokes;
}

StrokeTable* PackTable::find(std::string_view keyClass) {
    const auto found = std::ranges::find(classes, keyClass, &ClassTable::name);
    return found == classes.end() ? nullptr : &found->strokes;
}

std::optional<PackTable> readPackTable(const std::filesystem::path& file, std::string& error) {
    std::ifstream stream(file);
    const Json source = Json::parse(stream, nullptr, false);
    if (source.is_discarded()) {
        error = file.string() + ": cannot be read";
        return std::nullopt;
    }
    try {
        return readTable(source);
    } catch (const Json::exception& fault) {
        error = file.string() + ": " + fault.what();
        return std::nullopt;
    }
}

bool writePackTable(const PackTable& table, const std::filesystem::path& file) {
    Json json = {
        {"id", table.id},          {"name", table.name},         {"character", table.character},
        {"credit", table.credit},  {"keyboard", table.keyboard}, {"seed", table.seed},
        {"pressDb", table.pressDb}};
    json["ping"] = Json::array();
    for (const PingTable& line : table.ping) {
        json["ping"].push_back({{"hz", line.hz}, {"db", line.db}, {"decayMs", line.decayMs}});
    }
    json["classes"] = Json::object();
    for (const ClassTable& keyClass : table.classes) {
        json["classes"][keyClass.name] = strokesJson(keyClass.strokes);
    }
    std::ofstream stream(file);
    print(json, stream, 0);
    stream << "\n";
    return stream.good();
}

} // namespace vornic::packs
