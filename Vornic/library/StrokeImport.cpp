#include "Vornic/library/StrokeImport.h"

#include "VornicCore/recordings/Slicer.h"

#include <utility>

namespace vornic {

std::string StrokeImport::startSession(std::span<const float> samples, std::string name) {
    SessionOutcome outcome = makeSession(samples, std::move(name));
    if (outcome.session) {
        session_ = std::move(outcome.session);
    }
    return outcome.error;
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

std::optional<FinishedImport> StrokeImport::finishImport() {
    if (!session_) {
        return std::nullopt;
    }
    const ImportSession session = *std::exchange(session_, std::nullopt);
    std::vector<SampleLibrary::NewSample> kept;
    for (const std::size_t stroke : session.selected) {
        kept.push_back({session.name + " " + std::to_string(stroke + 1), LayerPart::bottomOut,
                        Slicer::finish(session.strokes[stroke].samples)});
    }
    FinishedImport finished{session.name, library_.addUsers(kept), {}};
    if (finished.samples.empty() && !kept.empty()) {
        for (SampleLibrary::NewSample& sample : kept) {
            finished.samples.push_back(library_.addForThisRun(std::move(sample)));
        }
        finished.warning =
            "Couldn't save the sound \"" + session.name + "\"; it is lost when Vornic ends.";
    }
    return finished;
}

} // namespace vornic
