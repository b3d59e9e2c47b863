#include "Vornic/views/adapters/SoundListAdapter.h"

#include "VornicCore/base/Uuid.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace vornic {

namespace {

/// How many drawn keys play each sound.
std::map<std::string, int> keysBySound(const Board& board) {
    std::map<std::string, int> keys;
    for (const LayoutKey& key : layout(board.layout).keys) {
        if (const auto resolved = key.code ? board.resolve(*key.code) : std::nullopt) {
            ++keys[resolved->sound->id];
        }
    }
    return keys;
}

/// The first recordings of a sound, with nothing that shapes them.
StrokeSpec plainStroke(const StrokeSpec& from, LayerPart part) {
    LayerSpec layer;
    layer.part = part;
    if (!from.layers.empty()) {
        layer.samples = from.layers.front().samples;
    }
    return StrokeSpec({std::move(layer)});
}

void forget(Assignment& assignment, const std::string& sound) {
    if (assignment.sound == sound) {
        assignment.sound.reset();
    }
}

} // namespace

SoundListAdapter::SoundListAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), edit_(model) {}

void SoundListAdapter::refresh() {
    QVariantList rows;
    if (const Board* const board = model_.board()) {
        const std::map<std::string, int> keys = keysBySound(*board);
        const QString edited = current();
        for (const SoundSpec& sound : board->sounds) {
            const QString id = QString::fromStdString(sound.id);
            const auto found = keys.find(sound.id);
            rows.append(QVariantMap{
                {"value", id},
                {"text", QString::fromStdString(sound.name)},
                {"colour", static_cast<int>(rows.size())},
                {"keys", found == keys.end() ? 0 : found->second},
                {"current", id == edited},
            });
        }
    }
    rows_.show(rows);
    Q_EMIT changed();
}

QString SoundListAdapter::current() const {
    const SoundSpec* const sound = edit_.sound();
    return sound != nullptr ? QString::fromStdString(sound->id) : QString();
}

void SoundListAdapter::setCurrent(const QString& id) {
    select(id.toStdString());
}

void SoundListAdapter::select(const std::string& id) {
    StudioState state = model_.studio();
    state.editingSoundID = id;
    model_.setStudio(state);
}

QString SoundListAdapter::name() const {
    const SoundSpec* const sound = edit_.sound();
    return sound != nullptr ? QString::fromStdString(sound->name) : QString();
}

void SoundListAdapter::setName(const QString& name) {
    edit_.changeSound([&](SoundSpec& sound) { sound.name = name.toStdString(); });
}

int SoundListAdapter::place() const {
    const SoundSpec* const sound = edit_.sound();
    return sound != nullptr ? static_cast<int>(sound - model_.board()->sounds.data()) : -1;
}

bool SoundListAdapter::canRemove() const {
    return model_.board() != nullptr && model_.board()->sounds.size() > 1;
}

bool SoundListAdapter::everywhere() const {
    const SoundSpec* const sound = edit_.sound();
    return sound != nullptr &&
           std::ranges::all_of(layout(model_.board()->layout).keys, [&](const LayoutKey& key) {
               return !key.code || model_.board()->resolve(*key.code)->sound == sound;
           });
}

bool SoundListAdapter::hasRelease() const {
    return edit_.sound() != nullptr && edit_.sound()->release.has_value();
}

void SoundListAdapter::setEditingRelease(bool on) {
    StudioState state = model_.studio();
    state.editingRelease = on;
    model_.setStudio(state);
}

void SoundListAdapter::insert(SoundSpec sound) {
    const std::string id = sound.id;
    model_.edit([&, place = place()](Board& board) {
        board.sounds.insert(board.sounds.begin() + place + 1, std::move(sound));
    });
    select(id);
}

void SoundListAdapter::add() {
    SoundSpec sound;
    if (const SoundSpec* const like = edit_.sound()) {
        sound.colorHex = like->colorHex;
        sound.press = plainStroke(like->press, LayerPart::bottomOut);
        if (like->release) {
            sound.release = plainStroke(*like->release, LayerPart::topOut);
        }
        sound.switchParts = like->recordedAs;
        sound.recordedAs = like->recordedAs;
    } else {
        sound.colorHex = model_.board() != nullptr ? model_.board()->colorHex : "";
        sound.press = plainStroke({}, LayerPart::bottomOut);
    }
    sound.id = Uuid::random().text();
    sound.name = tr("New sound").toStdString();
    insert(std::move(sound));
}

void SoundListAdapter::duplicate() {
    if (const SoundSpec* const like = edit_.sound()) {
        SoundSpec sound = *like;
        sound.id = Uuid::random().text();
        sound.name = tr("%1 copy").arg(QString::fromStdString(sound.name)).toStdString();
        insert(std::move(sound));
    }
}

void SoundListAdapter::remove() {
    if (!canRemove()) {
        return;
    }
    const int gone = place();
    const std::string id = edit_.sound()->id;
    model_.edit([&](Board& board) {
        board.sounds.erase(board.sounds.begin() + gone);
        for (auto& [group, assignment] : board.groups) {
            forget(assignment, id);
        }
        for (auto& [key, assignment] : board.keys) {
            forget(assignment, id);
        }
        // What overrides nothing any more is no override.
        std::erase_if(board.keys, [](const auto& key) { return key.second == Assignment(); });
    });
    const auto& left = model_.board()->sounds;
    select(left[std::min(static_cast<std::size_t>(gone), left.size() - 1)].id);
}

void SoundListAdapter::useForAllKeys() {
    const SoundSpec* const sound = edit_.sound();
    if (sound == nullptr) {
        return;
    }
    model_.edit([id = sound->id](Board& board) {
        for (const KeyGroup group : allCases<KeyGroup>()) {
            board.groups[group].sound = id;
        }
        for (auto& [key, assignment] : board.keys) {
            assignment.sound.reset();
        }
        std::erase_if(board.keys, [](const auto& key) { return key.second == Assignment(); });
    });
}

void SoundListAdapter::setHasRelease(bool on) {
    edit_.changeSound([on](SoundSpec& sound) {
        if (on && !sound.release) {
            sound.release = plainStroke(sound.press, LayerPart::topOut);
        } else if (!on) {
            sound.release.reset();
        }
    });
    if (!on) {
        setEditingRelease(false);
    }
}

} // namespace vornic
