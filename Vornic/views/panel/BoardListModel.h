#pragma once

#include "VornicCore/board/Board.h"

#include <QtQml/qqmlregistration.h>

#include <QAbstractListModel>
#include <string>
#include <vector>

namespace vornic {

/// The boards offered, a row each, for the views' lists. Thread: main.
class BoardListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int currentRow READ currentRow NOTIFY currentRowChanged)

  public:
    enum Role { boardId = Qt::UserRole, name, description, colour, mine, current };

    explicit BoardListModel(QObject* parent = nullptr) : QAbstractListModel(parent) {}

    /// Shows these boards from now on. Rows are kept where the boards are the same, so that lists
    /// keep their place while a board is edited.
    void show(const std::vector<Board>& boards, const std::string& currentId);

    int count() const { return static_cast<int>(rows_.size()); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The place of the current board, or -1.
    int currentRow() const { return currentRow_; }

  Q_SIGNALS:
    void countChanged();
    void currentRowChanged();

  private:
    struct Row {
        std::string id, name, detail, colour;
        bool mine = false;
        bool current = false;
        bool operator==(const Row&) const = default;
    };

    void setCurrentRow();

    std::vector<Row> rows_;
    int currentRow_ = -1;
};

} // namespace vornic
