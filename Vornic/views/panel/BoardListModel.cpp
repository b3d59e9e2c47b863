#include "Vornic/views/panel/BoardListModel.h"

#include "Vornic/views/shared/QmlText.h"

#include <QColor>
#include <QString>
#include <algorithm>

namespace vornic {

void BoardListModel::show(const std::vector<Board>& boards, const std::string& currentId) {
    std::vector<Row> rows;
    rows.reserve(boards.size());
    for (const Board& board : boards) {
        rows.push_back({.id = board.id,
                        .name = board.name,
                        .detail = board.detail,
                        .colour = board.colorHex,
                        .mine = !board.builtIn,
                        .current = board.id == currentId});
    }
    const bool sameBoards = std::ranges::equal(rows, rows_, {}, &Row::id, &Row::id);
    if (!sameBoards) {
        beginResetModel();
        rows_ = std::move(rows);
        endResetModel();
        Q_EMIT countChanged();
        setCurrentRow();
        return;
    }
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (!(rows[row] == rows_[row])) {
            rows_[row] = std::move(rows[row]);
            const QModelIndex at = index(static_cast<int>(row));
            Q_EMIT dataChanged(at, at);
        }
    }
    setCurrentRow();
}

void BoardListModel::setCurrentRow() {
    const auto found = std::ranges::find(rows_, true, &Row::current);
    const int row = found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
    if (row != currentRow_) {
        currentRow_ = row;
        Q_EMIT currentRowChanged();
    }
}

int BoardListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant BoardListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case boardId:
        return QString::fromStdString(row.id);
    case name:
        return qmlText(row.name);
    case description:
        return qmlText(row.detail);
    case colour: {
        // A board from elsewhere may name any colour, or none.
        const QColor wanted(QString::fromStdString(row.colour));
        return wanted.isValid() ? wanted : QColor(Qt::gray);
    }
    case mine:
        return row.mine;
    case current:
        return row.current;
    default:
        return {};
    }
}

QHash<int, QByteArray> BoardListModel::roleNames() const {
    return {{boardId, "boardId"}, {name, "name"}, {description, "description"},
            {colour, "colour"},   {mine, "mine"}, {current, "current"}};
}

} // namespace vornic
