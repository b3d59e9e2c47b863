#include "Vornic/views/preview/PreviewAdapter.h"

#include "Vornic/typing/PreviewPhrase.h"
#include "Vornic/views/shared/QmlText.h"

#include <QStringList>

namespace vornic {

PreviewAdapter::PreviewAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), keyboard_(model) {}

QString PreviewAdapter::contentsOf(const BoardFiles::Preview& preview) {
    if (preview.report) {
        return qmlText(reportNumbers(*preview.report));
    }
    const auto sounds = static_cast<int>(preview.opened.board.sounds.size());
    const auto recordings = static_cast<int>(preview.opened.samples.size());
    const QString first = sounds == 1 ? tr("1 sound") : tr("%1 sounds").arg(sounds);
    const QString second = recordings == 0   ? tr("made of Vornic's own recordings")
                           : recordings == 1 ? tr("1 recording in the file")
                                             : tr("%1 recordings in the file").arg(recordings);
    return first + " · " + second;
}

void PreviewAdapter::refresh() {
    const BoardFiles& files = model_.files();
    if (files.previews() == seen_) {
        return;
    }
    seen_ = files.previews();
    const Board none;
    const BoardFiles::Preview* const preview = files.preview();
    const Board& board = preview != nullptr ? preview->opened.board : none;
    name_ = qmlText(board.name);
    const bool isPack = preview != nullptr && preview->report.has_value();
    // What a board says of the pack that it was made of stands here already.
    detail_ = qmlText(isPack ? preview->report->description : board.detail);
    // A board from elsewhere may name any colour, or none.
    const QColor wanted(QString::fromStdString(board.colorHex));
    colour_ = wanted.isValid() ? wanted : QColor(Qt::gray);
    QStringList lines;
    constexpr std::size_t authorAndLicence = 2;
    for (std::size_t line = isPack ? authorAndLicence : 0; line < board.credits.size(); ++line) {
        lines.append(qmlText(board.credits[line], Lines::kept));
    }
    credits_ = lines.join("\n");
    contents_ = preview != nullptr ? contentsOf(*preview) : QString();
    keyboard_.show(preview != nullptr ? &board : nullptr);
    showReport(preview != nullptr && preview->report ? &*preview->report : nullptr);
    shown_ = preview != nullptr;
    open_ = preview != nullptr || !files.packs().empty();
}

void PreviewAdapter::showReport(const PackReport* report) {
    QVariantList lines;
    if (report == nullptr) {
        origin_ = QString();
        author_ = QString();
        licence_ = QString();
        report_ = lines;
        return;
    }
    origin_ = tr("Sound pack for %1").arg(qmlText(label(report->format)));
    author_ = qmlText(orNoneStated(report->author));
    licence_ = qmlText(orNoneStated(report->licence));
    for (const ReportLine& line : reportLines(*report)) {
        lines.append(
            QVariantMap{{"head", qmlText(label(line.head))}, {"text", qmlText(line.text)}});
    }
    report_ = lines;
}

void PreviewAdapter::play() {
    model_.keys().type(previewPhrase());
}

} // namespace vornic
