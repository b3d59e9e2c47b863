#include "Vornic/views/shared/SettingsAdapter.h"

#include "Vornic/views/shared/QmlText.h"

namespace vornic {

SettingsAdapter::SettingsAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model) {
    refresh();
}

void SettingsAdapter::setAutostart(Autostart* autostart) {
    autostart_ = autostart;
    canStartWithSession_ = autostart != nullptr;
    refreshAutostart();
}

void SettingsAdapter::refreshAutostart() {
    startsWithSession_ = autostart_ != nullptr && autostart_->enabled();
}

void SettingsAdapter::setClose(bool close) {
    StageSpec stage = model_.stage();
    stage.placement = close ? Placement::close : Placement::desk;
    model_.setStage(stage);
}

QVariantList SettingsAdapter::outputKinds() {
    return qmlOptions<OutputKind>();
}

void SettingsAdapter::setOutputKind(int kind) {
    if (const auto wanted = qmlCase<OutputKind>(kind)) {
        model_.setOutputKind(*wanted);
    }
}

void SettingsAdapter::setStartsWithSession(bool on) {
    if (autostart_ == nullptr) {
        return;
    }
    if (const std::error_code error = autostart_->setEnabled(on)) {
        model_.tell("Couldn't change how Vornic starts: " + error.message());
    }
    refreshAutostart();
    // The switch that asked shows what came of it, also where that is what was before.
    Q_EMIT startsWithSessionChanged();
}

} // namespace vornic
