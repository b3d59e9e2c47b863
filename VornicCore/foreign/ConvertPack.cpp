#include "VornicCore/foreign/ConvertPack.h"

#include "VornicCore/base/ReadableText.h"
#include "VornicCore/base/SampleRate.h"
#include "VornicCore/board/BoardJson.h"
#include "VornicCore/dsp/DSP.h"
#include "VornicCore/foreign/BoardOfKeys.h"
#include "VornicCore/foreign/PlayedKeys.h"
#include "VornicCore/keys/KeyboardLayout.h"
#include "VornicCore/keys/KnownKeys.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

namespace vornic {

namespace {

std::string decibels(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.0f dB", value);
    return text.data();
}

/// The power of each recording as it is rendered, weighted as the ear does.
std::vector<double> powersOf(const std::vector<PackRecordings::Recording>& recordings) {
    std::vector<double> powers;
    powers.reserve(recordings.size());
    for (const PackRecordings::Recording& recording : recordings) {
        const std::int64_t lead = std::max<std::int64_t>(DSP::onset(recording.samples) - 48, 0);
        const double factor = DSP::factorOfDecibels(recording.raisedDb);
        powers.push_back(DSP::weightedPower(
                             std::span(recording.samples).subspan(static_cast<std::size_t>(lead))) *
                         factor * factor);
    }
    return powers;
}

/// What all gains need to be raised by, so that the board is as loud as others: see boardLoudness.
double balanceDb(const PlayedKeys& played, const std::vector<PackRecordings::Recording>& all) {
    const std::vector<double> powers = powersOf(all);
    double sum = 0;
    double keys = 0;
    for (const LayoutKey& drawn : layout(played.layout).keys) {
        const auto key = drawn.code ? played.keys.find(*drawn.code) : played.keys.end();
        if (key == played.keys.end()) {
            continue;
        }
        keys += 1;
        const std::vector<std::size_t>& presses = key->second.press.recordings;
        for (const std::size_t index : presses) {
            sum += powers[index] * std::pow(10.0, key->second.gainDb / 10) /
                   static_cast<double>(presses.size());
        }
    }
    const double loudness = DSP::loudnessOfPower(sum / std::max(keys, 1.0));
    return std::isfinite(loudness) ? convertedLoudness - loudness : 0;
}

std::vector<std::string> creditsOf(const ForeignPack& pack) {
    std::vector<std::string> credits;
    credits.push_back(
        "\"" + plainLine(pack.name, 200) + "\", " +
        (pack.author.empty() ? "author not stated" : "by " + plainLine(pack.author, 200)));
    credits.push_back("Licence: " +
                      (pack.licence.empty() ? "none stated" : plainLine(pack.licence, 200)));
    std::string_view rest = pack.licenceText;
    constexpr std::size_t mostLines = 400;
    while (!rest.empty() && credits.size() < mostLines) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        if (const std::string line = plainLine(std::string(rest.substr(0, end)), 400);
            !line.empty()) {
            credits.push_back(line);
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return credits;
}

void noteLosses(const PlayedKeys& played, PackNotes& notes) {
    constexpr double heard = 2;
    if (played.spreadDb > heard) {
        addNote(notes.remarks, "Recordings of one sound that differ by up to " +
                                   decibels(played.spreadDb) + " are made equally loud.");
    }
    if (std::abs(played.releaseDb) > heard) {
        addNote(notes.remarks, "Releases, in the pack " + decibels(std::abs(played.releaseDb)) +
                                   (played.releaseDb < 0 ? " fainter" : " louder") +
                                   " than their presses, are brought to Vornic's own measure.");
    }
}

PackReport reportOf(const ForeignPack& pack, const PlayedKeys& played) {
    PackReport report;
    report.format = pack.format;
    report.place = pack.place;
    report.name = plainLine(pack.name, 200);
    report.author = plainLine(pack.author, 200);
    report.licence = plainLine(pack.licence, 200);
    report.description = plainLine(pack.description, 1000);
    for (const auto& [code, key] : played.keys) {
        if (key.isOwn) {
            ++report.keys;
            const auto given = pack.keys.find(code);
            if (given != pack.keys.end() && !given->second.release.empty() &&
                !key.release.recordings.empty()) {
                ++report.releases;
            }
        } else if (key.press.recordings.empty()) {
            report.silent.push_back(webNameOf(code));
        } else {
            report.substituted.push_back({webNameOf(code), key.from});
        }
    }
    return report;
}

std::uint64_t fileBytes(const Board& board, const std::vector<PackRecordings::Recording>& all) {
    std::uint64_t bytes = encodeBoard(board).size();
    for (const PackRecordings::Recording& recording : all) {
        constexpr std::uint64_t frame = 30; // around each recording
        bytes += (recording.samples.size() * 2 + 2) / 3 * 4 + frame;
    }
    return bytes;
}

} // namespace

ConvertedPack convertPack(const ForeignPack& pack, const PackAudioFiles& audio) {
    PackNotes notes = pack.notes;
    PackRecordings recordings(audio, notes);
    PlayedKeys played = playedKeys(pack, recordings);
    const double balance = balanceDb(played, recordings.all());
    for (auto& [code, key] : played.keys) {
        key.gainDb += balance;
    }
    played.fallback.gainDb += balance;
    noteLosses(played, notes);

    ConvertedPack result;
    result.report = reportOf(pack, played);
    Board board = boardOfKeys(played, notes);
    board.name = plainLine(pack.name, 100);
    board.detail = pack.description.empty() ? "From a pack for " + std::string(label(pack.format))
                                            : plainLine(pack.description, 100);
    board.credits = creditsOf(pack);
    board.releaseByDefault = std::ranges::any_of(
        board.sounds, [](const SoundSpec& sound) { return sound.release.has_value(); });
    result.report.sounds = board.sounds.size();
    result.report.recordings = recordings.all().size();
    result.report.boardBytes = fileBytes(board, recordings.all());
    result.report.fitsFile = result.report.boardBytes <= BoardFile::largest &&
                             recordings.all().size() <= mostFileRecordings;
    std::vector<PackRecordings::Recording> all = recordings.takeAll();
    for (std::size_t index = 0; index < all.size(); ++index) {
        result.report.seconds += static_cast<double>(all[index].samples.size()) / DSP::sampleRate;
        result.contents.samples[recordingId(index)] = std::move(all[index].samples);
    }
    result.contents.board = std::move(board);
    result.report.notes = std::move(notes);
    return result;
}

} // namespace vornic
