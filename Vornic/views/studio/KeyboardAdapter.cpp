#include "Vornic/views/studio/KeyboardAdapter.h"

#include "Vornic/views/shared/DrawnKey.h"
#include "Vornic/views/shared/QmlText.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <string>
#include <utility>
#include <variant>

namespace vornic {

namespace {

const KeyboardLayout& drawn(const AppModel& model) {
    return vornic::layout(model.board() != nullptr ? model.board()->layout : LayoutID::macANSI);
}

} // namespace

KeyboardAdapter::KeyboardAdapter(AppModel& model, QObject* parent)
    : StudioPart(parent), model_(model) {}

void KeyboardAdapter::read() {
    const Board* const board = model_.board();
    const auto& selection = model_.studio().selection;
    // All selected looks like none: outlines on every key would say nothing.
    const std::set<std::int64_t> selected =
        board != nullptr && !std::holds_alternative<KeySelection::All>(selection)
            ? KeySelection::keysOf(selection, *board)
            : std::set<std::int64_t>();
    QVariantList rows;
    for (const LayoutKey& key : drawn(model_).keys) {
        QVariantMap row = drawnKey(key, board);
        row["label"] = qmlText(legendOf(key, drawn(model_), legends_));
        row["selected"] = key.code && selected.contains(*key.code);
        rows.append(row);
    }
    rows_.show(rows);
    selected_ = QList<int>(selected.begin(), selected.end());
    const KeyboardLayout& keyboard = drawn(model_);
    layoutWidth_ = keyboard.width;
    layoutHeight_ = keyboard.height;
    layout_ = static_cast<int>(keyboard.id);
    const auto* const group = std::get_if<KeySelection::Group>(&selection);
    group_ = group != nullptr ? static_cast<int>(group->group) : -1;
    allSelected_ = std::holds_alternative<KeySelection::All>(selection);
    stabilisersSelected_ = std::holds_alternative<KeySelection::Stabilisers>(selection);
    selection_ = selectionInWords();
}

void KeyboardAdapter::setLegends(const KeyLegends& legends) {
    legends_ = legends;
    refresh();
}

QVariantList KeyboardAdapter::layouts() {
    return qmlOptions<LayoutID>();
}

QVariantList KeyboardAdapter::groups() {
    return qmlOptions<KeyGroup>();
}

void KeyboardAdapter::setLayout(int layout) {
    if (const auto wanted = qmlCase<LayoutID>(layout)) {
        model_.edit([&](Board& board) { board.layout = *wanted; });
    }
}

QString KeyboardAdapter::selectionInWords() const {
    const auto& selection = model_.studio().selection;
    if (const auto* const group = std::get_if<KeySelection::Group>(&selection)) {
        return qmlText(label(group->group));
    }
    if (const auto* const keys = std::get_if<KeySelection::Keys>(&selection)) {
        if (keys->keys.size() == 1) {
            const LayoutKey* const key = drawn(model_).find(*keys->keys.begin());
            const QString legend =
                key == nullptr ? QString() : qmlText(legendOf(*key, drawn(model_), legends_));
            return legend.isEmpty() ? tr("One key") : tr("Key \"%1\"").arg(legend);
        }
        return keys->keys.empty() ? tr("No key") : tr("%1 keys").arg(keys->keys.size());
    }
    if (const auto* const sound = std::get_if<KeySelection::Sound>(&selection)) {
        const SoundSpec* const found =
            model_.board() != nullptr ? model_.board()->sound(sound->sound) : nullptr;
        return found != nullptr ? tr("Keys with %1").arg(qmlText(found->name)) : tr("No key");
    }
    return std::holds_alternative<KeySelection::Stabilisers>(selection) ? tr("Stabilised keys")
                                                                        : tr("All keys");
}

void KeyboardAdapter::select(KeySelection::Any selection) {
    StudioState state = model_.studio();
    state.selection = std::move(selection);
    model_.setStudio(state);
}

void KeyboardAdapter::selectCodes(KeySelection::Keys keys, bool extend) {
    const auto& before = model_.studio().selection;
    // Everything is where a selection starts from, not what keys are added to.
    if (extend && model_.board() != nullptr && !std::holds_alternative<KeySelection::All>(before)) {
        keys.keys.merge(KeySelection::keysOf(before, *model_.board()));
    }
    select(std::move(keys));
}

void KeyboardAdapter::selectKey(int code, bool extend) {
    const auto& before = model_.studio().selection;
    if (extend && model_.board() != nullptr && !std::holds_alternative<KeySelection::All>(before)) {
        KeySelection::Keys keys{KeySelection::keysOf(before, *model_.board())};
        if (keys.keys.erase(code) > 0) {
            select(std::move(keys));
            return;
        }
    }
    selectCodes({{code}}, extend);
}

void KeyboardAdapter::selectWithin(double x, double y, double w, double h, bool extend) {
    selectCodes({drawn(model_).within(x, y, w, h)}, extend);
}

void KeyboardAdapter::selectGroup(int group) {
    if (const auto wanted = qmlCase<KeyGroup>(group)) {
        select(KeySelection::Group{*wanted});
    }
}

void KeyboardAdapter::selectSound(const QString& id) {
    select(KeySelection::Sound{id.toStdString()});
}

void KeyboardAdapter::selectAll() {
    select(KeySelection::All{});
}

void KeyboardAdapter::selectStabilisers() {
    select(KeySelection::Stabilisers{});
}

int KeyboardAdapter::neighbour(int code, int dx, int dy) const {
    return static_cast<int>(drawn(model_).neighbour(code, dx, dy));
}

} // namespace vornic
