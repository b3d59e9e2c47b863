// Fits a pack's table to measured keystrokes, class by class, and writes it back.

#include "packs/analysis/Targets.h"
#include "packs/calibration/Calibration.h"
#include "packs/calibration/FirstTable.h"

#include <exception>
#include <iostream>
#include <string>

namespace {

using namespace vornic::packs;

constexpr int usage = 2;

int run(const std::string& targets, const std::string& file, int rounds, const std::string& only) {
    std::string error;
    auto table = readPackTable(file, error);
    if (!table) {
        std::cerr << error << "\n";
        return 1;
    }
    const auto keyboard = readTargets(targets, table->id, table->keyboard);
    if (!keyboard) {
        std::cerr << targets << " has no " << table->id << "/" << table->keyboard << "\n";
        return 1;
    }
    for (ClassTable& keyClass : table->classes) {
        const auto target = keyboard->classes.find(keyClass.strokes.from);
        if (target == keyboard->classes.end()) {
            std::cerr << table->id << ": no class " << keyClass.strokes.from << "\n";
            return 1;
        }
        if (!only.empty() && only != keyClass.name) {
            continue;
        }
        if (keyClass.strokes.strokes == 0) {
            const double level = keyClass.strokes.levelDb;
            keyClass.strokes = firstTable(target->second, keyClass.strokes);
            // What stands in for a class that was not measured keeps the level it was given.
            if (keyClass.name != keyClass.strokes.from) {
                keyClass.strokes.levelDb = level;
            }
        }
        const double share = calibrate(*table, keyClass.name, target->second, rounds);
        std::cout << table->id << " " << keyClass.name << ": " << static_cast<int>(share * 100)
                  << " % within one\n"
                  << std::flush;
    }
    return writePackTable(*table, file) ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
    if (count < 4) {
        std::cerr << "usage: calibrate-packs TARGETS TABLE ROUNDS [CLASS]\n";
        return usage;
    }
    try {
        return run(arguments[1], arguments[2], std::stoi(arguments[3]),
                   count > 4 ? arguments[4] : "");
    } catch (const std::exception& error) {
        std::cerr << "calibrate-packs: " << error.what() << "\n";
        return 1;
    }
}
