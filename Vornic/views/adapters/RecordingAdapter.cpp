#include "Vornic/views/adapters/RecordingAdapter.h"

#include "Vornic/views/adapters/QmlText.h"
#include "VornicCore/base/SampleRate.h"
#include "VornicCore/strokes/Slicer.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <utility>

namespace vornic {

namespace {

constexpr double meterFloorDb = -60.0;

} // namespace

RecordingAdapter::RecordingAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model) {}

void RecordingAdapter::refresh() {
    const SoundMaker& recorder = model_.recorder();
    if (recorder.session() && recorder.cuts()) {
        strokes_.show(*recorder.session(), *recorder.cuts());
    } else {
        strokes_.clear();
    }
    Q_EMIT changed();
}

QString RecordingAdapter::phase() const {
    const SoundMaker& recorder = model_.recorder();
    if (recorder.isRecording()) {
        return "recording";
    }
    if (recorder.isStarting()) {
        return "starting";
    }
    if (recorder.importProgress()) {
        return "reading";
    }
    return recorder.session() ? "choosing" : "idle";
}

QString RecordingAdapter::failure() const {
    return QString::fromStdString(model_.lastError().value_or(std::string()));
}

QString RecordingAdapter::advice() const {
    const auto error = model_.lastError();
    if (error == ImportMessages::noMicrophone) {
        return QString::fromStdString(model_.recorder().problem());
    }
    const bool wasCut =
        error == ImportMessages::noStrokes || error == ImportMessages::noGoodStrokes;
    return wasCut ? QString::fromStdString(model_.recorder().remark()) : QString();
}

double RecordingAdapter::level() const {
    const double level = static_cast<double>(model_.recorder().level());
    if (!(level > 0.0)) {
        return 0.0;
    }
    return std::clamp(1.0 - 20.0 * std::log10(level) / meterFloorDb, 0.0, 1.0);
}

bool RecordingAdapter::clipping() const {
    return model_.recorder().level() >= Slicer::clippingPeak;
}

int RecordingAdapter::secondsLeft() const {
    return static_cast<int>(model_.recorder().secondsLeft());
}

int RecordingAdapter::good() const {
    return static_cast<int>(model_.recorder().live().good);
}

QString RecordingAdapter::verdict() const {
    const auto last = model_.recorder().live().last;
    return last ? qmlText(label(*last)) : QString();
}

bool RecordingAdapter::lastIsGood() const {
    return model_.recorder().live().last == StrokeVerdict::good;
}

double RecordingAdapter::progress() const {
    return model_.recorder().importProgress().value_or(0.0);
}

QString RecordingAdapter::name() const {
    const auto& session = model_.importSession();
    return session ? QString::fromStdString(session->name) : QString();
}

void RecordingAdapter::setName(const QString& name) {
    if (const QString wanted = name.trimmed(); !wanted.isEmpty()) {
        model_.recorder().rename(wanted.toStdString());
    }
}

int RecordingAdapter::found() const {
    const auto& session = model_.importSession();
    return session ? static_cast<int>(session->foundTotal) : 0;
}

int RecordingAdapter::ticked() const {
    const auto& session = model_.importSession();
    return session ? static_cast<int>(session->selected.size()) : 0;
}

int RecordingAdapter::releases() const {
    int count = 0;
    if (const auto& cuts = model_.recorder().cuts()) {
        for (std::size_t stroke = 0; stroke < cuts->count(); ++stroke) {
            count += cuts->release(stroke) ? 1 : 0;
        }
    }
    return count;
}

QString RecordingAdapter::notice() const {
    if (model_.lastError()) {
        return failure();
    }
    return model_.recorder().timeWasUp() ? tr("The 20 seconds are up.")
                                         : QString::fromStdString(model_.recorder().remark());
}

QString RecordingAdapter::justMade() const {
    const Board* const board = model_.board();
    const SoundSpec* const sound =
        board != nullptr && !made_.empty() ? board->sound(made_) : nullptr;
    return sound != nullptr ? QString::fromStdString(sound->name) : QString();
}

void RecordingAdapter::startRecording() {
    if (phase() == "idle") {
        made_.clear();
        model_.dismissError();
        model_.recorder().startRecording();
    }
}

void RecordingAdapter::stopRecording(bool keep) {
    model_.recorder().stopRecording(keep);
}

void RecordingAdapter::importRecording(const QUrl& file) {
    if (phase() == "idle") {
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
    Q_EMIT changed();
}

void RecordingAdapter::cancel() {
    model_.dismissError();
    model_.cancelImport();
}

void RecordingAdapter::useForAllKeys() {
    model_.useForAllKeys(std::exchange(made_, std::string()));
    Q_EMIT changed();
}

void RecordingAdapter::dismissOffer() {
    made_.clear();
    Q_EMIT changed();
}

} // namespace vornic
