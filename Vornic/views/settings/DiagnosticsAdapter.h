#pragma once

#include "Vornic/app/AppModel.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QObject>
#include <QProperty>
#include <QString>
#include <QVariantList>

namespace vornic {

/// How well the program does here. Thread: main.
class DiagnosticsAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Entries { name, value }.
    Q_PROPERTY(QVariantList rows READ rows NOTIFY rowsChanged)
    /// How the latencies of the last hundred keys spread: keys in each bin, the bins' width in
    /// milliseconds, and the same in a line.
    Q_PROPERTY(QList<int> latencyBins READ latencyBins NOTIFY latencyBinsChanged)
    Q_PROPERTY(double latencyBinMillis READ latencyBinMillis CONSTANT)
    Q_PROPERTY(QString latencySummary READ latencySummary NOTIFY latencySummaryChanged)
    /// How long the last key took, in a sentence; empty before the first.
    Q_PROPERTY(QString keyToSound READ keyToSound NOTIFY keyToSoundChanged)

  public:
    /// `model` outlives it; call `refresh` whenever it says that it has changed.
    explicit DiagnosticsAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh();

    QVariantList rows() const { return rows_; }
    QList<int> latencyBins() const { return latencyBins_; }
    static double latencyBinMillis();
    QString latencySummary() const { return latencySummary_; }
    QString keyToSound() const { return keyToSound_; }

    Q_INVOKABLE void reset();

  Q_SIGNALS:
    void rowsChanged();
    void latencyBinsChanged();
    void latencySummaryChanged();
    void keyToSoundChanged();

  private:
    QString inWords(const Diagnostics& now) const;

    AppModel& model_;
    Q_OBJECT_BINDABLE_PROPERTY(DiagnosticsAdapter, QVariantList, rows_,
                               &DiagnosticsAdapter::rowsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(DiagnosticsAdapter, QList<int>, latencyBins_,
                               &DiagnosticsAdapter::latencyBinsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(DiagnosticsAdapter, QString, latencySummary_,
                               &DiagnosticsAdapter::latencySummaryChanged)
    Q_OBJECT_BINDABLE_PROPERTY(DiagnosticsAdapter, QString, keyToSound_,
                               &DiagnosticsAdapter::keyToSoundChanged)
};

} // namespace vornic
