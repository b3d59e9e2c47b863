#include "Vornic/views/adapters/StudioAdapter.h"

namespace vornic {

StudioAdapter::StudioAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), keyboard_(model), inspector_(model), sounds_(model),
      stroke_(model), equalizer_(model), shape_(model), layers_(model), parts_(model) {}

void StudioAdapter::refresh() {
    const Seen now{.board = model_.boardRevision(), .studio = model_.studio()};
    const bool boardChanged = !(seen_ == now);
    if (boardChanged) {
        seen_ = now;
        keyboard_.refresh();
        inspector_.refresh();
        sounds_.refresh();
        equalizer_.refresh();
        shape_.refresh();
        layers_.refresh();
        parts_.refresh();
    }
    if (boardChanged || seenRender_ != model_.renderRevision()) {
        seenRender_ = model_.renderRevision();
        stroke_.refresh();
    }
    stroke_.refreshRendering();
    refreshActivity();
}

} // namespace vornic
