#include "Vornic/views/shared/BoardAdapter.h"

#include "Vornic/typing/PreviewPhrase.h"
#include "Vornic/views/shared/QmlText.h"

#include <QDir>
#include <QStandardPaths>
#include <QStringList>

namespace vornic {

BoardAdapter::BoardAdapter(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
    refresh();
}

void BoardAdapter::refresh() {
    const Board* const board = model_.board();
    canUndo_ = model_.canUndo();
    canRedo_ = model_.canRedo();
    comparing_ = model_.comparing();
    if (seen_ == model_.boardRevision() && accent_.value().isValid()) {
        return;
    }
    seen_ = model_.boardRevision();
    boards_.show(model_.boards(), board != nullptr ? board->id : std::string());
    name_ = board != nullptr ? qmlText(board->name) : QString();
    mine_ = board != nullptr && !board->builtIn;
    // A board from elsewhere may name any colour, or none.
    const QColor wanted(board != nullptr ? QString::fromStdString(board->colorHex) : QString());
    accent_ = wanted.isValid() ? wanted : QColor("#5E5CE6");
    credits_ = allCredits();
}

QString BoardAdapter::allCredits() const {
    QStringList lines;
    for (const Board& board : model_.boards()) {
        for (const std::string& credit : board.credits) {
            lines.append(qmlText(board.name + ": " + credit, Lines::kept));
        }
    }
    lines.removeDuplicates();
    return lines.join("\n");
}

void BoardAdapter::rename(const QString& name) {
    if (model_.board() != nullptr && name.toStdString() != model_.board()->name) {
        model_.renameBoard(name.toStdString());
    }
}

QUrl BoardAdapter::exportSuggestion() const {
    QString file = name_.value().trimmed();
    // No name of a board leads out of the folder, or hides the file.
    file.replace('/', '-');
    while (file.startsWith('.')) {
        file.remove(0, 1);
    }
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    return QUrl::fromLocalFile(
        documents.filePath((file.isEmpty() ? QString("Board") : file) + ".vornic"));
}

void BoardAdapter::exportTo(const QUrl& file) {
    model_.exportBoard(file.toLocalFile().toStdString());
}

void BoardAdapter::playPhrase() {
    model_.keys().type(previewPhrase());
}

} // namespace vornic
