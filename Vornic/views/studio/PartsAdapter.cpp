#include "Vornic/views/studio/PartsAdapter.h"

#include "Vornic/views/shared/QmlText.h"
#include "Vornic/views/studio/PartRows.h"

#include <cstddef>
#include <span>

namespace vornic {

namespace {

template <typename Record>
void append(QVariantList& rows, std::span<const PartRow<Record>> parts, const Record& record) {
    for (const PartRow<Record>& part : parts) {
        rows.append(QVariantMap{{"text", PartsAdapter::tr(part.name)},
                                {"options", part.options()},
                                {"now", part.now(record)}});
    }
}

template <typename Record>
void choose(Record& record, std::span<const PartRow<Record>> parts, int row, int value) {
    if (row >= 0 && row < static_cast<int>(parts.size())) {
        parts[static_cast<std::size_t>(row)].choose(record, value);
    }
}

} // namespace

PartsAdapter::PartsAdapter(AppModel& model, QObject* parent)
    : StudioPart(parent), model_(model), edit_(model) {}

void PartsAdapter::read() {
    const SoundSpec* const sound = edit_.sound();
    static const Board none;
    const Board& board = model_.board() != nullptr ? *model_.board() : none;
    QVariantList rows;
    append(rows, switchRows(), sound != nullptr ? sound->switchParts : SwitchParts());
    switchParts_.show(rows);
    rows.clear();
    append(rows, buildRows(), board.build);
    append(rows, stabRows(), board.stabs);
    buildParts_.show(rows);
    rows.clear();
    for (const QVariant& option : foamOptions()) {
        QVariantMap row = option.toMap();
        const auto foam = qmlCase<Foam>(row["value"].toInt());
        row["now"] = foam && board.build.foams.contains(*foam);
        rows.append(row);
    }
    foams_.show(rows);
    rattle_ = board.stabs.rattle;
    releaseByDefault_ = board.releaseByDefault;
}

void PartsAdapter::setSwitchPart(int row, int value) {
    edit_.changeSound(
        [&](SoundSpec& sound) { choose(sound.switchParts, switchRows(), row, value); });
}

void PartsAdapter::setBuildPart(int row, int value) {
    model_.edit([&](Board& board) {
        choose(board.build, buildRows(), row, value);
        choose(board.stabs, stabRows(), row - static_cast<int>(buildRows().size()), value);
    });
}

void PartsAdapter::setFoam(int foam, bool on) {
    if (const auto wanted = qmlCase<Foam>(foam)) {
        model_.edit([&](Board& board) {
            if (on) {
                board.build.foams.insert(*wanted);
            } else {
                board.build.foams.erase(*wanted);
            }
        });
    }
}

void PartsAdapter::setRattle(double value) {
    model_.edit([=](Board& board) { board.stabs.rattle = value; });
}

void PartsAdapter::setReleaseByDefault(bool on) {
    model_.edit([=](Board& board) { board.releaseByDefault = on; });
}

} // namespace vornic
