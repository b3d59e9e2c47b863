#include "Vornic/views/recording/RecordingAdapter.h"

#include "Vornic/views/shared/QmlText.h"
#include "VornicCore/base/SampleRate.h"
#include "VornicCore/strokes/Slicer.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <utility>

namespace vornic {

namespace {

constexpr double meterFloorDb = -60.0;

/// A magnitude as a share of the meter.
double meterOf(double magnitude) {
    return magnitude > 0.0 ? std::clamp(1.0 - 20.0 * std::log10(magnitude) / meterFloorDb, 0.0, 1.0)
                           : 0.0;
}

} // namespace

RecordingAdapter::RecordingAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model) {}

void RecordingAdapter::refresh() {
    const SoundMaker& recorder = model_.recorder();
    const auto& session = recorder.session();
    if (session && recorder.cuts()) {
        strokes_.show(*session, *recorder.cuts());
    } else {
        strokes_.clear();
    }
    failure_ = qmlText(model_.lastError().value_or(std::string()), Lines::kept);
    const auto& error = model_.lastError();
    QString advice;
    if (error == ImportMessages::noMicrophone) {
        advice = qmlText(recorder.problem(), Lines::kept);
    } else if (error == ImportMessages::noStrokes || error == ImportMessages::noGoodStrokes) {
        advice = qmlText(recorder.remark(), Lines::kept); // what cut it short
    }
    advice_ = advice;
    level_ = meterOf(static_cast<double>(recorder.level()));
    clipping_ = recorder.level() >= Slicer::clippingPeak;
    secondsLeft_ = static_cast<int>(recorder.secondsLeft());
    const auto& live = recorder.live();
    good_ = static_cast<int>(live.good);
    verdict_ = live.last ? qmlText(label(*live.last)) : QString();
    lastIsGood_ = live.last == StrokeVerdict::good;
    progress_ = recorder.importProgress().value_or(0.0);
    name_ = session ? qmlText(session->name) : QString();
    found_ = session ? static_cast<int>(session->foundTotal) : 0;
    offered_ = strokes_.count();
    ticked_ = session ? static_cast<int>(session->selected.size()) : 0;
    releases_ = foundReleases();
    keepsReleases_ = recorder.keepsReleases();
    notice_ = model_.lastError()     ? failure_.value()
              : recorder.timeWasUp() ? tr("The 20 seconds are up.")
                                     : qmlText(recorder.remark(), Lines::kept);
    const Board* const board = model_.board();
    const SoundSpec* const sound =
        board != nullptr && !made_.empty() ? board->sound(made_) : nullptr;
    justMade_ = sound != nullptr ? qmlText(sound->name) : QString();
    // Sheets open and close with it: by then what they show is there.
    phase_ = currentPhase();
}

RecordingAdapter::Phase RecordingAdapter::currentPhase() const {
    const SoundMaker& recorder = model_.recorder();
    if (recorder.isRecording()) {
        return Phase::Recording;
    }
    if (recorder.isStarting()) {
        return Phase::Starting;
    }
    if (recorder.importProgress()) {
        return Phase::Reading;
    }
    return recorder.session() ? Phase::Choosing : Phase::Idle;
}

int RecordingAdapter::foundReleases() const {
    int count = 0;
    if (const auto& cuts = model_.recorder().cuts()) {
        for (std::size_t stroke = 0; stroke < cuts->count(); ++stroke) {
            count += cuts->release(stroke) ? 1 : 0;
        }
    }
    return count;
}

void RecordingAdapter::setName(const QString& name) {
    if (const QString wanted = name.trimmed(); !wanted.isEmpty()) {
        model_.recorder().rename(wanted.toStdString());
    }
}

void RecordingAdapter::startRecording() {
    if (currentPhase() == Phase::Idle) {
        made_.clear();
        model_.dismissError();
        model_.recorder().startRecording();
    }
}

void RecordingAdapter::stopRecording(bool keep) {
    model_.recorder().stopRecording(keep);
}

void RecordingAdapter::importRecording(const QUrl& file) {
    if (currentPhase() == Phase::Idle) {
        made_.clear();
        model_.dismissError();
        fileName_ = QFileInfo(file.toLocalFile()).fileName();
        model_.recorder().importRecording(file.toLocalFile().toStdString());
    }
}

bool RecordingAdapter::isRow(int row) const {
    const auto& cuts = model_.recorder().cuts();
    return cuts && row >= 0 && static_cast<std::size_t>(row) < cuts->count();
}

std::int64_t RecordingAdapter::placeOf(int row, double share) const {
    const auto window =
        StrokeListModel::window(*model_.recorder().cuts(), static_cast<std::size_t>(row));
    const double width = static_cast<double>(window.end - window.begin);
    return window.begin + std::llround(width * std::clamp(share, 0.0, 1.0));
}

void RecordingAdapter::tick(int row, bool on) {
    if (isRow(row)) {
        model_.recorder().select(static_cast<std::size_t>(row), on);
    }
}

void RecordingAdapter::moveBegin(int row, double share) {
    if (isRow(row)) {
        model_.recorder().moveBegin(static_cast<std::size_t>(row), placeOf(row, share));
    }
}

void RecordingAdapter::moveEnd(int row, double share) {
    if (isRow(row)) {
        model_.recorder().moveEnd(static_cast<std::size_t>(row), placeOf(row, share));
    }
}

void RecordingAdapter::nudgeBegin(int row, double millis) {
    if (isRow(row)) {
        const auto stroke = static_cast<std::size_t>(row);
        const auto by = std::llround(millis * DSP::sampleRate / 1000.0);
        model_.recorder().moveBegin(stroke, model_.recorder().cuts()->cut(stroke).begin + by);
    }
}

void RecordingAdapter::nudgeEnd(int row, double millis) {
    if (isRow(row)) {
        const auto stroke = static_cast<std::size_t>(row);
        const auto by = std::llround(millis * DSP::sampleRate / 1000.0);
        model_.recorder().moveEnd(stroke, model_.recorder().cuts()->cut(stroke).end + by);
    }
}

void RecordingAdapter::resetCut(int row) {
    if (isRow(row)) {
        model_.recorder().resetCut(static_cast<std::size_t>(row));
    }
}

void RecordingAdapter::play(int row) {
    if (!isRow(row)) {
        return;
    }
    model_.sound().audition(model_.recorder().audition(static_cast<std::size_t>(row)), 1.0F);
}

void RecordingAdapter::keep() {
    // What it says is about the recording, which is settled now.
    model_.dismissError();
    if (const auto sound = model_.finishImport()) {
        made_ = *sound;
        StudioState state = model_.studio();
        state.studioTab = StudioTab::sounds;
        state.editingSoundID = sound;
        state.editingRelease = false;
        model_.setStudio(state);
    }
    refresh();
}

void RecordingAdapter::cancel() {
    model_.dismissError();
    model_.cancelImport();
}

void RecordingAdapter::useForAllKeys() {
    model_.useForAllKeys(std::exchange(made_, std::string()));
    refresh();
}

void RecordingAdapter::dismissOffer() {
    made_.clear();
    refresh();
}

} // namespace vornic
