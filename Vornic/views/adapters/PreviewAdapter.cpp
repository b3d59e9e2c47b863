#include "Vornic/views/adapters/PreviewAdapter.h"

#include "Vornic/typing/PreviewPhrase.h"
#include "Vornic/views/adapters/DrawnKey.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <QStringList>

namespace vornic {

PreviewAdapter::PreviewAdapter(AppModel& model, QObject* parent) : QObject(parent), model_(model) {}

void PreviewAdapter::refresh() {
    if (model_.previews() != shown_) {
        shown_ = model_.previews();
        Q_EMIT changed();
    }
}

QString PreviewAdapter::name() const {
    return open() ? QString::fromStdString(board()->name) : QString();
}

QString PreviewAdapter::detail() const {
    return open() ? QString::fromStdString(board()->detail) : QString();
}

QColor PreviewAdapter::colour() const {
    // A board from elsewhere may name any colour, or none.
    const QColor wanted(open() ? QString::fromStdString(board()->colorHex) : QString());
    return wanted.isValid() ? wanted : QColor(Qt::gray);
}

QString PreviewAdapter::credits() const {
    QStringList lines;
    if (open()) {
        for (const std::string& credit : board()->credits) {
            lines.append(QString::fromStdString(credit));
        }
    }
    return lines.join("\n");
}

QString PreviewAdapter::contents() const {
    if (!open()) {
        return {};
    }
    const auto sounds = static_cast<int>(board()->sounds.size());
    const auto recordings = static_cast<int>(model_.previewRecordings());
    const QString first = sounds == 1 ? tr("1 sound") : tr("%1 sounds").arg(sounds);
    const QString second = recordings == 0   ? tr("made of Vornic's own recordings")
                           : recordings == 1 ? tr("1 recording in the file")
                                             : tr("%1 recordings in the file").arg(recordings);
    return first + " · " + second;
}

QVariantList PreviewAdapter::keys() const {
    QVariantList keys;
    if (open()) {
        for (const LayoutKey& key : vornic::layout(board()->layout).keys) {
            keys.append(drawnKey(key, board()));
        }
    }
    return keys;
}

double PreviewAdapter::layoutWidth() const {
    return open() ? vornic::layout(board()->layout).width : 1;
}

double PreviewAdapter::layoutHeight() const {
    return open() ? vornic::layout(board()->layout).height : 1;
}

void PreviewAdapter::play() {
    model_.keys().type(previewPhrase());
}

} // namespace vornic
