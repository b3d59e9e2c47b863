#include "Vornic/views/BoardDrop.h"

#include "Vornic/recording/ReadPacks.h"

#include <QDropEvent>
#include <QUrl>

namespace vornic {

namespace {

/// None where one of them is neither: then the window is asked.
BoardDrop::Files filesOf(const QMimeData* data) {
    BoardDrop::Files files;
    const QList<QUrl> urls = data != nullptr ? data->urls() : QList<QUrl>();
    for (const QUrl& url : urls) {
        const std::filesystem::path file = url.toLocalFile().toStdString();
        const bool isBoard =
            urls.size() == 1 && url.fileName().endsWith(".vornic", Qt::CaseInsensitive);
        if (!url.isLocalFile() || !(isBoard || mayHoldPacks(file))) {
            return {};
        }
        files.push_back(file);
    }
    return files;
}

} // namespace

bool BoardDrop::eventFilter(QObject* /*window*/, QEvent* event) {
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
        auto* const drop = static_cast<QDropEvent*>(event);
        if (event->type() == QEvent::DragEnter) {
            files_ = filesOf(drop->mimeData());
        }
        if (files_.empty()) {
            return false;
        }
        drop->acceptProposedAction();
        if (event->type() == QEvent::Drop) {
            onDrop(files_);
        }
        return true;
    }
    default:
        return false;
    }
}

} // namespace vornic
