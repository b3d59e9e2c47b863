#pragma once

#include "VornicCore/strokes/StrokeCuts.h"

#include <QtQml/qqmlregistration.h>

#include <QAbstractListModel>
#include <QVariantList>
#include <cstddef>
#include <string>
#include <vector>

namespace vornic {

struct ImportSession;

/// The strokes that the user chooses from, a row each, the best first. Every stroke is drawn in a
/// window of 400 ms around its onset; places in it are shares of its width, 0 to 1. Thread: main.
class StrokeListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum Role {
        /// Whether the stroke is to be kept.
        ticked = Qt::UserRole,
        /// Its place among the strokes, 1 for the best.
        rank,
        /// How far it rises above the noise of the room, dB.
        snr,
        /// When it was typed, seconds from the beginning of the recording.
        seconds,
        /// What is drawn: lowest and highest sample of each column, one after the other.
        wave,
        /// How long it is as it is cut now, ms.
        millis,
        cutBegin,
        cutEnd,
        /// Whether the cut is another than the slicer's.
        moved,
        /// The release that was found with it; both 0 when none was.
        releaseBegin,
        releaseEnd,
    };

    explicit StrokeListModel(QObject* parent = nullptr) : QAbstractListModel(parent) {}

    /// Shows these strokes from now on. Rows stay where the session is the same one.
    void show(const ImportSession& session, const StrokeCuts& cuts);
    void clear();

    /// What is drawn of a stroke, in samples of the recording; parts may lie outside it.
    static StrokeCuts::Range window(const StrokeCuts& cuts, std::size_t stroke);

    int count() const { return static_cast<int>(rows_.size()); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void countChanged();

  private:
    /// What the user changes about a stroke.
    struct State {
        bool ticked = true;
        StrokeCuts::Range cut;
        bool operator==(const State&) const = default;
    };
    /// One stroke; but for `state`, it stays as it is.
    struct Row {
        double snr = 0.0;
        double seconds = 0.0;
        StrokeCuts::Range window;
        StrokeCuts::Range original;
        StrokeCuts::Range release;
        QVariantList wave;
        State state;
    };

    std::string session_;
    std::vector<Row> rows_;
};

} // namespace vornic
