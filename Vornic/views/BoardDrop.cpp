#include "Vornic/views/BoardDrop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <optional>

namespace vornic {

namespace {

std::optional<std::filesystem::path> boardFileOf(const QMimeData* data) {
    if (data != nullptr && data->urls().size() == 1) {
        const QUrl url = data->urls().first();
        if (url.isLocalFile() && url.fileName().endsWith(".vornic", Qt::CaseInsensitive)) {
            return url.toLocalFile().toStdString();
        }
    }
    return std::nullopt;
}

} // namespace

bool BoardDrop::eventFilter(QObject* /*window*/, QEvent* event) {
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
        auto* const drop = static_cast<QDropEvent*>(event);
        const auto file = boardFileOf(drop->mimeData());
        if (!file) {
            return false;
        }
        drop->acceptProposedAction();
        if (event->type() == QEvent::Drop) {
            onDrop(*file);
        }
        return true;
    }
    default:
        return false;
    }
}

} // namespace vornic
