// How near the sound packs come to the keyboards they are modelled after: every feature of every
// class beside its measured target, in the target's own standard deviations.
//
//   bench_packs [TARGETS] [--all]     --all prints every feature, not only those beyond one

#include "bench/PackStrokes.h"

#include "packs/analysis/Distances.h"
#include "packs/analysis/Targets.h"
#include "packs/model/PackTable.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <span>
#include <string>

namespace {

using namespace vornic;
using namespace vornic::packs;
using vornic::bench::strokesOf;

constexpr std::size_t enough = 5; // strokes of which a target is a statistic
const std::string usualTargets = "../shared/sound/targets.json";

void print(const std::vector<Distance>& rows, bool all) {
    for (const Distance& row : rows) {
        if (all || std::abs(row.deviations) > 1) {
            std::printf("    %-7s %-18s %10.2f  target %10.2f  %+6.2f\n", row.group.c_str(),
                        row.name.c_str(), row.measured, row.target, row.deviations);
        }
    }
}

void summarise(const std::vector<Distance>& rows) {
    for (const char* group : {"scalar", "band", "decay", "event", "mode", "spread"}) {
        std::printf("  %s %.0f %%", group, 100 * shareWithin(rows, group));
    }
    std::printf("\n");
}

class Report {
  public:
    Report(std::string targets, bool all) : targets_(std::move(targets)), all_(all) {}

    void add(const PackTable& table) {
        const auto keyboard = readTargets(targets_, table.id, table.keyboard);
        const auto pack = SoundPack::load(std::filesystem::path(VORNIC_BUILT_PACKS) / table.id);
        if (!keyboard || !pack) {
            std::printf("%s: no targets or no pack\n", table.id.c_str());
            return;
        }
        std::printf("%s: %s\n", table.id.c_str(), keyboard->what.c_str());
        const ClassFeatures regular = classFeaturesOf(strokesOf(*pack, "regular"));
        for (const ClassTable& keyClass : table.classes) {
            const auto target = keyboard->classes.find(keyClass.strokes.from);
            if (target != keyboard->classes.end()) {
                compare(keyClass, target->second,
                        keyClass.name == "regular"
                            ? regular
                            : classFeaturesOf(strokesOf(*pack, keyClass.name)),
                        regular);
            }
        }
    }

    void total() const {
        std::printf("all classes with %zu or more measured strokes, %zu features: %.1f %% within "
                    "one standard deviation\n",
                    enough, scored_.size(), 100 * shareWithin(scored_));
        summarise(scored_);
    }

  private:
    void compare(const ClassTable& keyClass, const ClassFeatures& target,
                 const ClassFeatures& measured, const ClassFeatures& regular) {
        const std::vector<Distance> rows = distances(measured, target);
        const bool isScored = target.count >= enough && keyClass.name == keyClass.strokes.from;
        std::printf("  %s: %zu strokes beside %zu measured (%s)%s, %.0f %% within one\n",
                    keyClass.name.c_str(), measured.count, target.count,
                    keyClass.strokes.from.c_str(), isScored ? "" : ", not scored",
                    100 * shareWithin(rows));
        std::printf("    level re the regular press: %.1f dB",
                    measured.level.value_or(Statistic()).median -
                        regular.level.value_or(Statistic()).median);
        if (target.level && keyClass.name == keyClass.strokes.from) {
            std::printf(", target %.1f", target.level->median);
        }
        std::printf("\n  ");
        summarise(rows);
        print(rows, all_);
        if (isScored) {
            scored_.insert(scored_.end(), rows.begin(), rows.end());
        }
    }

    std::string targets_;
    bool all_;
    std::vector<Distance> scored_;
};

} // namespace

int main(int count, char** arguments) {
    try {
        std::string targets = usualTargets;
        bool all = false;
        for (const std::string argument :
             std::span(arguments, static_cast<std::size_t>(count)).subspan(1)) {
            if (argument == "--all") {
                all = true;
            } else {
                targets = argument;
            }
        }
        if (!std::filesystem::exists(targets)) {
            std::cout << "no measured keystrokes at " << targets
                      << ": name the file that holds them\n";
            return 0;
        }
        Report report(targets, all);
        for (const char* id : {"deep", "soft", "plastic", "metal", "clicky", "spring"}) {
            std::string error;
            const auto table = readPackTable(
                std::filesystem::path(VORNIC_PACK_TABLES) / (std::string(id) + ".json"), error);
            if (!table) {
                std::cerr << error << "\n";
                return 1;
            }
            report.add(*table);
        }
        report.total();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "bench_packs: " << error.what() << "\n";
        return 1;
    }
}
