#include "Vornic/views/adapters/StudioKeysAdapter.h"

#include "Vornic/views/adapters/DrawnKey.h"
#include "Vornic/views/adapters/QmlText.h"
#include "VornicCore/keys/KeySet.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace vornic {

namespace {

const KeyboardLayout& drawn(const AppModel& model) {
    return vornic::layout(model.board() ? model.board()->layout : LayoutID::macANSI);
}

} // namespace

StudioKeysAdapter::StudioKeysAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model) {}

std::set<std::int64_t> StudioKeysAdapter::selectedKeys() const {
    if (const auto* const keys = std::get_if<KeySelection::Keys>(&model_.studio().selection)) {
        return keys->keys;
    }
    std::set<std::int64_t> selected;
    for (const LayoutKey& key : drawn(model_).keys) {
        if (!key.code || !model_.board()) {
            continue;
        }
        const bool isIn = std::visit(
            [&](const auto& selection) {
                using Selection = std::decay_t<decltype(selection)>;
                if constexpr (std::is_same_v<Selection, KeySelection::Group>) {
                    return keyGroupOf(*key.code) == selection.group;
                } else if constexpr (std::is_same_v<Selection, KeySelection::Sound>) {
                    const auto resolved = model_.board()->resolve(*key.code);
                    return resolved && resolved->sound->id == selection.sound;
                } else if constexpr (std::is_same_v<Selection, KeySelection::Stabilisers>) {
                    return KeySet::isStabilised(*key.code);
                } else {
                    return std::is_same_v<Selection, KeySelection::All>;
                }
            },
            model_.studio().selection);
        if (isIn) {
            selected.insert(*key.code);
        }
    }
    return selected;
}

QVariantList StudioKeysAdapter::keys() const {
    const std::set<std::int64_t> selected = selectedKeys();
    const bool all = std::holds_alternative<KeySelection::All>(model_.studio().selection);
    QVariantList keys;
    for (const LayoutKey& key : drawn(model_).keys) {
        QVariantMap shownKey = drawnKey(key, model_.board());
        // All selected looks like none: outlines on every key would say nothing.
        shownKey["selected"] = !all && key.code && selected.contains(*key.code);
        keys.append(shownKey);
    }
    return keys;
}

double StudioKeysAdapter::layoutWidth() const {
    return drawn(model_).width;
}

double StudioKeysAdapter::layoutHeight() const {
    return drawn(model_).height;
}

QVariantList StudioKeysAdapter::layouts() {
    return qmlOptions<LayoutID>();
}

QVariantList StudioKeysAdapter::groups() {
    return qmlOptions<KeyGroup>();
}

QVariantList StudioKeysAdapter::releases() {
    return qmlOptions<ReleaseMode>();
}

QVariantList StudioKeysAdapter::sounds() const {
    QVariantList sounds;
    if (const Board* const board = model_.board()) {
        for (const SoundSpec& sound : board->sounds) {
            sounds.append(
                qmlOption(QString::fromStdString(sound.id), QString::fromStdString(sound.name)));
        }
    }
    return sounds;
}

QString StudioKeysAdapter::layout() const {
    return qmlText(rawString(drawn(model_).id));
}

void StudioKeysAdapter::setLayout(const QString& id) {
    if (const auto wanted = caseFromRawString<LayoutID>(id.toStdString())) {
        model_.edit([&](Board& board) { board.layout = *wanted; });
    }
}

int StudioKeysAdapter::litKey() const {
    const std::optional<std::int64_t> last = model_.activity().lastCode();
    return model_.activity().typing() && last ? static_cast<int>(*last) : -1;
}

QString StudioKeysAdapter::selection() const {
    const auto& selection = model_.studio().selection;
    if (const auto* const group = std::get_if<KeySelection::Group>(&selection)) {
        return qmlText(label(group->group));
    }
    if (std::holds_alternative<KeySelection::Keys>(selection)) {
        return tr("%n key(s)", "", static_cast<int>(selectedKeys().size()));
    }
    if (std::holds_alternative<KeySelection::Stabilisers>(selection)) {
        return tr("Stabilised keys");
    }
    return tr("All keys");
}

QString StudioKeysAdapter::group() const {
    const auto* const group = std::get_if<KeySelection::Group>(&model_.studio().selection);
    return group ? qmlText(rawString(group->group)) : QString();
}

Assignment StudioKeysAdapter::shown() const {
    const Board* const board = model_.board();
    if (!board) {
        return {};
    }
    if (const auto* const group = std::get_if<KeySelection::Group>(&model_.studio().selection)) {
        const auto found = board->groups.find(group->group);
        return found == board->groups.end() ? Assignment() : found->second;
    }
    const std::set<std::int64_t> selected = selectedKeys();
    if (selected.empty()) {
        return {};
    }
    const auto own = board->keys.find(std::to_string(*selected.begin()));
    return own == board->keys.end() ? Assignment() : own->second;
}

void StudioKeysAdapter::change(const std::function<void(Assignment&)>& what) {
    const auto selection = model_.studio().selection;
    const std::set<std::int64_t> selected = selectedKeys();
    model_.edit([&](Board& board) {
        if (const auto* const group = std::get_if<KeySelection::Group>(&selection)) {
            what(board.groups[group->group]);
        } else if (std::holds_alternative<KeySelection::All>(selection)) {
            for (const KeyGroup each : allCases<KeyGroup>()) {
                what(board.groups[each]);
            }
        } else {
            for (const std::int64_t code : selected) {
                what(board.keys[std::to_string(code)]);
            }
        }
    });
}

QString StudioKeysAdapter::sound() const {
    const Assignment assignment = shown();
    if (assignment.sound) {
        return QString::fromStdString(*assignment.sound);
    }
    const std::set<std::int64_t> selected = selectedKeys();
    if (model_.board() && !selected.empty()) {
        if (const auto resolved = model_.board()->resolve(*selected.begin())) {
            return QString::fromStdString(resolved->sound->id);
        }
    }
    return {};
}

void StudioKeysAdapter::setSound(const QString& id) {
    change([&](Assignment& assignment) { assignment.sound = id.toStdString(); });
}

void StudioKeysAdapter::setGainDb(double value) {
    change([=](Assignment& assignment) { assignment.gainDb = value; });
}

void StudioKeysAdapter::setPitch(double value) {
    change([=](Assignment& assignment) { assignment.pitch = value; });
}

void StudioKeysAdapter::setPan(double value) {
    change([=](Assignment& assignment) { assignment.pan = value; });
}

QString StudioKeysAdapter::release() const {
    return qmlText(rawString(shown().release));
}

void StudioKeysAdapter::setRelease(const QString& mode) {
    if (const auto wanted = caseFromRawString<ReleaseMode>(mode.toStdString())) {
        change([&](Assignment& assignment) { assignment.release = *wanted; });
    }
}

bool StudioKeysAdapter::canReset() const {
    const Board* const board = model_.board();
    return board && std::ranges::any_of(selectedKeys(), [&](std::int64_t code) {
               return board->keys.contains(std::to_string(code));
           });
}

void StudioKeysAdapter::reset() {
    const std::set<std::int64_t> selected = selectedKeys();
    model_.edit([&](Board& board) {
        for (const std::int64_t code : selected) {
            board.keys.erase(std::to_string(code));
        }
    });
}

double StudioKeysAdapter::rattle() const {
    return model_.board() ? model_.board()->stabs.rattle : 0.0;
}

void StudioKeysAdapter::setRattle(double value) {
    model_.edit([=](Board& board) { board.stabs.rattle = value; });
}

bool StudioKeysAdapter::releaseByDefault() const {
    return model_.board() && model_.board()->releaseByDefault;
}

void StudioKeysAdapter::setReleaseByDefault(bool on) {
    model_.edit([=](Board& board) { board.releaseByDefault = on; });
}

void StudioKeysAdapter::select(KeySelection::Any selection) {
    StudioState state = model_.studio();
    state.selection = std::move(selection);
    model_.setStudio(state);
}

void StudioKeysAdapter::selectKey(int code, bool extend) {
    KeySelection::Keys keys;
    const auto* const before = std::get_if<KeySelection::Keys>(&model_.studio().selection);
    if (extend && before) {
        keys = *before;
    }
    if (extend && keys.keys.contains(code)) {
        keys.keys.erase(code);
    } else {
        keys.keys.insert(code);
    }
    select(std::move(keys));
}

void StudioKeysAdapter::selectKeys(const QVariantList& codes) {
    KeySelection::Keys keys;
    for (const QVariant& code : codes) {
        keys.keys.insert(code.toInt());
    }
    select(std::move(keys));
}

void StudioKeysAdapter::selectGroup(const QString& group) {
    if (const auto wanted = caseFromRawString<KeyGroup>(group.toStdString())) {
        select(KeySelection::Group{*wanted});
    }
}

void StudioKeysAdapter::selectAll() {
    select(KeySelection::All{});
}

} // namespace vornic
