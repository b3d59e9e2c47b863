// Prints figures of a sound pack's recordings, class by class and file by file, so that outliers
// show without listening.

#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/packs/SoundPack.h"

#include "packs/recorded/StrokeShape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <iomanip>
#include <iostream>
#include <numbers>

namespace {

using namespace vornic;
using namespace vornic::packs;

struct Figures {
    double level;   // dBFS, RMS of the first 40 ms
    double peakDb;  // dBFS
    double onsetMs; // first sample within 20 dB of the peak
    double lengthMs;
    double centroidHz; // of the first 85 ms, 100 Hz to 16 kHz
    double endDb;      // RMS of the 20 ms before the closing fade, below the level
};
constexpr std::size_t figureCount = 6;
constexpr std::array<const char*, figureCount> names{"level dB",  "peak dB",     "onset ms",
                                                     "length ms", "centroid Hz", "end dB"};

double powerAt(std::span<const float> samples, double frequency) {
    const double w = 2 * std::numbers::pi * frequency / 48000;
    const double factor = 2 * std::cos(w);
    double s1 = 0;
    double s2 = 0;
    for (const float x : samples) {
        const double s = static_cast<double>(x) + factor * s1 - s2;
        s2 = s1;
        s1 = s;
    }
    return s1 * s1 + s2 * s2 - factor * s1 * s2;
}

double centroid(std::span<const float> samples) {
    double sum = 0;
    double weighted = 0;
    for (int hertz = 100; hertz < 16000; hertz += 25) {
        const double frequency = hertz;
        const double power = powerAt(samples, frequency);
        sum += power;
        weighted += power * frequency;
    }
    return sum > 0 ? weighted / sum : 0;
}

Figures measure(std::span<const float> samples) {
    const float top = peak(samples);
    const auto onset =
        std::ranges::find_if(samples, [&](float x) { return std::abs(x) >= top / 10 && x != 0; });
    const std::size_t beforeFade = samples.size() - std::min(samples.size(), 40 * millisecond);
    const std::size_t from = beforeFade - std::min(beforeFade, 20 * millisecond);
    const double level = strokeLevel(samples);
    return {.level = level,
            .peakDb = decibels(static_cast<double>(top)),
            .onsetMs = static_cast<double>(onset - samples.begin()) / millisecond,
            .lengthMs = static_cast<double>(samples.size()) / millisecond,
            .centroidHz = centroid(samples.first(std::min<std::size_t>(samples.size(), 4096))),
            .endDb = decibels(rms(samples.subspan(from, beforeFade - from))) - level};
}

std::array<double, figureCount> listed(const Figures& f) {
    return {f.level, f.peakDb, f.onsetMs, f.lengthMs, f.centroidHz, f.endDb};
}

void report(std::string_view title, const std::vector<std::filesystem::path>& files) {
    std::array<std::vector<double>, figureCount> columns;
    for (const auto& file : files) {
        const auto samples = loadAudio(file);
        if (!samples) {
            std::cout << file << ": cannot be read\n";
            continue;
        }
        const auto values = listed(measure(*samples));
        std::cout << "  " << std::left << std::setw(16) << file.stem().string() << std::right;
        for (std::size_t i = 0; i < figureCount; ++i) {
            std::cout << std::setw(12) << values.at(i);
            columns.at(i).push_back(values.at(i));
        }
        std::cout << "\n";
    }
    std::cout << title << ", " << files.size() << " files: minimum, median, maximum\n";
    for (std::size_t i = 0; i < figureCount; ++i) {
        auto& column = columns.at(i);
        if (!column.empty()) {
            std::ranges::sort(column);
            std::cout << "    " << std::left << std::setw(14) << names.at(i) << std::right
                      << std::setw(12) << column.front() << std::setw(12)
                      << column[column.size() / 2] << std::setw(12) << column.back() << "\n";
        }
    }
}

} // namespace

int main(int count, char** arguments) {
    try {
        const auto pack = count == 2 ? SoundPack::load(arguments[1]) : std::nullopt;
        if (!pack) {
            std::cerr << "usage: report-pack PACK\n";
            return 2;
        }
        std::cout << std::fixed << std::setprecision(1) << std::setw(18) << "";
        for (const char* name : names) {
            std::cout << std::setw(12) << name;
        }
        std::cout << "\n";
        for (const auto& [keyClass, files] : pack->files) {
            report(packFileWord(keyClass), files);
        }
        report("release", pack->releaseFiles);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "report-pack: " << error.what() << "\n";
        return 1;
    }
}
