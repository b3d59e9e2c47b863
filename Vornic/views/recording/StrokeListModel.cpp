#include "Vornic/views/recording/StrokeListModel.h"

#include "Vornic/recording/ImportSession.h"
#include "VornicCore/base/SampleRate.h"

#include <algorithm>
#include <cstdint>

namespace vornic {

namespace {

// Around the onset, in samples of a recording: from a little before the cut to a little after the
// usual release.
constexpr auto samplesBefore = static_cast<std::int64_t>(0.033 * DSP::sampleRate);
constexpr auto samplesAfter = static_cast<std::int64_t>(0.367 * DSP::sampleRate);
constexpr std::size_t waveColumns = 200;

QVariantList drawn(const StrokeCuts& cuts, StrokeCuts::Range window) {
    QVariantList wave;
    for (const StrokeCuts::Column& column : cuts.waveform(window, waveColumns)) {
        wave.append(static_cast<double>(column.lowest));
        wave.append(static_cast<double>(column.highest));
    }
    return wave;
}

double shareOf(std::int64_t place, StrokeCuts::Range window) {
    const double share =
        static_cast<double>(place - window.begin) / static_cast<double>(window.end - window.begin);
    return std::clamp(share, 0.0, 1.0);
}

} // namespace

StrokeCuts::Range StrokeListModel::window(const StrokeCuts& cuts, std::size_t stroke) {
    return {cuts.onset(stroke) - samplesBefore, cuts.onset(stroke) + samplesAfter};
}

void StrokeListModel::show(const ImportSession& session, const StrokeCuts& cuts) {
    const std::string id = session.id.text();
    if (id != session_) {
        beginResetModel();
        session_ = id;
        rows_.clear();
        for (std::size_t i = 0; i < session.strokes.size(); ++i) {
            Row row;
            row.snr = session.strokes[i].snrDb;
            row.seconds = session.strokes[i].start;
            row.window = window(cuts, i);
            row.original = cuts.originalCut(i);
            row.release = cuts.release(i).value_or(StrokeCuts::Range());
            row.wave = drawn(cuts, row.window);
            row.state = {session.selected.contains(i), cuts.cut(i)};
            rows_.push_back(std::move(row));
        }
        endResetModel();
        Q_EMIT countChanged();
        return;
    }
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const State state{session.selected.contains(i), cuts.cut(i)};
        if (!(state == rows_[i].state)) {
            rows_[i].state = state;
            const QModelIndex at = index(static_cast<int>(i));
            Q_EMIT dataChanged(at, at, {ticked, millis, cutBegin, cutEnd, moved});
        }
    }
}

void StrokeListModel::clear() {
    if (!session_.empty()) {
        beginResetModel();
        session_.clear();
        rows_.clear();
        endResetModel();
        Q_EMIT countChanged();
    }
}

int StrokeListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant StrokeListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    const StrokeCuts::Range cut = row.state.cut;
    const bool hasRelease = row.release.end > row.release.begin;
    switch (role) {
    case ticked:
        return row.state.ticked;
    case rank:
        return index.row() + 1;
    case snr:
        return row.snr;
    case seconds:
        return row.seconds;
    case wave:
        return row.wave;
    case millis:
        return static_cast<double>(cut.end - cut.begin) * 1000.0 / DSP::sampleRate;
    case cutBegin:
        return shareOf(cut.begin, row.window);
    case cutEnd:
        return shareOf(cut.end, row.window);
    case moved:
        return !(cut == row.original);
    case releaseBegin:
        return hasRelease ? shareOf(row.release.begin, row.window) : 0.0;
    case releaseEnd:
        return hasRelease ? shareOf(row.release.end, row.window) : 0.0;
    default:
        return {};
    }
}

QHash<int, QByteArray> StrokeListModel::roleNames() const {
    return {{ticked, "ticked"},
            {rank, "rank"},
            {snr, "snr"},
            {seconds, "seconds"},
            {wave, "wave"},
            {millis, "millis"},
            {cutBegin, "cutBegin"},
            {cutEnd, "cutEnd"},
            {moved, "moved"},
            {releaseBegin, "releaseBegin"},
            {releaseEnd, "releaseEnd"}};
}

} // namespace vornic
