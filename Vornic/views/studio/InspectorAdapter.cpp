#include "Vornic/views/studio/InspectorAdapter.h"

#include "Vornic/views/shared/QmlText.h"
#include "VornicCore/board/KeySelection.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <variant>
#include <vector>

namespace vornic {

namespace {

QString signedNumber(double value) {
    return (value < 0 ? QString("−") : QString("+")) + QString::number(std::abs(value), 'f', 1);
}

/// Where the selection has no place of its own: what it inherits, or a single key's own place.
double placeOf(const Board& board, const KeySelection::Any& selection,
               const Assignment& inherited) {
    if (inherited.pan) {
        return *inherited.pan;
    }
    const auto* const keys = std::get_if<KeySelection::Keys>(&selection);
    return keys != nullptr && keys->keys.size() == 1
               ? layout(board.layout).position(*keys->keys.begin()).value_or(0.0)
               : 0.0;
}

/// In what some of them differ.
InspectorAdapter::Values differences(const std::vector<Assignment>& all) {
    InspectorAdapter::Values several;
    const auto compare = [&](InspectorAdapter::Value value, auto member) {
        const bool differ =
            std::ranges::adjacent_find(all, std::not_equal_to(), member) != all.end();
        several.setFlag(value, differ);
    };
    compare(InspectorAdapter::Sound, &Assignment::sound);
    compare(InspectorAdapter::Gain, &Assignment::gainDb);
    compare(InspectorAdapter::Release, &Assignment::release);
    compare(InspectorAdapter::Pitch, &Assignment::pitch);
    compare(InspectorAdapter::Pan, &Assignment::pan);
    return several;
}

} // namespace

void InspectorAdapter::read() {
    static const Board none;
    const Board& board = model_.board() != nullptr ? *model_.board() : none;
    const KeySelection::Any& selection = model_.studio().selection;
    const bool groups = KeySelection::namesGroups(selection);
    const std::vector<Assignment> all = model_.board() != nullptr
                                            ? KeySelection::assignmentsOf(selection, board)
                                            : std::vector<Assignment>();
    const Assignment own = all.empty() ? Assignment() : all.front();
    const Assignment below = KeySelection::inheritedBy(selection, board);

    QVariantList sounds;
    if (!board.sounds.empty()) {
        const SoundSpec* const inherited = board.sound(below.sound);
        sounds.append(qmlOption(
            QString(),
            (groups ? tr("As the board: %1") : tr("As the group: %1"))
                .arg(qmlText((inherited != nullptr ? *inherited : board.sounds.front()).name))));
        for (const SoundSpec& sound : board.sounds) {
            sounds.append(qmlOption(QString::fromStdString(sound.id), qmlText(sound.name)));
        }
    }
    sounds_ = sounds;
    // A sound that is gone counts as none.
    const SoundSpec* const sound = board.sound(own.sound);
    sound_ = sound != nullptr ? QString::fromStdString(sound->id) : QString();
    enabled_ = !all.empty();
    mixed_ = std::ranges::adjacent_find(all, std::not_equal_to()) != all.end();
    several_ = differences(all);
    gainDb_ = own.gainDb;
    pitch_ = own.pitch;
    pan_ = own.pan ? *own.pan : placeOf(board, selection, below);
    ownPan_ = own.pan.has_value();
    release_ = static_cast<int>(own.release);
    canReset_ = KeySelection::overrides(selection, board);

    gainNote_ = below.gainDb == 0.0
                    ? QString()
                    : tr("Group %1 dB, together %2 dB")
                          .arg(signedNumber(below.gainDb), signedNumber(below.gainDb + own.gainDb));
    pitchNote_ = below.pitch == 0.0
                     ? QString()
                     : tr("Group %1 st, together %2 st")
                           .arg(signedNumber(below.pitch), signedNumber(below.pitch + own.pitch));
    panNote_ = own.pan ? QString() : below.pan ? tr("As the group") : tr("Where the key is");
    if (model_.board() == nullptr || own.release != ReleaseMode::inherit) {
        releaseNote_ = QString();
    } else if (below.release != ReleaseMode::inherit) {
        releaseNote_ =
            below.release == ReleaseMode::on ? tr("The group: on") : tr("The group: off");
    } else {
        releaseNote_ = board.releaseByDefault ? tr("The board: on") : tr("The board: off");
    }
}

QVariantList InspectorAdapter::releases() {
    return qmlOptions<ReleaseMode>();
}

void InspectorAdapter::change(const std::function<void(Assignment&)>& what) {
    model_.edit([&, selection = model_.studio().selection](Board& board) {
        KeySelection::assign(board, selection, what);
    });
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

void InspectorAdapter::setPan(double value) {
    change([=](Assignment& assignment) { assignment.pan = value; });
}

void InspectorAdapter::resetPan() {
    change([](Assignment& assignment) { assignment.pan.reset(); });
}

void InspectorAdapter::setRelease(int mode) {
    if (const auto wanted = qmlCase<ReleaseMode>(mode)) {
        change([&](Assignment& assignment) { assignment.release = *wanted; });
    }
}

void InspectorAdapter::reset() {
    model_.edit([selection = model_.studio().selection](Board& board) {
        KeySelection::reset(board, selection);
    });
}

} // namespace vornic
