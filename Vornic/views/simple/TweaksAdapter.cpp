#include "Vornic/views/simple/TweaksAdapter.h"

#include "Vornic/views/shared/QmlText.h"

namespace vornic {

TweaksAdapter::TweaksAdapter(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
    refresh();
}

void TweaksAdapter::refresh() {
    const SimpleTweaks& tweaks = model_.tweaks();
    feel_ = tweaks.feel ? static_cast<int>(*tweaks.feel) : -1;
    deeper_ = tweaks.deeper;
    crisper_ = tweaks.crisper;
}

QVariantList TweaksAdapter::feels() {
    return qmlOptions<Feel>();
}

void TweaksAdapter::setFeel(int feel) {
    SimpleTweaks tweaks = model_.tweaks();
    tweaks.feel = qmlCase<Feel>(feel);
    model_.setTweaks(tweaks);
}

void TweaksAdapter::setDeeper(double value) {
    SimpleTweaks tweaks = model_.tweaks();
    tweaks.deeper = value;
    model_.setTweaks(tweaks);
}

void TweaksAdapter::setCrisper(double value) {
    SimpleTweaks tweaks = model_.tweaks();
    tweaks.crisper = value;
    model_.setTweaks(tweaks);
}

} // namespace vornic
