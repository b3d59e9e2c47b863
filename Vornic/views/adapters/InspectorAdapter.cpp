#include "Vornic/views/adapters/InspectorAdapter.h"

#include "Vornic/views/adapters/KeySelections.h"
#include "Vornic/views/adapters/QmlText.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <variant>

namespace vornic {

namespace {

template <typename Map, typename Key>
Assignment at(const Map& assignments, const Key& key) {
    const auto found = assignments.find(key);
    return found == assignments.end() ? Assignment() : found->second;
}

QString signedNumber(double value) {
    return (value < 0 ? QString("−") : QString("+")) + QString::number(std::abs(value), 'f', 1);
}

} // namespace

bool InspectorAdapter::editsGroups() const {
    const auto& selection = model_.studio().selection;
    return std::holds_alternative<KeySelection::All>(selection) ||
           std::holds_alternative<KeySelection::Group>(selection);
}

/// What the selection itself says: of its groups, or of its keys.
std::vector<Assignment> InspectorAdapter::own() const {
    const Board* const board = model_.board();
    const auto& selection = model_.studio().selection;
    std::vector<Assignment> all;
    if (board == nullptr) {
        return all;
    }
    if (const auto* const group = std::get_if<KeySelection::Group>(&selection)) {
        all.push_back(at(board->groups, group->group));
    } else if (editsGroups()) {
        for (const KeyGroup each : allCases<KeyGroup>()) {
            all.push_back(at(board->groups, each));
        }
    } else {
        for (const std::int64_t code : selectedKeys(*board, selection)) {
            all.push_back(at(board->keys, std::to_string(code)));
        }
    }
    return all;
}

Assignment InspectorAdapter::shown() const {
    const std::vector<Assignment> all = own();
    return all.empty() ? Assignment() : all.front();
}

bool InspectorAdapter::mixed() const {
    const std::vector<Assignment> all = own();
    return std::ranges::adjacent_find(all, std::not_equal_to()) != all.end();
}

/// What lies below the first selected key's own values; below a group there is only the board.
Assignment InspectorAdapter::inherited() const {
    if (model_.board() == nullptr || editsGroups()) {
        return {};
    }
    const std::set<std::int64_t> keys = selectedKeys(*model_.board(), model_.studio().selection);
    return keys.empty() ? Assignment() : at(model_.board()->groups, keyGroupOf(*keys.begin()));
}

QString InspectorAdapter::inheritedSound() const {
    const Board* const board = model_.board();
    if (board == nullptr || board->sounds.empty()) {
        return {};
    }
    const SoundSpec* const sound = board->sound(inherited().sound);
    return QString::fromStdString((sound != nullptr ? *sound : board->sounds.front()).name);
}

void InspectorAdapter::change(const std::function<void(Assignment&)>& what) {
    const auto selection = model_.studio().selection;
    model_.edit([&, groups = editsGroups()](Board& board) {
        if (const auto* const group = std::get_if<KeySelection::Group>(&selection)) {
            what(board.groups[group->group]);
        } else if (groups) {
            for (const KeyGroup each : allCases<KeyGroup>()) {
                what(board.groups[each]);
            }
        } else {
            for (const std::int64_t code : selectedKeys(board, selection)) {
                what(board.keys[std::to_string(code)]);
            }
            // What overrides nothing any more is no override.
            std::erase_if(board.keys, [](const auto& key) { return key.second == Assignment(); });
        }
    });
}

QVariantList InspectorAdapter::sounds() const {
    QVariantList sounds;
    if (const Board* const board = model_.board()) {
        sounds.append(
            qmlOption({}, (editsGroups() ? tr("As the board: %1") : tr("As the group: %1"))
                              .arg(inheritedSound())));
        for (const SoundSpec& sound : board->sounds) {
            sounds.append(
                qmlOption(QString::fromStdString(sound.id), QString::fromStdString(sound.name)));
        }
    }
    return sounds;
}

QVariantList InspectorAdapter::releases() {
    return qmlOptions<ReleaseMode>();
}

QString InspectorAdapter::sound() const {
    const Assignment assignment = shown();
    // A sound that is gone counts as none.
    const SoundSpec* const sound =
        model_.board() != nullptr ? model_.board()->sound(assignment.sound) : nullptr;
    return sound != nullptr ? QString::fromStdString(sound->id) : QString();
}

void InspectorAdapter::setSound(const QString& id) {
    change([&](Assignment& assignment) {
        assignment.sound = id.isEmpty() ? std::nullopt : std::optional(id.toStdString());
    });
}

void InspectorAdapter::setGainDb(double value) {
    change([=](Assignment& assignment) { assignment.gainDb = value; });
}

void InspectorAdapter::setPitch(double value) {
    change([=](Assignment& assignment) { assignment.pitch = value; });
}

double InspectorAdapter::pan() const {
    if (const auto pan = shown().pan) {
        return *pan;
    }
    if (const auto pan = inherited().pan) {
        return *pan;
    }
    const auto* const keys = std::get_if<KeySelection::Keys>(&model_.studio().selection);
    if (model_.board() == nullptr || keys == nullptr || keys->keys.size() != 1) {
        return 0.0;
    }
    return layout(model_.board()->layout).position(*keys->keys.begin()).value_or(0.0);
}

void InspectorAdapter::setPan(double value) {
    change([=](Assignment& assignment) { assignment.pan = value; });
}

void InspectorAdapter::resetPan() {
    change([](Assignment& assignment) { assignment.pan.reset(); });
}

QString InspectorAdapter::release() const {
    return qmlText(rawString(shown().release));
}

void InspectorAdapter::setRelease(const QString& mode) {
    if (const auto wanted = caseFromRawString<ReleaseMode>(mode.toStdString())) {
        change([&](Assignment& assignment) { assignment.release = *wanted; });
    }
}

QString InspectorAdapter::gainNote() const {
    const double below = inherited().gainDb;
    return below == 0.0 ? QString()
                        : tr("Group %1 dB, together %2 dB")
                              .arg(signedNumber(below), signedNumber(below + gainDb()));
}

QString InspectorAdapter::pitchNote() const {
    const double below = inherited().pitch;
    return below == 0.0 ? QString()
                        : tr("Group %1 st, together %2 st")
                              .arg(signedNumber(below), signedNumber(below + pitch()));
}

QString InspectorAdapter::panNote() const {
    if (ownPan()) {
        return {};
    }
    return inherited().pan ? tr("As the group") : tr("Where the key is");
}

QString InspectorAdapter::releaseNote() const {
    if (model_.board() == nullptr || shown().release != ReleaseMode::inherit) {
        return {};
    }
    const ReleaseMode group = inherited().release;
    if (group != ReleaseMode::inherit) {
        return group == ReleaseMode::on ? tr("The group: on") : tr("The group: off");
    }
    return model_.board()->releaseByDefault ? tr("The board: on") : tr("The board: off");
}

bool InspectorAdapter::canReset() const {
    const Board* const board = model_.board();
    return board != nullptr &&
           std::ranges::any_of(
               selectedKeys(*board, model_.studio().selection),
               [&](std::int64_t code) { return board->keys.contains(std::to_string(code)); });
}

void InspectorAdapter::reset() {
    model_.edit([selection = model_.studio().selection](Board& board) {
        for (const std::int64_t code : selectedKeys(board, selection)) {
            board.keys.erase(std::to_string(code));
        }
    });
}

} // namespace vornic
