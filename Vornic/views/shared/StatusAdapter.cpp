#include "Vornic/views/shared/StatusAdapter.h"

#include "Vornic/views/shared/QmlText.h"

namespace vornic {

QString symbolOf(const AppModel& model) {
    if (model.tapState() != TapState::listening) {
        return "warning";
    }
    const QuietRule* const rule = model.quietRule();
    return rule != nullptr ? qmlText(rule->symbol) : QString("keyboard");
}

StatusAdapter::StatusAdapter(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
    refresh();
}

void StatusAdapter::refresh() {
    const QuietRule* const rule = model_.quietRule();
    subtitle_ = model_.board() == nullptr && rule == nullptr ? tr("No keyboard yet")
                                                             : qmlText(model_.statusLine());
    // The switch is not a reason of its own here: it stands above this line.
    const bool heard = rule == nullptr || rule->reason == Silence::off;
    symbol_ = heard ? QString("check-circle") : symbolOf(model_);
    line_ = heard ? tr("Listening") : subtitle_.value();
    explain(rule);
    listening_ = model_.tapState() == TapState::listening;
    needsPermission_ = model_.tapState() == TapState::needsPermission;
    needsRelaunch_ = model_.tapState() == TapState::needsRelaunch;
    lastError_ = qmlText(model_.lastError().value_or(std::string()), Lines::kept);
    outputName_ =
        model_.outputName().empty() ? tr("No sound output") : qmlText(model_.outputName());
    headphones_ = model_.headphones();
    onBluetooth_ = model_.onBluetooth();
    refreshTyping();
}

void StatusAdapter::explain(const QuietRule* rule) {
    remedy_ = Remedy::Nothing;
    why_ = QString();
    if (rule == nullptr) {
        if (model_.outputName().empty()) {
            symbol_ = QString("warning");
            why_ = tr("Nothing sounds: there is no sound output. Run \"vornic doctor\": it says "
                      "what to do.");
        }
        return;
    }
    switch (rule->reason) {
    case Silence::off:
        why_ = tr("Your keys are heard, but the sounds are off.");
        remedy_ = Remedy::SwitchOn;
        break;
    case Silence::microphone:
        why_ = tr("So that nobody in a call hears your keys.");
        remedy_ = Remedy::Settings;
        break;
    case Silence::password:
        why_ = tr("So that nobody hears how you type it.");
        break;
    case Silence::recording:
        why_ = tr("So that only your own keyboard is recorded.");
        break;
    }
}

void StatusAdapter::refreshTyping() {
    typing_ = model_.activity().typing();
    keyHeard_ = model_.activity().lastKey().has_value();
}

} // namespace vornic
