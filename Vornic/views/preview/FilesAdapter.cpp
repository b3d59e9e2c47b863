#include "Vornic/views/preview/FilesAdapter.h"

#include "Vornic/views/shared/QmlText.h"

#include <QVariantList>
#include <QVariantMap>
#include <utility>
#include <vector>

namespace vornic {

namespace {

bool canBeAdded(const BoardFiles::Listed& listed) {
    return listed.pack.format && listed.pack.error.empty() && !listed.added;
}

} // namespace

FilesAdapter::FilesAdapter(AppModel& model, QObject* parent) : QObject(parent), model_(model) {}

void FilesAdapter::refresh() {
    const std::optional<BoardFiles::Work>& work = model_.files().work();
    QString text;
    if (work) {
        const QString name = qmlText(work->name);
        switch (work->kind) {
        case BoardFiles::Work::Kind::reading:
            text = tr("Reading %1").arg(name);
            break;
        case BoardFiles::Work::Kind::writing:
            text = tr("Writing %1").arg(name);
            break;
        case BoardFiles::Work::Kind::adding:
            text = tr("Adding %1").arg(name);
            break;
        }
    }
    busy_ = work.has_value();
    work_ = text;
    share_ = work && work->share ? *work->share : -1.0;
    if (model_.files().previews() != seen_) {
        seen_ = model_.files().previews();
        if (model_.files().packs().empty()) {
            unticked_.clear();
        }
        refreshPacks();
    }
}

void FilesAdapter::refreshPacks() {
    const std::vector<BoardFiles::Listed>& packs = model_.files().packs();
    QVariantList rows;
    int ticked = 0;
    for (std::size_t place = 0; place < packs.size(); ++place) {
        const BoardFiles::Listed& listed = packs[place];
        const bool wanted = canBeAdded(listed) && !unticked_.contains(place);
        ticked += wanted ? 1 : 0;
        rows.append(QVariantMap{
            {"name", qmlText(listed.pack.format ? listed.pack.name : listed.pack.place)},
            {"detail", listed.pack.format ? qmlText(label(*listed.pack.format)) : QString()},
            {"error", qmlText(listed.pack.error)},
            {"added", listed.added},
            {"ticked", wanted},
            {"shown", model_.files().shownPack() == place}});
    }
    packs_.show(rows);
    ticked_ = ticked;
}

void FilesAdapter::tick(int place, bool on) {
    const auto at = static_cast<std::size_t>(place);
    if (on) {
        unticked_.erase(at);
    } else {
        unticked_.insert(at);
    }
    refreshPacks();
}

void FilesAdapter::addTicked() {
    const std::vector<BoardFiles::Listed>& packs = model_.files().packs();
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < packs.size(); ++place) {
        if (canBeAdded(packs[place]) && !unticked_.contains(place)) {
            places.push_back(place);
        }
    }
    model_.files().addPacks(std::move(places));
}

} // namespace vornic
