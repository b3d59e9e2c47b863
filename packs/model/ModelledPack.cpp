#include "packs/model/ModelledPack.h"

#include "packs/analysis/ClassFeatures.h"
#include "packs/analysis/TypicalFirst.h"
#include "packs/model/StrokeModel.h"
#include "packs/recorded/PackFiles.h"
#include "packs/recorded/StrokeShape.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <system_error>
#include <vector>

namespace vornic::packs {

namespace {

namespace fs = std::filesystem;
using Strokes = std::vector<std::vector<float>>;

constexpr double ceilingDb = -1;

double medianLevel(const Strokes& strokes) {
    std::vector<double> levels(strokes.size());
    std::ranges::transform(strokes, levels.begin(), [](const auto& x) { return strokeLevel(x); });
    return statisticOf(levels).median;
}

Strokes inOrder(const Strokes& strokes) {
    Strokes ordered;
    for (const std::size_t stroke : typicalFirst(strokes)) {
        ordered.push_back(strokes[stroke]);
    }
    return ordered;
}

void setLevels(std::map<std::string, Strokes>& classes, double pressDb) {
    double gainDb = pressDb - medianLevel(classes["regular"]);
    for (const auto& [name, strokes] : classes) {
        for (const auto& stroke : strokes) {
            gainDb = std::min(gainDb, ceilingDb - decibels(static_cast<double>(peak(stroke))));
        }
    }
    const auto gain = static_cast<float>(std::pow(10, gainDb / 20));
    for (auto& [name, strokes] : classes) {
        for (auto& stroke : strokes) {
            std::ranges::transform(stroke, stroke.begin(), [&](float x) { return gain * x; });
        }
    }
}

} // namespace

ModelledPack makePack(const PackTable& table, const fs::path& target) {
    ModelledPack pack;
    std::map<std::string, Strokes> classes;
    for (const ClassTable& keyClass : table.classes) {
        classes[keyClass.name] = inOrder(makeStrokes(table, keyClass.name));
    }
    if (classes["regular"].empty()) {
        pack.error = "the table of " + table.id + " has no regular press";
        return pack;
    }
    setLevels(classes, table.pressDb);
    std::error_code error;
    fs::remove_all(target, error);
    fs::create_directories(target, error);
    bool isWritten = true;
    for (const auto& [name, strokes] : classes) {
        isWritten = isWritten && writeStrokes(strokes, name, target);
        pack.written += strokes.size();
    }
    if (!isWritten || !writeManifest({.id = table.id,
                                      .name = table.name,
                                      .character = table.character,
                                      .credit = table.credit},
                                     target)) {
        pack.error = "cannot write to " + target.string();
    }
    return pack;
}

} // namespace vornic::packs
