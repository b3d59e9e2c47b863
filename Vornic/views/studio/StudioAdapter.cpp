#include "Vornic/views/studio/StudioAdapter.h"

namespace vornic {

StudioAdapter::StudioAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), keyboard_(model), inspector_(model), sounds_(model),
      stroke_(model), equalizer_(model), shape_(model), layers_(model), parts_(model) {}

void StudioAdapter::setTab(Tab tab) {
    StudioState state = model_.studio();
    state.studioTab = tab == Tab::Sounds ? StudioTab::sounds : StudioTab::keys;
    model_.setStudio(state);
}

void StudioAdapter::refresh() {
    tab_ = model_.studio().studioTab == StudioTab::sounds ? Tab::Sounds : Tab::Keys;
    const Seen now{.board = model_.boardRevision(), .studio = model_.studio()};
    if (!(seen_ == now)) {
        seen_ = now;
        for (StudioPart* const part :
             {static_cast<StudioPart*>(&keyboard_), static_cast<StudioPart*>(&inspector_),
              static_cast<StudioPart*>(&sounds_), static_cast<StudioPart*>(&equalizer_),
              static_cast<StudioPart*>(&shape_), static_cast<StudioPart*>(&layers_),
              static_cast<StudioPart*>(&parts_)}) {
            part->refresh();
        }
    }
    // An edit is not drawn before it is rendered.
    const Drawn drawn{.render = model_.renderRevision(),
                      .board = model_.board() != nullptr ? model_.board()->id : std::string(),
                      .sound = model_.studio().editingSoundID,
                      .release = model_.studio().editingRelease};
    if (!(drawn_ == drawn)) {
        drawn_ = drawn;
        stroke_.refresh();
    }
    stroke_.refreshRendering();
}

} // namespace vornic
