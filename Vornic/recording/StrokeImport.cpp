#include "Vornic/recording/StrokeImport.h"

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/strokes/Slicer.h"

#include <utility>

namespace vornic {

namespace {

/// A release made ready for the library: as much louder as its press has become, so that it stays
/// the quieter of the two.
std::vector<float> finishRelease(std::vector<float> release, const std::vector<float>& press) {
    const float before = DSP::peak(press);
    const float gain = before > 0.0F ? DSP::peak(Slicer::finish(press)) / before : 1.0F;
    DSP::trimTail(release, -42.0);
    for (float& x : release) {
        x *= gain;
    }
    return release;
}

} // namespace

std::string StrokeImport::startSession(std::span<const float> samples, std::string name) {
    SessionOutcome outcome = makeSession(samples, std::move(name));
    if (outcome.session && outcome.cuts) {
        startSession(*std::move(outcome.session), *std::move(outcome.cuts));
    }
    return outcome.error;
}

void StrokeImport::startSession(ImportSession session, StrokeCuts cuts) {
    session_ = std::move(session);
    cuts_ = std::move(cuts);
    keepsReleases_ = false;
}

void StrokeImport::rename(const std::string& name) {
    if (session_) {
        session_->name = name;
    }
}

void StrokeImport::select(std::size_t stroke, bool selected) {
    if (!session_ || stroke >= session_->strokes.size()) {
        return;
    }
    if (selected) {
        session_->selected.insert(stroke);
    } else {
        session_->selected.erase(stroke);
    }
}

void StrokeImport::moveBegin(std::size_t stroke, std::int64_t place) {
    changeCut(stroke, [&](StrokeCuts& cuts) { cuts.moveBegin(stroke, place); });
}

void StrokeImport::moveEnd(std::size_t stroke, std::int64_t place) {
    changeCut(stroke, [&](StrokeCuts& cuts) { cuts.moveEnd(stroke, place); });
}

void StrokeImport::resetCut(std::size_t stroke) {
    changeCut(stroke, [&](StrokeCuts& cuts) { cuts.reset(stroke); });
}

void StrokeImport::changeCut(std::size_t stroke, const std::function<void(StrokeCuts&)>& change) {
    if (session_ && cuts_ && stroke < session_->strokes.size() && stroke < cuts_->count()) {
        change(*cuts_);
        session_->strokes[stroke].samples = cuts_->samples(stroke);
    }
}

std::optional<FinishedImport> StrokeImport::finishImport() {
    if (!session_) {
        return std::nullopt;
    }
    const ImportSession session = *std::move(session_);
    session_.reset();
    const std::optional<StrokeCuts> cuts = std::exchange(cuts_, std::nullopt);
    FinishedImport finished;
    finished.name = session.name;
    std::vector<SampleLibrary::NewSample> presses;
    std::vector<SampleLibrary::NewSample> releases;
    for (const std::size_t stroke : session.selected) {
        const std::string name = session.name + " " + std::to_string(stroke + 1);
        const std::vector<float>& press = session.strokes[stroke].samples;
        presses.push_back({name, LayerPart::bottomOut, Slicer::finish(press)});
        if (const auto range = keepsReleases_ && cuts ? cuts->release(stroke) : std::nullopt) {
            releases.push_back({name + " release", LayerPart::topOut,
                                finishRelease(cuts->samples(*range), press)});
        }
    }
    finished.samples = keep(std::move(presses), finished);
    finished.releases = keep(std::move(releases), finished);
    return finished;
}

std::vector<SampleInfo> StrokeImport::keep(std::vector<SampleLibrary::NewSample> samples,
                                           FinishedImport& finished) {
    std::vector<SampleInfo> kept = library_.addUsers(samples);
    if (kept.empty() && !samples.empty()) {
        for (SampleLibrary::NewSample& sample : samples) {
            kept.push_back(library_.addForThisRun(std::move(sample)));
        }
        finished.warning =
            "Couldn't save the sound \"" + finished.name + "\"; it is lost when Vornic ends.";
    }
    return kept;
}

void StrokeImport::cancelImport() {
    session_.reset();
    cuts_.reset();
}

} // namespace vornic
