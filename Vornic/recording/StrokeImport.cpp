#include "Vornic/recording/StrokeImport.h"

#include "VornicCore/base/Uuid.h"
#include "VornicCore/board/EditBoard.h"
#include "VornicCore/dsp/DSP.h"
#include "VornicCore/strokes/Slicer.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vornic {

namespace {

constexpr const char* ownColour = "#8E8E93";

StrokeSpec strokeOf(const std::vector<SampleInfo>& samples, LayerPart part) {
    std::vector<std::string> ids;
    std::ranges::transform(samples, std::back_inserter(ids), &SampleInfo::id);
    return EditBoard::plainStroke(part, std::move(ids));
}

} // namespace

SoundSpec soundOf(const FinishedImport& finished) {
    SoundSpec sound;
    sound.id = Uuid::random().text();
    sound.name = finished.name;
    sound.colorHex = ownColour;
    sound.press = strokeOf(finished.samples, LayerPart::bottomOut);
    if (!finished.releases.empty()) {
        sound.release = strokeOf(finished.releases, LayerPart::topOut);
    }
    return sound;
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

StrokeImport::Finished StrokeImport::finished(std::size_t stroke) const {
    constexpr double tailDb = -42.0;
    const std::vector<float>& press = session_->strokes[stroke].samples;
    Finished ready;
    ready.press = Slicer::finish(press);
    const auto range = keepsReleases_ && cuts_ ? cuts_->release(stroke) : std::nullopt;
    if (range) {
        ready.release = cuts_->samples(*range);
        DSP::trimTail(ready.release, tailDb);
        const float before = DSP::peak(press);
        const float gain = before > 0.0F ? DSP::peak(ready.press) / before : 1.0F;
        for (float& x : ready.release) {
            x *= gain;
        }
        ready.pause = static_cast<std::size_t>(
            std::max<std::int64_t>(range->begin - cuts_->cut(stroke).begin, 0));
    }
    return ready;
}

std::vector<float> StrokeImport::audition(std::size_t stroke) const {
    if (!session_ || stroke >= session_->strokes.size()) {
        return {};
    }
    Finished ready = finished(stroke);
    std::vector<float> heard = std::move(ready.press);
    if (!ready.release.empty()) {
        heard.resize(std::max(heard.size(), ready.pause + ready.release.size()));
        for (std::size_t place = 0; place < ready.release.size(); ++place) {
            heard[ready.pause + place] += ready.release[place];
        }
    }
    return heard;
}

std::optional<FinishedImport> StrokeImport::finishImport() {
    if (!session_) {
        return std::nullopt;
    }
    const ImportSession& session = *session_;
    FinishedImport made;
    made.name = session.name;
    std::vector<SampleLibrary::NewSample> presses;
    std::vector<SampleLibrary::NewSample> releases;
    for (const std::size_t stroke : session.selected) {
        const std::string name = session.name + " " + std::to_string(stroke + 1);
        Finished ready = finished(stroke);
        presses.push_back({name, LayerPart::bottomOut, std::move(ready.press)});
        if (!ready.release.empty()) {
            releases.push_back({name + " release", LayerPart::topOut, std::move(ready.release)});
        }
    }
    cancelImport();
    made.samples = keep(std::move(presses), made);
    made.releases = keep(std::move(releases), made);
    return made;
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
