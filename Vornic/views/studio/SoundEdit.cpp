#include "Vornic/views/studio/SoundEdit.h"

#include "Vornic/app/EditedSound.h"

#include <algorithm>

namespace vornic {

const SoundSpec* SoundEdit::sound() const {
    return model_.board() != nullptr ? editedSound(*model_.board(), model_.studio()) : nullptr;
}

bool SoundEdit::isRelease() const {
    const SoundSpec* const edited = sound();
    return edited != nullptr && editsRelease(*edited, model_.studio());
}

const StrokeSpec* SoundEdit::stroke() const {
    const SoundSpec* const edited = sound();
    if (edited == nullptr) {
        return nullptr;
    }
    return isRelease() ? &edited->release.value() : &edited->press;
}

void SoundEdit::changeSound(const std::function<void(SoundSpec&)>& what) const {
    if (const SoundSpec* const edited = sound()) {
        model_.edit([&, id = edited->id](Board& board) {
            const auto found = std::ranges::find(board.sounds, id, &SoundSpec::id);
            if (found != board.sounds.end()) {
                what(*found);
            }
        });
    }
}

void SoundEdit::changeStroke(const std::function<void(StrokeSpec&)>& what) const {
    changeSound([&, release = isRelease()](SoundSpec& edited) {
        what(release && edited.release ? *edited.release : edited.press);
    });
}

} // namespace vornic
