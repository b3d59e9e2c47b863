#include "Vornic/views/shared/RowsModel.h"

#include <algorithm>

namespace vornic {

void RowsModel::show(const QVariantList& rows) {
    const auto before = count();
    const auto after = static_cast<int>(rows.size());
    if (after < before) {
        beginRemoveRows({}, after, before - 1);
        rows_.resize(after);
        endRemoveRows();
    }
    for (int place = 0; place < std::min(before, after); ++place) {
        if (rows_.at(place) != rows.at(place)) {
            rows_[place] = rows.at(place);
            Q_EMIT dataChanged(index(place), index(place));
        }
    }
    if (after > before) {
        beginInsertRows({}, before, after - 1);
        rows_.append(rows.mid(before));
        endInsertRows();
    }
    if (after != before) {
        Q_EMIT countChanged();
    }
}

QVariantMap RowsModel::at(int place) const {
    return rows_.value(place).toMap();
}

int RowsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant RowsModel::data(const QModelIndex& index, int role) const {
    const bool known = checkIndex(index, CheckIndexOption::IndexIsValid) && role == Role::row;
    return known ? rows_.at(index.row()) : QVariant();
}

QHash<int, QByteArray> RowsModel::roleNames() const {
    return {{Role::row, "row"}};
}

} // namespace vornic
