#include "Vornic/views/preview/PreviewAdapter.h"

#include "Vornic/typing/PreviewPhrase.h"
#include "Vornic/views/shared/DrawnKey.h"
#include "Vornic/views/shared/QmlText.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <QStringList>

namespace vornic {

PreviewAdapter::PreviewAdapter(AppModel& model, QObject* parent) : QObject(parent), model_(model) {}

void PreviewAdapter::refresh() {
    if (model_.previews() == shown_) {
        return;
    }
    shown_ = model_.previews();
    const Board none;
    const Board& board = model_.preview() != nullptr ? *model_.preview() : none;
    const bool open = model_.preview() != nullptr;
    name_ = qmlText(board.name);
    detail_ = qmlText(board.detail);
    // A board from elsewhere may name any colour, or none.
    const QColor wanted(QString::fromStdString(board.colorHex));
    colour_ = wanted.isValid() ? wanted : QColor(Qt::gray);
    QStringList lines;
    for (const std::string& credit : board.credits) {
        lines.append(qmlText(credit, Lines::kept));
    }
    credits_ = lines.join("\n");
    contents_ = open ? contentsOf(board) : QString();
    const KeyboardLayout& keyboard = layout(board.layout);
    QVariantList keys;
    if (open) {
        for (const LayoutKey& key : keyboard.keys) {
            keys.append(drawnKey(key, &board));
        }
    }
    keys_ = keys;
    layoutWidth_ = open ? keyboard.width : 1.0;
    layoutHeight_ = open ? keyboard.height : 1.0;
    open_ = open;
}

QString PreviewAdapter::contentsOf(const Board& board) const {
    const auto sounds = static_cast<int>(board.sounds.size());
    const auto recordings = static_cast<int>(model_.previewRecordings());
    const QString first = sounds == 1 ? tr("1 sound") : tr("%1 sounds").arg(sounds);
    const QString second = recordings == 0   ? tr("made of Vornic's own recordings")
                           : recordings == 1 ? tr("1 recording in the file")
                                             : tr("%1 recordings in the file").arg(recordings);
    return first + " · " + second;
}

void PreviewAdapter::play() {
    model_.keys().type(previewPhrase());
}

} // namespace vornic
