#include "Vornic/commands/SliceCommand.h"

#include "Vornic/recording/ImportSession.h"
#include "Vornic/recording/ReadRecording.h"
#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/base/SampleRate.h"
#include "VornicCore/strokes/Slicer.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>
#include <system_error>

namespace vornic {

namespace {

/// "stroke-07.wav"; as many digits for all strokes, so that names sort like onsets.
std::filesystem::path fileName(std::size_t number, std::size_t count) {
    const std::size_t width = std::max<std::size_t>(2, std::to_string(count).size());
    std::string digits = std::to_string(number);
    digits.insert(0, width - digits.size(), '0');
    return "stroke-" + digits + ".wav";
}

void makeFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!std::filesystem::is_directory(folder, error)) {
        throw std::runtime_error("cannot make the folder " + folder.string());
    }
}

std::vector<std::filesystem::path> writeStrokes(const std::filesystem::path& folder, bool all,
                                                std::vector<Stroke> strokes,
                                                const SliceReport& report) {
    makeFolder(folder);
    std::vector<std::filesystem::path> files;
    for (std::size_t i = 0; i < strokes.size(); ++i) {
        if (!all && !report.strokes[i].rank) {
            continue;
        }
        const std::filesystem::path file = folder / fileName(i + 1, strokes.size());
        if (!writeWAV(Slicer::finish(std::move(strokes[i].samples)), file)) {
            throw std::runtime_error("cannot write " + file.string());
        }
        files.push_back(file);
    }
    return files;
}

} // namespace

SliceReport sliceFile(const SliceRequest& request) {
    ReadOptions options;
    options.decoder = request.decoder;
    const RecordingRead read = readRecording(request.file, options);
    if (!read.samples) {
        throw std::runtime_error(request.file.string() + ": " + ImportMessages::unreadableFile +
                                 " " + read.remark);
    }
    std::vector<Stroke> strokes = Slicer::strokes(*read.samples, DSP::sampleRate);
    SliceReport report;
    if (!read.remark.empty()) {
        report.remarks.push_back(read.remark);
    }
    for (const Stroke& stroke : strokes) {
        report.strokes.push_back(
            {stroke.start, stroke.snrDb, stroke.clean, stroke.samples.size(), std::nullopt});
    }
    std::size_t rank = 0;
    for (const std::size_t place :
         Slicer::bestPlaces(strokes, Slicer::offeredStrokes, Slicer::leastSnrDb)) {
        report.strokes[place].rank = ++rank;
    }
    if (rank == 0) {
        report.remarks.push_back(messageWithoutStrokes(strokes.size()));
    }
    if (request.out) {
        report.files = writeStrokes(*request.out, request.all, std::move(strokes), report);
    }
    return report;
}

std::string reportAsJson(const SliceReport& report) {
    nlohmann::ordered_json json;
    json["found"] = report.strokes.size();
    json["strokes"] = nlohmann::ordered_json::array();
    for (const SliceReport::FoundStroke& stroke : report.strokes) {
        nlohmann::ordered_json entry;
        entry["start"] = stroke.start;
        entry["snrDb"] = stroke.snrDb;
        entry["clean"] = stroke.clean;
        entry["frames"] = stroke.frames;
        entry["rank"] = nullptr;
        if (stroke.rank) {
            entry["rank"] = *stroke.rank;
        }
        json["strokes"].push_back(std::move(entry));
    }
    return json.dump();
}

std::string reportAsText(const SliceReport& report) {
    std::string text = "    start   above noise   length   rank\n";
    for (const SliceReport::FoundStroke& stroke : report.strokes) {
        std::array<char, 96> line{};
        const double milliseconds = static_cast<double>(stroke.frames) * 1000.0 / DSP::sampleRate;
        std::snprintf(line.data(), line.size(), "%7.3f s  %8.1f dB  %4.0f ms", stroke.start,
                      stroke.snrDb, milliseconds);
        text += line.data();
        if (stroke.rank) {
            std::snprintf(line.data(), line.size(), "   %4zu", *stroke.rank);
            text += line.data();
        } else if (!stroke.clean) {
            text += "   too short or clipped";
        }
        text += '\n';
    }
    return text + std::to_string(report.strokes.size()) + " keystrokes found\n";
}

} // namespace vornic
