#include "packs/analysis/Distances.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace vornic::packs {

namespace {

// What a deviation is at least: the step in which the figure was measured.
double stepOf(std::string_view name) {
    if (name.ends_with("_ms")) {
        return name.starts_with("dur") ? 2 : 0.25;
    }
    if (name.ends_with("_hz")) {
        return 50;
    }
    return name == "n_events" ? 1 : 0.5;
}

class Comparison {
  public:
    Comparison(const ClassFeatures& measured, const ClassFeatures& target)
        : measured_(measured), target_(target) {
        compareScalars();
        compareBands();
        compareEvents();
        compareModes();
    }

    std::vector<Distance> rows;

  private:
    void add(std::string group, std::string name, double measured, double target,
             double deviation) {
        rows.push_back({.group = std::move(group),
                        .name = std::move(name),
                        .measured = measured,
                        .target = target,
                        .deviations = (measured - target) / deviation});
    }

    void addSpread(std::string name, double measured, double target, double least) {
        rows.push_back(
            {.group = "spread",
             .name = std::move(name),
             .measured = measured,
             .target = target,
             .deviations = std::log2(std::max(measured, least) / std::max(target, least))});
    }

    void compareScalars() {
        for (const auto& [name, target] : target_.scalars) {
            const auto found = measured_.scalars.find(name);
            if (found == measured_.scalars.end()) {
                continue;
            }
            const double least = stepOf(name);
            add("scalar", name, found->second.median, target.median,
                std::max(target.deviation, least));
            if (target_.count >= 5) {
                addSpread(name, found->second.deviation, target.deviation, least);
            }
        }
        if (target_.level && measured_.level && target_.count >= 5) {
            addSpread("level", measured_.level->deviation, target_.level->deviation, 0.5);
        }
    }

    void compareBands() {
        const std::array<std::string, windowCount> names{"early ", "mid ", "late "};
        for (std::size_t window = 0; window < windowCount; ++window) {
            for (std::size_t band = 0; band < bandCount; ++band) {
                if (bandCentres[band] < target_.validFromHz) {
                    continue;
                }
                const std::string name =
                    names[window] + std::to_string(static_cast<int>(bandCentres[band]));
                add("band", name, measured_.bands[window][band], target_.bands[window][band],
                    std::max(target_.bandSpread[window][band], 1.0));
                if (target_.count >= 5) {
                    addSpread(name, measured_.bandSpread[window][band],
                              target_.bandSpread[window][band], 1);
                }
            }
        }
        for (std::size_t band = 0; band < broadCount; ++band) {
            const std::optional<Statistic>& measured = measured_.decayMs[band];
            const std::optional<Statistic>& target = target_.decayMs[band];
            if (target && measured && broadEdges[band + 1] > target_.validFromHz) {
                add("decay", std::to_string(static_cast<int>(broadEdges[band])), measured->median,
                    target->median, std::max(target->deviation, 0.5));
            }
        }
    }

    void compareEvents() {
        add("event", "gap to strongest", measured_.gapToStrongestMs.median,
            target_.gapToStrongestMs.median, std::max(target_.gapToStrongestMs.deviation, 1.0));
        for (std::size_t i = 0; i < target_.events.size(); ++i) {
            const EventStatistic& target = target_.events[i];
            const EventStatistic measured =
                i < measured_.events.size() ? measured_.events[i] : EventStatistic();
            const std::string name = std::to_string(i + 1);
            // The deviation of one stroke that has the event or has it not.
            add("event", name + " share", measured.share, target.share,
                std::max(std::sqrt(target.share * (1 - target.share)), 0.2));
            if (i >= measured_.events.size()) {
                continue;
            }
            if (i > 0) {
                add("event", name + " ms", measured.ms.median, target.ms.median,
                    std::max(target.ms.deviation, 1.0));
            }
            add("event", name + " db", measured.db.median, target.db.median,
                std::max(target.db.deviation, 1.0));
            add("event", name + " centroid", measured.centroidHz.median, target.centroidHz.median,
                std::max(target.centroidHz.deviation, 100.0));
        }
    }

    void compareModes() {
        for (const ModeStatistic& target : target_.modes) {
            // What few strokes show is no mode of the board.
            if (target.present < 0.2 || target.hz < target_.validFromHz) {
                continue;
            }
            double nearest = 1200;
            for (const ModeStatistic& mode : measured_.modes) {
                const double cents = 1200 * std::log2(mode.hz / target.hz);
                nearest = std::abs(cents) < std::abs(nearest) ? cents : nearest;
            }
            const std::string hertz = std::to_string(static_cast<int>(target.hz));
            rows.push_back(
                {.group = "mode",
                 .name = hertz,
                 .measured = target.hz * std::pow(2.0, nearest / 1200),
                 .target = target.hz,
                 .deviations = nearest / std::max(target.jitterCents.value_or(60), 30.0)});
        }
    }

    const ClassFeatures& measured_;
    const ClassFeatures& target_;
};

} // namespace

std::vector<Distance> distances(const ClassFeatures& measured, const ClassFeatures& target) {
    return Comparison(measured, target).rows;
}

double shareWithin(const std::vector<Distance>& rows, const std::string& group) {
    double count = 0;
    double within = 0;
    for (const Distance& row : rows) {
        if (group.empty() || row.group == group) {
            count += 1;
            within += std::abs(row.deviations) <= 1 ? 1 : 0;
        }
    }
    return count > 0 ? within / count : 1;
}

} // namespace vornic::packs
