#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/views/shared/RowsModel.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QProperty>
#include <QString>
#include <cstddef>
#include <set>

namespace vornic {

/// The work with board files and packs that is under way, and several packs that were opened
/// together. Thread: main.
class FilesAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    /// "Reading Typewriter.zip"; empty while nothing is under way.
    Q_PROPERTY(QString work READ work NOTIFY workChanged)
    /// How much of it is done, 0 to 1; below 0 where nobody knows.
    Q_PROPERTY(double share READ share NOTIFY shareChanged)
    /// Rows of { name, detail, error, added, ticked, shown }; empty where it was one.
    Q_PROPERTY(vornic::RowsModel* packs READ packs CONSTANT)
    /// How many are ticked and not added yet.
    Q_PROPERTY(int ticked READ ticked NOTIFY tickedChanged)

  public:
    /// `model` outlives it; call `refresh` whenever it says that it has changed.
    explicit FilesAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh();

    bool busy() const { return busy_; }
    QString work() const { return work_; }
    double share() const { return share_; }
    RowsModel* packs() { return &packs_; }
    int ticked() const { return ticked_; }

    Q_INVOKABLE void cancel() { model_.files().cancel(); }
    Q_INVOKABLE void tick(int place, bool on);
    Q_INVOKABLE void hear(int place) { model_.files().openPack(static_cast<std::size_t>(place)); }
    /// Makes all that are ticked the user's.
    Q_INVOKABLE void addTicked();

  Q_SIGNALS:
    void busyChanged();
    void workChanged();
    void shareChanged();
    void tickedChanged();

  private:
    void refreshPacks();

    AppModel& model_;
    RowsModel packs_;
    std::size_t seen_ = 0;
    std::set<std::size_t> unticked_;
    Q_OBJECT_BINDABLE_PROPERTY(FilesAdapter, bool, busy_, &FilesAdapter::busyChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FilesAdapter, QString, work_, &FilesAdapter::workChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(FilesAdapter, double, share_, -1.0,
                                         &FilesAdapter::shareChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FilesAdapter, int, ticked_, &FilesAdapter::tickedChanged)
};

} // namespace vornic
