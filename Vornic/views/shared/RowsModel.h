#pragma once

#include <QtQml/qqmlregistration.h>

#include <QAbstractListModel>
#include <QVariantList>

namespace vornic {

/// A list for the views whose rows are maps, each in the role "row". Rows that stay the same are
/// left alone: a slider in a list keeps the mouse while what it edits comes back through the list.
/// Thread: main.
class RowsModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum Role { row = Qt::UserRole };

    explicit RowsModel(QObject* parent = nullptr) : QAbstractListModel(parent) {}

    /// Shows these rows, maps all, from now on.
    void show(const QVariantList& rows);

    const QVariantList& rows() const { return rows_; }
    int count() const { return static_cast<int>(rows_.size()); }
    /// The row at a place; an empty map beyond the end.
    Q_INVOKABLE QVariantMap at(int place) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void countChanged();

  private:
    QVariantList rows_;
};

} // namespace vornic
