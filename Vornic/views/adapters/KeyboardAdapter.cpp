#include "Vornic/views/adapters/KeyboardAdapter.h"

#include "Vornic/views/adapters/DrawnKey.h"
#include "Vornic/views/adapters/KeySelections.h"
#include "Vornic/views/adapters/QmlText.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <variant>

namespace vornic {

namespace {

/// How long a key that is clicked stays down.
constexpr double clickMillis = 90.0;

const KeyboardLayout& drawn(const AppModel& model) {
    return vornic::layout(model.board() != nullptr ? model.board()->layout : LayoutID::macANSI);
}

double centreY(const LayoutKey& key) {
    return key.y + key.h / 2;
}

} // namespace

KeyboardAdapter::KeyboardAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model) {}

void KeyboardAdapter::refresh() {
    const Board* const board = model_.board();
    const auto& selection = model_.studio().selection;
    // All selected looks like none: outlines on every key would say nothing.
    const std::set<std::int64_t> selected =
        board != nullptr && !std::holds_alternative<KeySelection::All>(selection)
            ? selectedKeys(*board, selection)
            : std::set<std::int64_t>();
    QVariantList rows;
    for (const LayoutKey& key : drawn(model_).keys) {
        QVariantMap row = drawnKey(key, board);
        row["selected"] = key.code && selected.contains(*key.code);
        rows.append(row);
    }
    rows_.show(rows);
    Q_EMIT changed();
}

void KeyboardAdapter::refreshPressed() {
    QVariantList now;
    for (const auto& [code, since] : model_.activity().pressed()) {
        now.append(static_cast<int>(code));
    }
    if (now != pressed_) {
        pressed_ = now;
        Q_EMIT pressedChanged();
    }
}

double KeyboardAdapter::layoutWidth() const {
    return drawn(model_).width;
}

double KeyboardAdapter::layoutHeight() const {
    return drawn(model_).height;
}

QVariantList KeyboardAdapter::layouts() {
    return qmlOptions<LayoutID>();
}

QVariantList KeyboardAdapter::groups() {
    return qmlOptions<KeyGroup>();
}

QString KeyboardAdapter::layout() const {
    return qmlText(rawString(drawn(model_).id));
}

void KeyboardAdapter::setLayout(const QString& id) {
    if (const auto wanted = caseFromRawString<LayoutID>(id.toStdString())) {
        model_.edit([&](Board& board) { board.layout = *wanted; });
    }
}

QString KeyboardAdapter::kind() const {
    static constexpr std::array kinds{"all", "group", "keys", "sound", "stabilisers"};
    return kinds.at(model_.studio().selection.index());
}

QString KeyboardAdapter::selection() const {
    const auto& selection = model_.studio().selection;
    if (const auto* const group = std::get_if<KeySelection::Group>(&selection)) {
        return qmlText(label(group->group));
    }
    if (const auto* const keys = std::get_if<KeySelection::Keys>(&selection)) {
        if (keys->keys.size() == 1) {
            const LayoutKey* const key = drawn(model_).find(*keys->keys.begin());
            return key == nullptr || key->label.empty()
                       ? tr("One key")
                       : tr("Key \"%1\"").arg(QString::fromStdString(key->label));
        }
        return keys->keys.empty() ? tr("No key") : tr("%1 keys").arg(keys->keys.size());
    }
    if (const auto* const sound = std::get_if<KeySelection::Sound>(&selection)) {
        const SoundSpec* const found =
            model_.board() != nullptr ? model_.board()->sound(sound->sound) : nullptr;
        return found != nullptr ? tr("Keys with %1").arg(QString::fromStdString(found->name))
                                : tr("No key");
    }
    return std::holds_alternative<KeySelection::Stabilisers>(selection) ? tr("Stabilised keys")
                                                                        : tr("All keys");
}

QString KeyboardAdapter::group() const {
    const auto* const group = std::get_if<KeySelection::Group>(&model_.studio().selection);
    return group != nullptr ? qmlText(rawString(group->group)) : QString();
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
        keys.keys.merge(selectedKeys(*model_.board(), before));
    }
    select(std::move(keys));
}

void KeyboardAdapter::selectKey(int code, bool extend) {
    const auto& before = model_.studio().selection;
    if (extend && model_.board() != nullptr && !std::holds_alternative<KeySelection::All>(before)) {
        KeySelection::Keys keys{selectedKeys(*model_.board(), before)};
        if (keys.keys.erase(code) > 0) {
            select(std::move(keys));
            return;
        }
    }
    selectCodes({{code}}, extend);
}

void KeyboardAdapter::selectWithin(double x, double y, double w, double h, bool extend) {
    KeySelection::Keys keys;
    for (const LayoutKey& key : drawn(model_).keys) {
        if (key.code && key.x < x + w && key.x + key.w > x && key.y < y + h && key.y + key.h > y) {
            keys.keys.insert(*key.code);
        }
    }
    selectCodes(std::move(keys), extend);
}

void KeyboardAdapter::selectGroup(const QString& group) {
    if (const auto wanted = caseFromRawString<KeyGroup>(group.toStdString())) {
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

int KeyboardAdapter::keyAt(double x, double y) const {
    for (const LayoutKey& key : drawn(model_).keys) {
        if (key.code && x >= key.x && x < key.x + key.w && y >= key.y && y < key.y + key.h) {
            return static_cast<int>(*key.code);
        }
    }
    return -1;
}

int KeyboardAdapter::neighbour(int code, int dx, int dy) const {
    const KeyboardLayout& keyboard = drawn(model_);
    const LayoutKey* const from = keyboard.find(code);
    const LayoutKey* best = from;
    double least = std::numeric_limits<double>::infinity();
    for (const LayoutKey& key : keyboard.keys) {
        if (!key.code) {
            continue;
        }
        if (from == nullptr) {
            return static_cast<int>(*key.code);
        }
        const double right = key.centreX() - from->centreX();
        const double down = centreY(key) - centreY(*from);
        const double along = right * dx + down * dy;
        const double across = std::abs(right * dy) + std::abs(down * dx);
        // Along a row only keys of that row count; from row to row the nearest row comes first.
        const bool inRow = key.y < from->y + from->h && key.y + key.h > from->y;
        const double cost = 4 * along + across;
        if (along > 0.2 && (dx == 0 || inRow) && cost < least) {
            least = cost;
            best = &key;
        }
    }
    return best != nullptr ? static_cast<int>(best->code.value_or(code)) : code;
}

void KeyboardAdapter::play(int code) {
    model_.keys().type({{.millis = 0.0, .keyCode = code, .down = true},
                        {.millis = clickMillis, .keyCode = code, .down = false}});
}

} // namespace vornic
