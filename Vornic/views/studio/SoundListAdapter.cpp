#include "Vornic/views/studio/SoundListAdapter.h"

#include "Vornic/views/keyboard/KeyboardScene.h"
#include "Vornic/views/shared/QmlText.h"
#include "VornicCore/board/EditBoard.h"

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace vornic {

SoundListAdapter::SoundListAdapter(AppModel& model, QObject* parent)
    : StudioPart(parent), model_(model), edit_(model) {}

void SoundListAdapter::read() {
    const SoundSpec* const edited = edit_.sound();
    current_ = edited != nullptr ? QString::fromStdString(edited->id) : QString();
    name_ = edited != nullptr ? qmlText(edited->name) : QString();
    place_ = edited != nullptr ? static_cast<int>(edited - model_.board()->sounds.data()) : -1;
    canRemove_ = model_.board() != nullptr && EditBoard::canRemoveSound(*model_.board());
    everywhere_ = edited != nullptr && EditBoard::playsEverywhere(*model_.board(), edited->id);
    hasRelease_ = edited != nullptr && edited->release.has_value();
    editingRelease_ = edit_.isRelease();
    QVariantList rows;
    if (const Board* const board = model_.board()) {
        const std::map<std::string, int> keys = EditBoard::keysBySound(*board);
        for (const SoundSpec& sound : board->sounds) {
            const auto found = keys.find(sound.id);
            rows.append(QVariantMap{
                {"value", QString::fromStdString(sound.id)},
                {"text", qmlText(sound.name)},
                {"colour", static_cast<int>(rows.size())},
                {"letter", soundLetter(static_cast<int>(rows.size()))},
                {"keys", found == keys.end() ? 0 : found->second},
                {"current", &sound == edited},
            });
        }
    }
    rows_.show(rows);
}

void SoundListAdapter::setCurrent(const QString& id) {
    select(id.toStdString());
}

void SoundListAdapter::select(const std::string& id) {
    StudioState state = model_.studio();
    state.editingSoundID = id;
    model_.setStudio(state);
}

void SoundListAdapter::setName(const QString& name) {
    edit_.changeSound([&](SoundSpec& sound) { sound.name = name.toStdString(); });
}

void SoundListAdapter::setEditingRelease(bool on) {
    StudioState state = model_.studio();
    state.editingRelease = on;
    model_.setStudio(state);
}

void SoundListAdapter::insert(SoundSpec sound) {
    const std::string id = sound.id;
    const SoundSpec* const edited = edit_.sound();
    model_.edit([&, after = edited != nullptr ? std::optional(edited->id) : std::nullopt](
                    Board& board) { EditBoard::addSound(board, std::move(sound), after); });
    select(id);
}

void SoundListAdapter::add() {
    if (const Board* const board = model_.board()) {
        insert(EditBoard::newSound(*board, edit_.sound(), tr("New sound").toStdString()));
    }
}

void SoundListAdapter::duplicate() {
    if (const SoundSpec* const like = edit_.sound()) {
        insert(EditBoard::copyOf(
            *like, tr("%1 copy").arg(QString::fromStdString(like->name)).toStdString()));
    }
}

void SoundListAdapter::remove() {
    const SoundSpec* const sound = edit_.sound();
    if (sound == nullptr || !EditBoard::canRemoveSound(*model_.board())) {
        return;
    }
    std::optional<std::string> next;
    model_.edit([&, id = sound->id](Board& board) { next = EditBoard::removeSound(board, id); });
    if (next) {
        select(*next);
    }
}

void SoundListAdapter::useForAllKeys() {
    if (const SoundSpec* const sound = edit_.sound()) {
        model_.useForAllKeys(sound->id);
    }
}

void SoundListAdapter::setHasRelease(bool on) {
    edit_.changeSound([on](SoundSpec& sound) { EditBoard::setHasRelease(sound, on); });
    if (!on) {
        setEditingRelease(false);
    }
}

} // namespace vornic
