#include "packs/model/StrokeModel.h"

#include "VornicCore/base/SplitMix64.h"

#include "packs/model/Draws.h"
#include "packs/model/Hits.h"
#include "packs/model/KeyPlaces.h"
#include "packs/model/Residue.h"
#include "packs/model/Resonators.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace vornic::packs {

namespace {

constexpr double framesPerMs = 48;
constexpr double leadMs = 6;
constexpr double approachMs = 6;
constexpr double delayMs = 0.2; // between the bands of a stroke, standard deviation
constexpr double fadeMs = 25;

// Each stroke's resonances are those of its key, for every hit the same.
class Stroke {
  public:
    Stroke(const PackTable& pack, const StrokeTable& table, const Draws& draws,
           const KeyPlace& place, std::uint64_t seed, std::uint64_t boardSeed)
        : pack_(pack), table_(table), place_(place), random_(seed), boardSeed_(boardSeed),
          hits_(drawHits(table, draws)), levels_(drawLevels(table, draws, place)),
          samples_(static_cast<std::size_t>(table.lengthMs * framesPerMs)) {
        const std::array<double, windowCount> powers = windowPowers(table);
        setShares(table, powers, hits_);
        addRattle();
        for (std::size_t band = 0; band < bandCount; ++band) {
            addBand(band, powers);
        }
        addPing();
        finish(power(drawLevelDb(table, draws)));
    }

    std::vector<float> samples() const { return {samples_.begin(), samples_.end()}; }

  private:
    // The wires of a wide key tick against their holders after the hit.
    void addRattle() {
        if (hits_.empty() || table_.rattles == 0) {
            return;
        }
        const Hit strongest = *std::ranges::max_element(hits_, {}, &Hit::share);
        for (int i = 0; i < table_.rattles; ++i) {
            Hit tick = strongest;
            tick.ms += random_.uniform(5, 25);
            tick.gainDb += random_.uniform(-24, -15);
            tick.tilt += random_.uniform(0.5, 2.5);
            tick.share = 0;
            hits_.push_back(tick);
        }
    }

    // Calls `strike` with each hit and its energy in a band.
    template <typename Strike>
    void forHits(std::size_t band, const std::array<double, windowCount>& powers, double db,
                 Strike strike) const {
        for (const Hit& hit : hits_) {
            const double octaves = std::log2(bandCentres[band] / 3000);
            strike(hit,
                   hitShare(table_, hit.window) *
                       power(levels_[hit.window][band] + db + hit.gainDb + hit.tilt * octaves) /
                       std::max(powers[hit.window], 1e-9));
        }
    }

    void driveHits(Drive& drive, std::size_t band, const std::array<double, windowCount>& powers,
                   double db) const {
        forHits(band, powers, db, [&](const Hit& hit, double energy) {
            drive.strike(hit.ms + bandMs_, energy, table_.contactMs);
        });
    }

    void addBand(std::size_t band, const std::array<double, windowCount>& powers) {
        addLayers(band, bandCentres[band], powers, 0);
        if (band + 1 == bandCount) {
            // Above the highest measured band the sound falls off.
            addLayers(band, 16000, powers, -7);
            addLayers(band, 20159, powers, -17);
        }
    }

    // What the hits strike at once, what the body rings and what comes back at last. `hz` is the
    // centre of `band` or lies above all bands.
    void addLayers(std::size_t band, double hz, const std::array<double, windowCount>& powers,
                   double db) {
        const double decayMs = table_.decayMs[band];
        const bool isBand = hz == bandCentres[band];
        addApproach(band, hz, db);
        // Bending waves, that carry a contact through plate and case, are slower the lower they
        // are.
        bandMs_ = leadMs + table_.lagMs * std::sqrt(1000 / hz) +
                  delayMs * normalQuantile(random_.uniform(0, 1));
        Drive hits(samples_.size(), hz, random_.next());
        driveHits(hits, band, powers, db);
        const double left = isBand ? addModes(hits, band) : 1;
        addSnap(band, hz, powers, db);
        if (isDense(hz, decayMs)) {
            Drive rain(samples_.size(), hz, random_.next());
            forHits(band, powers, db, [&](const Hit& hit, double energy) {
                rain.rain(hit.ms + bandMs_, energy, decayMs);
            });
            filter(rain, hz, decayMs, left * (1 - table_.snap));
        } else {
            crowd(hits, hz, decayMs, left * (1 - table_.snap));
        }

        const double bodyMs = std::clamp(2.2 * decayMs, 3.5, 16.0);
        Drive body(samples_.size(), hz, random_.next());
        Drive tail(samples_.size(), hz, random_.next());
        for (const Hit& hit : hits_) {
            const double bodyEnergy = hit.share * table_.bodyShare * power(levels_[1][band] + db);
            if (isDense(hz, bodyMs)) {
                body.rain(hit.ms + bandMs_, bodyEnergy, bodyMs);
            } else {
                body.spread(hit.ms + bandMs_, bodyEnergy, 4);
            }
            tail.rain(hit.ms + bandMs_ + 2,
                      hit.share * table_.tailShare * power(levels_[2][band] + 1.5 * db),
                      table_.tailMs);
        }
        if (isDense(hz, bodyMs)) {
            filter(body, hz, bodyMs, 1);
        } else {
            crowd(body, hz, bodyMs, 1);
        }
        filter(tail, hz, table_.tailMs, 1 - table_.tailTone);
        addTailTone(tail, band, hz);
    }

    // Cap and stem rub and tick on their way down.
    void addApproach(std::size_t band, double hz, double db) {
        if (hits_.empty()) {
            return;
        }
        const std::size_t broad = broadOf(bandCentres[band]);
        double all = 0;
        for (std::size_t other = 0; other < bandCount; ++other) {
            all += broadOf(bandCentres[other]) == broad ? power(table_.levels[0][other]) : 0;
        }
        const double energy =
            power(table_.approach[broad] + table_.levels[0][band] + db) / std::max(all, 1e-9);
        Drive noise(samples_.size(), hz, random_.next());
        noise.rise(leadMs, energy * power(3 * normalQuantile(random_.uniform(0, 1))), approachMs);
        filter(noise, hz, approachMs, 1);
    }

    // Lines of the case, the same for all its keys, that what comes back makes ring.
    void addTailTone(const Drive& tail, std::size_t band, double hz) {
        if (table_.tailTone <= 0) {
            return;
        }
        constexpr int lines = 2;
        SplitMix64 shape(mixed(boardSeed_, 1000 + band, static_cast<std::uint64_t>(hz)));
        for (int i = 0; i < lines; ++i) {
            const double third = (i + shape.uniform(0.1, 0.9)) / lines - 0.5;
            const double part = shape.uniform(0.2, 1.0) / lines;
            ring(tail, hz * std::pow(2.0, third / 3 + random_.uniform(-0.01, 0.01)),
                 0.8 * table_.tailMs, table_.tailTone * part * 1.6, sign(), samples_);
        }
    }

    // The contact itself, gone before anything rings.
    void addSnap(std::size_t band, double hz, const std::array<double, windowCount>& powers,
                 double db) {
        // A lower band cannot end as soon.
        const double snapMs = std::max(0.6, 700 / hz);
        Drive snap(samples_.size(), hz, random_.next());
        forHits(band, powers, db, [&](const Hit& hit, double energy) {
            snap.rain(hit.ms + bandMs_, energy * table_.snap, snapMs);
        });
        filter(snap, hz, snapMs, 1);
    }

    // The strong modes of the band; returns what part of its energy is left for the residue.
    double addModes(const Drive& drive, std::size_t band) {
        double left = 1;
        for (std::size_t i = 0; i < table_.modes.size(); ++i) {
            const ModeTable& mode = table_.modes[i];
            const double third = 3 * std::log2(mode.hz / bandCentres[band]);
            if (third < -0.5 || third >= 0.5) {
                continue;
            }
            SplitMix64 shape(mixed(boardSeed_, i));
            const double waves = shape.uniform(0.5, 1 + mode.hz / 1500);
            const double slant = shape.uniform(-1, 1);
            const double at =
                std::numbers::pi * (waves * place_.x + slant * place_.y + shape.uniform(0, 2));
            const double gain = 0.45 + 1.1 * std::abs(std::sin(at));
            const double cents = mode.cents * (0.6 * std::sin(1.7 * at) +
                                               0.85 * normalQuantile(random_.uniform(0, 1)));
            const double energy =
                mode.part * gain * gain * power(3 * normalQuantile(random_.uniform(0, 1)));
            ring(drive, mode.hz * std::pow(2.0, cents / 1200),
                 mode.decayMs * random_.uniform(0.8, 1.25), energy, sign(), samples_);
            left -= mode.part;
        }
        return std::max(left, 0.1);
    }

    void addPing() {
        if (hits_.empty()) {
            return;
        }
        const Hit& hit = *std::ranges::max_element(hits_, {}, &Hit::share);
        for (const PingTable& line : pack_.ping) {
            const double hz = line.hz * (1 + random_.uniform(-0.03, 0.03));
            const double db = line.db + random_.uniform(-6, 3);
            Drive drive(samples_.size(), hz, random_.next());
            drive.spread(hit.ms + leadMs, power(db), 2);
            ring(drive, hz, line.decayMs * random_.uniform(0.8, 1.2), 1, sign(), samples_);
        }
    }

    // Hits are drawn beside each other; how hard the key is struck as a whole is drawn here.
    void finish(double energy) {
        const auto fade = static_cast<std::size_t>(fadeMs * framesPerMs);
        const std::size_t length = samples_.size();
        for (std::size_t i = length - std::min(fade, length); i < length; ++i) {
            const double phase =
                std::numbers::pi * static_cast<double>(length - i - 1) / static_cast<double>(fade);
            samples_[i] *= (1 - std::cos(phase)) / 2;
        }
        const double has =
            std::inner_product(samples_.begin(), samples_.end(), samples_.begin(), 0.0);
        const double gain = std::sqrt(energy / std::max(has, 1e-12));
        for (double& sample : samples_) {
            sample *= gain;
        }
    }

    double sign() { return random_.next(2) == 0 ? 1 : -1; }

    bool isDense(double hz, double decayMs) const {
        return packs::isDense(hz, decayMs, table_.crowd);
    }

    void filter(const Drive& drive, double hz, double decayMs, double energy) {
        addNoise(drive, hz, decayMs, energy, random_, samples_);
    }

    void crowd(const Drive& drive, double hz, double decayMs, double energy) {
        addCrowd(drive, hz, decayMs, energy, table_.crowd, random_, samples_);
    }

    const PackTable& pack_;
    const StrokeTable& table_;
    KeyPlace place_;
    SplitMix64 random_;
    std::uint64_t boardSeed_;
    std::vector<Hit> hits_;
    std::array<Bands, windowCount> levels_;
    std::vector<double> samples_;
    double bandMs_ = leadMs; // when the band at work begins
};

} // namespace

std::vector<std::vector<float>> makeStrokes(const PackTable& table, std::string_view keyClass) {
    std::vector<std::vector<float>> strokes;
    const StrokeTable* const from = table.find(keyClass);
    if (from == nullptr) {
        return strokes;
    }
    std::uint64_t word = 0;
    for (const char letter : keyClass) {
        word = word * 31 + static_cast<std::uint64_t>(letter);
    }
    const std::vector<KeyPlace> places = keyPlaces(keyClass);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Draws draws(mixed(table.seed, word), i, places.size());
        const Stroke stroke(table, *from, draws, places[i], mixed(table.seed, word, i + 1),
                            table.seed);
        strokes.push_back(stroke.samples());
    }
    return strokes;
}

} // namespace vornic::packs
